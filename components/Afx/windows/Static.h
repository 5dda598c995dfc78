#pragma once

// The static text.

#include "Afx/windows/Wnd.h"

/// A text that is only shown; before a field it is the field's label, whose mnemonic ("&Share:") leads to the field.
class AFX_API CStatic : public CWnd
{
    DECLARE_DYNCREATE(CStatic)

    bool IsTabStop() const noexcept override { return false; }
    bool NamesItself() const noexcept override { return true; }
};
