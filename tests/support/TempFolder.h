#ifndef TESTS_SUPPORT_TEMPFOLDER_H_
#define TESTS_SUPPORT_TEMPFOLDER_H_

// A fresh folder under the system's temporary folder for one test, removed
// with everything in it when the test ends; plus small file helpers that do
// not go through the code under test.

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>

namespace test_support {

class TempFolder {
 public:
  TempFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "vaxo057-test-XXXXXX").string();
    if (mkdtemp(pattern.data()) != nullptr) m_path = pattern;
    EXPECT_FALSE(m_path.empty()) << "no temporary folder";
  }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;
  ~TempFolder() {
    std::error_code error;
    if (!m_path.empty()) std::filesystem::remove_all(m_path, error);
  }

  // The folder itself, without a trailing separator.
  const std::string& Path() const { return m_path; }
  // A path inside the folder.
  std::string operator/(const std::string& name) const { return m_path + "/" + name; }

 private:
  std::string m_path;
};

inline void WriteRaw(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

inline std::string ReadRaw(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

}  // namespace test_support

#endif  // TESTS_SUPPORT_TEMPFOLDER_H_
