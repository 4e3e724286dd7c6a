#include "cli/TablePrinter.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

namespace {

const size_t GAP = 2;
const size_t MIN_WIDTH = 4;
const char ELLIPSIS[] = "...";

bool IsContinuationByte(char ch) { return (static_cast<unsigned char>(ch) & 0xC0) == 0x80; }

bool IsUtf8(const std::string& text) {
  for (size_t i = 0; i < text.size();) {
    const auto ch = static_cast<unsigned char>(text[i]);
    const size_t nLength = ch < 0x80             ? 1
                           : (ch & 0xE0) == 0xC0 ? 2
                           : (ch & 0xF0) == 0xE0 ? 3
                           : (ch & 0xF8) == 0xF0 ? 4
                                                 : 0;
    if (nLength == 0 || i + nLength > text.size()) return false;
    for (size_t k = 1; k < nLength; ++k) {
      if (!IsContinuationByte(text[i + k])) return false;
    }
    i += nLength;
  }
  return true;
}

size_t Width(const std::string& text) {
  if (!IsUtf8(text)) return text.size();
  return static_cast<size_t>(std::count_if(text.begin(), text.end(), [](char ch) { return !IsContinuationByte(ch); }));
}

// The first nWidth characters of text.
std::string Head(const std::string& text, size_t nWidth) {
  if (!IsUtf8(text)) return text.substr(0, nWidth);
  size_t nEnd = 0;
  for (size_t nChars = 0; nEnd < text.size() && nChars < nWidth; ++nChars) {
    do {
      ++nEnd;
    } while (nEnd < text.size() && IsContinuationByte(text[nEnd]));
  }
  return text.substr(0, nEnd);
}

std::string OneLine(std::string text) {
  for (char& ch : text) {
    if (ch == '\r' || ch == '\n' || ch == '\t') ch = ' ';
  }
  return text;
}

std::string Cell(const std::string& text, size_t nWidth, bool bRight) {
  const size_t nTextWidth = Width(text);
  if (nTextWidth > nWidth) {
    return nWidth < MIN_WIDTH ? Head(text, nWidth) : Head(text, nWidth - (sizeof ELLIPSIS - 1)) + ELLIPSIS;
  }
  const std::string padding(nWidth - nTextWidth, ' ');
  return bRight ? padding + text : text + padding;
}

}  // namespace

TablePrinter::TablePrinter(std::vector<std::string> headings, std::vector<bool> rightAligned)
    : m_headings(std::move(headings)), m_rightAligned(std::move(rightAligned)) {
  for (std::string& heading : m_headings) heading = OneLine(heading);
}

void TablePrinter::AddRow(std::vector<std::string> texts) {
  for (std::string& text : texts) text = OneLine(text);
  texts.resize(m_headings.size());
  m_rows.push_back(std::move(texts));
}

std::vector<size_t> TablePrinter::FitWidths(size_t nWidth) const {
  std::vector<size_t> widths;
  for (const std::string& heading : m_headings) widths.push_back(Width(heading));
  for (const auto& row : m_rows) {
    for (size_t c = 0; c < row.size(); ++c) widths[c] = std::max(widths[c], Width(row[c]));
  }
  size_t nTotal = 0;
  for (size_t w : widths) nTotal += w;
  nTotal += widths.empty() ? 0 : GAP * (widths.size() - 1);
  while (nWidth > 0 && nTotal > nWidth) {
    const auto widest = std::max_element(widths.begin(), widths.end());
    if (widest == widths.end() || *widest <= MIN_WIDTH) break;
    --*widest;
    --nTotal;
  }
  return widths;
}

void TablePrinter::Print(std::ostream& out, size_t nWidth) const {
  const std::vector<size_t> widths = FitWidths(nWidth);
  const auto printLine = [&](const std::vector<std::string>& texts) {
    std::string line;
    for (size_t c = 0; c < texts.size(); ++c) {
      if (c > 0) line += std::string(GAP, ' ');
      line += Cell(texts[c], widths[c], m_rightAligned[c]);
    }
    line.erase(line.find_last_not_of(' ') + 1);
    out << line << '\n';
  };
  printLine(m_headings);
  std::vector<std::string> rule;
  for (size_t w : widths) rule.emplace_back(w, '-');
  printLine(rule);
  for (const auto& row : m_rows) printLine(row);
}

size_t TablePrinter::GetOutputWidth() {
  const char* pszColumns = std::getenv("COLUMNS");
  const long nColumns = pszColumns != nullptr ? std::strtol(pszColumns, nullptr, 10) : 0;
  if (isatty(STDOUT_FILENO) != 0) {
    winsize size{};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) return size.ws_col;
    return nColumns > 0 ? static_cast<size_t>(nColumns) : 80;
  }
  return nColumns > 0 ? static_cast<size_t>(nColumns) : 0;
}
