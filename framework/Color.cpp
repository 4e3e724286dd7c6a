#include "framework/Color.h"

COLORREF GetSysColor(int nIndex) { return nIndex == COLOR_WINDOW ? RGB(0xFF, 0xFF, 0xFF) : RGB(0, 0, 0); }
