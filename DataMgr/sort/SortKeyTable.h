#ifndef DATAMGR_SORT_SORTKEYTABLE_H_
#define DATAMGR_SORT_SORTKEYTABLE_H_

// Internal to the sort engine: the fast sort behind SortData::DoTheSort.
//
// It reads each record's values of the sort keys once, through
// Data::GetData, into a table of one 16-byte cell per record and key:
// yes/no values, numbers, dates, times, money and list positions become
// integer codes whose order is the key's order (direction included); texts
// go into a pool per key, folded once where they compare ignoring case;
// list entries and addresses are looked up once per distinct ID and become
// a rank or a value; paths keep their text and folder. It then stable-sorts
// 16-byte elements (record index and the primary key's code or first eight
// text bytes) and puts the records into the resulting order.
//
// Every comparison gives the verdict SortData::CompareData gives for the
// same two records, and the elements go through the same std::stable_sort
// that SortData runs with CompareData, so the order is exactly that one,
// ties included, even where a rule is no strict ordering (the decimal
// tolerance, a record without a value, two dangling entry IDs).
//
// It borrows the resolved keys' columns for the length of one sort and
// never changes a record or a column.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
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
  // The two top bits of an element's index field.
  static constexpr uint32_t NULL_RECORD = 1u << 31;
  static constexpr uint32_t KEY_ABSENT = 1u << 30;
  static constexpr uint32_t INDEX_MASK = KEY_ABSENT - 1;

  // How a key's values are held and compared.
  enum class Kind { EXACT, DECIMAL, TEXT, PATH, NUMBER_TEXT, RANKED_ENTRY, DECIMAL_ENTRY };

  // Cell flags.
  static constexpr uint32_t PRESENT = 1;          // the record has a value of the column
  static constexpr uint32_t MISSING_ENTRY = 2;    // its entry or address does not exist
  static constexpr uint32_t NUL_IN_TEXT = 4;      // a NUL byte cut its folded text short
  static constexpr uint32_t NUL_IN_LEADING = 8;   // the same for the text before its number
  static constexpr uint32_t NUMBER_ALONE = 16;    // its text is a number alone

  // EXACT: order by (nAux, nCode). DECIMAL, DECIMAL_ENTRY: nCode holds the
  // double. TEXT: nCode holds the first eight text bytes. NUMBER_TEXT: nAux
  // holds the number. Entries: nAux holds the entry ID, nCode its rank or
  // value.
  struct Cell {
    uint64_t nCode = 0;
    uint32_t nAux = 0;
    uint32_t nFlags = 0;
  };

  // What the sort moves: the record's index (with the flags above) and the
  // primary key's code when that decides by itself.
  struct Element {
    uint64_t nCode = 0;
    uint32_t nAux = 0;
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
    // The first eight bytes, big-endian, zero-padded: their order is the
    // texts' order wherever they differ.
    uint64_t Prefix(size_t nIndex) const;
    // Byte-wise, as CString::Compare; CompareNoCase's answer when a's text
    // had a NUL byte (bNulInA) and the folded texts are equal is 1.
    int Compare(size_t nA, size_t nB, bool bNulInA) const;

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

  // The rank or value, and flags, of one entry ID.
  struct EntryCode {
    uint64_t nCode = 0;
    uint32_t nFlags = 0;
  };

  void Extract(const std::vector<Data*>& records);
  void ExtractCell(KeyColumn& key, const Data& record, Cell& cell);
  void ExtractTexts(KeyColumn& key, const Data* pRecord, Cell& cell, size_t nIndex);
  void ResolveEntries(size_t nKey);
  bool ResolveEntry(const KeyColumn& key, int nEntryID, EntryCode& code) const;
  void RankTexts(const KeyColumn& key, std::vector<std::pair<std::string, int>>& texts,
                 std::unordered_map<int, EntryCode>& codes) const;
  Element MakeElement(const Data* pRecord, size_t nIndex) const;

  bool Before(const Element& a, const Element& b) const;
  bool RowsBefore(size_t nA, size_t nB, size_t nFirstKey) const;
  sort_rules::Verdict CompareCells(const KeyColumn& key, size_t nA, size_t nB, const Cell& a, const Cell& b) const;

  Cell& CellAt(size_t nRecord, size_t nKey) { return m_vecCells[nRecord * m_vecKeys.size() + nKey]; }
  const Cell& CellAt(size_t nRecord, size_t nKey) const { return m_vecCells[nRecord * m_vecKeys.size() + nKey]; }

  bool m_bDirectoriesFirst;
  std::vector<KeyColumn> m_vecKeys;  // the keys that compare, in priority order
  std::vector<Cell> m_vecCells;      // record by record, key by key
};

#endif  // DATAMGR_SORT_SORTKEYTABLE_H_
