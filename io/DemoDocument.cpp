#include "io/DemoDocument.h"

#include <cstdint>
#include <vector>

#include "DataMgr/schema/ListItemTextDesc.h"
#include "utility/DateTime.h"
#include "utility/LocaleUtils.h"

namespace {

struct Book {
  const char* pszTitle;
  const char* pszAuthor;
  int nYear;
  const char* pszGenre;
  int nPages;
};

const Book CLASSICS[] = {
    {"Dune", "Frank Herbert", 1965, "Science Fiction", 412},
    {"The Hobbit", "J. R. R. Tolkien", 1937, "Fantasy", 310},
    {"Pride and Prejudice", "Jane Austen", 1813, "Romance", 432},
    {"Moby-Dick", "Herman Melville", 1851, "Adventure", 635},
    {"Frankenstein", "Mary Shelley", 1818, "Horror", 280},
    {"Dracula", "Bram Stoker", 1897, "Horror", 418},
    {"The Time Machine", "H. G. Wells", 1895, "Science Fiction", 118},
    {"The War of the Worlds", "H. G. Wells", 1898, "Science Fiction", 192},
    {"Jane Eyre", "Charlotte Bront\xC3\xAB", 1847, "Romance", 532},
    {"Wuthering Heights", "Emily Bront\xC3\xAB", 1847, "Romance", 416},
    {"The Picture of Dorian Gray", "Oscar Wilde", 1890, "Classic", 254},
    {"Great Expectations", "Charles Dickens", 1861, "Classic", 505},
    {"A Tale of Two Cities", "Charles Dickens", 1859, "Historical", 489},
    {"Nineteen Eighty-Four", "George Orwell", 1949, "Science Fiction", 328},
    {"Animal Farm", "George Orwell", 1945, "Classic", 112},
    {"Brave New World", "Aldous Huxley", 1932, "Science Fiction", 311},
    {"The Great Gatsby", "F. Scott Fitzgerald", 1925, "Classic", 180},
    {"To the Lighthouse", "Virginia Woolf", 1927, "Classic", 209},
    {"The Hound of the Baskervilles", "Arthur Conan Doyle", 1902, "Mystery", 256},
    {"The Murder of Roger Ackroyd", "Agatha Christie", 1926, "Mystery", 312},
    {"The Maltese Falcon", "Dashiell Hammett", 1930, "Mystery", 217},
    {"Foundation", "Isaac Asimov", 1951, "Science Fiction", 255},
    {"Fahrenheit 451", "Ray Bradbury", 1953, "Science Fiction", 158},
    {"The Left Hand of Darkness", "Ursula K. Le Guin", 1969, "Science Fiction", 304},
    {"A Wizard of Earthsea", "Ursula K. Le Guin", 1968, "Fantasy", 183},
    {"The Lord of the Rings", "J. R. R. Tolkien", 1954, "Fantasy", 1178},
    {"The Name of the Rose", "Umberto Eco", 1980, "Mystery", 536},
    {"One Hundred Years of Solitude",
     "Gabriel Garc\xC3\xAD"
     "a M\xC3\xA1rquez",
     1967, "Classic", 417},
    {"War and Peace", "Leo Tolstoy", 1869, "Historical", 1225},
    {"Anna Karenina", "Leo Tolstoy", 1878, "Romance", 864},
    {"Crime and Punishment", "Fyodor Dostoevsky", 1866, "Classic", 671},
    {"The Count of Monte Cristo", "Alexandre Dumas", 1844, "Adventure", 1276},
    {"Treasure Island", "Robert Louis Stevenson", 1883, "Adventure", 292},
    {"Twenty Thousand Leagues Under the Seas", "Jules Verne", 1870, "Adventure", 426},
    {"Leaves of Grass", "Walt Whitman", 1855, "Poetry", 145},
    {"The Raven and Other Poems", "Edgar Allan Poe", 1845, "Poetry", 91},
    {"The Diary of a Young Girl", "Anne Frank", 1947, "Biography", 283},
    {"The Story of My Life", "Helen Keller", 1903, "Biography", 132},
    {"Neuromancer", "William Gibson", 1984, "Science Fiction", 271},
    {"The Colour of Magic", "Terry Pratchett", 1983, "Fantasy", 206},
};

const char* const GENRES[] = {"Adventure", "Biography", "Classic", "Fantasy", "Historical",
                              "Horror",    "Mystery",   "Poetry",  "Romance", "Science Fiction"};
const char* const ADJECTIVES[] = {"Silent", "Hidden", "Last",     "Crimson",   "Distant",
                                  "Broken", "Golden", "Winter",   "Forgotten", "Burning",
                                  "Glass",  "Iron",   "Midnight", "Northern",  "Secret"};
const char* const NOUNS[] = {"Harbor",  "Garden", "Empire", "River",   "Archive", "Lantern", "Kingdom",
                             "Orchard", "Signal", "Tower",  "Compass", "Voyage",  "Mirror",  "Meadow"};
const char* const FIRST_NAMES[] = {"Ada",  "Bruno", "Clara", "Dmitri", "Elena", "Farid", "Greta", "Hugo",
                                   "Ines", "Jonas", "Keiko", "Luca",   "Mara",  "Nils",  "Olga",  "Pavel"};
const char* const LAST_NAMES[] = {"Ashdown",     "Brightwater", "Castellan", "Dunmore", "Everly",
                                  "Fairweather", "Greyson",     "Holloway",  "Ivers",   "Juniper"};

struct Format {
  const char* pszName;
  const char* pszDesc;
};
const Format FORMATS[] = {{"Hardcover", "Bound in boards, with a dust jacket"},
                          {"Paperback", "Soft cover"},
                          {"E-book", "A file for a reader or a tablet"},
                          {"Audiobook", "Read aloud, on disc or as files"}};

struct Friend {
  const char* pszName;
  const char* pszStreet;
  const char* pszCity;
  const char* pszEmail;
};
const Friend FRIENDS[] = {{"Alice Moreau", "12 Rue des Lilas", "Lyon", "alice@example.org"},
                          {"Ben Okafor", "4 Harbour Lane", "Bristol", "ben.okafor@example.com"},
                          {"Chen Wei", "88 Garden Road", "Vancouver", "chen.wei@example.net"},
                          {"Dora Lindqvist", "7 Sj\xC3\xB6gatan", "Uppsala", "dora@example.se"},
                          {"Emil Novak", "31 Vinohradsk\xC3\xA1", "Prague", "emil.novak@example.cz"}};

enum ColumnIndex {
  TITLE,
  AUTHOR,
  YEAR,
  GENRE,
  FORMAT,
  PAGES,
  RATING,
  PRICE,
  BOUGHT,
  READ,
  LENT_TO,
  SERIES,
  WEIGHT,
  NOTES,
  READ_ON,
  READING_TIME,
  COLUMN_COUNT
};

struct DemoColumn {
  const char* pszName;
  DataType::Type nType;
};
const DemoColumn COLUMNS[COLUMN_COUNT] = {
    {"Title", DataType::Text},
    {"Author", DataType::ValueListSuggested},
    {"Year", DataType::Number},
    {"Genre", DataType::ValueListSelect},
    {"Format", DataType::DescValueListSelect},
    {"Pages", DataType::Number},
    {"Rating", DataType::NumberListSelect},
    {"Price", DataType::Monetary},
    {"Bought", DataType::Date},
    {"Read", DataType::YesNo},
    {"Lent to", DataType::AddressBookSelect},
    {"Series", DataType::NumberWithText},
    {"Weight", DataType::Decimal},
    {"Notes", DataType::LargeText},
    {"Read on", DataType::Date},
    {"Reading time", DataType::Duration},
};

// The same sequence of numbers every time, on every machine.
class Sequence {
 public:
  int Next(int nBelow) {
    m_nState = m_nState * 1103515245u + 12345u;
    return static_cast<int>((m_nState >> 16) % static_cast<std::uint32_t>(nBelow));
  }

 private:
  std::uint32_t m_nState = 2026;
};

CString Number(int n) {
  CString text;
  text.Format("%d", n);
  return text;
}

// A number with two decimal places in the locale's form.
CString TwoPlaces(int nWhole, int nHundredths, const CString& separator) {
  CString text;
  text.Format("%d%s%02d", nWhole, separator.GetString(), nHundredths);
  return text;
}

// "2019-04-07" for a day counted from 2015-01-01.
CString DayText(int nDays) {
  const DateTime day = DateTime::FromJulian(DateTime(2015, 1, 1).GetJulianDay() + nDays, DateTime::NO_TIME);
  int nYear = 0;
  int nMonth = 0;
  int nDay = 0;
  day.GetDate(nYear, nMonth, nDay);
  CString text;
  text.Format("%04d-%02d-%02d", nYear, nMonth, nDay);
  return text;
}

class DemoBuilder {
 public:
  explicit DemoBuilder(DataMgmt& doc) : m_doc(doc) {}

  void Build() {
    m_doc.DeleteAll(true, false);
    AddColumns();
    for (int i = 0; i < DemoDocument::ITEM_COUNT; ++i) AddBook(i);
  }

 private:
  void AddColumns() {
    for (const DemoColumn& column : COLUMNS) {
      auto* pProp = new DataProp;
      pProp->SetName(column.pszName);
      pProp->SetDataType(column.nType);
      m_doc.AddDataProp(pProp, true, false, false, false);
      m_ids.push_back(pProp->GetID());
    }
    Prop(YEAR).SetThousandsSep(false);
    Prop(YEAR).SetCanBeNegative(false);
    Prop(PAGES).SetCanBeNegative(false);
    Prop(PRICE).SetCanBeNegative(false);
    Prop(PRICE).SetCanBeSummed(true);
    Prop(WEIGHT).SetSuffix(" kg");
    Prop(READING_TIME).SetTimeShowHours(true);
    Prop(READ_ON).SetUseWithDataSubItem(true);
    Prop(READING_TIME).SetUseWithDataSubItem(true);
    Prop(NOTES).SetDisplayed(false);
    for (const char* pszGenre : GENRES) Prop(GENRE).GetListItemByValue(pszGenre, true);
    for (const Format& format : FORMATS) {
      ListItem* pEntry = Prop(FORMAT).CreateListItem(true, -1);
      pEntry->SetTextRepresentation(format.pszName);
      static_cast<ListItemTextDesc*>(pEntry)->SetDesc(format.pszDesc);
    }
    for (int nStars = 1; nStars <= 5; ++nStars) Prop(RATING).GetListItemByValue(Number(nStars), true);
    Prop(LENT_TO).SetAddressBookFlag(false);
    for (const Friend& person : FRIENDS) {
      Address& address = *Prop(LENT_TO).CreateAddress(-1);
      address.SetIsBusiness(false);
      address.SetData(Address::Name, person.pszName);
      address.SetData(Address::Street, person.pszStreet);
      address.SetData(Address::City, person.pszCity);
      address.SetData(Address::Email, person.pszEmail);
    }
  }

  void AddBook(int i) {
    DataItem& item = *m_doc.CreateDataItem(nullptr, true, true);
    const int nClassics = static_cast<int>(sizeof CLASSICS / sizeof CLASSICS[0]);
    if (i < nClassics) {
      const Book& book = CLASSICS[i];
      Enter(item, TITLE, book.pszTitle);
      Enter(item, AUTHOR, book.pszAuthor);
      Enter(item, YEAR, Number(book.nYear));
      Enter(item, GENRE, book.pszGenre);
      Enter(item, PAGES, Number(book.nPages));
    } else {
      const int k = i - nClassics;
      Enter(item, TITLE, CString("The ") + ADJECTIVES[k % 15] + " " + NOUNS[k % 14]);
      const int nAuthor = m_sequence.Next(30);
      Enter(item, AUTHOR, CString(FIRST_NAMES[nAuthor % 16]) + " " + LAST_NAMES[(nAuthor * 7) % 10]);
      Enter(item, YEAR, Number(1950 + m_sequence.Next(75)));
      Enter(item, GENRE, GENRES[m_sequence.Next(10)]);
      Enter(item, PAGES, Number(120 + m_sequence.Next(780)));
      if (m_sequence.Next(4) == 0) Enter(item, SERIES, "Vol. " + Number(1 + m_sequence.Next(6)));
    }
    AddCopyAndReading(item, i);
    item.SetLastModified(DateTime::FromJulian(DateTime(2026, 11, 23).GetJulianDay(), 9 * 3600 + i * 60));
  }

  void AddCopyAndReading(DataItem& item, int i) {
    Enter(item, FORMAT, FORMATS[m_sequence.Next(4)].pszName);
    const int nStars = m_sequence.Next(6);
    if (nStars > 0) Enter(item, RATING, Number(nStars));
    const int nPrice = 4 + m_sequence.Next(36);
    Enter(item, PRICE, TwoPlaces(nPrice, m_sequence.Next(100), LocaleUtils::GetCurrencyDecimalSeparator()));
    Enter(item, BOUGHT, DayText(m_sequence.Next(4000)));
    int nPages = 0;
    item.GetData(m_ids[PAGES], nPages);
    Enter(item, WEIGHT, TwoPlaces(0, 10 + nPages / 12 % 90, LocaleUtils::GetNumberDecimalSeparator()));
    if (i % 25 == 3) Enter(item, NOTES, "First edition.\nSigned by the author.");
    if (i % 8 == 5) Enter(item, LENT_TO, FRIENDS[m_sequence.Next(5)].pszName);
    const bool bRead = m_sequence.Next(3) != 0;
    Enter(item, READ, bRead ? "yes" : "no");
    if (!bRead) return;
    std::vector<int> sessionColumns = {m_ids[READ_ON], m_ids[READING_TIME]};
    const int nSessions = 1 + m_sequence.Next(3);
    for (int s = 0; s < nSessions; ++s) {
      DataSubItem& session = *m_doc.CreateDataSubItem(item, sessionColumns, nullptr, true, true);
      session.SetParentID(item.GetID());
      Enter(session, READ_ON, DayText(3000 + m_sequence.Next(1000)));
      const int nHours = m_sequence.Next(3);
      CString duration;
      duration.Format("%d:%02d", nHours, 5 * (1 + m_sequence.Next(11)));
      Enter(session, READING_TIME, duration);
    }
  }

  void Enter(Data& record, ColumnIndex nColumn, const CString& text) {
    CString normalized;
    m_doc.EnterValue(record, m_ids[nColumn], text, normalized);
  }

  DataProp& Prop(ColumnIndex nColumn) { return *m_doc.GetDataPropMgr().GetByID(m_ids[nColumn]); }

  DataMgmt& m_doc;
  std::vector<int> m_ids;
  Sequence m_sequence;
};

}  // namespace

void DemoDocument::Fill(DataMgmt& doc) { DemoBuilder(doc).Build(); }
