#ifndef CLI_TABLEPRINTER_H_
#define CLI_TABLEPRINTER_H_

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

// A table of texts printed in aligned columns: a heading, a rule, then the
// rows. Columns are as wide as their widest text, two blanks apart; when
// that is wider than the space given, the widest columns are narrowed and
// their longer texts cut, ending in "...". Line breaks in texts print as
// blanks. Widths count characters of UTF-8 text, or bytes of other text.
class TablePrinter {
 public:
  // bRightAligned says for each column whether its texts are aligned to
  // the right (numbers).
  TablePrinter(std::vector<std::string> headings, std::vector<bool> rightAligned);

  void AddRow(std::vector<std::string> texts);
  // Prints within nWidth characters a line; 0 for no limit.
  void Print(std::ostream& out, size_t nWidth) const;

  // The width available on standard output: the terminal's when it is one
  // (else the COLUMNS variable, else 80), the COLUMNS variable when it is
  // set, else 0 (no limit).
  static size_t GetOutputWidth();

 private:
  std::vector<size_t> FitWidths(size_t nWidth) const;

  std::vector<std::string> m_headings;
  std::vector<bool> m_rightAligned;
  std::vector<std::vector<std::string>> m_rows;
};

#endif  // CLI_TABLEPRINTER_H_
