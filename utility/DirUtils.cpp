#include "utility/DirUtils.h"

#include <sys/stat.h>

#include "utility/TextRules.h"

using text_rules::IsSeparator;

namespace {

// The length of the root of path: the drive prefix and the separator that
// follows it, if any; 0 for a relative path.
int RootLength(const CString& path) {
  const int nDrive = text_rules::DriveLength(path);
  return IsSeparator(path[nDrive]) ? nDrive + 1 : nDrive;
}

}  // namespace

bool DirUtils::IsDir(const CString& path, bool bAcceptByForm) {
  if (bAcceptByForm && IsSeparator(path[path.GetLength() - 1])) return true;
  return DoesDirExist(path);
}

bool DirUtils::DoesDirExist(const CString& path) {
  struct stat info {};
  return !path.IsEmpty() && stat(path, &info) == 0 && S_ISDIR(info.st_mode);
}

CString DirUtils::ParsePathFromFile(const CString& path) { return path.Left(text_rules::FolderLength(path)); }

CString DirUtils::ParseParentDir(const CString& dir) {
  const CString trimmed = RemoveTrailingSlash(dir);
  if (trimmed.GetLength() == RootLength(trimmed)) return CString();
  return ParsePathFromFile(trimmed);
}

CString DirUtils::RemoveTrailingSlash(const CString& path) {
  int nLength = path.GetLength();
  const int nRoot = RootLength(path);
  while (nLength > nRoot && IsSeparator(path[nLength - 1])) --nLength;
  return path.Left(nLength);
}
