#ifndef TESTS_SUPPORT_TEXTARRAYSUPPORT_H_
#define TESTS_SUPPORT_TEXTARRAYSUPPORT_H_

// Building a TextArray from literals and reading it back as standard
// strings, so that tests compare whole arrays in one expectation.

#include <string>
#include <vector>

#include "utility/TextArray.h"

namespace test_support {

inline std::vector<std::string> Elements(const TextArray& array) {
  std::vector<std::string> elements;
  for (const CString& text : array) elements.push_back(text.GetStdString());
  return elements;
}

inline TextArray MakeTextArray(const std::vector<const char*>& texts) {
  TextArray array;
  for (const char* pszText : texts) array.Add(pszText);
  return array;
}

}  // namespace test_support

#endif  // TESTS_SUPPORT_TEXTARRAYSUPPORT_H_
