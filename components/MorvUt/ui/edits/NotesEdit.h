#pragma once

// The field for notes.

#include "Afx/windows/Edit.h"
#include "MorvUt/Export.h"

/// A field of several lines in which the Enter key is text and Tab leaves. Line ends are line feeds, whatever is set.
class MORVUT_API CNotesEdit : public CEdit
{
    DECLARE_DYNAMIC(CNotesEdit)

    /// `takesEnter`: the Enter key is text; otherwise it presses the dialog's default button.
    explicit CNotesEdit(bool takesEnter) noexcept : m_takesEnter(takesEnter) { SetMultiLine(true); }

    unsigned OnGetDlgCode() override;

protected:
    void OnSetText(const char* text) override;
    void PreSubclassWindow() override;

private:
    bool m_takesEnter;
};
