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
using test_support::ExpectEveryCutThrowsEndOfFile;
using test_support::Load;

namespace {

class AddressTest : public test_support::UsLocaleTest {};

Address::Field F(int n) { return static_cast<Address::Field>(n); }

// Plain field texts "f0", "f1", ... as an old-format text vector.
ByteWriter& PlainFields(ByteWriter& w, int nCount) {
  w.Counter(static_cast<unsigned>(nCount), true);
  for (int i = 0; i < nCount; ++i) w.Text("f" + std::to_string(i));
  return w;
}

}  // namespace

TEST_F(AddressTest, NewAddressIsABusinessAddressInTheUsersCountry) {
  Address address;
  EXPECT_TRUE(address.GetIsBusiness());
  EXPECT_EQ(address.GetID(), -1);
  EXPECT_EQ(address.GetUsageCount(), 0);
  EXPECT_EQ(address.GetData(Address::Country), "United States");
  EXPECT_EQ(address.GetData(Address::Name), "");
  EXPECT_EQ(Address::GetDataFieldCount(), 18);
}

TEST_F(AddressTest, FieldTextsFollowTheBusinessFlag) {
  const char* const common[] = {"Name",    "Street",   "City",     "State/Province", "Zip/Postal Code",
                                "Country", "e-mail",   "Web Site", "Facebook",       "Twitter"};
  for (int i = 0; i < 10; ++i) {
    EXPECT_EQ(Address::GetTextFromField(F(i), false), common[i]);
    EXPECT_EQ(Address::GetTextFromField(F(i), true), common[i]);
    EXPECT_EQ(Address::GetFieldFromText(common[i]), F(i));
  }
  EXPECT_EQ(Address::GetTextFromField(Address::Phone1, false), "Home Phone");
  EXPECT_EQ(Address::GetTextFromField(Address::Phone2, false), "Work Phone");
  EXPECT_EQ(Address::GetTextFromField(Address::Phone3, false), "Cell Phone");
  EXPECT_EQ(Address::GetTextFromField(Address::Phone1, true), "Phone #1");
  EXPECT_EQ(Address::GetTextFromField(Address::Phone3, true), "Phone #3");
  EXPECT_EQ(Address::GetTextFromField(Address::SpecialDate, false), "Special Date");
  EXPECT_EQ(Address::GetTextFromField(F(18), true), "");
  EXPECT_EQ(Address::GetTextFromField(F(-1), true), "");
}

TEST_F(AddressTest, FieldFromTextKnowsBothPhoneNamesAndFallsBackToName) {
  EXPECT_EQ(Address::GetFieldFromText("Phone #1"), Address::Phone1);
  EXPECT_EQ(Address::GetFieldFromText("Home Phone"), Address::Phone1);
  EXPECT_EQ(Address::GetFieldFromText("Phone #2"), Address::Phone2);
  EXPECT_EQ(Address::GetFieldFromText("Work Phone"), Address::Phone2);
  EXPECT_EQ(Address::GetFieldFromText("Cell Phone"), Address::Phone3);
  EXPECT_EQ(Address::GetFieldFromText("Fax"), Address::Fax);
  EXPECT_EQ(Address::GetFieldFromText("Special Date"), Address::SpecialDate);
  EXPECT_EQ(Address::GetFieldFromText("fax"), Address::Name);
  EXPECT_EQ(Address::GetFieldFromText("Mobile"), Address::Name);
}

TEST_F(AddressTest, ImportFillsOnlyEmptyFields) {
  Address address;
  EXPECT_FALSE(address.ImportData(Address::City, ""));
  EXPECT_TRUE(address.ImportData(Address::City, "Oslo"));
  EXPECT_FALSE(address.ImportData(Address::City, "Bergen"));
  EXPECT_EQ(address.GetData(Address::City), "Oslo");

  Address other;
  other.SetData(Address::City, "Paris");
  other.SetData(Address::Fax, "123");
  other.SetData(Address::Country, "");
  address.ImportMissingData(other);
  EXPECT_EQ(address.GetData(Address::City), "Oslo");
  EXPECT_EQ(address.GetData(Address::Fax), "123");
  EXPECT_EQ(address.GetData(Address::Country), "United States");
}

TEST_F(AddressTest, EqualityIgnoresCaseIDAndCount) {
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
}

TEST_F(AddressTest, AssignmentKeepsTheTargetsID) {
  Address source;
  source.SetID(9);
  source.SetIsBusiness(false);
  source.RegisterUsage();
  source.SetData(Address::Name, "Kim");
  Address target;
  target.SetID(2);
  target = source;
  EXPECT_EQ(target.GetID(), 2);
  EXPECT_FALSE(target.GetIsBusiness());
  EXPECT_EQ(target.GetUsageCount(), 1);
  EXPECT_EQ(target.GetData(Address::Name), "Kim");
  EXPECT_EQ(Address(source).GetID(), 9);
}

TEST_F(AddressTest, HaveClearAndUsage) {
  Address address;
  address.SetData(Address::Email, "a@b.c");
  EXPECT_TRUE(address.Have("A@B.C", false));
  EXPECT_FALSE(address.Have("A@B.C", true));
  EXPECT_FALSE(address.Have("", false));
  address.SetID(5);
  address.RegisterUsage();
  address.Clear();
  EXPECT_FALSE(address.Have("a@b.c", true));
  EXPECT_EQ(address.GetData(Address::Country), "");
  EXPECT_EQ(address.GetID(), 5);
  EXPECT_EQ(address.GetUsageCount(), 1);
  address.UnregisterUsage();
  address.UnregisterUsage();
  EXPECT_EQ(address.GetUsageCount(), 0);
}

TEST_F(AddressTest, StoresVersionSevenAndRoundTrips) {
  Address address;
  address.SetIsBusiness(false);
  address.SetID(3);
  address.RegisterUsage();
  address.SetData(Address::Name, "Jo");
  test_support::ExpectArchiveForm(address, AddressRecord(7, false, 3, 1, schema_test::AddressFields("Jo", "United States")),
                                  [](const Address& loaded) { EXPECT_EQ(loaded.GetID(), 3); });
}

TEST_F(AddressTest, LoadsVersionOneTenEncipheredTextsThenID) {
  ByteWriter w;
  w.Word(1);
  for (int i = 0; i < 10; ++i) w.Text(Enciphered("t" + std::to_string(i)));
  Address address = test_support::Loaded<Address>(w.Int(6).Get());
  EXPECT_EQ(address.GetID(), 6);
  EXPECT_EQ(address.GetData(Address::Name), "");
  EXPECT_EQ(address.GetData(Address::Street), "t0");
  EXPECT_EQ(address.GetData(Address::Twitter), "t8");
  EXPECT_EQ(address.GetData(Address::Phone1), "");
  EXPECT_EQ(address.GetData(Address::Notes), "t9");
}

TEST_F(AddressTest, LoadsVersionsTwoToFiveWithPlainFields) {
  ByteWriter v2;
  v2.Word(2).Int(1).Bool(false);
  Address a2 = test_support::Loaded<Address>(PlainFields(v2, 15).Get());
  EXPECT_EQ(a2.GetID(), 1);
  EXPECT_FALSE(a2.GetIsBusiness());
  EXPECT_EQ(a2.GetData(Address::Notes), "f14");
  EXPECT_EQ(a2.GetData(Address::SpecialDate), "");

  ByteWriter v3;
  v3.Word(3).Int(2).Bool(true);
  Address a3 = test_support::Loaded<Address>(PlainFields(v3, 17).Get());
  EXPECT_EQ(a3.GetData(Address::Map), "f16");
  EXPECT_EQ(a3.GetData(Address::SpecialDate), "");

  ByteWriter v4;
  v4.Word(4).Int(3).Bool(true);
  EXPECT_EQ(test_support::Loaded<Address>(PlainFields(v4, 18).Get()).GetData(Address::SpecialDate), "f17");

  ByteWriter v5;
  v5.Word(5).Int(4).Bool(true);
  PlainFields(v5, 18).Int(7);
  Address a5 = test_support::Loaded<Address>(v5.Get());
  EXPECT_EQ(a5.GetUsageCount(), 7);
  EXPECT_EQ(a5.GetData(Address::Name), "f0");
}

TEST_F(AddressTest, LoadsVersionSixWithOldCounter) {
  Address address = test_support::Loaded<Address>(AddressRecord(6, true, 8, 2, schema_test::AddressFields("Old", "")));
  EXPECT_EQ(address.GetID(), 8);
  EXPECT_EQ(address.GetUsageCount(), 2);
  EXPECT_EQ(address.GetData(Address::Name), "Old");
}

TEST_F(AddressTest, UnknownVersionsReadNothingFurther) {
  for (unsigned nVersion : {0u, 8u}) {
    Address address;
    address.SetData(Address::Name, "kept");
    const Bytes bytes = ByteWriter().Word(nVersion).Int(1).Get();
    EXPECT_EQ(Load(bytes, [&](CArchive& ar) { address.Serialize(ar); }), 4u);
    EXPECT_EQ(address.GetData(Address::Name), "kept");
    EXPECT_EQ(address.GetID(), -1);
  }
}

TEST_F(AddressTest, ShortFieldVectorIsPaddedToAllFields) {
  ByteWriter w;
  w.Word(4).Int(1).Bool(true);
  Address address = test_support::Loaded<Address>(PlainFields(w, 2).Get());
  EXPECT_EQ(address.GetData(Address::Street), "f1");
  EXPECT_EQ(address.GetData(Address::SpecialDate), "");
  address.SetData(Address::SpecialDate, "today");
  EXPECT_EQ(address.GetData(Address::SpecialDate), "today");
}

TEST_F(AddressTest, CutRecordsThrowEndOfFile) {
  ByteWriter v1;
  v1.Word(1);
  for (int i = 0; i < 10; ++i) v1.Text("x");
  v1.Int(1);
  ByteWriter v5;
  v5.Word(5).Int(4).Bool(true);
  PlainFields(v5, 18).Int(7);
  for (const Bytes& full : {v1.Get(), v5.Get()}) {
    ExpectEveryCutThrowsEndOfFile(full, [](CArchive& ar) {
      Address address;
      address.Serialize(ar);
    });
  }
}

// A load that fails inside the field texts keeps the fields the address
// had, all of them: it still stores every field and reads any field.
TEST_F(AddressTest, LoadFailingInsideTheFieldsKeepsEveryField) {
  for (unsigned nVersion : {4u, 7u}) {
    ByteWriter cut;
    if (nVersion == 4) {
      cut.Word(4).Int(3).Bool(false).Counter(18, true).Text("Ann");
    } else {
      cut.Word(7).Bool(false).Int(3).Int(1).Counter(18, false).Text(Enciphered("Ann"));
    }
    Address address;
    address.SetData(Address::City, "Oslo");
    EXPECT_THROW(Load(cut.Get(), [&](CArchive& ar) { address.Serialize(ar); }), CArchiveException);
    std::vector<std::string> fields(18);
    fields[Address::City] = "Oslo";
    fields[Address::Country] = "United States";
    const Bytes stored = test_support::Store([&](CArchive& ar) { address.Serialize(ar); });
    EXPECT_EQ(test_support::ToHex(stored),
              test_support::ToHex(AddressRecord(7, false, 3, nVersion == 7 ? 1 : 0, fields)))
        << "version " << nVersion;
    EXPECT_EQ(address.GetData(Address::SpecialDate), "");
  }
}
