#ifndef UTILITY_INTERNETUTILS_H_
#define UTILITY_INTERNETUTILS_H_

#include "framework/CString.h"
#include "utility/UtilityExport.h"

// Checks of e-mail and web addresses written by hand. Stateless; it holds
// nothing, asks no network and never throws. Scheme and "www." tests ignore
// letter case; blanks around a text are ignored.
class VAXO009_API InternetUtils {
 public:
  // local@domain: one "@"; the local part made of ASCII letters, digits and
  // !#$%&'*+/=?^_`{|}~.- with no leading, trailing or doubled "."; the domain
  // a host name of at least two labels.
  static bool IsValidEmailAddress(const CString& text);
  // An http://, https:// or ftp:// address of a host name (labels of ASCII
  // letters, digits and "-", not starting or ending with "-"), an optional
  // port and an optional path without blanks; or the same without scheme
  // starting with "www.", which gains "http://". When valid, text is
  // rewritten to that form, trimmed; when not, it is left as it is.
  static bool IsValidWebSiteAddress(CString& text);
  // Whether text names something on the internet rather than a local file:
  // it starts with a URL scheme of at least two characters followed by
  // "://" (http://, https://, ftp://, ...) or with "www.".
  static bool IsInternetFile(const CString& text);
};

#endif  // UTILITY_INTERNETUTILS_H_
