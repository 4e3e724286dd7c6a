#include "framework/Color.h"

#include <gtest/gtest.h>

#include "framework/CWaitCursor.h"

TEST(ColorTest, ChannelsPackAsBlueGreenRed) {
  const COLORREF color = RGB(0x12, 0x34, 0x56);
  EXPECT_EQ(color, 0x00563412u);
  EXPECT_EQ(GetRValue(color), 0x12);
  EXPECT_EQ(GetGValue(color), 0x34);
  EXPECT_EQ(GetBValue(color), 0x56);
  EXPECT_EQ(GetSysColor(COLOR_WINDOW), 0x00FFFFFFu);
  EXPECT_EQ(GetSysColor(COLOR_WINDOWTEXT), 0u);
}

namespace {

std::vector<bool> g_calls;

void RecordBusy(bool bBusy) { g_calls.push_back(bBusy); }

}  // namespace

TEST(WaitCursorTest, CallsTheHostHookAroundItsScope) {
  { CWaitCursor nothingHappens; }
  CWaitCursor::SetHook(RecordBusy);
  { CWaitCursor busy; }
  CWaitCursor::SetHook(nullptr);
  { CWaitCursor nothingHappensAgain; }
  EXPECT_EQ(g_calls, (std::vector<bool>{true, false}));
}
