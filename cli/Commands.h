#ifndef CLI_COMMANDS_H_
#define CLI_COMMANDS_H_

#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

// The commands of the tool, each given its parsed arguments and returning
// the exit status: 0 done, 1 the work found problems or failed, 2 bad
// usage or input that cannot be read. A command that fails throws
// CommandError after writing nothing.
namespace commands {

const int EXIT_OK = 0;
const int EXIT_FAILED = 1;
const int EXIT_USAGE = 2;

// A failure the tool reports as one line on standard error.
class CommandError : public std::runtime_error {
 public:
  CommandError(int nExitStatus, const std::string& message) : std::runtime_error(message), m_nExitStatus(nExitStatus) {}
  int GetExitStatus() const { return m_nExitStatus; }

 private:
  int m_nExitStatus;
};

// Conditions and output shared by show and export.
struct Selection {
  std::vector<std::string> required;  // --where
  std::vector<std::string> optional;  // --any
};

struct ShowOptions {
  std::string file;
  std::vector<std::string> columns;
  Selection selection;
  std::vector<std::string> sortKeys;
  size_t nLimit = 0;
  bool bSubItems = false;
  std::string format = "table";
};

struct FindOptions {
  std::string file;
  std::string text;
  bool bMatchCase = false;
  bool bWholeWord = false;
  bool bAllWords = false;
  bool bJson = false;
};

struct ExportOptions {
  std::string file;
  std::string format;
  std::string output;  // empty: standard output
  Selection selection;
};

struct ImportOptions {
  std::string input;
  std::string output;
  std::string format;              // empty: by the input's extension
  std::vector<std::string> types;  // Name=Type
  bool bSkipBad = false;
};

int Demo(const std::string& file);
int Info(const std::string& file, bool bJson);
int Show(const ShowOptions& options);
int Find(const FindOptions& options);
int Export(const ExportOptions& options);
int Import(const ImportOptions& options);
int Check(const std::string& file, bool bJson);

}  // namespace commands

#endif  // CLI_COMMANDS_H_
