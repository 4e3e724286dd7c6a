// The tool vaxo057 run on temporary files: bad usage, files that are
// missing, damaged or cut short, a filter naming an unknown column, a
// filtered and sorted view, a search, the JSON round trip of a file, a
// usage count tampered with in the file's JSON form and a CSV value its
// column rejects, each with the output and exit status expected.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include "DataMgr/types/LibraryVersion.h"
#include "tests/support/TempFolder.h"

namespace {

struct Outcome {
  int nExit;
  std::string out;
  std::string err;
};

// Whether text matches pattern, in which "*" stands for any run of
// characters.
bool Matches(const std::string& text, const std::string& pattern) {
  const size_t nStar = pattern.find('*');
  if (nStar == std::string::npos) return text == pattern;
  const std::string head = pattern.substr(0, nStar);
  if (text.compare(0, head.size(), head) != 0) return false;
  for (size_t nAt = head.size(); nAt <= text.size(); ++nAt) {
    if (Matches(text.substr(nAt), pattern.substr(nStar + 1))) return true;
  }
  return false;
}

class CommandTest : public ::testing::Test {
 protected:
  // books.vxo, the demo collection; cut.vxo, its first 100 bytes;
  // damaged.vxo, the collection with bytes after its end;
  // small.csv and small.vxo, four books imported with Genre a select list.
  static void SetUpTestSuite() {
    s_pFolder = std::make_unique<test_support::TempFolder>();
    ASSERT_EQ(Run("demo books.vxo").nExit, 0);
    const std::string books = test_support::ReadRaw(*s_pFolder / "books.vxo");
    test_support::WriteRaw(*s_pFolder / "cut.vxo", books.substr(0, 100));
    test_support::WriteRaw(*s_pFolder / "damaged.vxo", books + "??");
    test_support::WriteRaw(*s_pFolder / "small.csv",
                           "Title,Year,Genre,Read\n"
                           "Dune,1965,Science Fiction,yes\n"
                           "The Hobbit,1937,Fantasy,yes\n"
                           "Neuromancer,1984,Science Fiction,no\n"
                           "\"Foundation, Book One\",1951,Science Fiction,no\n");
    ASSERT_EQ(Run("import small.csv -o small.vxo --type Genre=ValueListSelect").nExit, 0);
  }
  static void TearDownTestSuite() { s_pFolder.reset(); }

  // The tool in the test folder with args (as the shell reads them), the
  // C locale and no COLUMNS unless environment sets it.
  static Outcome Run(const std::string& args, const std::string& environment = "") {
    const std::string command = "cd '" + s_pFolder->Path() + "' && env -u COLUMNS LC_ALL=C " + environment + " '" +
                                VAXO057_TOOL + "' " + args + " >stdout.txt 2>stderr.txt";
    const int nStatus = std::system(command.c_str());
    Outcome outcome{WIFEXITED(nStatus) ? WEXITSTATUS(nStatus) : -1, test_support::ReadRaw(*s_pFolder / "stdout.txt"),
                    test_support::ReadRaw(*s_pFolder / "stderr.txt")};
    return outcome;
  }

  static bool Exists(const std::string& name) { return std::filesystem::exists(*s_pFolder / name); }

  static std::unique_ptr<test_support::TempFolder> s_pFolder;
};

std::unique_ptr<test_support::TempFolder> CommandTest::s_pFolder;

TEST_F(CommandTest, CommandsPrintWhatIsExpected) {
  const struct {
    const char* pszName;
    std::string environment;
    std::string args;
    int nExit;
    std::string out;  // "*" stands for any text
    std::string err;
  } rows[] = {
      {"version", "", "--version", 0, std::string("vaxo057 ") + LibraryVersion::GetText() + "\n", ""},
      {"help of a command", "", "find --help", 0, "*Usage: vaxo057 find *", ""},
      {"no command", "", "", 2, "", "vaxo057: A subcommand is required (see --help)\n"},
      {"unknown command", "", "frobnicate small.vxo", 2, "", "vaxo057: no command \"frobnicate\" (see --help)\n"},
      {"no file", "", "show", 2, "", "vaxo057: FILE is required (see --help)\n"},
      {"unknown format", "", "show small.vxo --format xml", 2, "",
       "vaxo057: --format: xml not in {table,csv,json} (see --help)\n"},
      {"unknown column in a filter", "", "show small.vxo --where 'Colour is red'", 2, "",
       "vaxo057: small.vxo: \"Colour is red\": no column \"Colour\"\n"},
      {"unknown sort column", "", "show small.vxo --sort Colour:desc", 2, "",
       "vaxo057: small.vxo: --sort \"Colour:desc\": no column \"Colour\"\n"},
      {"output over the input", "", "export small.vxo --format json -o ./small.vxo", 2, "",
       "vaxo057: -o \"./small.vxo\" is the input file itself\n"},
      {"missing file", "", "info nothing.vxo", 2, "",
       "vaxo057: cannot load \"nothing.vxo\": the file does not exist (No such file or directory)\n"},
      {"cut-short file", "", "export cut.vxo --format csv -o out.csv", 2, "",
       "vaxo057: cannot load \"cut.vxo\": the file ends before the document does at byte * of 100\n"},
      {"damaged file", "", "check damaged.vxo", 2, "",
       "vaxo057: cannot load \"damaged.vxo\": the file is damaged or holds no document at byte * of *\n"},
      {"filtered and sorted", "",
       "show small.vxo --where 'Year > 1950' --where 'Genre is Science Fiction' --sort Year:desc --format csv", 0,
       "Title,Year,Genre,Read\r\nNeuromancer,1984,Science Fiction,N\r\nDune,1965,Science Fiction,Y\r\n"
       "\"Foundation, Book One\",1951,Science Fiction,N\r\n",
       ""},
      {"optional conditions", "",
       "show small.vxo --any 'Title contains hobbit' --any 'Year > 1980' --columns Title --format csv", 0,
       "Title\r\nThe Hobbit\r\nNeuromancer\r\n", ""},
      {"table fitted", "COLUMNS=24", "show small.vxo --columns Title,Year", 0,
       "Title               Year\n------------------  ----\nDune                1965\nThe Hobbit          1937\n"
       "Neuromancer         1984\nFoundation, Boo...  1951\n4 items\n",
       ""},
      {"limited view as JSON", "", "show small.vxo --columns Title --limit 1 --format json", 0,
       "{\n  \"passing\": 4,\n  \"rows\": [\n    {\n      \"item\": 0,\n      \"values\": {\n        \"Title\": "
       "\"Dune\"\n      }\n    }\n  ]\n}\n",
       ""},
      {"search", "", "find small.vxo book", 0, "item 3, \"Title\", at 12: Foundation, [Book] One\n1 hit\n", ""},
      {"clean document", "", "check books.vxo", 0, "books.vxo: no problems found\n", ""},
      {"imported select list", "", "check small.vxo", 0, "small.vxo: no problems found\n", ""},
  };
  for (const auto& row : rows) {
    const Outcome outcome = Run(row.args, row.environment);
    EXPECT_EQ(outcome.nExit, row.nExit) << row.pszName;
    EXPECT_TRUE(Matches(outcome.out, row.out)) << row.pszName << ":\n" << outcome.out;
    EXPECT_TRUE(Matches(outcome.err, row.err)) << row.pszName << ":\n" << outcome.err;
  }
  EXPECT_FALSE(Exists("out.csv"));
}

TEST_F(CommandTest, JsonOfAFileImportsToTheSameFile) {
  ASSERT_EQ(Run("export books.vxo --format json -o books.json").nExit, 0);
  const Outcome outcome = Run("import books.json -o back.vxo");
  EXPECT_EQ(outcome.nExit, 0) << outcome.err;
  EXPECT_EQ(outcome.out, "back.vxo: 200 items in 16 columns from books.json\n");
  EXPECT_TRUE(test_support::ReadRaw(*s_pFolder / "back.vxo") == test_support::ReadRaw(*s_pFolder / "books.vxo"));
}

TEST_F(CommandTest, CheckReportsATamperedUsageCount) {
  ASSERT_EQ(Run("export books.vxo --format json -o books.json").nExit, 0);
  std::string json = test_support::ReadRaw(*s_pFolder / "books.json");
  // The first entry of the document: Frank Herbert, the author of one book.
  const size_t nAt = json.find("\"usage\": 1\n");
  ASSERT_NE(nAt, std::string::npos);
  json.replace(nAt, 10, "\"usage\": 999");
  test_support::WriteRaw(*s_pFolder / "tampered.json", json);
  ASSERT_EQ(Run("import tampered.json -o tampered.vxo").nExit, 0);
  const Outcome outcome = Run("check tampered.vxo");
  EXPECT_EQ(outcome.nExit, 1);
  EXPECT_EQ(outcome.out,
            "the column \"Author\": entry 0 (\"Frank Herbert\") has the usage count 999, but 1 cell names it\n"
            "tampered.vxo: 1 problem found\n");
}

TEST_F(CommandTest, ARejectedCsvValueWritesNothingUnlessSkipped) {
  test_support::WriteRaw(*s_pFolder / "bad.csv", "Title,Bought\nDune,2011-05-01\nEmma,soon\n");
  Outcome outcome = Run("import bad.csv -o bad.vxo --type Bought=Date");
  EXPECT_EQ(outcome.nExit, 1);
  EXPECT_EQ(outcome.err,
            "bad.csv: row 3, column 2 (Bought): \"soon\" not accepted as Date\n"
            "vaxo057: bad.csv: 1 value was rejected; nothing written (--skip-bad leaves such values out)\n");
  EXPECT_FALSE(Exists("bad.vxo"));
  outcome = Run("import bad.csv -o bad.vxo --type Bought=Date --skip-bad");
  EXPECT_EQ(outcome.nExit, 0);
  EXPECT_EQ(outcome.err, "bad.csv: row 3, column 2 (Bought): \"soon\" not accepted as Date, left out\n");
  EXPECT_TRUE(Exists("bad.vxo"));
}

}  // namespace
