#ifndef DATAMGR_SCHEMA_ADDRESSBOOK_H_
#define DATAMGR_SCHEMA_ADDRESSBOOK_H_

#include <vector>

#include "DataMgr/Export.h"
#include "DataMgr/types/NextIDMgr.h"
#include "DataMgr/schema/Address.h"
#include "framework/CArchive.h"
#include "framework/CString.h"
#include "utility/TextArray.h"

// The addresses of one address-book column, in book order, with the next
// address ID to hand out and the business flag that new addresses of the
// column take. The book owns its addresses: Add takes one over, Delete and
// DeleteAll delete them, and the pointers it hands out stay the book's.
// Copying copies the flag, the next ID and every address (IDs included).
class VAXO057_API AddressBook {
 public:
  AddressBook() = default;
  AddressBook(const AddressBook& other);
  AddressBook& operator=(const AddressBook& other);
  ~AddressBook();

  // Takes pAddress over (null is ignored) and appends it. With bAssignID it
  // gets the next ID; otherwise the next ID is raised past its ID.
  void Add(Address* pAddress, bool bAssignID);

  size_t GetCount() const { return m_vecAddresses.size(); }
  // Null when nIndex is not below GetCount.
  Address* GetAt(size_t nIndex) const;
  // Null for a negative or unknown ID.
  Address* GetByID(int nID) const;
  // The position of pAddress in the book; GetCount, with bFound false, when
  // it is null or not in the book.
  size_t GetIndex(const Address* pAddress, bool& bFound) const;
  // The first address whose Name equals name ignoring case. When there is
  // none and bCreate is true, a new address with that Name (and a new ID) is
  // added and returned; an empty name is never created. Null otherwise.
  Address* GetByName(const CString& name, bool bCreate);
  // Appends the Name of every address, in book order.
  void GetNames(TextArray& names) const;

  // Whether a goes before b: by Name ignoring case, a null address first.
  static bool SortCompareAddresses(const Address* a, const Address* b);
  void Sort();

  // Deletes the first address with that ID, if any.
  void Delete(int nID);
  // Deletes every address; with bResetID the next ID starts again at 0.
  void DeleteAll(bool bResetID);

  bool GetIsBusiness() const { return m_bIsBusiness; }
  // Sets the flag of the book and of every address in it.
  void SetIsBusiness(bool bIsBusiness);
  void ClearUsageCounts();

  void Serialize(CArchive& ar);

 private:
  void CopyAddressesFrom(const AddressBook& other);

  bool m_bIsBusiness = true;
  NextIDMgr m_nextID;
  std::vector<Address*> m_vecAddresses;  // owned
};

#endif  // DATAMGR_SCHEMA_ADDRESSBOOK_H_
