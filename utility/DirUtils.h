#ifndef UTILITY_DIRUTILS_H_
#define UTILITY_DIRUTILS_H_

#include "framework/CString.h"
#include "utility/UtilityExport.h"

// Folder tests and folder path splitting. Stateless; it holds nothing and
// never throws.
//
// Paths in documents may have been written on another system, so both "/"
// and "\\" separate folders when a path is split, and a drive prefix such as
// "C:" belongs to the folder part. The tests that ask the file system pass
// the text to it unchanged.
class VAXO009_API DirUtils {
 public:
  // True when path names an existing folder. With bAcceptByForm also true
  // for a text that ends in a separator, whether or not such a folder exists.
  static bool IsDir(const CString& path, bool bAcceptByForm);
  // True when path names an existing folder; false for an empty text.
  static bool DoesDirExist(const CString& path);
  // The folder part of a file path with its trailing separator ("C:\\a\\"
  // of "C:\\a\\b.txt", "C:" of "C:b.txt"); empty when the path has none.
  static CString ParsePathFromFile(const CString& path);
  // The folder that holds dir, with its trailing separator: "/a/" for "/a/b"
  // and "/a/b/". Empty for a root ("/", "C:\\", "C:") and for a name without
  // a folder, so a loop that climbs with it always ends.
  static CString ParseParentDir(const CString& dir);
  // path without its trailing separators; a root ("/", "C:\\") stays as it
  // is.
  static CString RemoveTrailingSlash(const CString& path);
};

#endif  // UTILITY_DIRUTILS_H_
