#ifndef CLI_COMMANDSUPPORT_H_
#define CLI_COMMANDSUPPORT_H_

// What the commands share: loading and saving documents, reading and
// writing the other files, turning --where and --any into a filter set.
// Each throws commands::CommandError with the exit status and the line to
// print when it fails.

#include <nlohmann/json.hpp>
#include <string>

#include "DataMgr/document/DataMgmt.h"
#include "DataMgr/filter/DataFilterMgr.h"
#include "cli/Commands.h"

namespace commands {

// Output for scripts; texts that are not UTF-8 have their odd bytes
// replaced.
using Json = nlohmann::ordered_json;

// Exit status 2 (input that cannot be read) with DocumentFile's line.
void LoadDocument(const std::string& path, DataMgmt& doc);
// Exit status 1 with DocumentFile's line.
void SaveDocument(const std::string& path, DataMgmt& doc);
// The whole file; exit status 2 when it cannot be read.
std::string ReadInput(const std::string& path);
// text to path safely, or to standard output when path is empty; exit
// status 1 when the file cannot be written.
void WriteOutput(const std::string& path, const std::string& text);
// Loads the document and makes the selection's conditions on its columns
// into filters; exit status 2 naming file and the expression that cannot
// be read.
void LoadSelecting(const std::string& file, const Selection& selection, DataMgmt& doc, DataFilterMgr& filters);
// The JSON on standard output, indented, with a line break after it.
void PrintJson(const Json& json);

std::string Quoted(const std::string& text);

}  // namespace commands

#endif  // CLI_COMMANDSUPPORT_H_
