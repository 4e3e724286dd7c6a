#include "DataMgr/schema/AddressBook.h"

#include <gtest/gtest.h>

#include "tests/DataMgr/schema/SchemaArchiveWriter.h"
#include "tests/support/LocaleTestSupport.h"

using schema_test::AddressBookRecord;
using schema_test::AddressFields;
using schema_test::AddressRecord;
using test_support::ByteWriter;
using test_support::Bytes;
using test_support::ExpectEveryCutThrowsEndOfFile;
using test_support::Load;
using test_support::Store;
using test_support::ToHex;

namespace {

class AddressBookTest : public test_support::UsLocaleTest {};

Address* Named(const char* name, int nID) {
  auto* address = new Address;
  address->SetData(Address::Name, name);
  address->SetID(nID);
  return address;
}

}  // namespace

TEST_F(AddressBookTest, AddAssignsOrRaisesTheNextID) {
  AddressBook book;
  book.Add(nullptr, true);
  EXPECT_EQ(book.GetCount(), 0u);
  book.Add(Named("a", -1), true);
  book.Add(Named("b", 7), false);
  book.Add(Named("c", 3), false);
  book.Add(Named("d", -1), true);
  EXPECT_EQ(book.GetAt(0)->GetID(), 0);
  EXPECT_EQ(book.GetAt(3)->GetID(), 8);
  EXPECT_EQ(book.GetByID(3)->GetData(Address::Name), "c");
  EXPECT_EQ(book.GetByID(-1), nullptr);
  EXPECT_EQ(book.GetByID(5), nullptr);
  EXPECT_EQ(book.GetAt(4), nullptr);

  bool bFound = true;
  EXPECT_EQ(book.GetIndex(book.GetByID(7), bFound), 1u);
  EXPECT_TRUE(bFound);
  Address stranger;
  EXPECT_EQ(book.GetIndex(&stranger, bFound), 4u);
  EXPECT_FALSE(bFound);
  EXPECT_EQ(book.GetIndex(nullptr, bFound), 4u);
  EXPECT_FALSE(bFound);
}

TEST_F(AddressBookTest, GetByNameIgnoresCaseAndCreatesOnRequest) {
  AddressBook book;
  EXPECT_EQ(book.GetByName("Ann", false), nullptr);
  Address* ann = book.GetByName("Ann", true);
  ASSERT_NE(ann, nullptr);
  EXPECT_EQ(ann->GetID(), 0);
  EXPECT_EQ(book.GetByName("ANN", false), ann);
  EXPECT_EQ(book.GetByName("Bo", false), nullptr);
  EXPECT_EQ(book.GetByName("", true), nullptr);
  EXPECT_EQ(book.GetCount(), 1u);
  EXPECT_EQ(book.GetByName("Bo", true)->GetID(), 1);
}

TEST_F(AddressBookTest, SortsByNameIgnoringCaseAndListsNames) {
  AddressBook book;
  book.Add(Named("carl", 0), false);
  book.Add(Named("Anna", 1), false);
  book.Add(Named("bert", 2), false);
  book.Sort();
  TextArray names;
  names.Add("first");
  book.GetNames(names);
  ASSERT_EQ(names.GetSize(), 4);
  EXPECT_EQ(names[1], "Anna");
  EXPECT_EQ(names[2], "bert");
  EXPECT_EQ(names[3], "carl");

  Address a;
  EXPECT_TRUE(AddressBook::SortCompareAddresses(nullptr, &a));
  EXPECT_FALSE(AddressBook::SortCompareAddresses(&a, nullptr));
  EXPECT_FALSE(AddressBook::SortCompareAddresses(nullptr, nullptr));
}

TEST_F(AddressBookTest, DeleteAndDeleteAll) {
  AddressBook book;
  book.Add(Named("a", 4), false);
  book.Add(Named("b", 5), false);
  book.Delete(4);
  book.Delete(99);
  EXPECT_EQ(book.GetCount(), 1u);
  book.DeleteAll(false);
  book.Add(Named("c", -1), true);
  EXPECT_EQ(book.GetAt(0)->GetID(), 6);
  book.DeleteAll(true);
  book.Add(Named("d", -1), true);
  EXPECT_EQ(book.GetAt(0)->GetID(), 0);
}

TEST_F(AddressBookTest, FlagAndUsageReachEveryAddress) {
  AddressBook book;
  book.Add(Named("a", 0), false);
  book.GetAt(0)->RegisterUsage();
  book.SetIsBusiness(false);
  EXPECT_FALSE(book.GetIsBusiness());
  EXPECT_FALSE(book.GetAt(0)->GetIsBusiness());
  book.ClearUsageCounts();
  EXPECT_EQ(book.GetAt(0)->GetUsageCount(), 0);
}

TEST_F(AddressBookTest, CopiesAreDeep) {
  AddressBook book;
  book.Add(Named("a", 3), false);
  AddressBook copy(book);
  copy.GetAt(0)->SetData(Address::Name, "changed");
  EXPECT_EQ(book.GetAt(0)->GetData(Address::Name), "a");
  EXPECT_EQ(copy.GetAt(0)->GetID(), 3);
  AddressBook assigned;
  assigned.Add(Named("x", 0), false);
  assigned = book;
  ASSERT_EQ(assigned.GetCount(), 1u);
  assigned.Add(new Address, true);
  EXPECT_EQ(assigned.GetAt(1)->GetID(), 4);
  assigned = assigned;
  EXPECT_EQ(assigned.GetCount(), 2u);
}

TEST_F(AddressBookTest, StoresVersionThreeAndRoundTrips) {
  AddressBook book;
  book.SetIsBusiness(false);
  book.Add(Named("Al", 2), false);  // keeps its own business flag
  const Bytes stored = Store([&](CArchive& ar) { book.Serialize(ar); });
  const Bytes expected = AddressBookRecord({AddressRecord(7, true, 2, 0, AddressFields("Al", "United States"))}, false);
  EXPECT_EQ(ToHex(stored), ToHex(expected));
  AddressBook loaded;
  loaded.Add(Named("gone", 0), false);
  EXPECT_EQ(Load(stored, [&](CArchive& ar) { loaded.Serialize(ar); }), 0u);
  EXPECT_EQ(ToHex(Store([&](CArchive& ar) { loaded.Serialize(ar); })), ToHex(stored));
  loaded.Add(new Address, true);
  EXPECT_EQ(loaded.GetAt(1)->GetID(), 3);
}

TEST_F(AddressBookTest, LoadsVersionOneWithoutFlag) {
  const Bytes v1 =
      ByteWriter().Word(1).Counter(1, true).Raw(AddressRecord(7, true, 5, 0, AddressFields("Z", ""))).Get();
  AddressBook book;
  book.SetIsBusiness(false);
  EXPECT_EQ(Load(v1, [&](CArchive& ar) { book.Serialize(ar); }), 0u);
  EXPECT_FALSE(book.GetIsBusiness());
  ASSERT_EQ(book.GetCount(), 1u);
  EXPECT_EQ(book.GetAt(0)->GetID(), 5);
}

TEST_F(AddressBookTest, CutAndOversizedCountsThrow) {
  const Bytes full = AddressBookRecord(
      {AddressRecord(7, true, 0, 1, AddressFields("A", "")), AddressRecord(7, true, 1, 0, AddressFields("B", ""))},
      true);
  ExpectEveryCutThrowsEndOfFile(full, [](CArchive& ar) {
    AddressBook book;
    book.Serialize(ar);
  });
  const Bytes huge = ByteWriter().Word(3).Counter(1ull << 40, false).Get();
  AddressBook book;
  EXPECT_THROW(Load(huge, [&](CArchive& ar) { book.Serialize(ar); }), CArchiveException);
}
