#pragma once

// The combo boxes of the suite.

#include "Afx/windows/ComboBox.h"
#include "Kiln/Export.h"

namespace Kiln
{

/// A combo box whose list, while it is dropped, takes Enter and Escape for itself, so that the dialog around it does
/// not close.
class KILN_API CExComboBox : public CComboBox
{
    DECLARE_DYNCREATE(CExComboBox)

    bool PreTranslateMessage(MSG* message) override;
};

/// The same with an edit: what is typed is completed by the first item that begins so when it is left.
class KILN_API CCoolComboBox : public CExComboBox
{
    DECLARE_DYNCREATE(CCoolComboBox)
    CCoolComboBox() { SetEditable(true); }

protected:
    void OnKillFocus(CWnd* newFocus) override;
};

} // namespace Kiln
