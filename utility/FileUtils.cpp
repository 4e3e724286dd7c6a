#include "utility/FileUtils.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "utility/DirUtils.h"
#include "utility/FileWriting.h"
#include "utility/InternetUtils.h"
#include "utility/StringUtils.h"
#include "utility/TextRules.h"

namespace {

using file_writing::SyncFolder;
using file_writing::WriteAll;

const char TEMP_NAME[] = ".~write.XXXXXX";
const size_t READ_BLOCK = 65536;

// The whole file as bytes; false (errno kept) when it cannot be read.
bool ReadBytes(const CString& path, std::string& bytes) {
  std::FILE* pFile = std::fopen(path, "rb");
  if (pFile == nullptr) return false;
  std::vector<char> block(READ_BLOCK);
  size_t nRead = 0;
  while ((nRead = std::fread(block.data(), 1, block.size(), pFile)) > 0) bytes.append(block.data(), nRead);
  const bool bFailed = std::ferror(pFile) != 0;
  const int nError = errno;
  std::fclose(pFile);
  errno = nError;
  return !bFailed;
}

void SplitLines(const std::string& bytes, TextArray& lines) {
  size_t nStart = 0;
  for (size_t i = 0; i < bytes.size(); ++i) {
    if (bytes[i] != '\n' && bytes[i] != '\r') continue;
    lines.Add(CString(bytes.substr(nStart, i - nStart)));
    if (bytes[i] == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n') ++i;
    nStart = i + 1;
  }
  if (nStart < bytes.size()) lines.Add(CString(bytes.substr(nStart)));
}

// Puts bytes into target with the permission bits nMode through a flushed
// temporary file in target's folder; target is untouched on failure.
bool ReplaceFile(const CString& target, const std::string& bytes, mode_t nMode) {
  const CString folder = DirUtils::ParsePathFromFile(target);
  std::string tempPath = (folder + TEMP_NAME).GetStdString();
  const int fd = mkstemp(tempPath.data());
  if (fd < 0) return false;
  bool bWritten = fchmod(fd, nMode) == 0 && WriteAll(fd, bytes.data(), bytes.size()) && fsync(fd) == 0;
  bWritten = close(fd) == 0 && bWritten;
  if (!bWritten || std::rename(tempPath.c_str(), target) != 0) {
    unlink(tempPath.c_str());
    return false;
  }
  SyncFolder(folder);
  return true;
}

CString JoinPath(const CString& dir, const CString& name) {
  if (dir.IsEmpty() || text_rules::IsSeparator(dir[dir.GetLength() - 1])) return dir + name;
  return dir + "/" + name;
}

bool IsPlainName(const CString& name) {
  return !name.IsEmpty() && name != "." && name != ".." && text_rules::FindLastSeparator(name) < 0;
}

}  // namespace

bool FileUtils::DoesFileExist(const CString& path) {
  struct stat info {};
  return !path.IsEmpty() && stat(path, &info) == 0 && S_ISREG(info.st_mode);
}

bool FileUtils::IsFile(const CString& path, bool bMustExist, bool bAcceptInternet) {
  if (StringUtils::IsEffectivelyEmpty(path)) return false;
  if (InternetUtils::IsInternetFile(path)) return bAcceptInternet;
  if (bMustExist) return DoesFileExist(path);
  return !ParseFileNameFromPath(path, true).IsEmpty() && !DirUtils::DoesDirExist(path);
}

CString FileUtils::ParseFileNameFromPath(const CString& path, bool bWithExtension) {
  const CString name = path.Mid(text_rules::FolderLength(path));
  const int nDot = name.ReverseFind('.');
  return bWithExtension || nDot <= 0 ? name : name.Left(nDot);
}

bool FileUtils::ReadFileContent(const CString& path, TextArray& lines, bool bAppend, CString* pstrError) {
  std::string bytes;
  if (path.IsEmpty() || !ReadBytes(path, bytes)) {
    if (pstrError != nullptr) *pstrError = path.IsEmpty() ? "no file name" : std::strerror(errno);
    return false;
  }
  if (pstrError != nullptr) pstrError->Empty();
  if (!bAppend) lines.RemoveAll();
  SplitLines(bytes, lines);
  return true;
}

bool FileUtils::WriteFileContent(const CString& path, const TextArray& lines, bool bAppend, bool bCRLF) {
  CString target;
  if (path.IsEmpty() || !file_writing::ResolveLink(path, target)) return false;
  struct stat info {};
  const bool bExists = stat(target, &info) == 0;
  if (bExists && !S_ISREG(info.st_mode)) return false;
  std::string bytes;
  if (bAppend && bExists && !ReadBytes(target, bytes)) return false;
  const char* pszLineEnd = bCRLF ? "\r\n" : "\n";
  for (const CString& line : lines) bytes += line.GetStdString() + pszLineEnd;
  return ReplaceFile(target, bytes, bExists ? info.st_mode & 07777 : file_writing::DefaultFileMode());
}

bool FileUtils::GetFileList(const CString& dir, TextArray& files, bool bFullPaths) {
  DIR* pDir = dir.IsEmpty() ? nullptr : opendir(dir);
  if (pDir == nullptr) return false;
  std::vector<CString> names;
  while (const dirent* pEntry = readdir(pDir)) {
    const CString name(pEntry->d_name);
    if (DoesFileExist(JoinPath(dir, name))) names.push_back(name);
  }
  closedir(pDir);
  std::sort(names.begin(), names.end(),
            [](const CString& a, const CString& b) { return TextArray::DoCompareFiles(a, b, false) < 0; });
  files.RemoveAll();
  for (const CString& name : names) files.Add(bFullPaths ? JoinPath(dir, name) : name);
  return true;
}

bool FileUtils::MatchFileSpec(const CString& path, const CString& pattern, bool bCaseSensitive) {
  return StringUtils::MatchSpec(ParseFileNameFromPath(path, true), pattern, bCaseSensitive);
}

bool FileUtils::MoveFile(const CString& source, const CString& target, bool bOverwrite) {
  if (!DoesFileExist(source) || target.IsEmpty()) return false;
  const CString dest = DirUtils::IsDir(target, true) ? JoinPath(target, ParseFileNameFromPath(source, true)) : target;
  struct stat info {};
  if (lstat(dest, &info) == 0 && (!bOverwrite || S_ISDIR(info.st_mode))) return false;
  if (std::rename(source, dest) == 0) return true;
  if (errno != EXDEV) return false;
  std::string bytes;
  if (stat(source, &info) != 0 || !ReadBytes(source, bytes)) return false;
  return ReplaceFile(dest, bytes, info.st_mode & 07777) && unlink(source) == 0;
}

bool FileUtils::RenameFile(const CString& path, const CString& newName, bool bOverwrite) {
  if (!IsPlainName(newName)) return false;
  return MoveFile(path, DirUtils::ParsePathFromFile(path) + newName, bOverwrite);
}
