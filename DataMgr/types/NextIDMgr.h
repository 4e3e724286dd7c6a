#ifndef DATAMGR_TYPES_NEXTIDMGR_H_
#define DATAMGR_TYPES_NEXTIDMGR_H_

#include "DataMgr/Export.h"
#include "framework/CArchive.h"

// Hands out the IDs of one family of objects (the records of a document,
// the sub-items of one record, the sort orders): 0, 1, 2, ... An ID is valid
// when it is 0 or more; -1 means none. The allocator never fails and does not
// detect running past the largest int (it wraps to the smallest).
class VAXO057_API NextIDMgr {
 public:
  NextIDMgr() = default;

  static bool IsValidID(int nID) { return nID >= 0; }
  // nID + 1, wrapping past the largest int to the smallest instead of
  // overflowing; for every counter of IDs that an archive may set.
  static int IDAfter(int nID);

  // Returns the next ID and moves past it.
  int GetNextID();
  // After an object with ID nID joined the family: later IDs stay above it.
  void UpdateNextID(int nID);
  // True when every ID below nID has been handed out or skipped.
  bool VerifyNextID(int nID) const { return m_nNextID >= nID; }
  void ResetNextID() { m_nNextID = 0; }

  bool operator==(const NextIDMgr& other) const { return m_nNextID == other.m_nNextID; }
  bool operator<(const NextIDMgr& other) const { return m_nNextID < other.m_nNextID; }
  bool operator>(const NextIDMgr& other) const { return m_nNextID > other.m_nNextID; }

  // Version 1 (current): WORD version, int next ID. Loading ignores the
  // version word.
  void Serialize(CArchive& ar);

 private:
  int m_nNextID = 0;
};

#endif  // DATAMGR_TYPES_NEXTIDMGR_H_
