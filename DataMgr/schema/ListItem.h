#ifndef DATAMGR_SCHEMA_LISTITEM_H_
#define DATAMGR_SCHEMA_LISTITEM_H_

#include "DataMgr/Export.h"
#include "framework/CArchive.h"
#include "framework/CString.h"

// One entry of a list-typed column: an ID within its column, the count of
// cells that refer to it, and (in the subclasses) its value. Entries live on
// the heap and are owned by their column (DataProp), which creates them of
// the subclass that fits its data type; cells refer to them by ID only.
//
// A new entry has ID -1 and usage count 0. Copying copies every field, the
// ID and the usage count included. The usage count never goes below 0.
class VAXO057_API ListItem {
 public:
  ListItem() = default;
  ListItem(const ListItem& other) = default;
  ListItem& operator=(const ListItem& other) = default;
  virtual ~ListItem() = default;

  virtual void SetID(int nID) { m_nID = nID; }
  virtual void ClearUsageCount() { m_nUsageCount = 0; }
  virtual void RegisterUsage();
  virtual void UnregisterUsage();

  // Stores the value read from text; false, with nothing changed, when the
  // value read equals the present one.
  virtual bool SetTextRepresentation(const CString& text) = 0;
  virtual CString GetTextRepresentation() const = 0;

  // Each subclass writes its own part after this one.
  virtual void Serialize(CArchive& ar);

  int GetID() const { return m_nID; }
  int GetUsageCount() const { return m_nUsageCount; }
  // Restores a count kept elsewhere (a document converted back from
  // another form), unchecked as loading is.
  void SetUsageCount(int nCount) { m_nUsageCount = nCount; }

  bool operator==(const ListItem& other) const { return m_nID == other.m_nID; }
  bool operator<(const ListItem& other) const { return m_nID < other.m_nID; }

 protected:
  // Reads and ignores the version word of a subclass part, or writes it.
  static void SerializePartVersion(CArchive& ar);

 private:
  int m_nID = -1;
  int m_nUsageCount = 0;
};

#endif  // DATAMGR_SCHEMA_LISTITEM_H_
