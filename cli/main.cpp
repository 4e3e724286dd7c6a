// vaxo057: inspect, convert and check the documents of the library from
// the command line. Parses the arguments and hands each command to
// Commands.h; the work itself is done by vaxo057io.
#include <CLI/CLI.hpp>
#include <iostream>
#include <string>

#include "DataMgr/types/LibraryVersion.h"
#include "cli/Commands.h"

namespace {

const char DESCRIPTION[] =
    "Inspect, convert and check vaxo057 documents. Exit status: 0 done, 1 problems found or the work failed, "
    "2 bad usage or a file that cannot be read.";

void AddSelection(CLI::App& command, commands::Selection& selection) {
  command.add_option("--where", selection.required, "A condition every item must pass, e.g. \"Year > 1960\"")
      ->take_all()
      ->allow_extra_args(false);
  command.add_option("--any", selection.optional, "A condition of which at least one must pass")
      ->take_all()
      ->allow_extra_args(false);
}

CLI::Option* AddFile(CLI::App& command, std::string& file) {
  return command.add_option("FILE", file, "The document")->required();
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App app(DESCRIPTION, "vaxo057");
  app.set_version_flag("--version", std::string("vaxo057 ") + LibraryVersion::GetText());
  app.require_subcommand(1);

  std::string file;
  bool bJson = false;
  CLI::App& demo = *app.add_subcommand("demo", "Write a sample book collection to FILE");
  AddFile(demo, file);

  CLI::App& info = *app.add_subcommand("info", "Archive versions, columns, item and sub-item counts");
  AddFile(info, file);
  info.add_flag("--json", bJson, "Print JSON");

  commands::ShowOptions show;
  CLI::App& showCommand = *app.add_subcommand("show", "The items as a table, filtered and sorted");
  AddFile(showCommand, show.file);
  showCommand.add_option("--columns", show.columns, "The columns to show, comma-separated")->delimiter(',');
  AddSelection(showCommand, show.selection);
  showCommand
      .add_option("--sort", show.sortKeys,
                  "A sort key: COLUMN[:desc][:case]; repeat for more keys (dates ascend latest first)")
      ->take_all()
      ->allow_extra_args(false);
  showCommand.add_option("--limit", show.nLimit, "Show at most N items");
  showCommand.add_flag("--sub-items", show.bSubItems, "Show each item's sub-items under it");
  showCommand.add_option("--format", show.format, "table, csv or json")->check(CLI::IsMember({"table", "csv", "json"}));

  commands::FindOptions find;
  CLI::App& findCommand = *app.add_subcommand("find", "Search every shown value for TEXT");
  AddFile(findCommand, find.file);
  findCommand.add_option("TEXT", find.text, "What to look for")->required();
  findCommand.add_flag("--match-case", find.bMatchCase, "Tell upper and lower case apart");
  findCommand.add_flag("--whole-word", find.bWholeWord, "Match whole words only");
  findCommand.add_flag("--all-words", find.bAllWords, "Every word of TEXT must occur (\"a phrase\" counts as one)");
  findCommand.add_flag("--json", find.bJson, "Print JSON");

  commands::ExportOptions exportOptions;
  CLI::App& exportCommand = *app.add_subcommand("export", "Write the document as text, XML, CSV or JSON");
  AddFile(exportCommand, exportOptions.file);
  exportCommand.add_option("--format", exportOptions.format, "text, xml, csv or json")
      ->required()
      ->check(CLI::IsMember({"text", "xml", "csv", "json"}));
  exportCommand.add_option("-o,--output", exportOptions.output, "The file to write (default: standard output)");
  AddSelection(exportCommand, exportOptions.selection);

  commands::ImportOptions import;
  CLI::App& importCommand = *app.add_subcommand("import", "Make a document from CSV or from the JSON of export");
  importCommand.add_option("IN", import.input, "The CSV or JSON file")->required();
  importCommand.add_option("-o,--output", import.output, "The document to write")->required();
  importCommand.add_option("--format", import.format, "csv or json (default: by the name of IN)")
      ->check(CLI::IsMember({"csv", "json"}));
  importCommand.add_option("--type", import.types, "A CSV column's type: Name=Type (default: inferred)")
      ->take_all()
      ->allow_extra_args(false);
  importCommand.add_flag("--skip-bad", import.bSkipBad, "Leave out values their column rejects instead of failing");

  CLI::App& check = *app.add_subcommand("check", "Check usage counts, entries and IDs; exit status 1 for problems");
  AddFile(check, file);
  check.add_flag("--json", bJson, "Print JSON");

  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& e) {
    if (e.get_exit_code() == 0) return app.exit(e);
    const bool bUnknownCommand = app.get_subcommands().empty() && argc > 1 && argv[1][0] != '-';
    std::cerr << "vaxo057: "
              << (bUnknownCommand ? "no command \"" + std::string(argv[1]) + "\"" : std::string(e.what()))
              << " (see --help)\n";
    return commands::EXIT_USAGE;
  }
  try {
    if (demo) return commands::Demo(file);
    if (info) return commands::Info(file, bJson);
    if (showCommand) return commands::Show(show);
    if (findCommand) return commands::Find(find);
    if (exportCommand) return commands::Export(exportOptions);
    if (importCommand) return commands::Import(import);
    return commands::Check(file, bJson);
  } catch (const commands::CommandError& e) {
    std::cerr << "vaxo057: " << e.what() << '\n';
    return e.GetExitStatus();
  } catch (const std::bad_alloc&) {
    std::cerr << "vaxo057: not enough memory\n";
    return commands::EXIT_FAILED;
  }
}
