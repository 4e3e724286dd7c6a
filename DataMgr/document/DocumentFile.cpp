#include "DataMgr/document/DocumentFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <new>
#include <string>

#include "framework/CArchive.h"
#include "framework/CArchiveException.h"
#include "framework/CMemFile.h"
#include "utility/FileWriting.h"

namespace {

using file_writing::WriteAll;

const char TEMP_SUFFIX[] = ".~XXXXXX";
const size_t READ_BLOCK = 65536;

DocumentFile::FaultHook faultHook = nullptr;

// True, with errno set, when the fault hook fails nStep.
bool Injected(DocumentFile::Step nStep) {
  const int nError = faultHook != nullptr ? faultHook(nStep) : 0;
  if (nError != 0) errno = nError;
  return nError != 0;
}

DocumentFile::Cause CauseOf(int nError, bool bSaving) {
  switch (nError) {
    case ENOENT:
    case ENOTDIR:
      return bSaving ? DocumentFile::FolderMissing : DocumentFile::NotFound;
    case EISDIR:
      return DocumentFile::NotAFile;
    case EACCES:
    case EPERM:
    case EROFS:
      return DocumentFile::NoPermission;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return DocumentFile::NoSpace;
    case ENOMEM:
      return DocumentFile::OutOfMemory;
    default:
      return DocumentFile::IoError;
  }
}

const char* CauseText(DocumentFile::Cause nCause) {
  switch (nCause) {
    case DocumentFile::NotFound:
      return "the file does not exist";
    case DocumentFile::FolderMissing:
      return "the folder does not exist";
    case DocumentFile::NotAFile:
      return "the path names a folder or something else that is not a file";
    case DocumentFile::NoPermission:
      return "permission denied";
    case DocumentFile::NoSpace:
      return "the disk is full";
    case DocumentFile::OutOfMemory:
      return "not enough memory";
    case DocumentFile::CutShort:
      return "the file ends before the document does";
    case DocumentFile::Damaged:
      return "the file is damaged or holds no document";
    case DocumentFile::NewerVersion:
      return "the document was written by a newer version of the library";
    default:
      return "the system reported an error";
  }
}

// Appends what is left of the file open as fd; false, with errno set, when
// reading fails.
bool ReadToEnd(int fd, std::vector<BYTE>& bytes) {
  std::vector<BYTE> block(READ_BLOCK);
  for (;;) {
    const ssize_t nRead = read(fd, block.data(), block.size());
    if (nRead < 0 && errno == EINTR) continue;
    if (nRead <= 0) return nRead == 0;
    bytes.insert(bytes.end(), block.begin(), block.begin() + nRead);
  }
}

void EmptyDocument(DataMgmt& doc) {
  doc.DeleteAll(true, false);
  doc.SetMRUExportPath(CString());
}

}  // namespace

void DocumentFile::SetFaultHook(FaultHook hook) { faultHook = hook; }

void DocumentFile::Begin(bool bSaving) {
  m_bSaving = bSaving;
  m_nCause = None;
  m_nSystemError = 0;
  m_nOffset = 0;
  m_nFileSize = 0;
}

bool DocumentFile::Fail(Cause nCause) {
  m_nCause = nCause;
  return false;
}

bool DocumentFile::FailSystem(int nError) {
  m_nSystemError = nError;
  return Fail(CauseOf(nError, m_bSaving));
}

bool DocumentFile::Save(DataMgmt& doc) {
  Begin(true);
  CString target;
  if (m_strPath.IsEmpty()) return FailSystem(ENOENT);
  if (!file_writing::ResolveLink(m_strPath, target)) return FailSystem(errno);
  struct stat info {};
  const bool bExists = stat(target, &info) == 0;
  if (!bExists && errno != ENOENT) return FailSystem(errno);
  if (bExists && !S_ISREG(info.st_mode)) return Fail(NotAFile);
  if (bExists && access(target, W_OK) != 0) return FailSystem(errno);
  CMemFile archive;
  try {
    CArchive ar(&archive, CArchive::store);
    doc.Serialize(ar);
    ar.Close();
  } catch (const std::bad_alloc&) {
    return Fail(OutOfMemory);
  } catch (const CArchiveException&) {
    return Fail(IoError);
  }
  const mode_t nMode = bExists ? info.st_mode & 07777 : file_writing::DefaultFileMode();
  return WriteAndReplace(target, archive.GetContents(), nMode);
}

// Writes bytes to a fresh temporary file beside target, flushes it and
// renames it over target; on failure the temporary file is removed and
// target is untouched.
bool DocumentFile::WriteAndReplace(const CString& target, const std::vector<BYTE>& bytes, unsigned nMode) {
  std::string temp = target.GetStdString() + TEMP_SUFFIX;
  const int fd = Injected(CreateTemp) ? -1 : mkstemp(temp.data());
  if (fd < 0) return FailSystem(errno);
  bool bDone = fchmod(fd, static_cast<mode_t>(nMode)) == 0 && !Injected(WriteTemp) &&
               WriteAll(fd, bytes.data(), bytes.size()) && !Injected(SyncTemp) && fsync(fd) == 0;
  int nError = errno;
  if (close(fd) != 0 && bDone) {
    bDone = false;
    nError = errno;
  }
  if (bDone && !Injected(ReplaceTarget) && std::rename(temp.c_str(), target) == 0) {
    file_writing::SyncFolder(CString(std::filesystem::path(temp).parent_path().string()));
    return true;
  }
  if (bDone) nError = errno;
  unlink(temp.c_str());
  return FailSystem(nError);
}

bool DocumentFile::Load(DataMgmt& doc) {
  Begin(false);
  EmptyDocument(doc);
  std::vector<BYTE> bytes;
  if (!ReadWhole(bytes)) return false;
  m_nFileSize = bytes.size();
  // The document's version word, little-endian, opens the file.
  if (bytes.size() >= 2 && (bytes[0] | bytes[1] << 8) > DataMgmt::CURRENT_VERSION) return Fail(NewerVersion);
  if (LoadBytes(doc, std::move(bytes))) return true;
  EmptyDocument(doc);
  return false;
}

bool DocumentFile::ReadWhole(std::vector<BYTE>& bytes) {
  if (m_strPath.IsEmpty()) return FailSystem(ENOENT);
  const int fd = Injected(ReadFile) ? -1 : open(m_strPath, O_RDONLY | O_CLOEXEC);
  if (fd < 0) return FailSystem(errno);
  struct stat info {};
  if (fstat(fd, &info) == 0 && !S_ISREG(info.st_mode)) {
    close(fd);
    return Fail(NotAFile);
  }
  bool bRead = false;
  try {
    bytes.reserve(static_cast<size_t>(info.st_size));
    bRead = ReadToEnd(fd, bytes);
  } catch (const std::bad_alloc&) {
    errno = ENOMEM;
  }
  const int nError = errno;
  close(fd);
  return bRead || FailSystem(nError);
}

bool DocumentFile::LoadBytes(DataMgmt& doc, std::vector<BYTE> bytes) {
  CMemFile file(std::move(bytes));
  CArchive ar(&file, CArchive::load);
  Cause nCause = None;
  try {
    doc.Serialize(ar);
  } catch (const CArchiveException& e) {
    nCause = e.m_cause == CArchiveException::endOfFile ? CutShort : Damaged;
  } catch (const std::bad_alloc&) {
    nCause = OutOfMemory;
  }
  m_nOffset = m_nFileSize - ar.GetBytesRemaining();
  if (nCause == None && m_nOffset < m_nFileSize) nCause = Damaged;
  return nCause == None || Fail(nCause);
}

CString DocumentFile::GetMessage() const {
  if (m_nCause == None) return CString();
  CString message;
  message.Format("cannot %s \"%s\": %s", m_bSaving ? "save" : "load", m_strPath.GetString(), CauseText(m_nCause));
  if (m_nSystemError != 0) message.AppendFormat(" (%s)", std::strerror(m_nSystemError));
  if (m_nCause == CutShort || m_nCause == Damaged || m_nCause == NewerVersion) {
    message.AppendFormat(" at byte %llu of %llu", static_cast<unsigned long long>(m_nOffset),
                         static_cast<unsigned long long>(m_nFileSize));
  }
  return message;
}
