#ifndef BENCH_TENCOLUMNDOCUMENT_H_
#define BENCH_TENCOLUMNDOCUMENT_H_

// The document the filter, search and export benchmarks work on: items of
// ten user columns (two texts, a suggested value list of 20 entries, two
// numbers, a duration, a yes/no, a decimal, a monetary value and a date),
// values set directly rather than typed, no sub-items. Item n holds n in
// NUMBER and, in LONG_TEXT, "Notes about item n of the list" when n is odd
// and "Notes on item n of the list" when it is even.

#include <vector>

#include "DataMgr/document/DataMgmt.h"
#include "utility/LocaleUtils.h"

namespace bench {

enum Column { SHORT_TEXT, LONG_TEXT, CATEGORY, NUMBER, SMALL_NUMBER, DURATION, YES_NO, DECIMAL, MONEY, DATE };
const DataType::Type TEN_TYPES[] = {DataType::Text,     DataType::Text,   DataType::ValueListSuggested,
                                    DataType::Number,   DataType::Number, DataType::Duration,
                                    DataType::YesNo,    DataType::Decimal, DataType::Monetary,
                                    DataType::Date};

// Adds the ten columns and nItems items to doc; returns the column IDs in
// the order of Column.
inline std::vector<int> FillTenColumnDocument(DataMgmt& doc, int nItems) {
  LocaleUtils::SetNumberDecimalSeparator(".");
  LocaleUtils::SetDateOrder(LocaleUtils::MONTH_DAY_YEAR);
  std::vector<int> ids;
  for (DataType::Type nType : TEN_TYPES) {
    auto* pProp = new DataProp;
    pProp->SetDataType(nType);
    doc.AddDataProp(pProp, true, false, false, false);
    ids.push_back(pProp->GetID());
  }
  for (int n = 0; n < nItems; ++n) {
    DataItem& item = *doc.CreateDataItem(nullptr, true, true);
    CString text;
    text.Format("Record %d", n);
    item.SetData(ids[SHORT_TEXT], text, false);
    text.Format(n % 2 ? "Notes about item %d of the list" : "Notes on item %d of the list", n);
    item.SetData(ids[LONG_TEXT], text, false);
    text.Format("Category %d", n % 20);
    bool bRedisplay = false;
    doc.SetData(item, ids[CATEGORY], text, bRedisplay, false);
    item.SetData(ids[NUMBER], n, false);
    item.SetData(ids[SMALL_NUMBER], n % 17, false);
    item.SetData(ids[DURATION], n % 5400, false);
    item.SetData(ids[YES_NO], n % 3 == 0, false);
    item.SetData(ids[DECIMAL], n % 1000 + 0.5, false);
    item.SetData(ids[MONEY], Money(n % 5000), false);
    item.SetData(ids[DATE], DateTime(2026, 1 + n % 12, 1 + n % 28), false);
  }
  return ids;
}

}  // namespace bench

#endif  // BENCH_TENCOLUMNDOCUMENT_H_
