#ifndef DATAMGR_REPORT_WEBLINKMGR_H_
#define DATAMGR_REPORT_WEBLINKMGR_H_

#include <cstddef>
#include <vector>

#include "DataMgr/Export.h"
#include "DataMgr/report/WebLink.h"
#include "framework/CArchive.h"
#include "framework/CString.h"
#include "utility/TextArray.h"

// A document's named links, kept in order of their names ignoring case by
// Add, Sort and loading (Update does not re-sort). Links are held by value
// and found by their unique ID (for editing) or by name ignoring case (for
// use); the first of equal names wins. Not found gives false, an empty URL
// or nothing done; only GetAt throws.
class VAXO057_API WebLinkMgr {
 public:
  size_t GetCount() const { return m_vecLinks.size(); }
  // Throws std::out_of_range("invalid vector<T> subscript") for an index
  // out of range.
  const WebLink& GetAt(size_t nIndex) const;

  // Gives link the next unique ID (in the caller's object too), appends a
  // copy and sorts.
  void Add(WebLink& link);
  // Copies the link with that unique ID into out; false when none has it.
  bool GetLinkID(int nUniqueID, WebLink& out) const;
  // Overwrites the link with link's unique ID by link, without sorting;
  // false when none has it.
  bool Update(const WebLink& link);
  // Removes the first link named as link ignoring case.
  void Remove(const WebLink& link);
  void RemoveAll() { m_vecLinks.clear(); }
  // By name ignoring case, ascending; equal names keep their order.
  void Sort();

  // Appends every name, in list order.
  void GetNames(TextArray& names) const;
  // The URL of the first link so named ignoring case; empty when none is.
  CString GetLinkForName(const CString& name) const;

  // The same count and, position by position, names equal ignoring case.
  bool operator==(const WebLinkMgr& other) const { return m_vecLinks == other.m_vecLinks; }
  bool operator!=(const WebLinkMgr& other) const { return !(*this == other); }

  // See the layout above the definition; version 3 is current.
  void Serialize(CArchive& ar);

 private:
  std::vector<WebLink> m_vecLinks;
};

#endif  // DATAMGR_REPORT_WEBLINKMGR_H_
