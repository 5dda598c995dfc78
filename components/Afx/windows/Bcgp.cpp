#include "Afx/windows/Bcgp.h"

IMPLEMENT_DYNAMIC(CBCGPDialog, CDialog)
IMPLEMENT_DYNAMIC(CBCGPPropertyPage, CPropertyPage)
IMPLEMENT_DYNAMIC(CBCGPPropertySheet, CPropertySheet)
