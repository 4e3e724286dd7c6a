#include "bench/sidebyside/VaxoSide.h"

#include "DataMgr/filter/DataFilterMgr.h"
#include "DataMgr/sort/SortData.h"
#include "DataMgr/sort/SortOrder.h"
#include "framework/CArchive.h"
#include "framework/CFile.h"
#include "utility/LocaleUtils.h"

namespace {

// In the order of the values of a BenchRow.
const DataType::Type COLUMN_TYPES[] = {DataType::Text,    DataType::Text,  DataType::Text,     DataType::Number,
                                       DataType::Number,  DataType::Decimal, DataType::Date,   DataType::Monetary,
                                       DataType::ValueListSelect, DataType::YesNo};
const size_t TITLE_COLUMN = 0;
const size_t NUMBER_COLUMN = 3;
const size_t CATEGORY_COLUMN = 8;

// The texts a user types for row's ten values, as the US locale reads them.
std::vector<CString> TypedTexts(const BenchRow& row) {
  CString texts[10];
  texts[0] = row.strTitle;
  texts[1] = row.strNotes;
  texts[2] = row.strPlace;
  texts[3].Format("%d", row.nNumber);
  texts[4].Format("%d", row.nSmall);
  texts[5].Format("%.2f", row.dDecimal);
  int nYear = 0;
  int nMonth = 0;
  int nDay = 0;
  row.date.GetDate(nYear, nMonth, nDay);
  texts[6].Format("%d/%d/%d", nMonth, nDay, nYear);
  texts[7].Format("%lld.%02lld", row.nCents / 100, row.nCents % 100);
  texts[8] = BenchCategoryName(row.nCategory);
  texts[9] = row.bDone ? "yes" : "no";
  return std::vector<CString>(texts, texts + 10);
}

}  // namespace

VaxoSide::VaxoSide() {
  LocaleUtils::SetNumberDecimalSeparator(".");
  LocaleUtils::SetNumberThousandsSeparator(",");
  LocaleUtils::SetDateOrder(LocaleUtils::MONTH_DAY_YEAR);
}

VaxoSide::~VaxoSide() = default;

void VaxoSide::NewDocument() {
  m_pDoc = std::make_unique<DataMgmt>();
  m_vecColumns.clear();
  m_vecCategoryIDs.clear();
  for (DataType::Type nType : COLUMN_TYPES) {
    auto* pProp = new DataProp;
    pProp->SetDataType(nType);
    m_pDoc->AddDataProp(pProp, true, false, false, false);
    m_vecColumns.push_back(pProp->GetID());
  }
  DataProp& categories = *m_pDoc->GetDataPropMgr().GetByID(m_vecColumns[CATEGORY_COLUMN]);
  for (int i = 0; i < BENCH_CATEGORIES; ++i) {
    ListItem* pEntry = categories.CreateListItem(true, -1);
    pEntry->SetTextRepresentation(BenchCategoryName(i));
    m_vecCategoryIDs.push_back(pEntry->GetID());
  }
}

size_t VaxoSide::Build(const std::vector<BenchRow>& rows) {
  NewDocument();
  const std::vector<int>& c = m_vecColumns;
  for (const BenchRow& row : rows) {
    DataItem& item = *m_pDoc->CreateDataItem(nullptr, true, true);
    item.SetData(c[0], row.strTitle, false);
    item.SetData(c[1], row.strNotes, false);
    item.SetData(c[2], row.strPlace, false);
    item.SetData(c[3], row.nNumber, false);
    item.SetData(c[4], row.nSmall, false);
    item.SetData(c[5], row.dDecimal, false);
    item.SetData(c[6], row.date, false);
    item.SetData(c[7], row.money, false);
    item.SetData(c[8], m_vecCategoryIDs[static_cast<size_t>(row.nCategory)], false);
    item.SetData(c[9], row.bDone, false);
  }
  return m_pDoc->GetDataItemMgr().GetCount();
}

size_t VaxoSide::TypeEveryValue(const std::vector<BenchRow>& rows) {
  NewDocument();
  for (const BenchRow& row : rows) {
    DataItem& item = *m_pDoc->CreateDataItem(nullptr, true, true);
    const std::vector<CString> texts = TypedTexts(row);
    for (size_t i = 0; i < m_vecColumns.size(); ++i) {
      bool bRedisplay = false;
      m_pDoc->SetData(item, m_vecColumns[i], texts[i], bRedisplay, true);
    }
  }
  return m_pDoc->GetDataItemMgr().GetCount();
}

size_t VaxoSide::Save(const std::string& strPath) const {
  CFile file;
  if (!file.Open(strPath.c_str(), CFile::modeCreate | CFile::modeWrite)) return 0;
  CArchive ar(&file, CArchive::store);
  m_pDoc->Serialize(ar);
  ar.Close();
  file.Close();
  return m_pDoc->GetDataItemMgr().GetCount();
}

size_t VaxoSide::Load(const std::string& strPath) {
  m_pDoc = std::make_unique<DataMgmt>();
  CFile file;
  if (!file.Open(strPath.c_str(), CFile::modeRead)) return 0;
  CArchive ar(&file, CArchive::load);
  m_pDoc->Serialize(ar);
  m_vecColumns.clear();
  const DataPropMgr& props = m_pDoc->GetDataPropMgr();
  for (size_t i = 0; i < props.GetUserCount(); ++i) m_vecColumns.push_back(props.GetUserAt(i)->GetID());
  return m_pDoc->GetDataItemMgr().GetCount();
}

size_t VaxoSide::RenderEveryCell() const {
  const DataItemMgr& items = m_pDoc->GetDataItemMgr();
  size_t nCells = 0;
  for (size_t i = 0; i < items.GetCount(); ++i) {
    const DataItem& item = *items.GetAt(i);
    for (int nID : m_vecColumns) {
      if (!m_pDoc->GetTextRepresentation(item, nID, false).IsEmpty()) ++nCells;
    }
  }
  return nCells;
}

size_t VaxoSide::Destroy() {
  const size_t nItems = m_pDoc ? m_pDoc->GetDataItemMgr().GetCount() : 0;
  m_pDoc.reset();
  return nItems;
}

std::vector<Data*> VaxoSide::GetRecords() const {
  const DataItemMgr& items = m_pDoc->GetDataItemMgr();
  std::vector<Data*> records;
  records.reserve(items.GetCount());
  for (size_t i = 0; i < items.GetCount(); ++i) records.push_back(items.GetAt(i));
  return records;
}

size_t VaxoSide::SortTitleThenNumber(std::vector<Data*>& records) const {
  SortOrder order;
  order.AddDataPropID(m_vecColumns[TITLE_COLUMN], true, false);
  order.AddDataPropID(m_vecColumns[NUMBER_COLUMN], false, false);
  SortData().Sort(records, order, m_pDoc->GetDataPropMgr());
  size_t nChecksum = 0;
  for (const Data* pRecord : records) nChecksum = MixOrder(nChecksum, pRecord->GetID());
  return nChecksum;
}

DataFilter* VaxoSide::MakeFilter(size_t nColumn, DataFilter::FilterType nTest, const CString& value) const {
  auto* pFilter = new DataFilter;
  pFilter->SetDataPropID(m_vecColumns[nColumn]);
  pFilter->SetDataType(COLUMN_TYPES[nColumn]);
  pFilter->SetFilterType(nTest);
  pFilter->SetValue(value);
  pFilter->SetRequired(true);
  return pFilter;
}

size_t VaxoSide::FilterNumberAndTitle(int nMinimum, const char* pszPart) const {
  CString minimum;
  minimum.Format("%d", nMinimum);
  DataFilterMgr filters;
  filters.Add(MakeFilter(NUMBER_COLUMN, DataFilter::IsGreaterThan, minimum), true);
  filters.Add(MakeFilter(TITLE_COLUMN, DataFilter::Contains, pszPart), true);
  const DataItemMgr& items = m_pDoc->GetDataItemMgr();
  size_t nPassed = 0;
  for (size_t i = 0; i < items.GetCount(); ++i) nPassed += filters.PassesFilters(*items.GetAt(i)) ? 1 : 0;
  return nPassed;
}

size_t VaxoSide::SearchTexts(const char* pszWord) const {
  const std::vector<int> columns(m_vecColumns.begin(), m_vecColumns.begin() + 3);
  std::vector<DataFind> hits;
  m_pDoc->Find(pszWord, false, false, false, DataFilterMgr(), columns, hits);
  size_t nItems = 0;
  for (size_t i = 0; i < hits.size(); ++i) {
    if (i == 0 || hits[i].GetDataItemID() != hits[i - 1].GetDataItemID()) ++nItems;
  }
  return nItems;
}
