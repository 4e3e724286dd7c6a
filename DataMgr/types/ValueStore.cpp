#include "DataMgr/types/ValueStore.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <map>
#include <new>
#include <optional>
#include <type_traits>

#include "DataMgr/schema/Address.h"
#include "DataMgr/types/ArchiveExchange.h"
#include "utility/Crypto.h"
#include "utility/SerializeData.h"
#include "utility/StringUtils.h"

namespace {

const WORD VALUESTORE_VERSION = 6;
// Loop counters are 64-bit from this version on, 32-bit before.
const WORD FIRST_NEW_COUNTER_VERSION = 6;
// Texts of older versions were stored untrimmed.
const WORD FIRST_TRIMMED_VERSION = 3;
// Versions that carry a block read and discarded.
const WORD ADDRESS_BLOCK_VERSION = 1;
const WORD LIST_BLOCK_VERSION = 4;

// The smallest archive forms, for checking counts before allocating.
const size_t INT_BYTES = SerializeData::INT_BYTES;
const size_t BOOL_BYTES = SerializeData::BOOL_BYTES;
const size_t DOUBLE_BYTES = SerializeData::DOUBLE_BYTES;
const size_t DATETIME_BYTES = SerializeData::DATETIME_BYTES;
const size_t TEXT_BYTES = SerializeData::MIN_TEXT_BYTES;
const size_t MONEY_BYTES = 2 + 1 + 8;
const size_t ADDRESS_BYTES = 2;
const size_t OLD_COUNTER_BYTES = 4;
// A loading buffer that grew beyond this for a huge record is given back.
const size_t KEPT_BUFFER_BYTES = 64 * 1024;

using archive_exchange::Exchange;
using Entry = ValueBlock::Entry;

uint8_t Code(ValueKind nKind) { return static_cast<uint8_t>(nKind); }
unsigned Bit(ValueKind nKind) { return 1u << Code(nKind); }

// The kinds that hold values: all but Flag.
const unsigned VALUE_KINDS = ((1u << ValueBlock::KINDS) - 1) & ~(1u << static_cast<unsigned>(ValueKind::Flag));

template <typename T>
T AbsentValue() {
  if constexpr (std::is_same_v<T, int>) {
    return -1;
  } else if constexpr (std::is_same_v<T, Money>) {
    Money zero;
    zero.MakeNegative();
    return zero;
  } else {
    return T();
  }
}

// The archive form of one value of each kind.
template <typename T>
void SerializeValue(CArchive& ar, T& value) {
  if constexpr (std::is_same_v<T, bool>) {
    SerializeData::Serialize(ar, value);
  } else if constexpr (std::is_same_v<T, int> || std::is_same_v<T, double>) {
    if (ar.IsStoring()) {
      ar << value;
    } else {
      ar >> value;
    }
  } else {
    value.Serialize(ar);
  }
}

template <typename T>
size_t MinArchiveBytes() {
  if constexpr (std::is_same_v<T, bool>) {
    return BOOL_BYTES;
  } else if constexpr (std::is_same_v<T, int>) {
    return INT_BYTES;
  } else if constexpr (std::is_same_v<T, double>) {
    return DOUBLE_BYTES;
  } else if constexpr (std::is_same_v<T, DateTime>) {
    return DATETIME_BYTES;
  } else {
    return MONEY_BYTES;
  }
}

// Reads a loop counter (checked against the bytes that remain), then per
// entry an int ID and what load(nID) reads.
template <typename Load>
void ForEachLoaded(CArchive& ar, bool bOldFormat, size_t nMinValueBytes, Load load) {
  const size_t nCount = SerializeData::SerializeLoopCounter(ar, 0, bOldFormat);
  SerializeData::CheckLoopCounter(ar, nCount, INT_BYTES + nMinValueBytes);
  for (size_t i = 0; i < nCount; ++i) {
    int nID = 0;
    ar >> nID;
    load(nID);
  }
}

// The values of a store being loaded, gathered kind by kind as the archive
// holds them, then packed into the store's block. Where an archive
// exception stops the load, the kinds read so far (a kind up to the entry
// that failed) replace those of the store and the others stay. The buffers
// belong to the thread and serve every record loaded, so that a loaded
// record costs its block and nothing more.
class Loader {
 public:
  explicit Loader(const ValueBlock& old) : m_buffers(Buffers()) {
    m_buffers.pending.clear();
    m_buffers.nUsed = 0;
    old.ForEach([this](const Entry& entry) {
      Add(entry.nID, entry.nKind, entry.nPayloadBytes,
          [&entry](uint8_t* p) { std::memcpy(p, entry.pPayload, entry.nPayloadBytes); });
    });
    m_bKeptOld = !m_buffers.pending.empty();
  }
  Loader(const Loader&) = delete;
  Loader& operator=(const Loader&) = delete;
  ~Loader() {
    if (m_buffers.bytes.size() > KEPT_BUFFER_BYTES) std::vector<uint8_t>().swap(m_buffers.bytes);
  }

  // The archive's entries of nKind replace those the store had.
  void Begin(uint8_t nKind) {
    if (!m_bKeptOld) return;
    std::vector<ValueBlock::Pending>& pending = m_buffers.pending;
    pending.erase(std::remove_if(pending.begin(), pending.end(),
                                 [nKind](const ValueBlock::Pending& entry) { return entry.nKind == nKind; }),
                  pending.end());
  }
  // An entry whose payload fill(uint8_t*) writes; it counts only when fill
  // returns.
  template <typename Fill>
  void Add(int nID, uint8_t nKind, size_t nBytes, Fill fill) {
    std::vector<uint8_t>& bytes = m_buffers.bytes;
    const size_t nOffset = m_buffers.nUsed;
    if (nBytes > std::numeric_limits<uint32_t>::max() - nOffset) throw std::bad_alloc();
    if (nOffset + nBytes > bytes.size()) bytes.resize(std::max(2 * bytes.size(), nOffset + nBytes));
    fill(bytes.data() + nOffset);
    m_buffers.pending.push_back(
        {nID, nKind, static_cast<uint32_t>(nOffset), static_cast<uint32_t>(nBytes)});
    m_buffers.nUsed = nOffset + nBytes;
  }
  template <typename T>
  void Add(int nID, const T& value) {
    Add(nID, Code(Packing<T>::KIND), Packing<T>::Size(value), [&value](uint8_t* p) { Packing<T>::Write(value, p); });
  }
  bool IsFlagged(int nID) const {
    for (const ValueBlock::Pending& entry : m_buffers.pending) {
      if (entry.nID == nID && entry.nKind == Code(ValueKind::Flag)) return true;
    }
    return false;
  }
  // Trims every text in place (it only gets shorter).
  void TrimTexts() {
    for (ValueBlock::Pending& entry : m_buffers.pending) {
      if (entry.nKind != Code(ValueKind::Text)) continue;
      uint8_t* p = m_buffers.bytes.data() + entry.nOffset;
      CString text = Packing<CString>::Read(p);
      StringUtils::Trim(text);
      Packing<CString>::Write(text, p);
      entry.nPayloadBytes = static_cast<uint32_t>(Packing<CString>::Size(text));
    }
  }
  void Commit(ValueBlock& block) { block.Assign(m_buffers.pending, m_buffers.bytes.data()); }

 private:
  // bytes grows and is not cleared: only its first nUsed bytes count.
  struct LoadBuffers {
    std::vector<ValueBlock::Pending> pending;
    std::vector<uint8_t> bytes;
    size_t nUsed = 0;
  };

  static LoadBuffers& Buffers() {
    thread_local LoadBuffers buffers;
    return buffers;
  }

  LoadBuffers& m_buffers;
  bool m_bKeptOld = false;
};

// One store's values going to or coming from an archive, field by field:
// storing writes them straight from the packed block, loading gathers them
// in a Loader and packs them into the block at Finish (which a load stopped
// by an exception calls too).
class ValueArchiver {
 public:
  ValueArchiver(CArchive& ar, ValueBlock& block, bool bOldFormat)
      : m_ar(ar), m_block(block), m_bOldFormat(bOldFormat) {
    if (ar.IsLoading()) m_loader.emplace(block);
  }

  // The counter and the entries of kind T.
  template <typename T>
  void Kind() {
    const uint8_t nKind = Code(Packing<T>::KIND);
    if (m_ar.IsStoring()) {
      ForEachToStore(nKind, [this](const Entry& entry) {
        T value = Packing<T>::Read(entry.pPayload);
        SerializeValue(m_ar, value);
      });
      return;
    }
    ForEachToLoad(nKind, MinArchiveBytes<T>(), [this](int nID) {
      T value{};
      SerializeValue(m_ar, value);
      m_loader->Add(nID, value);
    });
  }

  // The flagged set: the IDs alone.
  void Flags() {
    const uint8_t nKind = Code(ValueKind::Flag);
    if (m_ar.IsStoring()) {
      ForEachToStore(nKind, [](const Entry&) {});
      return;
    }
    ForEachToLoad(nKind, 0, [this, nKind](int nID) { m_loader->Add(nID, nKind, 0, [](uint8_t*) {}); });
  }

  // Texts of flagged columns enciphered; the others go between the archive
  // and the packed bytes without a CString.
  void Texts() {
    const uint8_t nKind = Code(ValueKind::Text);
    if (m_ar.IsStoring()) {
      const bool bAnyFlagged = m_block.GetCount(Code(ValueKind::Flag)) > 0;
      ForEachToStore(nKind, [this, bAnyFlagged](const Entry& entry) {
        if (bAnyFlagged && m_block.Find(entry.nID, Code(ValueKind::Flag))) {
          CString text = Packing<CString>::Read(entry.pPayload);
          Crypto::SerializeEncrypted(m_ar, text);
          return;
        }
        size_t nLength = 0;
        const char* pch = Packing<CString>::Bytes(entry.pPayload, nLength);
        m_ar.WriteString(pch, nLength);
      });
      return;
    }
    ForEachToLoad(nKind, TEXT_BYTES, [this, nKind](int nID) {
      if (m_loader->IsFlagged(nID)) {
        CString text;
        Crypto::SerializeEncrypted(m_ar, text);
        m_loader->Add(nID, text);
        return;
      }
      const size_t nLength = m_ar.ReadStringLength();
      m_loader->Add(nID, nKind, Packing<CString>::Size(nLength),
                    [this, nLength](uint8_t* p) { m_ar.ReadExact(WriteVarint(nLength, p), nLength); });
    });
  }

  void TrimTexts() { m_loader->TrimTexts(); }

  void Finish() {
    if (m_loader) m_loader->Commit(m_block);
  }

 private:
  // The counter, then per entry of nKind its ID and what store(entry)
  // writes.
  template <typename Store>
  void ForEachToStore(uint8_t nKind, Store store) {
    SerializeData::SerializeLoopCounter(m_ar, m_block.GetCount(nKind), m_bOldFormat);
    m_block.ForEachOfKind(nKind, [this, &store](const Entry& entry) {
      m_ar << entry.nID;
      store(entry);
    });
  }
  // Reads the counter (checked against the bytes that remain), then per
  // entry its ID and what load(nID) reads. The archive's entries of nKind
  // replace those the store had.
  template <typename Load>
  void ForEachToLoad(uint8_t nKind, size_t nMinValueBytes, Load load) {
    m_loader->Begin(nKind);
    ForEachLoaded(m_ar, m_bOldFormat, nMinValueBytes, load);
  }

  CArchive& m_ar;
  ValueBlock& m_block;
  const bool m_bOldFormat;
  std::optional<Loader> m_loader;
};

// Reads one address in its own archive form and drops it. Records of
// version-1 stores once kept addresses of their own.
void SkipAddress(CArchive& ar) {
  Address scratch;
  scratch.Serialize(ar);
}

// A 32-bit count of entries, each an int ID and what skipEntry reads.
template <typename SkipEntry>
void SkipBlock(CArchive& ar, size_t nMinEntryBytes, SkipEntry skipEntry) {
  ForEachLoaded(ar, true, nMinEntryBytes, [&ar, &skipEntry](int) { skipEntry(ar); });
}

bool SamePayload(uint8_t nKind, const uint8_t* pA, const uint8_t* pB) {
  if (nKind == Code(ValueKind::Double)) return Packing<double>::Read(pA) == Packing<double>::Read(pB);
  const size_t nBytes = ValueBlock::PayloadSize(nKind, pA);
  return nBytes == ValueBlock::PayloadSize(nKind, pB) && std::memcmp(pA, pB, nBytes) == 0;
}

}  // namespace

ValueStore::ValueStore() = default;
ValueStore::ValueStore(const ValueStore& other) = default;
ValueStore& ValueStore::operator=(const ValueStore& other) = default;
ValueStore::ValueStore(ValueStore&& other) noexcept = default;
ValueStore& ValueStore::operator=(ValueStore&& other) noexcept = default;
ValueStore::~ValueStore() = default;

bool ValueStore::Has(int nID, ValueKind nKind) const { return m_block.Find(nID, Code(nKind)) != nullptr; }
bool ValueStore::IsFlagged(int nID) const { return Has(nID, ValueKind::Flag); }

bool ValueStore::HaveDataProp(int nID) const { return m_block.Contains(nID, VALUE_KINDS); }
bool ValueStore::HaveDataPropBool(int nID) const { return Has(nID, ValueKind::Bool); }
bool ValueStore::HaveDataPropInt(int nID) const { return Has(nID, ValueKind::Int); }
bool ValueStore::HaveDataPropDouble(int nID) const { return Has(nID, ValueKind::Double); }
bool ValueStore::HaveDataPropMoney(int nID) const { return Has(nID, ValueKind::Money); }
bool ValueStore::HaveDataPropDateTime(int nID) const { return Has(nID, ValueKind::DateTime); }
bool ValueStore::HaveDataPropString(int nID) const { return Has(nID, ValueKind::Text); }

template <typename T>
void ValueStore::Put(const ValueBlock::Slot& slot, const T& value) {
  m_block.Put(slot, Packing<T>::Size(value), [&value](uint8_t* p) { Packing<T>::Write(value, p); });
}

template <typename T>
void ValueStore::Put(int nID, const T& value) {
  Put(m_block.Seek(nID, Code(Packing<T>::KIND)), value);
}

template <typename T>
void ValueStore::Register(int nID, const T& value) {
  const ValueBlock::Slot slot = m_block.Seek(nID, Code(Packing<T>::KIND));
  if (!slot.pPayload) Put(slot, value);
}

void ValueStore::Flag(int nID) {
  const ValueBlock::Slot slot = m_block.Seek(nID, Code(ValueKind::Flag));
  if (!slot.pPayload) m_block.Put(slot, 0, [](uint8_t*) {});
}

void ValueStore::RegisterDataProp(int nID, const CString& value, bool bFlagged) {
  Register(nID, value);
  if (bFlagged) Flag(nID);
}

void ValueStore::RegisterDataProp(int nID, const DateTime& value) { Register(nID, value); }
void ValueStore::RegisterDataProp(int nID, const Money& value) { Register(nID, value); }
void ValueStore::RegisterDataProp(int nID, double value) { Register(nID, value); }
void ValueStore::RegisterDataProp(int nID, int value) { Register(nID, value); }
void ValueStore::RegisterDataProp(int nID, bool value) { Register(nID, value); }

template <typename T>
bool ValueStore::Set(int nID, const T& value, bool bRecord, UndoStore& undo) {
  const ValueBlock::Slot slot = m_block.Seek(nID, Code(Packing<T>::KIND));
  const uint8_t* pStored = slot.pPayload;
  if (pStored ? Packing<T>::Equals(pStored, value) : AbsentValue<T>() == value) return false;
  if (bRecord) {
    undo.AddUndoData(nID, pStored ? Packing<T>::Read(pStored) : AbsentValue<T>());
  } else {
    undo.RemoveUndoData(nID, value);
  }
  Put(slot, value);
  return true;
}

bool ValueStore::SetData(int nID, const CString& value, bool bRecord, UndoStore& undo) {
  return Set(nID, value, bRecord, undo);
}
bool ValueStore::SetData(int nID, const DateTime& value, bool bRecord, UndoStore& undo) {
  return Set(nID, value, bRecord, undo);
}
bool ValueStore::SetData(int nID, const Money& value, bool bRecord, UndoStore& undo) {
  return Set(nID, value, bRecord, undo);
}
bool ValueStore::SetData(int nID, double value, bool bRecord, UndoStore& undo) {
  return Set(nID, value, bRecord, undo);
}
bool ValueStore::SetData(int nID, int value, bool bRecord, UndoStore& undo) { return Set(nID, value, bRecord, undo); }
bool ValueStore::SetData(int nID, bool value, bool bRecord, UndoStore& undo) { return Set(nID, value, bRecord, undo); }

template <typename T>
void ValueStore::Get(int nID, T& out) const {
  const uint8_t* pStored = m_block.Find(nID, Code(Packing<T>::KIND));
  out = pStored ? Packing<T>::Read(pStored) : AbsentValue<T>();
}

void ValueStore::GetData(int nID, CString& out) const { Get(nID, out); }
void ValueStore::GetData(int nID, DateTime& out) const { Get(nID, out); }
void ValueStore::GetData(int nID, Money& out) const { Get(nID, out); }
void ValueStore::GetData(int nID, double& out) const { Get(nID, out); }
void ValueStore::GetData(int nID, int& out) const { Get(nID, out); }
void ValueStore::GetData(int nID, bool& out) const { Get(nID, out); }

void ValueStore::Delete(int nID, ValueKind nKind) { m_block.Erase(nID, Bit(nKind)); }

void ValueStore::DeleteData(int nID) { m_block.Erase(nID, VALUE_KINDS); }
void ValueStore::DeleteDataBool(int nID) { Delete(nID, ValueKind::Bool); }
void ValueStore::DeleteDataInt(int nID) { Delete(nID, ValueKind::Int); }
void ValueStore::DeleteDataDouble(int nID) { Delete(nID, ValueKind::Double); }
void ValueStore::DeleteDataMoney(int nID) { Delete(nID, ValueKind::Money); }
void ValueStore::DeleteDataDateTime(int nID) { Delete(nID, ValueKind::DateTime); }
void ValueStore::DeleteDataString(int nID) { Delete(nID, ValueKind::Text); }

template <typename T>
void ValueStore::ChangeID(int nIDA, int nIDB) {
  if (nIDA == nIDB) return;
  const uint8_t* pA = m_block.Find(nIDA, Code(Packing<T>::KIND));
  if (!pA) return;
  const T valueA = Packing<T>::Read(pA);
  if (const uint8_t* pB = m_block.Find(nIDB, Code(Packing<T>::KIND))) Put(nIDA, Packing<T>::Read(pB));
  Put(nIDB, valueA);
}

void ValueStore::ChangeDataPropIDBool(int nIDA, int nIDB) { ChangeID<bool>(nIDA, nIDB); }
void ValueStore::ChangeDataPropIDInt(int nIDA, int nIDB) { ChangeID<int>(nIDA, nIDB); }
void ValueStore::ChangeDataPropIDDouble(int nIDA, int nIDB) { ChangeID<double>(nIDA, nIDB); }
void ValueStore::ChangeDataPropIDMoney(int nIDA, int nIDB) { ChangeID<Money>(nIDA, nIDB); }
void ValueStore::ChangeDataPropIDDateTime(int nIDA, int nIDB) { ChangeID<DateTime>(nIDA, nIDB); }
void ValueStore::ChangeDataPropIDString(int nIDA, int nIDB) { ChangeID<CString>(nIDA, nIDB); }

// The payload is copied out first: making room for the new entry may move
// it (see ValueBlock::Put).
bool ValueStore::Move(ValueKind nKind, int nFromID, int nToID) {
  const uint8_t* pFrom = m_block.Find(nFromID, Code(nKind));
  if (!pFrom) return false;
  const std::vector<uint8_t> payload(pFrom, pFrom + ValueBlock::PayloadSize(Code(nKind), pFrom));
  m_block.Put(nToID, Code(nKind), payload.size(),
              [&payload](uint8_t* p) { std::copy(payload.begin(), payload.end(), p); });
  Delete(nFromID, nKind);
  return true;
}

void ValueStore::MoveData(int nFromID, int nToID) {
  if (nFromID == nToID) return;
  for (ValueKind nKind : {ValueKind::Bool, ValueKind::Int, ValueKind::Double, ValueKind::Money, ValueKind::DateTime}) {
    if (Move(nKind, nFromID, nToID)) return;
  }
  if (Move(ValueKind::Text, nFromID, nToID) && IsFlagged(nFromID)) {
    Delete(nFromID, ValueKind::Flag);
    Flag(nToID);
  }
}

void ValueStore::GetSupportedDataProps(std::vector<int>& ids) const {
  const ValueKind KINDS[] = {ValueKind::Bool,  ValueKind::Int,      ValueKind::Double,
                             ValueKind::Money, ValueKind::DateTime, ValueKind::Text};
  size_t nValues = 0;
  for (ValueKind nKind : KINDS) nValues += m_block.GetCount(Code(nKind));
  ids.reserve(ids.size() + nValues);
  for (ValueKind nKind : KINDS) {
    m_block.ForEachOfKind(Code(nKind), [&ids](const Entry& entry) { ids.push_back(entry.nID); });
  }
}

bool ValueStore::operator==(const ValueStore& other) const { return m_block.Equals(other.m_block, SamePayload); }

// Layout (version 6, current), counters 64-bit:
//   WORD  version
//   map   int -> bool            counter; per entry: int ID, bool byte
//   map   int -> int             counter; per entry: int ID, int
//   map   int -> double          counter; per entry: int ID, double
//   map   int -> DateTime        counter; per entry: int ID, DateTime
//   set   flagged text IDs       counter; int IDs ascending
//   map   int -> text            counter; per entry: int ID, text (enciphered
//                                when the ID is flagged)
//   Money counter; per entry: int ID, Money
// Every map in ascending ID order. A damaged archive may repeat or shuffle
// IDs: loading keeps the last value of a repeated ID.
// Changelog:
//   1: after the texts, a 32-bit count of (int ID, Address) entries, the
//      addresses a record once kept; discarded on loading.
//   2: no address block. Texts of versions 1 and 2 are trimmed on loading.
//   3: texts are kept exactly as stored.
//   4: after the Money entries, a 32-bit count of (int ID, map int -> vector
//      of int, old counters) entries; discarded on loading.
//   5: no such block.
//   6: loop counters 64-bit (32-bit before).
void ValueStore::Serialize(CArchive& ar) {
  WORD nVersion = VALUESTORE_VERSION;
  Exchange(ar, nVersion);
  ValueArchiver values(ar, m_block, nVersion < FIRST_NEW_COUNTER_VERSION);
  try {
    values.Kind<bool>();
    values.Kind<int>();
    values.Kind<double>();
    values.Kind<DateTime>();
    values.Flags();
    values.Texts();
    if (ar.IsLoading() && nVersion == ADDRESS_BLOCK_VERSION) SkipBlock(ar, ADDRESS_BYTES, SkipAddress);
    values.Kind<Money>();
    if (ar.IsLoading() && nVersion < FIRST_TRIMMED_VERSION) values.TrimTexts();
    if (ar.IsLoading() && nVersion == LIST_BLOCK_VERSION) {
      SkipBlock(ar, OLD_COUNTER_BYTES, [](CArchive& a) {
        std::map<int, std::vector<int>> lists;
        SerializeData::Serialize(a, lists, true);
      });
    }
  } catch (...) {
    values.Finish();
    throw;
  }
  values.Finish();
}
