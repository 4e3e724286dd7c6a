// The commands that write files: demo, export and import.
#include <stdlib.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <iostream>

#include "cli/CommandSupport.h"
#include "cli/Commands.h"
#include "cli/ProgressBar.h"
#include "io/ColumnLookup.h"
#include "io/CsvExport.h"
#include "io/CsvImport.h"
#include "io/DemoDocument.h"
#include "io/DocumentJson.h"
#include "io/TypeNames.h"

namespace commands {

namespace {

// Rejected values printed before the rest are only counted.
const size_t MAX_REJECTIONS_SHOWN = 20;

// The library's text and XML exports write a file; this runs one into a
// temporary file and hands back what it wrote.
template <typename Export>
std::string ExportThroughFile(Export exportTo) {
  std::string path = (std::filesystem::temp_directory_path() / "vaxo057-export-XXXXXX").string();
  const int fd = mkstemp(path.data());
  if (fd < 0) throw CommandError(EXIT_FAILED, "cannot make a temporary file for the export");
  close(fd);
  exportTo(CString(path));
  std::string text;
  try {
    text = ReadInput(path);
  } catch (const CommandError&) {
  }
  unlink(path.c_str());
  // The exports write at least a heading; an empty file was not written.
  if (text.empty()) throw CommandError(EXIT_FAILED, "the export could not be written to the temporary folder");
  return text;
}

// An output that is the input file itself would replace what is read.
void RefuseOverwriting(const std::string& output, const std::string& input) {
  std::error_code code;
  if (!output.empty() && std::filesystem::equivalent(output, input, code)) {
    throw CommandError(EXIT_USAGE, "-o " + Quoted(output) + " is the input file itself");
  }
}

std::string Extension(const std::string& path) {
  std::string extension = std::filesystem::path(path).extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char ch) { return static_cast<char>(std::tolower(ch)); });
  return extension.empty() ? extension : extension.substr(1);
}

void ReadCsv(const ImportOptions& options, const std::string& text, DataMgmt& doc) {
  CsvImport import;
  for (const std::string& typeArg : options.types) {
    const size_t nEquals = typeArg.rfind('=');
    DataType::Type nType = DataType::Text;
    if (nEquals == std::string::npos || !TypeNames::FindType(typeArg.substr(nEquals + 1).c_str(), nType)) {
      throw CommandError(EXIT_USAGE, "--type " + Quoted(typeArg) +
                                         ": expected a column name, \"=\" and a data type "
                                         "such as Number, Decimal, Date, YesNo, Text or ValueListSelect");
    }
    import.SetType(typeArg.substr(0, nEquals).c_str(), nType);
  }
  import.SetSkipBad(options.bSkipBad);
  CString error;
  bool bRead = false;
  {
    ProgressBar bar("Importing");
    bRead = import.Read(text, doc, error, bar.Callback());
  }
  const auto& rejections = import.GetRejections();
  for (size_t i = 0; i < rejections.size() && i < MAX_REJECTIONS_SHOWN; ++i) {
    const CsvImport::Rejection& rejection = rejections[i];
    std::cerr << options.input << ": row " << rejection.nRow << ", column " << rejection.nColumn;
    if (!rejection.columnName.IsEmpty()) std::cerr << " (" << rejection.columnName << ")";
    std::cerr << ": " << Quoted(rejection.text.GetStdString()) << " " << rejection.reason
              << (options.bSkipBad ? ", left out" : "") << '\n';
  }
  if (rejections.size() > MAX_REJECTIONS_SHOWN) {
    std::cerr << options.input << ": and " << rejections.size() - MAX_REJECTIONS_SHOWN << " more\n";
  }
  if (bRead) return;
  if (!rejections.empty()) {
    throw CommandError(EXIT_FAILED, options.input + ": " + error.GetStdString() +
                                        "; nothing written (--skip-bad leaves such values out)");
  }
  throw CommandError(EXIT_USAGE, options.input + ": " + error.GetStdString());
}

}  // namespace

int Demo(const std::string& file) {
  DataMgmt doc;
  DemoDocument::Fill(doc);
  SaveDocument(file, doc);
  std::cout << file << ": a book collection of " << doc.GetDataItemMgr().GetCount() << " items in "
            << doc.GetDataPropMgr().GetUserCount() << " columns\n";
  return EXIT_OK;
}

int Export(const ExportOptions& options) {
  RefuseOverwriting(options.output, options.file);
  DataMgmt doc;
  DataFilterMgr filters;
  LoadSelecting(options.file, options.selection, doc, filters);
  if (options.format == "json" && filters.GetCount() > 0) {
    throw CommandError(EXIT_USAGE, "--where and --any do not go with --format json, which holds the whole document");
  }
  std::string text;
  if (options.format == "text") {
    text = ExportThroughFile([&](const CString& path) { doc.ExportToTextFile(path, "\t", filters); });
  } else if (options.format == "xml") {
    const CString root = std::filesystem::path(options.file).stem().string();
    text = ExportThroughFile([&](const CString& path) { doc.ExportToXMLFile(path, root, filters); });
  } else {
    ProgressBar bar("Exporting");
    text = options.format == "csv" ? CsvExport::Write(doc, filters, bar.Callback())
                                   : DocumentJson::Write(doc, true, bar.Callback()) + "\n";
  }
  WriteOutput(options.output, text);
  return EXIT_OK;
}

int Import(const ImportOptions& options) {
  const std::string format = options.format.empty() ? Extension(options.input) : options.format;
  if (format != "csv" && format != "json") {
    throw CommandError(EXIT_USAGE, "cannot tell the format of " + Quoted(options.input) +
                                       " by its name: give --format csv or --format json");
  }
  RefuseOverwriting(options.output, options.input);
  const std::string text = ReadInput(options.input);
  DataMgmt doc;
  if (format == "csv") {
    ReadCsv(options, text, doc);
  } else {
    if (!options.types.empty() || options.bSkipBad) {
      throw CommandError(EXIT_USAGE, "--type and --skip-bad go with CSV input only");
    }
    CString error;
    ProgressBar bar("Importing");
    if (!DocumentJson::Read(text, doc, error, bar.Callback())) {
      throw CommandError(EXIT_USAGE, options.input + ": " + error.GetStdString());
    }
  }
  SaveDocument(options.output, doc);
  std::cout << options.output << ": " << doc.GetDataItemMgr().GetCount() << " items in "
            << ColumnLookup::GetAll(doc).size() << " columns from " << options.input << '\n';
  return EXIT_OK;
}

}  // namespace commands
