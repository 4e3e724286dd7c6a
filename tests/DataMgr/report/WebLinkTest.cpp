// Named web links and the sorted list that holds them.
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "DataMgr/report/WebLinkMgr.h"
#include "tests/support/ArchiveTestSupport.h"

using test_support::ByteWriter;

namespace {

// name=unique ID of each link, in list order.
std::string Described(const WebLinkMgr& links) {
  std::string text;
  for (size_t i = 0; i < links.GetCount(); ++i) {
    const WebLink& link = links.GetAt(i);
    text += (i > 0 ? " " : "") + link.GetName().GetStdString() + "=" + std::to_string(link.GetUniqueID());
  }
  return text;
}

// Links named as given, added in that order in a fresh run; the URL of x is
// http://x.
WebLinkMgr Added(std::initializer_list<const char*> names) {
  WebLink::m_nNextUniqueID = 1;
  WebLinkMgr links;
  for (const char* pszName : names) {
    WebLink link(pszName, CString("http://") + pszName);
    links.Add(link);
    EXPECT_EQ(link.GetUniqueID(), WebLink::m_nNextUniqueID - 1) << pszName;
  }
  return links;
}

}  // namespace

TEST(WebLinkTest, LinksSortedIgnoringCaseEditedByUniqueIdRemovedByName) {
  WebLinkMgr links = Added({"b", "A", "c"});
  EXPECT_EQ(Described(links), "A=2 b=1 c=3");
  EXPECT_EQ(links.GetLinkForName("a") + links.GetLinkForName("d"), "http://A");
  EXPECT_TRUE(links == Added({"C", "a", "B"}));
  EXPECT_FALSE(links == Added({"b", "A"}));
  try {
    links.GetAt(3);
    ADD_FAILURE() << "GetAt(3) did not throw";
  } catch (const std::out_of_range& e) {
    EXPECT_EQ(std::string(e.what()), "invalid vector<T> subscript");
  }
  // Update renames in place; Add sorts again, ignoring case.
  links = Added({"b", "A", "c"});
  WebLink link;
  ASSERT_TRUE(links.GetLinkID(2, link));
  link.SetName("Z");
  EXPECT_TRUE(links.Update(link));
  EXPECT_EQ(Described(links), "Z=2 b=1 c=3");
  WebLink stranger("B", "");
  EXPECT_FALSE(links.Update(stranger) || links.GetLinkID(9, link));
  links.Remove(stranger);
  links.Remove(stranger);
  links.Add(stranger);
  EXPECT_EQ(Described(links), "B=4 c=3 Z=2");
}

// Loading sorts and gives fresh IDs each time; version 2 has a 32-bit
// counter.
TEST(WebLinkTest, ArchivesOfEveryVersion) {
  WebLinkMgr links = Added({"b", "A"});
  ByteWriter current;
  current.Word(3).Counter(2, false);                 // version, link count
  current.Word(1).Text("A").Text("http://A");        // link: version, name, URL
  current.Word(1).Text("b").Text("http://b");        // link
  test_support::ExpectArchiveForm(links, current.Get());
  ByteWriter version2;
  version2.Word(2).Counter(2, true);                 // version, link count
  version2.Word(1).Text("y").Text("Y");              // link
  version2.Word(1).Text("X").Text("");               // link
  WebLink::m_nNextUniqueID = 10;
  for (const char* pszExpected : {"X=11 y=10", "X=13 y=12"}) {
    test_support::LoadAll(version2.Get(), links);
    EXPECT_EQ(Described(links), pszExpected);
  }
  test_support::ExpectEveryCutThrowsEndOfFile(version2.Get(), [](CArchive& ar) { WebLinkMgr().Serialize(ar); });
}
