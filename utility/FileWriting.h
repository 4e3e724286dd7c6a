#ifndef UTILITY_FILEWRITING_H_
#define UTILITY_FILEWRITING_H_

// The system calls behind writing a whole file safely, shared by the
// utility library's file functions and the document files of vaxo057.
// Internal: not installed with the library's interface and not exported.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdlib>

#include "framework/CString.h"

namespace file_writing {

// Writes all nSize bytes to fd; false, with errno set, when the system
// refuses some.
inline bool WriteAll(int fd, const void* pData, size_t nSize) {
  const char* pNext = static_cast<const char*>(pData);
  while (nSize > 0) {
    const ssize_t nWritten = write(fd, pNext, nSize);
    if (nWritten < 0 && errno == EINTR) continue;
    if (nWritten <= 0) return false;
    pNext += nWritten;
    nSize -= static_cast<size_t>(nWritten);
  }
  return true;
}

// The permission bits a new file gets from the process's file mask.
inline mode_t DefaultFileMode() {
  const mode_t nMask = umask(0);
  umask(nMask);
  return 0666 & ~nMask;
}

// Flushes folder's entry list, so that a rename in it survives a crash; an
// empty text is the working folder. A folder that cannot be opened for this
// (some file systems refuse) only loses that guarantee.
inline void SyncFolder(const CString& folder) {
  const int fd = open(folder.IsEmpty() ? "." : folder.GetString(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd < 0) return;
  fsync(fd);
  close(fd);
}

// The file a write to path lands in: a symbolic link's target, else path.
// False, with errno set, for a link that leads nowhere.
inline bool ResolveLink(const CString& path, CString& resolved) {
  struct stat info {};
  if (lstat(path, &info) != 0 || !S_ISLNK(info.st_mode)) {
    resolved = path;
    return true;
  }
  char* pszResolved = realpath(path, nullptr);
  if (pszResolved == nullptr) return false;
  resolved = pszResolved;
  std::free(pszResolved);
  return true;
}

}  // namespace file_writing

#endif  // UTILITY_FILEWRITING_H_
