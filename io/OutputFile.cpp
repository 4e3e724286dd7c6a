#include "io/OutputFile.h"

#include <cerrno>
#include <cstring>

#include "utility/FileUtils.h"
#include "utility/TextArray.h"

bool OutputFile::Write(const CString& path, const std::string& text, CString& error) {
  // The lines between line feeds, each written with a line feed after it:
  // the bytes come out as they were, carriage returns included.
  TextArray lines;
  size_t nStart = 0;
  while (nStart < text.size()) {
    size_t nEnd = text.find('\n', nStart);
    if (nEnd == std::string::npos) nEnd = text.size();
    lines.Add(CString(text.substr(nStart, nEnd - nStart)));
    nStart = nEnd + 1;
  }
  errno = 0;
  if (FileUtils::WriteFileContent(path, lines, false, false)) return true;
  error = "cannot write \"" + path + "\"";
  if (errno != 0) error += CString(": ") + std::strerror(errno);
  return false;
}
