#pragma once

// The layers that the suite's sheets, pages and dialogs stand on, above the framework's own.

#include "Afx/windows/PropertySheet.h"

class AFX_API CBCGPDialog : public CDialog
{
    DECLARE_DYNAMIC(CBCGPDialog)
    using CDialog::CDialog;
};

class AFX_API CBCGPPropertyPage : public CPropertyPage
{
    DECLARE_DYNAMIC(CBCGPPropertyPage)
    using CPropertyPage::CPropertyPage;
};

class AFX_API CBCGPPropertySheet : public CPropertySheet
{
    DECLARE_DYNAMIC(CBCGPPropertySheet)
    using CPropertySheet::CPropertySheet;
};
