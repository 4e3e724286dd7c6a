#ifndef DATAMGR_REPORT_WEBLINK_H_
#define DATAMGR_REPORT_WEBLINK_H_

#include "DataMgr/Export.h"
#include "framework/CArchive.h"
#include "framework/CString.h"

class WebLinkMgr;

// A named link: a display name and a URL, with a unique ID that lives only
// while the program runs. The ID comes from one counter for the whole
// process, which only grows, so no two links added or loaded in a run share
// one; it is never archived. A link made by a constructor has ID 0 (none)
// until WebLinkMgr::Add or loading gives it one. Copies keep the ID.
class VAXO057_API WebLink {
 public:
  // The next unique ID to hand out; 1 when the program starts.
  static int m_nNextUniqueID;
  // Returns m_nNextUniqueID and moves past it (past the largest int it
  // wraps instead of overflowing).
  static int GetNextUniqueID();

  WebLink() = default;
  WebLink(const CString& name, const CString& url) : m_strName(name), m_strURL(url) {}

  // Names equal ignoring case; the URL and the ID do not count.
  bool operator==(const WebLink& other) const { return m_strName.CompareNoCase(other.m_strName) == 0; }
  bool operator!=(const WebLink& other) const { return !(*this == other); }

  int GetUniqueID() const { return m_nUniqueID; }
  const CString& GetName() const { return m_strName; }
  void SetName(const CString& name) { m_strName = name; }
  const CString& GetURL() const { return m_strURL; }
  void SetURL(const CString& url) { m_strURL = url; }

  // Version 1 (current): WORD version, CString name, CString URL. Loading
  // ignores the version word and gives the link a fresh unique ID.
  void Serialize(CArchive& ar);

 private:
  friend class WebLinkMgr;  // gives a link its unique ID in Add

  int m_nUniqueID = 0;
  CString m_strName;
  CString m_strURL;
};

#endif  // DATAMGR_REPORT_WEBLINK_H_
