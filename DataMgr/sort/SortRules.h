#ifndef DATAMGR_SORT_SORTRULES_H_
#define DATAMGR_SORT_SORTRULES_H_

// Internal to the sort engine: the per-type rules that the comparator of
// SortData (CompareData, which reads two records) and the key table of the
// fast sort (which reads values extracted beforehand) share, so that both
// give the same verdict for every pair of records.

#include "DataMgr/schema/DataProp.h"
#include "DataMgr/sort/SortData.h"
#include "DataMgr/types/Data.h"
#include "DataMgr/types/DataType.h"
#include "framework/CString.h"

namespace sort_rules {

// The record's value of the column, read with the GetData form of T (value
// holds what a record without one gives).
template <typename T>
T ValueOf(const Data& record, int nDataPropID, T value) {
  record.GetData(nDataPropID, value);
  return value;
}

// The column whose list entries or address book a key's cells refer to:
// its alias, or the key's column itself.
inline const DataProp& LookupColumn(const SortData::ResolvedKey& key) {
  return key.pAliasDataProp != nullptr ? *key.pAliasDataProp : *key.pDataProp;
}

// What one key says about records a and b: a comes first, a does not come
// first (the comparison is decided either way), or they tie and the next
// key decides.
enum class Verdict { FIRST, NOT_FIRST, TIE };

// nCompare is negative when a is the smaller by the key's rule: ascending,
// a comes first when it is negative; descending, when it is positive.
inline Verdict Decide(int nCompare, bool bAscending) {
  if (nCompare == 0) return Verdict::TIE;
  return (bAscending ? nCompare < 0 : nCompare > 0) ? Verdict::FIRST : Verdict::NOT_FIRST;
}

// The comparison each data type sorts by; NONE for the types that do not
// sort (their keys are passed over).
enum class Rule {
  YES_NO,
  INTEGER,
  DECIMAL,
  DATE,
  TIME,
  TEXT,
  PATH,
  NUMBER_LIST,
  DECIMAL_LIST,
  TEXT_LIST,
  ADDRESS,
  MONEY,
  NUMBER_TEXT,
  NONE,
};

Rule RuleOf(DataType::Type nType);

inline bool IsListRule(Rule nRule) {
  return nRule == Rule::NUMBER_LIST || nRule == Rule::DECIMAL_LIST || nRule == Rule::TEXT_LIST;
}

// CString::Compare when bCaseSensitive, else CString::CompareNoCase.
inline int CompareTexts(const CString& a, const CString& b, bool bCaseSensitive) {
  return bCaseSensitive ? a.Compare(b) : a.CompareNoCase(b);
}

// -1, 0 or 1 for any ordered values.
template <typename T>
int Sign(const T& a, const T& b) {
  return a < b ? -1 : (b < a ? 1 : 0);
}

// Decimals within this distance of each other tie.
constexpr double DECIMAL_TOLERANCE = 0.0001;

inline Verdict DecideDecimals(double a, double b, bool bAscending) {
  const double dDistance = a > b ? a - b : b - a;
  if (dDistance < DECIMAL_TOLERANCE) return Verdict::TIE;
  return (bAscending ? a < b : a > b) ? Verdict::FIRST : Verdict::NOT_FIRST;
}

// List entries compared by their decimal values: exact, no tolerance.
inline Verdict DecideExactDecimals(double a, double b, bool bAscending) {
  if (a == b) return Verdict::TIE;
  return (bAscending ? a < b : a > b) ? Verdict::FIRST : Verdict::NOT_FIRST;
}

// A list entry or address that a cell names but the column lacks (or that
// is of the wrong kind) sorts first ascending and last descending. Call it
// only when the entry of a or of b is missing. b's is looked at first, so
// two missing entries give NOT_FIRST ascending and FIRST descending.
inline Verdict DecideMissing(bool bMissingB, bool bAscending) {
  if (bMissingB) return bAscending ? Verdict::NOT_FIRST : Verdict::FIRST;
  return bAscending ? Verdict::FIRST : Verdict::NOT_FIRST;
}

// A number-with-text value taken apart: the first number, the flag that
// the text is that number alone, and the text before the number's place in
// the remainder ("Vol. " of "Vol. 2"; empty when nothing stands before it
// or there is no number).
struct NumberText {
  int nNumber = 0;
  bool bAlone = false;
  CString strLeading;
};

// Parses text with NumberTextConv::ParseNumber, Roman numerals allowed for
// NumberWithRomanOrText.
NumberText ParseNumberText(const CString& text, DataType::Type nType);

// The number-with-text rule. When both values are numbers alone, or both
// are not and their numbers differ, the numbers decide, unless (for values
// that are not numbers alone) the texts before the numbers differ: then
// those texts decide. In every other case the whole texts decide.
// compareLeading() and compareWhole() compare the texts of a and b as the
// key says (case-sensitive or not).
//
// The texts before the numbers are compared whatever the positions of the
// number in the two remainders: where both positions are below 1 both
// texts are empty, tie, and the numbers decide, as the rule says.
template <typename CompareLeading, typename CompareWhole>
Verdict DecideNumberTexts(int nNumberA, bool bAloneA, int nNumberB, bool bAloneB, bool bAscending,
                          CompareLeading compareLeading, CompareWhole compareWhole) {
  if (bAloneA == bAloneB && nNumberA != nNumberB) {
    if (!bAloneA) {
      const int nLeading = compareLeading();
      if (nLeading != 0) return Decide(nLeading, bAscending);
    }
    return Decide(Sign(nNumberA, nNumberB), bAscending);
  }
  return Decide(compareWhole(), bAscending);
}

// The folder part of a path for the directories-first rule: the folder
// without its trailing separator, and whether the path had a folder at all.
struct PathFolder {
  CString strFolder;
  bool bHasFolder = false;
};

PathFolder SplitFolder(const CString& path);

// 0 when neither path has a folder; otherwise the folders compared by the
// locale's collation (bCaseSensitive) or ignoring case.
int CompareFolders(const PathFolder& a, const PathFolder& b, bool bCaseSensitive);

// The path rule: the folders first when bDirectoriesFirst, then
// TextArray::DoCompareFiles.
int ComparePaths(const CString& a, const PathFolder& folderA, const CString& b, const PathFolder& folderB,
                 bool bCaseSensitive, bool bDirectoriesFirst);

}  // namespace sort_rules

#endif  // DATAMGR_SORT_SORTRULES_H_
