#include "DataMgr/schema/AddressBook.h"

#include <gtest/gtest.h>

#include "tests/DataMgr/schema/SchemaArchiveWriter.h"
#include "tests/support/LocaleTestSupport.h"
#include "tests/support/TextArraySupport.h"

using schema_test::AddressBookRecord;
using schema_test::AddressFields;
using schema_test::AddressRecord;
using test_support::ByteWriter;
using test_support::Bytes;
using test_support::Load;
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

// Added addresses take the next ID or raise it past their own.
TEST_F(AddressBookTest, AddAssignsOrRaisesTheNextID) {
  AddressBook book;
  book.Add(nullptr, true);
  book.Add(Named("a", -1), true);
  book.Add(Named("b", 7), false);
  book.Add(Named("d", -1), true);
  EXPECT_EQ(book.GetCount(), 3u);
  EXPECT_EQ(book.GetAt(0)->GetID(), 0);
  EXPECT_EQ(book.GetByID(8)->GetData(Address::Name), "d");
  EXPECT_EQ(book.GetByID(-1), nullptr);
  EXPECT_EQ(book.GetByID(5), nullptr);
  EXPECT_EQ(book.GetAt(3), nullptr);
  bool bFound = false;
  EXPECT_EQ(book.GetIndex(book.GetByID(7), bFound), 1u);
  EXPECT_TRUE(bFound);
  Address stranger;
  for (const Address* pAddress : {&stranger, static_cast<Address*>(nullptr)}) {
    EXPECT_EQ(book.GetIndex(pAddress, bFound), 3u);
    EXPECT_FALSE(bFound);
  }
}

// Names are found and sorted ignoring case; a name not found is added on
// request, an empty one never.
TEST_F(AddressBookTest, NamesFoundAndSortedIgnoringCase) {
  AddressBook book;
  book.Add(Named("carl", 0), false);
  book.Add(Named("Anna", 1), false);
  EXPECT_EQ(book.GetByName("ANNA", false), book.GetAt(1));
  EXPECT_EQ(book.GetByName("bert", false), nullptr);
  EXPECT_EQ(book.GetByName("bert", true)->GetID(), 2);
  EXPECT_EQ(book.GetByName("", true), nullptr);
  book.Sort();
  TextArray names = test_support::MakeTextArray({"first"});
  book.GetNames(names);
  EXPECT_EQ(test_support::Elements(names), (std::vector<std::string>{"first", "Anna", "bert", "carl"}));
  Address a;
  EXPECT_TRUE(AddressBook::SortCompareAddresses(nullptr, &a));
  EXPECT_FALSE(AddressBook::SortCompareAddresses(&a, nullptr));
  EXPECT_FALSE(AddressBook::SortCompareAddresses(nullptr, nullptr));
}

// Deleting keeps the next ID unless told to reset it (the column's
// tests reset it); copies are deep and take the flag and the next ID.
TEST_F(AddressBookTest, DeleteAndCopies) {
  AddressBook book;
  book.Add(Named("a", 4), false);
  book.Add(Named("b", 5), false);
  book.Delete(4);
  book.Delete(99);
  EXPECT_EQ(book.GetCount(), 1u);
  book.SetIsBusiness(false);
  AddressBook copy(book);
  copy.GetAt(0)->SetData(Address::Name, "changed");
  EXPECT_EQ(book.GetAt(0)->GetData(Address::Name), "b");
  AddressBook assigned;
  assigned.Add(Named("x", 0), false);
  assigned = book;
  assigned = assigned;
  ASSERT_EQ(assigned.GetCount(), 1u);
  EXPECT_FALSE(assigned.GetIsBusiness());
  assigned.Add(new Address, true);
  EXPECT_EQ(assigned.GetAt(1)->GetID(), 6);
  book.DeleteAll(false);
  book.Add(Named("c", -1), true);
  EXPECT_EQ(book.GetAt(0)->GetID(), 6);
}

// Every version; loading replaces the addresses and raises the next ID.
// Version 1 has no business flag (the book keeps its own), 2 has one, 3
// the new counter.
TEST_F(AddressBookTest, EveryVersionLoadsAndEveryCutThrows) {
  const Bytes a = AddressRecord(7, true, 5, 1, AddressFields("A", ""));
  const Bytes b = AddressRecord(7, false, 1, 0, AddressFields("B", ""));
  const struct {
    const char* name;
    Bytes bytes;
    bool bBusiness;
  } rows[] = {{"1", ByteWriter().Word(1).Counter(2, true).Raw(a).Raw(b).Get(), false},
              {"2", ByteWriter().Word(2).Counter(2, true).Raw(a).Raw(b).Bool(true).Get(), true},
              {"3", AddressBookRecord({a, b}, true), true}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    AddressBook book;
    book.SetIsBusiness(false);
    book.Add(Named("gone", 0), false);
    test_support::LoadAll(row.bytes, book);
    EXPECT_EQ(book.GetIsBusiness(), row.bBusiness);
    EXPECT_EQ(ToHex(test_support::Stored(book)), ToHex(AddressBookRecord({a, b}, row.bBusiness)));
    book.Add(new Address, true);
    EXPECT_EQ(book.GetAt(2)->GetID(), 6);
    test_support::ExpectEveryCutThrowsEndOfFile(row.bytes, [](CArchive& ar) { AddressBook().Serialize(ar); });
  }
  AddressBook book;
  EXPECT_THROW(Load(ByteWriter().Word(3).Counter(1ull << 40, false).Get(), [&](CArchive& ar) { book.Serialize(ar); }),
               CArchiveException);
}
