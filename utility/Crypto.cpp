#include "utility/Crypto.h"

#include <string>

namespace {

const unsigned KEY_START = 0xA5;
const unsigned KEY_STEP = 31;

}  // namespace

CString Crypto::Encipher(const CString& text) {
  std::string bytes = text.GetStdString();
  for (size_t i = 0; i < bytes.size(); ++i) {
    const auto nKey = static_cast<unsigned char>((KEY_START + KEY_STEP * i) & 0xFF);
    bytes[i] = static_cast<char>(static_cast<unsigned char>(bytes[i]) ^ nKey);
  }
  return CString(std::move(bytes));
}

void Crypto::SerializeEncrypted(CArchive& ar, CString& text) {
  if (ar.IsStoring()) {
    ar << Encipher(text);
  } else {
    DeserializeEncrypted(ar, text);
  }
}

void Crypto::DeserializeEncrypted(CArchive& ar, CString& text) {
  CString enciphered;
  ar >> enciphered;
  text = Encipher(enciphered);
}
