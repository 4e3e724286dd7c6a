#ifndef DATAMGR_DOCUMENT_DATAFINDMGR_H_
#define DATAMGR_DOCUMENT_DATAFINDMGR_H_

#include <cstddef>
#include <vector>

#include "DataMgr/Export.h"
#include "DataMgr/document/DataFind.h"
#include "framework/CArchive.h"

// A list of search hits in the host's order, kept by value, which the host
// saves with its own state. Hits are matched by DataFind::operator==, so the
// running number of a hit plays no part in Remove or in comparing lists.
//
// Indexes out of range are ignored (RemoveAt, Swap, SetDataFindID), except
// by GetAt, which throws std::out_of_range("invalid vector<T> subscript").
// Loading appends to the hits already held.
class VAXO057_API DataFindMgr {
 public:
  void Add(const DataFind& hit) { m_vecHits.push_back(hit); }
  // Erases the first hit equal to hit; nothing when there is none.
  void Remove(const DataFind& hit);
  void RemoveAt(size_t nIndex);
  void RemoveAll() { m_vecHits.clear(); }

  const DataFind& GetAt(size_t nIndex) const;
  size_t GetCount() const { return m_vecHits.size(); }
  void Swap(size_t nA, size_t nB);
  void SetDataFindID(size_t nIndex, int nID);

  bool operator==(const DataFindMgr& other) const { return m_vecHits == other.m_vecHits; }
  bool operator!=(const DataFindMgr& other) const { return !(*this == other); }

  // See the layout above the definition; version 2 is current.
  void Serialize(CArchive& ar);

 private:
  std::vector<DataFind> m_vecHits;
};

#endif  // DATAMGR_DOCUMENT_DATAFINDMGR_H_
