#include "utility/InternetUtils.h"

#include "utility/StringUtils.h"
#include "utility/TextRules.h"

using text_rules::IsAsciiAlnum;
using text_rules::IsAsciiDigit;

namespace {

const char* const WEB_SCHEMES[] = {"http://", "https://", "ftp://"};
const char WWW_START[] = "www.";
const char DEFAULT_SCHEME[] = "http://";
const char EMAIL_SYMBOLS[] = "!#$%&'*+/=?^_`{|}~.-";
const int MAX_LABEL = 63;
const int MAX_HOST = 253;
const int MAX_LOCAL_PART = 64;
const int MAX_PORT_DIGITS = 5;
const long MAX_PORT = 65535;

CString Trimmed(const CString& text) {
  CString trimmed = text;
  StringUtils::Trim(trimmed);
  return trimmed;
}

bool IsValidLabel(const CString& label) {
  if (label.IsEmpty() || label.GetLength() > MAX_LABEL) return false;
  if (label[0] == '-' || label[label.GetLength() - 1] == '-') return false;
  for (int i = 0; i < label.GetLength(); ++i) {
    if (!IsAsciiAlnum(label[i]) && label[i] != '-') return false;
  }
  return true;
}

bool IsValidHostName(const CString& host, int nMinLabels) {
  if (host.IsEmpty() || host.GetLength() > MAX_HOST) return false;
  int nLabels = 0;
  int nStart = 0;
  for (int i = 0; i <= host.GetLength(); ++i) {
    if (i < host.GetLength() && host[i] != '.') continue;
    if (!IsValidLabel(host.Mid(nStart, i - nStart))) return false;
    ++nLabels;
    nStart = i + 1;
  }
  return nLabels >= nMinLabels;
}

bool IsValidLocalPart(const CString& local) {
  if (local.IsEmpty() || local.GetLength() > MAX_LOCAL_PART) return false;
  if (local[0] == '.' || local[local.GetLength() - 1] == '.' || local.Find("..") >= 0) return false;
  for (int i = 0; i < local.GetLength(); ++i) {
    if (!IsAsciiAlnum(local[i]) && CString(EMAIL_SYMBOLS).Find(local[i]) < 0) return false;
  }
  return true;
}

bool IsValidPort(const CString& port) {
  if (port.IsEmpty() || port.GetLength() > MAX_PORT_DIGITS) return false;
  long nPort = 0;
  for (int i = 0; i < port.GetLength(); ++i) {
    if (!IsAsciiDigit(port[i])) return false;
    nPort = nPort * 10 + (port[i] - '0');
  }
  return nPort <= MAX_PORT;
}

bool HasNoBlankOrControl(const CString& text) {
  for (int i = 0; i < text.GetLength(); ++i) {
    const auto ch = static_cast<unsigned char>(text[i]);
    if (ch <= ' ' || ch == 0x7F) return false;
  }
  return true;
}

// [user@]host[:port], then a path, query or fragment without blanks.
bool IsValidWebRest(const CString& rest) {
  int nAuthorityEnd = rest.FindOneOf("/?#");
  if (nAuthorityEnd < 0) nAuthorityEnd = rest.GetLength();
  CString authority = rest.Left(nAuthorityEnd);
  const int nAt = authority.ReverseFind('@');
  if (nAt == 0) return false;
  authority = authority.Mid(nAt + 1);
  const int nColon = authority.Find(':');
  if (nColon >= 0 && !IsValidPort(authority.Mid(nColon + 1))) return false;
  const CString host = nColon >= 0 ? authority.Left(nColon) : authority;
  return IsValidHostName(host, 1) && HasNoBlankOrControl(rest);
}

bool IsSchemeChar(char ch) { return IsAsciiAlnum(ch) || ch == '+' || ch == '.' || ch == '-'; }

}  // namespace

bool InternetUtils::IsValidEmailAddress(const CString& text) {
  const CString address = Trimmed(text);
  const int nAt = address.Find('@');
  if (nAt < 0 || nAt != address.ReverseFind('@')) return false;
  return IsValidLocalPart(address.Left(nAt)) && IsValidHostName(address.Mid(nAt + 1), 2);
}

bool InternetUtils::IsValidWebSiteAddress(CString& text) {
  const CString address = Trimmed(text);
  for (const char* pszScheme : WEB_SCHEMES) {
    if (!StringUtils::MatchFirstChars(address, pszScheme, false)) continue;
    if (!IsValidWebRest(address.Mid(CString(pszScheme).GetLength()))) return false;
    text = address;
    return true;
  }
  if (!StringUtils::MatchFirstChars(address, WWW_START, false) || !IsValidWebRest(address)) return false;
  text = DEFAULT_SCHEME + address;
  return true;
}

bool InternetUtils::IsInternetFile(const CString& text) {
  const CString address = Trimmed(text);
  if (StringUtils::MatchFirstChars(address, WWW_START, false)) return true;
  if (!text_rules::IsAsciiLetter(address[0])) return false;
  int nEnd = 1;
  while (IsSchemeChar(address[nEnd])) ++nEnd;
  return nEnd >= 2 && address.Mid(nEnd, 3) == "://";
}
