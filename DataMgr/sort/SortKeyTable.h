#ifndef DATAMGR_SORT_SORTKEYTABLE_H_
#define DATAMGR_SORT_SORTKEYTABLE_H_

// Internal to the sort engine: the fast sort behind SortData::DoTheSort.
//
// It reads each record's values of the sort keys once, through
// Data::HaveDataProp and Data::GetData, into a table of one 16-byte cell per
// record and key: yes/no values, numbers, dates, times, money and list
// positions become integer codes whose order is the key's order (direction
// included); texts become their rank among the key's texts (folded once
// where the key ignores case); list entries and addresses are looked up
// once per distinct ID and become a number, a decimal value or the rank of
// their text; decimals keep their value; paths keep their text and folder.
// It then stable-sorts 16-byte elements (the record's index and the codes
// of the first two keys, where those decide exactly) and puts the records
// into the resulting order.
//
// Every comparison gives the verdict SortData::CompareData gives for the
// same two records, and the elements go through the same std::stable_sort
// that SortData runs with CompareData, so the order is exactly that one,
// ties included, even where a rule is no strict ordering (the decimal
// tolerance, a record without a value, two dangling entry IDs).
//
// It borrows the resolved keys and their columns for one sort and never
// changes a record or a column.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "DataMgr/sort/SortData.h"
#include "DataMgr/sort/SortRules.h"
#include "DataMgr/types/Data.h"
#include "framework/CString.h"

class SortKeyTable {
 public:
  SortKeyTable(const std::vector<SortData::ResolvedKey>& keys, bool bDirectoriesFirst);
  SortKeyTable(const SortKeyTable&) = delete;
  SortKeyTable& operator=(const SortKeyTable&) = delete;

  // Whether a vector of nCount records fits the elements' index field.
  static bool CanSort(size_t nCount) { return nCount <= INDEX_MASK; }
  // REQUIRES: CanSort(records.size()).
  void Sort(std::vector<Data*>& records);

 private:
  // The three top bits of an element's index field: a null record, a record
  // without a value of the first key, of the second key.
  static constexpr uint32_t NULL_RECORD = 1u << 31;
  static constexpr uint32_t FIRST_ABSENT = 1u << 30;
  static constexpr uint32_t SECOND_ABSENT = 1u << 29;
  static constexpr uint32_t INDEX_MASK = SECOND_ABSENT - 1;

  // How a key's values are held and compared.
  enum class Kind { EXACT, TEXT, DECIMAL, PATH, NUMBER_TEXT, RANKED_ENTRY, DECIMAL_ENTRY };

  // Cell flags.
  static constexpr uint32_t PRESENT = 1;         // the record has a value of the column
  static constexpr uint32_t MISSING_ENTRY = 2;   // its entry or address does not exist
  static constexpr uint32_t NUL_IN_TEXT = 4;     // a NUL byte cut its folded text short
  static constexpr uint32_t NUL_IN_LEADING = 8;  // the same for the text before its number
  static constexpr uint32_t NUMBER_ALONE = 16;   // its text is a number alone

  // EXACT: order by (nAux, nCode). TEXT: nCode holds the rank.
  // DECIMAL, DECIMAL_ENTRY: nCode holds the double. NUMBER_TEXT: nAux holds
  // the number. Entries: nAux holds the entry ID, nCode its rank or value.
  struct Cell {
    uint64_t nCode = 0;
    uint32_t nAux = 0;
    uint32_t nFlags = 0;
  };

  // What the sort moves: the record's index with the flags above, and the
  // codes of the first two keys (the second one less the smallest).
  struct Element {
    uint64_t nCode = 0;
    uint32_t nSecondCode = 0;
    uint32_t nIndex = 0;
  };

  // The texts of one key, record by record, back to back.
  class TextPool {
   public:
    // Appends text, folded as CString::CompareNoCase folds it when bFold.
    // CompareNoCase reads its argument only up to a NUL byte, so a folded
    // text ends there; returns whether it did.
    bool Add(const CString& text, bool bFold);
    std::string_view At(size_t nIndex) const;
    size_t GetCount() const { return m_vecEnds.size(); }
    // Byte-wise, as CString::Compare; when the texts are equal and a's had
    // a NUL byte (bNulInA), 1, as CString::CompareNoCase answers.
    int Compare(size_t nA, size_t nB, bool bNulInA) const;
    void Reserve(size_t nCount);
    void Clear();

   private:
    std::string m_strBytes;
    std::vector<size_t> m_vecEnds;
  };

  struct KeyColumn {
    Kind nKind = Kind::EXACT;
    sort_rules::Rule nRule = sort_rules::Rule::NONE;
    bool bListOrder = false;
    int nDataPropID = -1;
    bool bAscending = true;
    bool bCaseSensitive = false;
    const SortData::ResolvedKey* pKey = nullptr;
    TextPool texts;
    TextPool leading;
    std::vector<CString> vecPaths;
    std::vector<sort_rules::PathFolder> vecFolders;
  };

  void Extract(const std::vector<Data*>& records);
  void ExtractCell(KeyColumn& key, const Data& record, Cell& cell);
  void ExtractTexts(KeyColumn& key, const Data* pRecord, Cell& cell);
  void RankRecordTexts(size_t nKey);
  void ResolveEntries(size_t nKey);
  // The code and flags of one entry ID; the text of an entry that compares
  // by its text is appended to text, as it compares, for ranking.
  Cell ResolveEntry(const KeyColumn& key, int nEntryID, std::string& text) const;

  // Whether a key's codes decide exactly (a difference decides, equality
  // ties), so that elements may carry them.
  bool HasExactCodes(size_t nKey) const;
  uint64_t ExactCode(size_t nRecord, size_t nKey) const;
  void ChooseCarriedKeys();
  Element MakeElement(const Data* pRecord, size_t nIndex) const;

  bool Before(const Element& a, const Element& b) const;
  bool RowsBefore(size_t nA, size_t nB, size_t nFirstKey) const;
  sort_rules::Verdict CompareCells(const KeyColumn& key, size_t nA, size_t nB, const Cell& a, const Cell& b) const;

  size_t GetRecordCount() const { return m_vecKeys.empty() ? 0 : m_vecCells.size() / m_vecKeys.size(); }
  Cell& CellAt(size_t nRecord, size_t nKey) { return m_vecCells[nRecord * m_vecKeys.size() + nKey]; }
  const Cell& CellAt(size_t nRecord, size_t nKey) const { return m_vecCells[nRecord * m_vecKeys.size() + nKey]; }

  bool m_bDirectoriesFirst;
  std::vector<KeyColumn> m_vecKeys;  // the keys that compare, in priority order
  std::vector<Cell> m_vecCells;      // record by record, key by key
  size_t m_nCarriedKeys = 0;         // how many keys the elements decide (0 to 2)
  uint64_t m_nSecondBase = 0;        // the smallest code of the second key
};

#endif  // DATAMGR_SORT_SORTKEYTABLE_H_
