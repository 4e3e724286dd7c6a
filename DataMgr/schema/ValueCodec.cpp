#include "DataMgr/schema/ValueCodec.h"

#include <cmath>
#include <vector>

#include "DataMgr/schema/Address.h"
#include "DataMgr/schema/ListItem.h"
#include "DataMgr/types/Money.h"
#include "utility/DateTime.h"
#include "utility/DirUtils.h"
#include "utility/FileUtils.h"
#include "utility/InternetUtils.h"
#include "utility/LocaleUtils.h"
#include "utility/NumberTextConv.h"
#include "utility/StringUtils.h"

namespace {

// Below this magnitude a decimal counts as zero for bBlankZero.
const double DECIMAL_ZERO = 0.001;

CString Trimmed(const CString& text) {
  CString trimmed = text;
  StringUtils::Trim(trimmed);
  return trimmed;
}

// A duration in the column's form: hours and seconds as its flags say.
CString FormatDuration(int nSeconds, const DataProp& prop) {
  if (prop.GetTimeShowHours()) {
    return prop.GetTimeShowSeconds() ? DateTime::ConvertToHHMMSS(nSeconds) : DateTime::ConvertToHHMM(nSeconds);
  }
  return prop.GetTimeShowSeconds() ? DateTime::ConvertToMMSS(nSeconds) : DateTime::ConvertToMM(nSeconds);
}

// A decimal with the locale's fractional digits, decimal zeroes kept.
CString FormatDecimal(double dValue, const DataProp& prop) {
  return NumberTextConv::DoubleToString(dValue, LocaleUtils::GetNumberFractionalDigits(), false, 0, CString(),
                                        prop.GetThousandsSep());
}

double ReadDecimal(const CString& text, bool bFractional) {
  return bFractional ? NumberTextConv::FractionToDouble(text) : NumberTextConv::GetDoubleFromString(text, false);
}

// The number of a number-with-text default, written alone: "Vol. 03" gives
// "3", "Part IV" gives "4"; the text part is dropped.
CString NumberWithTextDefault(const CString& text, bool bAllowRoman) {
  bool bAlone = false;
  CString strRest;
  const int nNumber = NumberTextConv::ParseNumber(text, bAlone, strRest, bAllowRoman);
  return NumberTextConv::NumberToString(nNumber, false, 0, CString());
}

template <typename T>
T ValueOf(const Data& record, int nID) {
  T value{};
  record.GetData(nID, value);
  return value;
}

template <typename T>
std::vector<T> EarlierValues(const Data& record, int nID) {
  std::vector<T> values;
  record.GetUndoData(nID, values);
  return values;
}

// The types that hold no value: the thumbnail, the icon and the gaps.
class NoValueCodec final : public ValueCodec {
 public:
  CellValue::Kind GetKind() const override { return CellValue::NONE; }
  CellValue Read(const Data&, int) const override { return CellValue(); }
  CellValue Parse(const CString&, DataProp&, bool) const override { return CellValue(); }
  bool Enter(Data&, DataProp&, DataProp&, const CString&, bool&, bool) const override { return false; }
  bool Accept(CString&, const DataProp&, DataProp&) const override { return false; }
  CString Format(const Data&, int, const DataProp&, bool) const override { return CString(); }
  void FormatEarlier(const Data&, const DataProp&, TextArray&, bool) const override {}
};

// A type whose values are kept in the record's map of kind T.
template <typename T>
class KindCodec : public ValueCodec {
 public:
  CellValue::Kind GetKind() const override { return CellValue::KindOf<T>(); }
  CellValue Read(const Data& record, int nID) const override { return CellValue::Read<T>(record, nID); }
};

// A type whose value is parsed from text and shown by its own formatting:
// everything but the texts and the entries.
template <typename T>
class ScalarCodec : public KindCodec<T> {
 public:
  bool Enter(Data& record, DataProp& prop, DataProp&, const CString& text, bool& bRedisplay,
             bool bRecord) const override {
    if (Redisplays(prop)) bRedisplay = true;
    return this->Parse(text, prop, false).Store(record, prop.GetID(), bRecord);
  }
  CString Format(const Data& record, int nID, const DataProp& prop, bool bBlankZero) const override {
    const T value = ValueOf<T>(record, nID);
    const CString text = ValueText(value, prop, bBlankZero);
    return !text.IsEmpty() && prop.GetShowSignAlways() && TakesPlus(value) ? "+" + text : text;
  }
  void FormatEarlier(const Data& record, const DataProp& prop, TextArray& texts, bool bBlankZero) const override {
    for (const T& value : EarlierValues<T>(record, prop.GetID())) texts.Add(EarlierText(value, prop, bBlankZero));
  }

 protected:
  // Whether a stored value always shows differently from the typed text.
  virtual bool Redisplays(const DataProp&) const { return true; }
  // The value's text without sign; empty for a zero value when bBlankZero.
  virtual CString ValueText(const T& value, const DataProp& prop, bool bBlankZero) const = 0;
  virtual CString EarlierText(const T& value, const DataProp& prop, bool bBlankZero) const {
    return ValueText(value, prop, bBlankZero);
  }
  // Whether the value takes "+" in a column that always shows the sign.
  virtual bool TakesPlus(const T&) const { return false; }
};

class YesNoCodec final : public ScalarCodec<bool> {
 public:
  CellValue Parse(const CString& text, DataProp&, bool) const override { return CellValue(StringUtils::IsYes(text)); }
  bool Accept(CString& text, const DataProp&, DataProp&) const override {
    return text.IsEmpty() || text.FindOneOf("yYtTnNfF10") >= 0;
  }

 protected:
  CellValue ParseDefault(DataProp& prop, bool) const override {
    return CellValue(StringUtils::TextToBool(prop.GetDefaultValue()));
  }
  bool Redisplays(const DataProp&) const override { return false; }
  CString ValueText(const bool& bValue, const DataProp&, bool) const override { return bValue ? "Y" : "N"; }
};

class NumberCodec final : public ScalarCodec<int> {
 public:
  CellValue Parse(const CString& text, DataProp&, bool) const override {
    return CellValue(NumberTextConv::GetNumberFromString(text));
  }
  bool Accept(CString& text, const DataProp& prop, DataProp&) const override {
    const int n = NumberTextConv::GetNumberFromString(text);
    if (n < 0 && !prop.GetCanBeNegative()) return false;
    text = n == 0 && prop.GetZeroIsEmpty() ? CString() : NumberTextConv::NumberToString(n, false, 0, CString());
    return true;
  }
  int ToInteger(const CString& text, const DataProp&) const override {
    return NumberTextConv::GetNumberFromString(text);
  }

 protected:
  bool Redisplays(const DataProp& prop) const override { return prop.GetThousandsSep(); }
  CString ValueText(const int& nValue, const DataProp& prop, bool bBlankZero) const override {
    if (nValue == 0 && bBlankZero) return CString();
    return NumberTextConv::NumberToString(nValue, prop.GetThousandsSep(), 0, CString());
  }
  bool TakesPlus(const int& nValue) const override { return nValue >= 1; }
};

// A duration is kept in whole seconds. A negative duration typed into a
// column without negatives becomes zero rather than being rejected.
class DurationCodec final : public ScalarCodec<int> {
 public:
  CellValue Parse(const CString& text, DataProp& prop, bool) const override {
    return CellValue(ToInteger(text, prop));
  }
  bool Accept(CString& text, const DataProp& prop, DataProp&) const override {
    int nSeconds = ToInteger(text, prop);
    if (nSeconds < 0 && !prop.GetCanBeNegative()) nSeconds = 0;
    text = nSeconds == 0 && prop.GetZeroIsEmpty() ? CString() : FormatDuration(nSeconds, prop);
    return true;
  }
  int ToInteger(const CString& text, const DataProp& prop) const override {
    return DateTime::ConvertFromDuration(text, prop.GetTimeShowHours());
  }

 protected:
  CString ValueText(const int& nValue, const DataProp& prop, bool bBlankZero) const override {
    return nValue == 0 && bBlankZero ? CString() : FormatDuration(nValue, prop);
  }
  bool TakesPlus(const int& nValue) const override { return nValue >= 1; }
};

// Typed decimals are read as fractions when the list owner is fractional;
// stored and default texts never are. Only the earlier values show a
// fraction's sign.
class DecimalCodec final : public ScalarCodec<double> {
 public:
  CellValue Parse(const CString& text, DataProp&, bool) const override {
    return CellValue(NumberTextConv::GetDoubleFromString(text, false));
  }
  bool Enter(Data& record, DataProp& prop, DataProp& listOwner, const CString& text, bool& bRedisplay,
             bool bRecord) const override {
    bRedisplay = true;
    return record.SetData(prop.GetID(), ReadDecimal(text, listOwner.GetFractional()), bRecord);
  }
  bool Accept(CString& text, const DataProp& prop, DataProp&) const override {
    const double dValue = ReadDecimal(text, prop.GetFractional());
    if (dValue < 0.0 && !prop.GetCanBeNegative()) return false;
    text = prop.GetFractional() ? NumberTextConv::DoubleToFraction(dValue) : FormatDecimal(dValue, prop);
    return true;
  }

 protected:
  CString ValueText(const double& dValue, const DataProp& prop, bool bBlankZero) const override {
    if (std::fabs(dValue) < DECIMAL_ZERO && bBlankZero) return CString();
    if (prop.GetFractional()) return NumberTextConv::DoubleToFraction(dValue);
    const CString text = FormatDecimal(dValue, prop);
    return prop.GetShowDecimalZeroes() ? text : NumberTextConv::RemoveDecimalZeroes(text);
  }
  CString EarlierText(const double& dValue, const DataProp& prop, bool bBlankZero) const override {
    if (std::fabs(dValue) < DECIMAL_ZERO && bBlankZero) return CString();
    if (!prop.GetFractional()) return FormatDecimal(dValue, prop);
    return (dValue < 0.0 ? "-" : "") + NumberTextConv::DoubleToFraction(dValue);
  }
  bool TakesPlus(const double& dValue) const override { return dValue > 0.0; }
};

// Typed dates are accepted only when valid and then rewritten in the
// numeric form; stored dates show as the column asks.
class DateCodec final : public ScalarCodec<DateTime> {
 public:
  CellValue Parse(const CString& text, DataProp&, bool) const override {
    DateTime value;
    value.SetDate(text);
    return CellValue(value);
  }
  bool Accept(CString& text, const DataProp&, DataProp&) const override {
    if (text.IsEmpty()) return true;
    DateTime value;
    value.SetDate(text);
    if (!value.IsValidDate()) return false;
    text = DateTime::ConvertDateToText(value, false, false, false, true);
    return true;
  }

 protected:
  CString ValueText(const DateTime& value, const DataProp& prop, bool) const override {
    return DateTime::ConvertDateToText(value, false, false, false, prop.GetDateTimeNumbers());
  }
};

class TimeCodec final : public ScalarCodec<DateTime> {
 public:
  CellValue Parse(const CString& text, DataProp&, bool) const override {
    DateTime value;
    value.SetTime(text);
    return CellValue(value);
  }
  bool Accept(CString& text, const DataProp& prop, DataProp&) const override {
    if (text.IsEmpty()) return true;
    DateTime value;
    value.SetTime(text);
    if (!value.IsValidTime()) return false;
    text = ValueText(value, prop, false);
    return true;
  }

 protected:
  CString ValueText(const DateTime& value, const DataProp& prop, bool) const override {
    return DateTime::ConvertTimeToText(value, prop.GetTimeShowSeconds());
  }
};

// A typed amount is rejected as negative when it reads as a negative
// amount or as negative zero.
class MoneyCodec final : public ScalarCodec<Money> {
 public:
  CellValue Parse(const CString& text, DataProp&, bool) const override {
    Money value;
    value.Set(text);
    return CellValue(value);
  }
  bool Accept(CString& text, const DataProp& prop, DataProp&) const override {
    Money value;
    value.Set(text);
    if (value < Money(0) && !prop.GetCanBeNegative()) return false;
    text = ValueText(value, prop, false);
    return true;
  }

 protected:
  CString ValueText(const Money& value, const DataProp& prop, bool bBlankZero) const override {
    if (value == Money(0) && bBlankZero) return CString();
    return value.GetText(true, prop.GetThousandsSep());
  }
  bool TakesPlus(const Money& value) const override { return value > Money(0); }
};

// The text types: stored as typed, trimmed; earlier values as they were.
class TextCodec : public KindCodec<CString> {
 public:
  CellValue Parse(const CString& text, DataProp&, bool) const override { return CellValue(text); }
  bool Enter(Data& record, DataProp& prop, DataProp&, const CString& text, bool& bRedisplay,
             bool bRecord) const override {
    const CString trimmed = Trimmed(text);
    if (trimmed.GetLength() != text.GetLength()) bRedisplay = true;
    return record.SetData(prop.GetID(), trimmed, bRecord);
  }
  bool Accept(CString&, const DataProp&, DataProp&) const override { return true; }
  CString Format(const Data& record, int nID, const DataProp&, bool) const override {
    return ValueOf<CString>(record, nID);
  }
  void FormatEarlier(const Data& record, const DataProp& prop, TextArray& texts, bool) const override {
    texts.CopyFromVector(EarlierValues<CString>(record, prop.GetID()));
  }
};

// A path to a file whose file has gone shows as no value; its earlier
// values are shown unchecked.
class FilePathCodec final : public TextCodec {
 public:
  bool Accept(CString& text, const DataProp&, DataProp&) const override {
    return text.IsEmpty() || FileUtils::IsFile(text, true, true);
  }
  CString Format(const Data& record, int nID, const DataProp&, bool) const override {
    const CString text = ValueOf<CString>(record, nID);
    return FileUtils::IsFile(text, true, true) ? text : CString();
  }
};

class DirectoryCodec final : public TextCodec {
 public:
  bool Accept(CString& text, const DataProp&, DataProp&) const override {
    return text.IsEmpty() || DirUtils::IsDir(text, true);
  }
};

// An e-mail address that fails the check is not stored; trimming it does
// not ask for a redisplay.
class EmailCodec final : public TextCodec {
 public:
  bool Enter(Data& record, DataProp& prop, DataProp&, const CString& text, bool&, bool bRecord) const override {
    const CString trimmed = Trimmed(text);
    if (!trimmed.IsEmpty() && !InternetUtils::IsValidEmailAddress(trimmed)) return false;
    return record.SetData(prop.GetID(), trimmed, bRecord);
  }
  bool Accept(CString& text, const DataProp&, DataProp&) const override {
    return text.IsEmpty() || InternetUtils::IsValidEmailAddress(text);
  }
};

// The check only puts a valid web address into its normal form; an address
// it rejects is stored as typed. Typed text may also name a file.
class WebSiteCodec final : public TextCodec {
 public:
  bool Enter(Data& record, DataProp& prop, DataProp&, const CString& text, bool&, bool bRecord) const override {
    CString trimmed = Trimmed(text);
    if (!trimmed.IsEmpty()) InternetUtils::IsValidWebSiteAddress(trimmed);
    return record.SetData(prop.GetID(), trimmed, bRecord);
  }
  bool Accept(CString& text, const DataProp&, DataProp&) const override {
    return text.IsEmpty() || InternetUtils::IsValidWebSiteAddress(text) || FileUtils::IsFile(text, true, true);
  }
};

// A number with text: a column added to existing records fills them with
// the number of its default alone; a fresh record takes the default as it
// is.
class NumberWithTextCodec final : public TextCodec {
 public:
  explicit NumberWithTextCodec(bool bAllowRoman) : m_bAllowRoman(bAllowRoman) {}

 protected:
  CellValue ParseDefault(DataProp& prop, bool bNewColumn) const override {
    const CString& text = prop.GetDefaultValue();
    return CellValue(bNewColumn ? NumberWithTextDefault(text, m_bAllowRoman) : text);
  }

 private:
  const bool m_bAllowRoman;
};

// The ten entry types: a cell holds the ID of one of the owner column's
// list entries or addresses, -1 for none, and every cell that refers to an
// entry counts one usage of it. A suggested-as-typed type judges typed text
// as pTypedAs does (a number, a decimal or a text); a select-from-list type
// (pTypedAs null) accepts only a text that names an entry.
class EntryCodec : public KindCodec<int> {
 public:
  explicit EntryCodec(const ValueCodec* pTypedAs) : m_pTypedAs(pTypedAs) {}

  bool IsEntryType() const override { return true; }
  bool CreatesEntries() const override { return m_pTypedAs != nullptr; }
  CellValue Parse(const CString& text, DataProp& prop, bool bCreate) const override {
    return CellValue(FindEntryID(prop, text, bCreate));
  }
  Registration MakeDefault(DataProp& prop, bool bNewColumn) const override {
    const int nID = prop.GetID();
    const int nEntryID = DefaultEntryID(prop, bNewColumn);
    DataProp* pProp = &prop;
    return [this, nID, nEntryID, pProp](Data& record) {
      if (record.HaveDataProp(nID)) return;
      record.RegisterDataProp(nID, nEntryID);
      ChangeEntryUsage(*pProp, nEntryID, true);
    };
  }
  // The entry typed replaces the one the cell referred to; whether an
  // unknown text becomes a new entry is the list owner's to say. A list
  // owner that is no column leaves the column's own entries in use.
  bool Enter(Data& record, DataProp& prop, DataProp& listOwner, const CString& text, bool&,
             bool bRecord) const override {
    DataProp& owner = listOwner.GetID() < 0 ? prop : listOwner;
    const int nID = prop.GetID();
    ChangeEntryUsage(owner, ValueOf<int>(record, nID), false);
    const int nNewID = FindEntryID(owner, text, For(listOwner.GetDataType()).CreatesEntries());
    record.SetData(nID, nNewID, bRecord);
    ChangeEntryUsage(owner, nNewID, true);
    return true;
  }
  bool Accept(CString& text, const DataProp& prop, DataProp& listOwner) const override {
    if (m_pTypedAs != nullptr) return m_pTypedAs->Accept(text, prop, listOwner);
    return text.IsEmpty() || FindEntryID(listOwner, text, false) >= 0;
  }
  CString Format(const Data& record, int nID, const DataProp& prop, bool) const override {
    CString text;
    FindEntryText(prop, ValueOf<int>(record, nID), text);
    return text;
  }
  void FormatEarlier(const Data& record, const DataProp& prop, TextArray& texts, bool) const override {
    for (int nEntryID : EarlierValues<int>(record, prop.GetID())) {
      CString text;
      if (FindEntryText(prop, nEntryID, text)) texts.Add(text);
    }
  }

 protected:
  // The entry that prop's default text names, -1 for none.
  virtual int DefaultEntryID(DataProp& prop, bool bNewColumn) const = 0;

 private:
  const ValueCodec* const m_pTypedAs;
};

// Entries of the column's list, found by their text (exactly). A default
// text names an entry only when it is not empty, or always for a column
// added to existing records; it never creates one.
class ListCodec final : public EntryCodec {
 public:
  using EntryCodec::EntryCodec;

  int FindEntryID(DataProp& owner, const CString& text, bool bCreate) const override {
    const ListItem* pEntry = owner.GetListItemByValue(text, bCreate);
    return pEntry != nullptr ? pEntry->GetID() : -1;
  }
  void ChangeEntryUsage(DataProp& owner, int nEntryID, bool bRaise) const override {
    if (ListItem* pEntry = owner.GetListItemByID(nEntryID)) {
      bRaise ? pEntry->RegisterUsage() : pEntry->UnregisterUsage();
    }
  }
  bool FindEntryText(const DataProp& owner, int nEntryID, CString& text) const override {
    const ListItem* pEntry = owner.GetListItemByID(nEntryID);
    if (pEntry == nullptr) return false;
    text = pEntry->GetTextRepresentation();
    return true;
  }

 protected:
  int DefaultEntryID(DataProp& prop, bool bNewColumn) const override {
    const CString& text = prop.GetDefaultValue();
    return bNewColumn || !text.IsEmpty() ? FindEntryID(prop, text, false) : -1;
  }
};

// Addresses of the column's book, found by their name ignoring case; a
// nameless address is never created. A fresh record's default names an
// address (created when unknown) unless it is empty or "-1"; a column added
// to existing records reads its default as an address ID.
class AddressCodec final : public EntryCodec {
 public:
  using EntryCodec::EntryCodec;

  int FindEntryID(DataProp& owner, const CString& text, bool bCreate) const override {
    const Address* pAddress = owner.GetAddressBook().GetByName(text, bCreate);
    return pAddress != nullptr ? pAddress->GetID() : -1;
  }
  void ChangeEntryUsage(DataProp& owner, int nEntryID, bool bRaise) const override {
    if (Address* pAddress = owner.GetAddressBook().GetByID(nEntryID)) {
      bRaise ? pAddress->RegisterUsage() : pAddress->UnregisterUsage();
    }
  }
  bool FindEntryText(const DataProp& owner, int nEntryID, CString& text) const override {
    const Address* pAddress = owner.GetAddressBook().GetByID(nEntryID);
    if (pAddress == nullptr) return false;
    text = pAddress->GetData(Address::Name);
    return true;
  }

 protected:
  int DefaultEntryID(DataProp& prop, bool bNewColumn) const override {
    const CString& text = prop.GetDefaultValue();
    if (bNewColumn) {
      const Address* pAddress = prop.GetAddressBook().GetByID(NumberTextConv::GetNumberFromString(text));
      return pAddress != nullptr ? pAddress->GetID() : -1;
    }
    return !text.IsEmpty() && text != "-1" ? FindEntryID(prop, text, true) : -1;
  }
};

}  // namespace

const ValueCodec& ValueCodec::For(DataType::Type nType) {
  static const NoValueCodec noValue;
  static const YesNoCodec yesNo;
  static const NumberCodec number;
  static const DurationCodec duration;
  static const DecimalCodec decimal;
  static const DateCodec date;
  static const TimeCodec time;
  static const TextCodec text;
  static const FilePathCodec filePath;
  static const DirectoryCodec directory;
  static const EmailCodec email;
  static const WebSiteCodec webSite;
  static const MoneyCodec money;
  static const NumberWithTextCodec numberWithText(false);
  static const NumberWithTextCodec numberWithRoman(true);
  static const ListCodec numberListSuggested(&number);
  static const ListCodec decimalListSuggested(&decimal);
  static const ListCodec valueListSuggested(&text);
  static const ListCodec listSelect(nullptr);
  static const AddressCodec addressSuggested(&text);
  static const AddressCodec addressSelect(nullptr);
  // One entry per type number, in order.
  static const ValueCodec* const CODECS[] = {
      &yesNo,                // 0 YesNo
      &number,               // 1 Number
      &duration,             // 2 Duration
      &decimal,              // 3 Decimal
      &date,                 // 4 Date
      &time,                 // 5 Time
      &text,                 // 6 Text
      &filePath,             // 7 PhotoFilePath
      &directory,            // 8 DirectoryPath
      &email,                // 9 EmailAddress
      &webSite,              // 10 WebSiteAddress
      &text,                 // 11 Password
      &text,                 // 12 LargeText
      &numberListSuggested,  // 13 NumberListSuggested
      &valueListSuggested,   // 14 ValueListSuggested
      &listSelect,           // 15 NumberListSelect
      &listSelect,           // 16 ValueListSelect
      &noValue,              // 17 unassigned
      &addressSuggested,     // 18 AddressBookSuggested
      &addressSelect,        // 19 AddressBookSelect
      &noValue,              // 20 unassigned
      &valueListSuggested,   // 21 DescValueListSuggested
      &listSelect,           // 22 DescValueListSelect
      &noValue,              // 23 unassigned
      &noValue,              // 24 unassigned
      &filePath,             // 25 DataFilePath
      &decimalListSuggested, // 26 DecimalListSuggested
      &listSelect,           // 27 DecimalListSelect
      &money,                // 28 Monetary
      &noValue,              // 29 unassigned
      &numberWithText,       // 30 NumberWithText
      &numberWithRoman,      // 31 NumberWithRomanOrText
      &noValue,              // 32 EmbeddedThumbnail
      &noValue,              // 33 Icon
  };
  const int nCount = static_cast<int>(sizeof(CODECS) / sizeof(CODECS[0]));
  return nType >= 0 && nType < nCount ? *CODECS[nType] : noValue;
}

ValueCodec::Registration ValueCodec::MakeDefault(DataProp& prop, bool bNewColumn) const {
  const CellValue value = ParseDefault(prop, bNewColumn);
  if (value.GetKind() == CellValue::NONE) return Registration();
  const int nID = prop.GetID();
  return [nID, value](Data& record) { value.Register(record, nID); };
}

CellValue ValueCodec::ParseDefault(DataProp& prop, bool) const { return Parse(prop.GetDefaultValue(), prop, false); }

int ValueCodec::ToInteger(const CString&, const DataProp&) const { return 0; }

int ValueCodec::FindEntryID(DataProp&, const CString&, bool) const { return -1; }

void ValueCodec::ChangeEntryUsage(DataProp&, int, bool) const {}

bool ValueCodec::FindEntryText(const DataProp&, int, CString&) const { return false; }
