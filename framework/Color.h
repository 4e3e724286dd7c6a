#ifndef FRAMEWORK_COLOR_H_
#define FRAMEWORK_COLOR_H_

#include "framework/FrameworkExport.h"
#include "framework/Types.h"

// A colour as 0x00BBGGRR: red in the low byte, then green, then blue.
using COLORREF = DWORD;

constexpr COLORREF RGB(BYTE r, BYTE g, BYTE b) {
  return static_cast<COLORREF>(r) | (static_cast<COLORREF>(g) << 8) | (static_cast<COLORREF>(b) << 16);
}
constexpr BYTE GetRValue(COLORREF rgb) { return static_cast<BYTE>(rgb); }
constexpr BYTE GetGValue(COLORREF rgb) { return static_cast<BYTE>(rgb >> 8); }
constexpr BYTE GetBValue(COLORREF rgb) { return static_cast<BYTE>(rgb >> 16); }

// Indexes of the system colours that the library asks for.
constexpr int COLOR_WINDOW = 5;  // the window background
constexpr int COLOR_WINDOWTEXT = 8;  // the text on that background

// The system's colour for nIndex: the window background is white, its text
// black; every other index answers black.
FRAMEWORK_API COLORREF GetSysColor(int nIndex);

#endif  // FRAMEWORK_COLOR_H_
