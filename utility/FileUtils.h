#ifndef UTILITY_FILEUTILS_H_
#define UTILITY_FILEUTILS_H_

#include "framework/CString.h"
#include "utility/TextArray.h"
#include "utility/UtilityExport.h"

// File tests, file name splitting, file lists, reading and writing text
// files, moving and renaming files. Stateless; it holds nothing and never
// throws: a failure gives false or an empty result.
//
// Path splitting follows DirUtils: "/" and "\\" both separate, a drive
// prefix belongs to the folder. The file system gets the text unchanged.
// A file written here is never left half-written: the new content goes to
// a temporary file in the target's folder, which is flushed to disk and then
// renamed over the target, so on any failure the old file stays as it was.
class VAXO009_API FileUtils {
 public:
  // True when path names an existing regular file (links followed).
  static bool DoesFileExist(const CString& path);
  // Whether path is a file. bMustExist true: it must exist as a regular
  // file; false: it only has to have the form of one (a file name after its
  // folder part, and not an existing folder). bAcceptInternet true: an
  // internet address (InternetUtils::IsInternetFile) counts as a file and is
  // not looked for on disk; false: it never counts. Blank texts are not
  // files.
  static bool IsFile(const CString& path, bool bMustExist, bool bAcceptInternet);
  // The file name after the folder part; bWithExtension false drops the
  // last "." and what follows it, unless the name starts with that ".".
  static CString ParseFileNameFromPath(const CString& path, bool bWithExtension);

  // Reads a text file into lines, one element per line without its line
  // end; LF, CR LF and CR all end a line, and a line end at the very end
  // adds no empty line. bAppend false empties lines first, true appends.
  // On failure lines are left alone, the result is false and *pstrError (when
  // not null) receives the system's reason; on success it is emptied.
  static bool ReadFileContent(const CString& path, TextArray& lines, bool bAppend, CString* pstrError);
  // Writes every element of lines followed by a line end: LF, or CR LF when
  // bCRLF. bAppend true keeps an existing file's bytes and adds the lines
  // after them; false replaces the file. Bytes are written as they are (the
  // host's code page, no byte order mark). A symbolic link is written
  // through; a new file gets the usual permissions, a replaced file keeps its
  // own. False, with the old file untouched, when anything fails.
  static bool WriteFileContent(const CString& path, const TextArray& lines, bool bAppend, bool bCRLF);

  // The regular files directly in dir (no subfolders), in the natural order
  // of TextArray::DoCompareFiles ignoring case; bFullPaths true gives each as
  // dir joined with the name, false the name alone. Replaces the contents of
  // files; false, leaving files alone, when dir cannot be read.
  static bool GetFileList(const CString& dir, TextArray& files, bool bFullPaths);
  // Whether the file name of path matches pattern (StringUtils::MatchSpec:
  // "*" any run, "?" one character, the whole name).
  static bool MatchFileSpec(const CString& path, const CString& pattern, bool bCaseSensitive);

  // Moves the regular file source to target; a target that is an existing
  // folder or ends in a separator receives the file under its own name. An
  // existing target file is replaced only when bOverwrite (a folder never
  // is). Across file systems the file is copied safely and the source then
  // removed; if that removal fails both stay and the result is false.
  static bool MoveFile(const CString& source, const CString& target, bool bOverwrite);
  // Gives the file at path the name newName in the same folder; newName must
  // be a plain name without separators. Overwriting as for MoveFile.
  static bool RenameFile(const CString& path, const CString& newName, bool bOverwrite);
};

#endif  // UTILITY_FILEUTILS_H_
