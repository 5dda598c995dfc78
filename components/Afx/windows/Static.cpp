#include "Afx/windows/Static.h"

IMPLEMENT_DYNCREATE(CStatic, CWnd)
