#include "DataMgr/types/NextIDMgr.h"

namespace {

const WORD NEXTIDMGR_VERSION = 1;

}  // namespace

int NextIDMgr::IDAfter(int nID) { return static_cast<int>(static_cast<UINT>(nID) + 1u); }

int NextIDMgr::GetNextID() {
  const int nID = m_nNextID;
  m_nNextID = IDAfter(nID);
  return nID;
}

void NextIDMgr::UpdateNextID(int nID) {
  if (IsValidID(nID) && nID >= m_nNextID) m_nNextID = IDAfter(nID);
}

// Layout (version 1, current):
//   WORD version
//   int  next ID
// Changelog:
//   1: first version.
void NextIDMgr::Serialize(CArchive& ar) {
  if (ar.IsStoring()) {
    ar << NEXTIDMGR_VERSION;
    ar << m_nNextID;
  } else {
    WORD nVersion = 0;
    ar >> nVersion;
    ar >> m_nNextID;
  }
}
