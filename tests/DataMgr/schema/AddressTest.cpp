#include "DataMgr/schema/Address.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/DataMgr/schema/SchemaArchiveWriter.h"
#include "tests/support/LocaleTestSupport.h"

using schema_test::AddressRecord;
using schema_test::Enciphered;
using test_support::ByteWriter;
using test_support::Bytes;
using test_support::Load;
using test_support::Stored;
using test_support::ToHex;

namespace {

class AddressTest : public test_support::UsLocaleTest {};

Address::Field F(int n) { return static_cast<Address::Field>(n); }

// The 18 field texts: prefix0, prefix1, ... for the first nCount fields,
// the rest empty.
std::vector<std::string> Numbered(const std::string& prefix, int nCount) {
  std::vector<std::string> fields(18);
  for (int i = 0; i < nCount; ++i) fields[i] = prefix + std::to_string(i);
  return fields;
}

// Plain field texts "f0", "f1", ... as an old-format text vector.
ByteWriter& PlainFields(ByteWriter& w, int nCount) {
  w.Counter(static_cast<unsigned>(nCount), true);
  for (int i = 0; i < nCount; ++i) w.Text("f" + std::to_string(i));
  return w;
}

}  // namespace

// The texts of a private address (both phone names map back) and of a
// business one; texts that are no field's give Name.
TEST_F(AddressTest, FieldTexts) {
  const char* const texts[] = {"Name",    "Street",  "City",       "State/Province", "Zip/Postal Code", "Country",
                               "e-mail",  "Web Site", "Facebook",  "Twitter",        "Home Phone",      "Work Phone",
                               "Cell Phone", "Fax",   "Notes",     "Photo",          "Map",             "Special Date"};
  for (int i = 0; i < 18; ++i) {
    const bool bPhone = i >= 10 && i <= 12;
    EXPECT_EQ(Address::GetTextFromField(F(i), false), texts[i]) << i;
    EXPECT_EQ(Address::GetTextFromField(F(i), true), bPhone ? "Phone #" + std::to_string(i - 9) : texts[i]) << i;
    EXPECT_EQ(Address::GetFieldFromText(texts[i]), F(i)) << texts[i];
    if (bPhone) {
      EXPECT_EQ(Address::GetFieldFromText(("Phone #" + std::to_string(i - 9)).c_str()), F(i)) << i;
    }
  }
  for (int n : {18, -1}) EXPECT_EQ(Address::GetTextFromField(F(n), true), "") << n;
  for (const char* pszText : {"fax", "Mobile", ""}) EXPECT_EQ(Address::GetFieldFromText(pszText), Address::Name);
}

// Import fills only empty fields; Have compares whole fields, case ignored
// unless asked; Clear empties the fields only; the usage count never goes
// below zero.
TEST_F(AddressTest, ImportHaveClearAndUsage) {
  Address address;
  EXPECT_FALSE(address.ImportData(Address::City, ""));
  EXPECT_TRUE(address.ImportData(Address::City, "Oslo"));
  EXPECT_FALSE(address.ImportData(Address::City, "Bergen"));
  Address other;
  other.SetData(Address::City, "Paris");
  other.SetData(Address::Email, "a@b.c");
  other.SetData(Address::Country, "");
  address.ImportMissingData(other);
  EXPECT_EQ(address.GetData(Address::City), "Oslo");
  EXPECT_EQ(address.GetData(Address::Country), "United States");
  EXPECT_TRUE(address.Have("A@B.C", false));
  EXPECT_FALSE(address.Have("A@B.C", true));
  EXPECT_FALSE(address.Have("", false));
  address.SetID(5);
  address.RegisterUsage();
  address.Clear();
  EXPECT_EQ(ToHex(Stored(address)), ToHex(AddressRecord(7, true, 5, 1, Numbered("", 0))));
  address.UnregisterUsage();
  address.UnregisterUsage();
  EXPECT_EQ(address.GetUsageCount(), 0);
}

// Equal by flag and fields, case ignored; ordered by name; the ID and the
// usage count take no part, and assignment keeps the target's ID.
TEST_F(AddressTest, EqualityOrderAndAssignment) {
  Address a;
  Address b;
  a.SetData(Address::Name, "Ann Lee");
  b.SetData(Address::Name, "ANN LEE");
  b.SetID(4);
  b.RegisterUsage();
  EXPECT_TRUE(a == b);
  b.SetIsBusiness(false);
  EXPECT_FALSE(a == b);
  b.SetIsBusiness(true);
  b.SetData(Address::Notes, "x");
  EXPECT_FALSE(a == b);
  Address c;
  c.SetData(Address::Name, "bob");
  EXPECT_TRUE(a < c);
  EXPECT_FALSE(c < a);

  Address target;
  target.SetID(2);
  target = b;
  EXPECT_EQ(target.GetID(), 2);
  target.SetID(4);
  EXPECT_EQ(ToHex(Stored(target)), ToHex(Stored(b)));
  EXPECT_EQ(Address(b).GetID(), 4);
}

// Every version, loaded into a fresh address and stored again as the
// current one: the fields each holds where they belong.
TEST_F(AddressTest, EveryVersionLoadsItsFields) {
  ByteWriter v1;
  v1.Word(1);
  for (int i = 0; i < 10; ++i) v1.Text(Enciphered("t" + std::to_string(i)));  // Street to Twitter, Notes
  std::vector<std::string> v1Fields(18);
  for (int i = 0; i < 9; ++i) v1Fields[1 + i] = "t" + std::to_string(i);
  v1Fields[Address::Notes] = "t9";
  ByteWriter v2, v3, v4, v5;
  PlainFields(v2.Word(2).Int(1).Bool(false), 15);
  PlainFields(v3.Word(3).Int(2).Bool(true), 17);
  PlainFields(v4.Word(4).Int(3).Bool(true), 18);
  PlainFields(v5.Word(5).Int(4).Bool(true), 18).Int(7);  // usage count
  const struct {
    const char* name;
    Bytes bytes;
    bool bBusiness;
    int nID, nCount;
    std::vector<std::string> fields;
  } rows[] = {
      {"1", v1.Int(6).Get(), true, 6, 0, v1Fields},
      {"2", v2.Get(), false, 1, 0, Numbered("f", 15)},
      {"3", v3.Get(), true, 2, 0, Numbered("f", 17)},
      {"4", v4.Get(), true, 3, 0, Numbered("f", 18)},
      {"5", v5.Get(), true, 4, 7, Numbered("f", 18)},
      {"6", AddressRecord(6, false, 8, 2, Numbered("o", 18)), false, 8, 2, Numbered("o", 18)},
      {"7", AddressRecord(7, true, 9, 1, Numbered("n", 18)), true, 9, 1, Numbered("n", 18)},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Address address = test_support::Loaded<Address>(row.bytes);
    EXPECT_EQ(ToHex(Stored(address)), ToHex(AddressRecord(7, row.bBusiness, row.nID, row.nCount, row.fields)));
    test_support::ExpectEveryCutThrowsEndOfFile(row.bytes, [](CArchive& ar) { Address().Serialize(ar); });
  }
}

TEST_F(AddressTest, UnknownVersionsReadNothingFurther) {
  for (unsigned nVersion : {0u, 8u}) {
    Address address;
    address.SetData(Address::Name, "kept");
    EXPECT_EQ(Load(ByteWriter().Word(nVersion).Int(1).Get(), [&](CArchive& ar) { address.Serialize(ar); }), 4u);
    EXPECT_EQ(address.GetData(Address::Name), "kept");
    EXPECT_EQ(address.GetID(), -1);
  }
}

// A load that fails inside the field texts keeps the fields the address
// had, all of them: it still stores every field and reads any field.
TEST_F(AddressTest, LoadFailingInsideTheFieldsKeepsEveryField) {
  const struct {
    unsigned nVersion;
    Bytes cut;  // ends inside the first field
    int nCount;
  } rows[] = {{4, ByteWriter().Word(4).Int(3).Bool(false).Counter(18, true).Text("Ann").Get(), 0},
              {7, ByteWriter().Word(7).Bool(false).Int(3).Int(1).Counter(18, false).Text(Enciphered("Ann")).Get(), 1}};
  for (const auto& row : rows) {
    Address address;
    address.SetData(Address::City, "Oslo");
    EXPECT_THROW(test_support::LoadAll(row.cut, address), CArchiveException);
    std::vector<std::string> fields(18);
    fields[Address::City] = "Oslo";
    fields[Address::Country] = "United States";
    EXPECT_EQ(ToHex(Stored(address)), ToHex(AddressRecord(7, false, 3, row.nCount, fields))) << row.nVersion;
    EXPECT_EQ(address.GetData(Address::SpecialDate), "");
  }
}
