#include "cli/CommandSupport.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

#include "DataMgr/document/DocumentFile.h"
#include "io/ConditionParser.h"
#include "io/OutputFile.h"

namespace commands {

void LoadDocument(const std::string& path, DataMgmt& doc) {
  DocumentFile file(path);
  if (!file.Load(doc)) throw CommandError(EXIT_USAGE, file.GetMessage().GetStdString());
}

void SaveDocument(const std::string& path, DataMgmt& doc) {
  DocumentFile file(path);
  if (!file.Save(doc)) throw CommandError(EXIT_FAILED, file.GetMessage().GetStdString());
}

std::string ReadInput(const std::string& path) {
  std::error_code code;
  if (!std::filesystem::exists(path, code))
    throw CommandError(EXIT_USAGE, "cannot read " + Quoted(path) + ": the file does not exist");
  if (!std::filesystem::is_regular_file(path, code))
    throw CommandError(EXIT_USAGE, "cannot read " + Quoted(path) + ": not a file");
  errno = 0;
  std::ifstream file(path, std::ios::binary);
  std::string text;
  if (file) text.assign(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
  if (!file || file.bad()) {
    throw CommandError(EXIT_USAGE, "cannot read " + Quoted(path) + ": " + std::strerror(errno != 0 ? errno : EIO));
  }
  return text;
}

void WriteOutput(const std::string& path, const std::string& text) {
  if (path.empty()) {
    std::cout << text;
    if (!text.empty() && text.back() != '\n') std::cout << '\n';
    return;
  }
  CString error;
  if (!OutputFile::Write(path, text, error)) throw CommandError(EXIT_FAILED, error.GetStdString());
}

void LoadSelecting(const std::string& file, const Selection& selection, DataMgmt& doc, DataFilterMgr& filters) {
  LoadDocument(file, doc);
  const std::vector<CString> required(selection.required.begin(), selection.required.end());
  const std::vector<CString> optional(selection.optional.begin(), selection.optional.end());
  CString error;
  if (!ConditionParser(doc).AddTo(filters, required, optional, error)) {
    throw CommandError(EXIT_USAGE, file + ": " + error.GetStdString());
  }
}

void PrintJson(const Json& json) { std::cout << json.dump(2, ' ', false, Json::error_handler_t::replace) << '\n'; }

std::string Quoted(const std::string& text) { return "\"" + text + "\""; }

}  // namespace commands
