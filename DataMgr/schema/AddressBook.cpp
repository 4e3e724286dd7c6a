#include "DataMgr/schema/AddressBook.h"

#include <algorithm>
#include <memory>

#include "utility/SerializeData.h"

namespace {

const WORD ADDRESSBOOK_VERSION = 3;

// The fewest bytes an address record takes: its version word.
const size_t MIN_ADDRESS_BYTES = 2;

}  // namespace

AddressBook::AddressBook(const AddressBook& other) : m_bIsBusiness(other.m_bIsBusiness), m_nextID(other.m_nextID) {
  CopyAddressesFrom(other);
}

AddressBook& AddressBook::operator=(const AddressBook& other) {
  if (this == &other) return *this;
  DeleteAll(false);
  m_bIsBusiness = other.m_bIsBusiness;
  m_nextID = other.m_nextID;
  CopyAddressesFrom(other);
  return *this;
}

AddressBook::~AddressBook() { DeleteAll(false); }

void AddressBook::CopyAddressesFrom(const AddressBook& other) {
  m_vecAddresses.reserve(other.m_vecAddresses.size());
  for (const Address* pAddress : other.m_vecAddresses) m_vecAddresses.push_back(new Address(*pAddress));
}

void AddressBook::Add(Address* pAddress, bool bAssignID) {
  if (pAddress == nullptr) return;
  m_vecAddresses.push_back(pAddress);
  if (bAssignID) {
    pAddress->SetID(m_nextID.GetNextID());
  } else {
    m_nextID.UpdateNextID(pAddress->GetID());
  }
}

Address* AddressBook::GetAt(size_t nIndex) const {
  return nIndex < m_vecAddresses.size() ? m_vecAddresses[nIndex] : nullptr;
}

Address* AddressBook::GetByID(int nID) const {
  if (nID < 0) return nullptr;
  for (Address* pAddress : m_vecAddresses) {
    if (pAddress->GetID() == nID) return pAddress;
  }
  return nullptr;
}

size_t AddressBook::GetIndex(const Address* pAddress, bool& bFound) const {
  const auto found = std::find(m_vecAddresses.begin(), m_vecAddresses.end(), pAddress);
  bFound = pAddress != nullptr && found != m_vecAddresses.end();
  return bFound ? static_cast<size_t>(found - m_vecAddresses.begin()) : m_vecAddresses.size();
}

Address* AddressBook::GetByName(const CString& name, bool bCreate) {
  if (m_vecAddresses.empty() && !bCreate) return nullptr;
  for (Address* pAddress : m_vecAddresses) {
    if (pAddress->GetData(Address::Name).CompareNoCase(name) == 0) return pAddress;
  }
  if (!bCreate || name.IsEmpty()) return nullptr;
  Address* pAddress = new Address;
  pAddress->SetData(Address::Name, name);
  Add(pAddress, true);
  return pAddress;
}

void AddressBook::GetNames(TextArray& names) const {
  for (const Address* pAddress : m_vecAddresses) names.Add(pAddress->GetData(Address::Name));
}

bool AddressBook::SortCompareAddresses(const Address* a, const Address* b) {
  if (a == nullptr) return b != nullptr;
  if (b == nullptr) return false;
  return a->GetData(Address::Name).CompareNoCase(b->GetData(Address::Name)) < 0;
}

void AddressBook::Sort() {
  if (m_vecAddresses.size() >= 2) std::sort(m_vecAddresses.begin(), m_vecAddresses.end(), SortCompareAddresses);
}

void AddressBook::Delete(int nID) {
  for (auto it = m_vecAddresses.begin(); it != m_vecAddresses.end(); ++it) {
    if ((*it)->GetID() != nID) continue;
    delete *it;
    m_vecAddresses.erase(it);
    return;
  }
}

void AddressBook::DeleteAll(bool bResetID) {
  for (Address* pAddress : m_vecAddresses) delete pAddress;
  m_vecAddresses.clear();
  if (bResetID) m_nextID.ResetNextID();
}

void AddressBook::SetIsBusiness(bool bIsBusiness) {
  m_bIsBusiness = bIsBusiness;
  for (Address* pAddress : m_vecAddresses) pAddress->SetIsBusiness(bIsBusiness);
}

void AddressBook::ClearUsageCounts() {
  for (Address* pAddress : m_vecAddresses) pAddress->ClearUsageCount();
}

// Layout (version 3, current):
//   WORD          version
//   loop counter  address count (old format before version 3)
//   the addresses, each in its own form
//   bool          IsBusiness    (version >= 2)
// Changelog:
//   1: count and addresses only.
//   2: IsBusiness after the addresses.
//   3: the count in the new format.
// Loading replaces the addresses and raises the next ID past every
// non-negative ID loaded.
void AddressBook::Serialize(CArchive& ar) {
  if (ar.IsStoring()) {
    ar << ADDRESSBOOK_VERSION;
    SerializeData::SerializeLoopCounter(ar, m_vecAddresses.size(), false);
    for (Address* pAddress : m_vecAddresses) pAddress->Serialize(ar);
    SerializeData::Serialize(ar, m_bIsBusiness);
    return;
  }
  DeleteAll(true);
  WORD nVersion = 0;
  ar >> nVersion;
  const size_t nCount = SerializeData::SerializeLoopCounter(ar, 0, nVersion < 3);
  SerializeData::CheckLoopCounter(ar, nCount, MIN_ADDRESS_BYTES);
  for (size_t i = 0; i < nCount; ++i) {
    auto pAddress = std::make_unique<Address>();
    pAddress->Serialize(ar);
    Add(pAddress.release(), false);
  }
  if (nVersion >= 2) SerializeData::Serialize(ar, m_bIsBusiness);
}
