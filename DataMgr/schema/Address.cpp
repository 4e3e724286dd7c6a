#include "DataMgr/schema/Address.h"

#include <climits>

#include "utility/Crypto.h"
#include "utility/LocaleUtils.h"
#include "utility/SerializeData.h"

namespace {

const WORD ADDRESS_VERSION = 7;

// The field names, indexed by Field; the phones by their business names.
const char* const FIELD_NAMES[] = {
    "Name",     "Street",   "City",     "State/Province", "Zip/Postal Code", "Country",
    "e-mail",   "Web Site", "Facebook", "Twitter",        "Phone #1",        "Phone #2",
    "Phone #3", "Fax",      "Notes",    "Photo",          "Map",             "Special Date",
};

// The names of the three phone fields of a private address.
const char* const PRIVATE_PHONE_NAMES[] = {"Home Phone", "Work Phone", "Cell Phone"};

bool IsPhone(Address::Field nField) { return nField >= Address::Phone1 && nField <= Address::Phone3; }

// The fields a version-1 record holds, in stream order.
const Address::Field VERSION1_FIELDS[] = {
    Address::Street,  Address::City,    Address::StateProvince, Address::ZipPostalCode, Address::Country,
    Address::Email,   Address::WebSite, Address::Facebook,      Address::Twitter,       Address::Notes,
};

}  // namespace

Address::Address() : m_vecData(FIELD_COUNT) { m_vecData[Country] = LocaleUtils::GetCountryName(); }

Address& Address::operator=(const Address& other) {
  if (this == &other) return *this;
  m_bIsBusiness = other.m_bIsBusiness;
  m_nUsageCount = other.m_nUsageCount;
  m_vecData = other.m_vecData;
  return *this;
}

bool Address::operator==(const Address& other) const {
  if (m_bIsBusiness != other.m_bIsBusiness) return false;
  if (m_vecData.size() != other.m_vecData.size()) return false;
  for (size_t i = 0; i < m_vecData.size(); ++i) {
    if (m_vecData[i].CompareNoCase(other.m_vecData[i]) != 0) return false;
  }
  return true;
}

bool Address::operator<(const Address& other) const {
  return m_vecData[Name].CompareNoCase(other.m_vecData[Name]) < 0;
}

CString Address::GetData(Field nField) const { return IsField(nField) ? m_vecData[nField] : CString(); }

void Address::SetData(Field nField, const CString& text) {
  if (IsField(nField)) m_vecData[nField] = text;
}

bool Address::ImportData(Field nField, const CString& text) {
  if (!IsField(nField) || text.IsEmpty() || !m_vecData[nField].IsEmpty()) return false;
  m_vecData[nField] = text;
  return true;
}

void Address::ImportMissingData(const Address& other) {
  for (int i = 0; i < FIELD_COUNT; ++i) ImportData(static_cast<Field>(i), other.m_vecData[i]);
}

bool Address::Have(const CString& text, bool bCaseSensitive) const {
  if (text.IsEmpty()) return false;
  for (const CString& field : m_vecData) {
    if ((bCaseSensitive ? field.Compare(text) : field.CompareNoCase(text)) == 0) return true;
  }
  return false;
}

void Address::Clear() {
  for (CString& field : m_vecData) field.Empty();
}

// A count read from a damaged archive may be at either end of int's range.
void Address::RegisterUsage() {
  if (m_nUsageCount < INT_MAX) ++m_nUsageCount;
}

void Address::UnregisterUsage() { m_nUsageCount = m_nUsageCount > 0 ? m_nUsageCount - 1 : 0; }

CString Address::GetTextFromField(Field nField, bool bBusiness) {
  if (!IsField(nField)) return CString();
  if (IsPhone(nField) && !bBusiness) return PRIVATE_PHONE_NAMES[nField - Phone1];
  return FIELD_NAMES[nField];
}

// The business phone names are tried before the private ones, both right
// after Twitter.
Address::Field Address::GetFieldFromText(const CString& text) {
  for (int i = 0; i < FIELD_COUNT; ++i) {
    if (text.Compare(FIELD_NAMES[i]) == 0) return static_cast<Field>(i);
    if (i != Phone3) continue;
    for (int j = 0; j < 3; ++j) {
      if (text.Compare(PRIVATE_PHONE_NAMES[j]) == 0) return static_cast<Field>(Phone1 + j);
    }
  }
  return Name;
}

// Layout (version 7, current):
//   WORD  version
//   bool  IsBusiness
//   int   ID
//   int   usage count
//   enciphered text vector, new format: the 18 field texts
// Changelog:
//   1: ten texts in Crypto's enciphered form (Street to Twitter, then
//      Notes), then the ID.
//   2: ID, IsBusiness, plain text vector (old format) of 15 fields.
//   3: as 2 with 17 fields.
//   4: as 2 with all 18 fields.
//   5: usage count after the fields.
//   6: IsBusiness, ID, usage count, enciphered text vector (old format).
//   7: the enciphered text vector in the new format.
// Version 0 and versions above 7 hold nothing this code can read: the
// address is left as it is. An address always has the 18 fields, even after
// a load that failed half-way.
void Address::Serialize(CArchive& ar) {
  if (ar.IsStoring()) {
    ar << ADDRESS_VERSION;
    SerializeData::Serialize(ar, m_bIsBusiness);
    ar << m_nID;
    ar << m_nUsageCount;
    SerializeData::SerializeEncrypted(ar, m_vecData, false);
    return;
  }
  WORD nVersion = 0;
  ar >> nVersion;
  LoadFields(ar, nVersion);
}

// A field vector is read aside and taken over only once complete, so that a
// load that fails half-way leaves all the fields in place.
void Address::LoadFields(CArchive& ar, WORD nVersion) {
  std::vector<CString> fields;
  if (nVersion == 1) {
    for (Field nField : VERSION1_FIELDS) Crypto::DeserializeEncrypted(ar, m_vecData[nField]);
    ar >> m_nID;
  } else if (nVersion >= 2 && nVersion <= 5) {
    ar >> m_nID;
    SerializeData::Serialize(ar, m_bIsBusiness);
    SerializeData::Serialize(ar, fields, true);
    if (nVersion == 2) fields.resize(fields.size() + 3);
    if (nVersion == 3) fields.resize(fields.size() + 1);
    TakeFields(fields);
    if (nVersion >= 5) ar >> m_nUsageCount;
  } else if (nVersion >= 6 && nVersion <= ADDRESS_VERSION) {
    SerializeData::Serialize(ar, m_bIsBusiness);
    ar >> m_nID;
    ar >> m_nUsageCount;
    SerializeData::SerializeEncrypted(ar, fields, nVersion < 7);
    TakeFields(fields);
  }
}

void Address::TakeFields(std::vector<CString>& fields) {
  if (fields.size() < static_cast<size_t>(FIELD_COUNT)) fields.resize(FIELD_COUNT);
  m_vecData.swap(fields);
}
