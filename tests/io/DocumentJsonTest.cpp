// The JSON form of a document: the demo collection and a document of
// unusual content come back byte for byte in their archives, each cell
// takes the form docs/JSON.md gives it, and JSON that is no document is
// reported with where and why, leaving the document as it was.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <functional>
#include <limits>
#include <nlohmann/json.hpp>
#include <string>

#include "DataMgr/document/DataMgmt.h"
#include "DataMgr/schema/ListItemDouble.h"
#include "io/DemoDocument.h"
#include "io/DocumentJson.h"
#include "tests/support/ArchiveTestSupport.h"

namespace {

using test_support::Bytes;

Bytes ArchiveOf(DataMgmt& doc) {
  return test_support::Store([&](CArchive& ar) { doc.Serialize(ar); });
}

void ExpectLossless(DataMgmt& doc, const std::string& name) {
  const Bytes original = ArchiveOf(doc);
  const std::string json = DocumentJson::Write(doc, true);
  DataMgmt read;
  CString error;
  ASSERT_TRUE(DocumentJson::Read(json, read, error)) << name << ": " << error;
  EXPECT_EQ(test_support::ToHex(ArchiveOf(read)), test_support::ToHex(original)) << name;
  EXPECT_EQ(DocumentJson::Write(read, false), DocumentJson::Write(doc, false)) << name;
  // Keys sorted put the items before the columns: read whole, not item by item.
  DataMgmt sorted;
  ASSERT_TRUE(DocumentJson::Read(nlohmann::json::parse(json).dump(), sorted, error)) << name << ": " << error;
  EXPECT_EQ(test_support::ToHex(ArchiveOf(sorted)), test_support::ToHex(original)) << name << " sorted";
}

double FromBits(std::uint64_t nBits) {
  double dValue = 0.0;
  std::memcpy(&dValue, &nBits, sizeof dValue);
  return dValue;
}

DataProp* Column(DataType::Type nType, int nID) {
  auto* pProp = new DataProp;
  pProp->SetDataType(nType);
  pProp->SetID(nID);
  return pProp;
}

// What the demo collection lacks: an empty application slot, a column of an
// unassigned type number, a decimal list, a text with a 4-byte character
// that is no UTF-8 as a whole, NaNs and infinities, a time out of range,
// values in two kinds or under no column, and unsorted sub-items naming
// another parent.
void FillUnusual(DataMgmt& doc) {
  DataPropMgr& registry = doc.GetDataPropMgr();
  registry.AddApp(Column(DataType::Text, 0), false);
  registry.AddApp(nullptr, false);
  registry.AddApp(Column(DataType::Decimal, 2), false);
  doc.AddDataProp(Column(static_cast<DataType::Type>(17), 0), true, false, false, false);  // 5000
  doc.AddDataProp(Column(DataType::DecimalListSuggested, 0), true, false, false, false);   // 5001
  static_cast<ListItemDouble*>(doc.GetDataPropMgr().GetByID(5001)->CreateListItem(true, -1))->SetNumber(2.5);
  DataItem& item = *doc.GetDataItemMgr().Create(nullptr, true, true);
  item.RegisterDataProp(0, CString("\xF0\x9F\x98\x80 \xFF caf\xE9"), false);
  item.RegisterDataProp(2, FromBits(0x7FF0000000000001ull));
  item.RegisterDataProp(5000, std::numeric_limits<double>::infinity());
  item.RegisterDataProp(5000, CString("x"), false);
  item.RegisterDataProp(9999, 7);
  item.SetLastModified(DateTime::FromJulian(5, 90000));
  for (double dValue : {-std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
    DataSubItem& subItem = *item.GetSubItemsMgr().Create(nullptr, true, true);
    subItem.RegisterDataProp(2, dValue);
    subItem.SetParentID(77);
  }
  item.GetSubItemsMgr().SetSort(false);
}

TEST(DocumentJsonTest, DocumentsComeBackByteForByte) {
  const std::pair<const char*, void (*)(DataMgmt&)> rows[] = {{"demo", &DemoDocument::Fill},
                                                              {"unusual", &FillUnusual}};
  for (const auto& [name, fill] : rows) {
    // As a file gives it: loading renumbers and rebuilds counters.
    DataMgmt made;
    fill(made);
    DataMgmt doc;
    test_support::Load(ArchiveOf(made), [&](CArchive& ar) { doc.Serialize(ar); });
    ExpectLossless(doc, name);
  }
}

TEST(DocumentJsonTest, EachCellTakesItsForm) {
  const std::string zeros(Money::GetFractionalDigits(), '0');
  const std::string point = zeros.empty() ? "" : ".";
  Money negativeZero;
  negativeZero.MakeNegative();
  const struct {
    DataType::Type nType;  // of column 5000; Icon keeps no values
    std::function<void(Data&)> store;
    std::string form;
  } rows[] = {
      {DataType::Text, [](Data& r) { r.RegisterDataProp(5000, CString("Dune"), false); }, "\"Dune\""},
      {DataType::Text, [](Data& r) { r.RegisterDataProp(5000, CString("caf\xE9"), false); },
       "{\"latin1\":\"caf\xC3\xA9\"}"},
      {DataType::Number, [](Data& r) { r.RegisterDataProp(5000, 1965); }, "1965"},
      {DataType::ValueListSelect, [](Data& r) { r.RegisterDataProp(5000, 3); }, "3"},
      {DataType::YesNo, [](Data& r) { r.RegisterDataProp(5000, true); }, "true"},
      {DataType::Decimal, [](Data& r) { r.RegisterDataProp(5000, 1.5); }, "1.5"},
      {DataType::Decimal, [](Data& r) { r.RegisterDataProp(5000, -0.0); }, "-0.0"},
      {DataType::Decimal, [](Data& r) { r.RegisterDataProp(5000, -std::numeric_limits<double>::infinity()); },
       "\"-Infinity\""},
      {DataType::Decimal, [](Data& r) { r.RegisterDataProp(5000, std::numeric_limits<double>::quiet_NaN()); },
       "\"NaN\""},
      {DataType::Decimal, [](Data& r) { r.RegisterDataProp(5000, FromBits(0x7FF0000000000001ull)); },
       "\"NaN:0x7ff0000000000001\""},
      {DataType::Monetary, [](Data& r) { r.RegisterDataProp(5000, Money(-12)); }, "\"-12" + point + zeros + "\""},
      {DataType::Monetary, [&](Data& r) { r.RegisterDataProp(5000, negativeZero); }, "\"-0" + point + zeros + "\""},
      {DataType::Date, [](Data& r) { r.RegisterDataProp(5000, DateTime(2011, 5, 1)); }, "\"2011-05-01\""},
      {DataType::Date, [](Data& r) { r.RegisterDataProp(5000, DateTime(2011, 5, 1, 10, 15, 7)); },
       "\"2011-05-01T10:15:07\""},
      {DataType::Time, [](Data& r) { r.RegisterDataProp(5000, DateTime::FromJulian(DateTime::NO_DATE, 36900)); },
       "\"10:15:00\""},
      {DataType::Time, [](Data& r) { r.RegisterDataProp(5000, DateTime()); }, "null"},
      {DataType::Date, [](Data& r) { r.RegisterDataProp(5000, DateTime::FromJulian(5, 90000)); },
       "{\"julianDay\":5,\"secondsOfDay\":90000}"},
      {DataType::Text, [](Data& r) { r.RegisterDataProp(5000, 7); }, "{\"int\":7}"},
      {DataType::Icon, [](Data& r) { r.RegisterDataProp(5000, CString("x"), false); }, "{\"text\":\"x\"}"},
      {DataType::YesNo,
       [](Data& r) {
         r.RegisterDataProp(5000, true);
         r.RegisterDataProp(5000, CString("y"), false);
       },
       "{\"bool\":true,\"text\":\"y\"}"},
  };
  for (const auto& row : rows) {
    DataMgmt doc;
    auto* pProp = new DataProp;
    pProp->SetDataType(row.nType);
    doc.AddDataProp(pProp, true, false, false, false);
    row.store(*doc.GetDataItemMgr().Create(nullptr, true, true));
    const auto json = nlohmann::json::parse(DocumentJson::Write(doc, false));
    EXPECT_EQ(json["items"][0]["values"]["5000"].dump(), row.form) << row.form;
  }
}

TEST(DocumentJsonTest, JsonThatIsNoDocumentIsReportedAndChangesNothing) {
  const std::string head = "{\"format\": \"vaxo057 document\", \"version\": 1, ";
  // Every member the writer puts before the items: these are read item by item.
  const std::string wholeHead = head +
                                "\"exportPath\": \"\", \"registryID\": 0, \"displayOrder\": [], "
                                "\"applicationColumns\": [], \"userColumns\": [], ";
  const std::string dateColumn = "\"userColumns\": [{\"id\": 5000, \"name\": \"D\", \"type\": \"Date\"}], ";
  const struct {
    std::string json;
    std::string error;
  } rows[] = {
      {"{\"format\": ",
       "parse error at line 1, column 12: syntax error while parsing value - unexpected end of "
       "input; expected '[', '{', or a literal"},
      {"[]", "at the top: expected an object"},
      {"{\"format\": \"other\", \"version\": 1}", "at /format: expected \"vaxo057 document\""},
      {"{\"format\": \"vaxo057 document\", \"version\": 2}",
       "at /version: written by a newer version (2) of the library"},
      {head + "\"userColumns\": [{\"id\": 5000, \"name\": \"A\", \"type\": \"Colour\"}]}",
       "at /userColumns/0/type: expected the name of a data type"},
      {head + "\"userColumns\": [{\"id\": 5000, \"name\": \"A\", \"type\": \"Text\", \"flags\": {\"bold\": true}}]}",
       "at /userColumns/0/flags/bold: no such flag"},
      {head + "\"userColumns\": [{\"id\": 5000, \"name\": \"A\", \"type\": \"Text\", \"entries\": []}]}",
       "at /userColumns/0/entries: only list columns have entries"},
      {head + "\"items\": [{\"id\": 3000000000}]}",
       "at /items/0/id: the number is out of the range of a 32-bit integer"},
      {head + "\"items\": [{\"values\": {}}]}", "at /items/0: \"id\" is missing"},
      {head + dateColumn + "\"items\": [{\"id\": 0, \"values\": {\"5000\": \"2011-13-01\"}}]}",
       "at /items/0/values/5000: expected a date and time such as \"2011-05-01T10:15:00\", \"2011-05-01\" or "
       "\"10:15:00\""},
      {head + dateColumn + "\"items\": [{\"id\": 0, \"values\": {\"05000\": null}}]}",
       "at /items/0/values/05000: a value's key is a column ID"},
      {head + "\"items\": [{\"id\": 0, \"values\": {\"9999\": 1}}]}",
       "at /items/0/values/9999: column 9999 keeps no values of its own: write the value's kind, as in {\"text\": "
       "...}"},
      {head + "\"items\": [{\"id\": 0, \"values\": {\"9999\": {\"money\": \"1." +
           std::string(Money::GetFractionalDigits() + 1, '5') + "\"}}}]}",
       "at /items/0/values/9999/money: more fractional digits than the currency's " +
           std::to_string(Money::GetFractionalDigits())},
      {wholeHead + "\"items\": [{\"id\": 0}, 5]}", "at /items/1: expected an object"},
      {wholeHead + "\"items\": [{\"id\": 0}, {\"id\": 1.5}]}", "at /items/1/id: expected a whole number"},
      {wholeHead + "\"items\": [], \"items\": []}", "at /items: the items come twice"},
      {wholeHead + "\"items\": [{\"id\": 0}], ",
       "parse error at line 1, column 168: syntax error while parsing object key - unexpected end of input; "
       "expected string literal"},
      {head + "\"exportPath\": {\"latin1\": \"\\u0100\"}}",
       "at /exportPath/latin1: a character beyond U+00FF has no byte"},
  };
  for (const auto& row : rows) {
    DataMgmt doc;
    doc.SetMRUExportPath("kept");
    CString error;
    EXPECT_FALSE(DocumentJson::Read(row.json, doc, error)) << row.json;
    EXPECT_EQ(error.GetStdString(), row.error) << row.json;
    EXPECT_EQ(doc.GetMRUExportPath(), "kept") << row.json;
  }
}

}  // namespace
