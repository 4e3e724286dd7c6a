#ifndef DATAMGR_DOCUMENT_DATAFIND_H_
#define DATAMGR_DOCUMENT_DATAFIND_H_

#include "DataMgr/Export.h"
#include "framework/CArchive.h"
#include "framework/CString.h"

// One hit of a search: the item, the sub-item (-1 for the item itself) and
// the column where the words were found, and the character position of the
// match in the rendered text, prefix included (-1 for a hit on a whole
// value or a whole item). The ID is the hit's running number within one
// search, from 1. ReplacedLength, LineCount and FilePath belong to the host,
// which keeps its replacements in them; the document never reads them.
//
// Every number starts at -1, the path empty. A hit names its places by ID
// only and never owns or points at a record.
class VAXO057_API DataFind {
 public:
  int GetID() const { return m_nID; }
  void SetID(int nID) { m_nID = nID; }
  int GetDataItemID() const { return m_nDataItemID; }
  void SetDataItemID(int nID) { m_nDataItemID = nID; }
  int GetDataSubItemID() const { return m_nDataSubItemID; }
  void SetDataSubItemID(int nID) { m_nDataSubItemID = nID; }
  int GetDataPropID() const { return m_nDataPropID; }
  void SetDataPropID(int nID) { m_nDataPropID = nID; }
  int GetStartIndex() const { return m_nStartIndex; }
  void SetStartIndex(int nIndex) { m_nStartIndex = nIndex; }
  int GetReplacedLength() const { return m_nReplacedLength; }
  void SetReplacedLength(int nLength) { m_nReplacedLength = nLength; }
  int GetLineCount() const { return m_nLineCount; }
  void SetLineCount(int nCount) { m_nLineCount = nCount; }
  const CString& GetFilePath() const { return m_strFilePath; }
  void SetFilePath(const CString& path) { m_strFilePath = path; }

  // The same place with the same host fields (the path compared exactly);
  // the ID does not count, so one place found by two searches is one hit.
  bool operator==(const DataFind& other) const;
  bool operator!=(const DataFind& other) const { return !(*this == other); }

  // See the layout above the definition; version 2 is current.
  void Serialize(CArchive& ar);

 private:
  int m_nID = -1;
  int m_nDataItemID = -1;
  int m_nDataSubItemID = -1;
  int m_nDataPropID = -1;
  int m_nStartIndex = -1;
  int m_nReplacedLength = -1;
  int m_nLineCount = -1;
  CString m_strFilePath;
};

#endif  // DATAMGR_DOCUMENT_DATAFIND_H_
