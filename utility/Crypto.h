#ifndef UTILITY_CRYPTO_H_
#define UTILITY_CRYPTO_H_

#include "framework/CArchive.h"
#include "framework/CString.h"
#include "utility/UtilityExport.h"

// The enciphered text form: byte i of the text (from 0) is XORed with
// (0xA5 + 31 * i) mod 256 and the result is archived in the plain text form.
// It keeps texts from being read at a glance in a file; it is an
// obfuscation, not security, and anyone can reverse it.
class VAXO009_API Crypto {
 public:
  // Enciphering and deciphering are the same operation.
  static CString Encipher(const CString& text);
  // Stores or loads one text in the enciphered form.
  static void SerializeEncrypted(CArchive& ar, CString& text);
  // Loads one enciphered text.
  static void DeserializeEncrypted(CArchive& ar, CString& text);
};

#endif  // UTILITY_CRYPTO_H_
