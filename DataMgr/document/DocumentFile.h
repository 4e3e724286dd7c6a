#ifndef DATAMGR_DOCUMENT_DOCUMENTFILE_H_
#define DATAMGR_DOCUMENT_DOCUMENTFILE_H_

#include <vector>

#include "DataMgr/Export.h"
#include "DataMgr/document/DataMgmt.h"
#include "framework/CString.h"
#include "framework/Types.h"

// A document's file on disk: saves a whole DataMgmt to its path and loads
// one from it, and tells why the last Save or Load failed. It holds the
// path and the outcome of the last operation only; the document stays the
// caller's.
//
// Save never leaves the file half-written. The archive is built in memory,
// written to a temporary file beside the target, flushed to disk, renamed
// over the target, and the folder is flushed; a crash at any instant leaves
// either the whole old document or the whole new one under the path. A
// failure (full disk, no permission, a missing folder, a target that is a
// folder) leaves the target as it was and removes the temporary file. Only
// a process killed during Save may leave its temporary file behind, named
// after the target with ".~" and six characters appended.
//
// Load reads the whole file into the document. A file that is missing,
// unreadable, cut short, damaged or written by a newer version of the
// library leaves the document empty (no columns, no records, no export
// path; the alias map is kept) and is reported with the byte offset at
// which loading stopped.
//
// Neither throws: every archive fault and every failure of the system ends
// in false and a cause.
class VAXO057_API DocumentFile {
 public:
  enum Cause {
    None = 0,
    NotFound,  // load: there is no file under the path
    FolderMissing,  // save: the target's folder does not exist
    NotAFile,  // the path names a folder or another thing that is no file
    NoPermission,  // the system refuses access, or the target is read-only
    NoSpace,  // the disk or the user's quota is full, or the file too large
    IoError,  // any other failure of the system
    OutOfMemory,
    CutShort,  // load: the file ends before the document does
    Damaged,  // load: bytes that are no document, or bytes after its end
    NewerVersion,  // load: written by a newer version of the library
  };

  // The steps of Save and Load at which a test can make the system fail.
  enum Step { CreateTemp, WriteTemp, SyncTemp, ReplaceTarget, ReadFile };
  // Returns the system error number that the step should fail with, or 0
  // to let it run.
  using FaultHook = int (*)(Step nStep);

  explicit DocumentFile(const CString& path) : m_strPath(path) {}

  const CString& GetPath() const { return m_strPath; }

  // Writes doc to the path; false, with the target unchanged, on failure.
  // A symbolic link is written through; a replaced file keeps its
  // permission bits, a new one gets those of the process's file mask.
  bool Save(DataMgmt& doc);
  // Replaces doc's columns, records and export path by the file's; false,
  // with doc emptied, on failure.
  bool Load(DataMgmt& doc);

  // The outcome of the last Save or Load: None after success.
  Cause GetCause() const { return m_nCause; }
  // The system's error number behind the cause, 0 when the system reported
  // none.
  int GetSystemError() const { return m_nSystemError; }
  // Load: the bytes read before loading stopped, and the file's size.
  ULONGLONG GetOffset() const { return m_nOffset; }
  ULONGLONG GetFileSize() const { return m_nFileSize; }
  // One line for the user, naming the operation, the path and the cause;
  // empty after success.
  CString GetMessage() const;

  // For tests: makes the system fail at the steps the hook chooses, in
  // every DocumentFile of the process; null restores normal operation.
  static void SetFaultHook(FaultHook hook);

 private:
  void Begin(bool bSaving);
  bool Fail(Cause nCause);
  bool FailSystem(int nError);
  bool WriteAndReplace(const CString& target, const std::vector<BYTE>& bytes, unsigned nMode);
  bool ReadWhole(std::vector<BYTE>& bytes);
  bool LoadBytes(DataMgmt& doc, std::vector<BYTE> bytes);

  CString m_strPath;
  bool m_bSaving = false;
  Cause m_nCause = None;
  int m_nSystemError = 0;
  ULONGLONG m_nOffset = 0;
  ULONGLONG m_nFileSize = 0;
};

#endif  // DATAMGR_DOCUMENT_DOCUMENTFILE_H_
