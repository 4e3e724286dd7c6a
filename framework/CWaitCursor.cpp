#include "framework/CWaitCursor.h"

CWaitCursor::Hook CWaitCursor::s_pHook = nullptr;

CWaitCursor::CWaitCursor() {
  if (s_pHook != nullptr) s_pHook(true);
}

CWaitCursor::~CWaitCursor() {
  if (s_pHook != nullptr) s_pHook(false);
}

void CWaitCursor::SetHook(Hook pHook) { s_pHook = pHook; }
