#ifndef DATAMGR_SCHEMA_ADDRESS_H_
#define DATAMGR_SCHEMA_ADDRESS_H_

#include <vector>

#include "DataMgr/Export.h"
#include "framework/CArchive.h"
#include "framework/CString.h"

// One address of an address-book column: eighteen text fields, a business
// flag (which renames the three phone fields), an ID within its book and the
// count of cells that refer to it. Owned by its AddressBook. A new address is
// a business address with ID -1, count 0 and the user's country in Country.
//
// Copy construction copies everything; assignment copies everything but the
// ID, so the target keeps its identity. Comparison ignores the ID, the count
// and the letter case of the texts. The usage count never goes below 0.
class VAXO057_API Address {
 public:
  // DO NOT CHANGE these values: the field texts are stored in this order.
  enum Field : int {
    Name = 0,
    Street = 1,
    City = 2,
    StateProvince = 3,
    ZipPostalCode = 4,
    Country = 5,
    Email = 6,
    WebSite = 7,
    Facebook = 8,
    Twitter = 9,
    Phone1 = 10,
    Phone2 = 11,
    Phone3 = 12,
    Fax = 13,
    Notes = 14,
    Photo = 15,
    Map = 16,
    SpecialDate = 17,
  };

  Address();
  Address(const Address& other) = default;
  Address& operator=(const Address& other);

  bool operator==(const Address& other) const;
  bool operator<(const Address& other) const;

  bool GetIsBusiness() const { return m_bIsBusiness; }
  void SetIsBusiness(bool bIsBusiness) { m_bIsBusiness = bIsBusiness; }
  int GetID() const { return m_nID; }
  void SetID(int nID) { m_nID = nID; }
  int GetUsageCount() const { return m_nUsageCount; }
  void SetUsageCount(int nCount) { m_nUsageCount = nCount; }

  // Unknown fields read as empty and are not written.
  CString GetData(Field nField) const;
  void SetData(Field nField, const CString& text);

  // Fills an empty field; false, with nothing changed, when text is empty or
  // the field already holds text.
  bool ImportData(Field nField, const CString& text);
  // Every field empty here takes other's text.
  void ImportMissingData(const Address& other);
  // Whether some field equals text in full; false for an empty text.
  bool Have(const CString& text, bool bCaseSensitive) const;
  // Empties the texts; flag, ID and count stay.
  void Clear();

  void ClearUsageCount() { m_nUsageCount = 0; }
  void RegisterUsage();
  void UnregisterUsage();

  static int GetDataFieldCount() { return FIELD_COUNT; }
  // The field's name; the phone fields are named by bBusiness. Empty for an
  // unknown field.
  static CString GetTextFromField(Field nField, bool bBusiness);
  // The field named by text (case-sensitive), business or private names
  // alike; Name for any other text.
  static Field GetFieldFromText(const CString& text);

  void Serialize(CArchive& ar);

 private:
  static const int FIELD_COUNT = 18;

  static bool IsField(Field nField) { return nField >= 0 && nField < FIELD_COUNT; }
  void LoadFields(CArchive& ar, WORD nVersion);
  // Pads fields to every field and makes them the address's fields.
  void TakeFields(std::vector<CString>& fields);

  bool m_bIsBusiness = true;
  int m_nID = -1;
  int m_nUsageCount = 0;
  // At least FIELD_COUNT texts, indexed by Field.
  std::vector<CString> m_vecData;
};

#endif  // DATAMGR_SCHEMA_ADDRESS_H_
