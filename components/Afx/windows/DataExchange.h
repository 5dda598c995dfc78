#pragma once

// One exchange of data between a dialog's controls and its data.

#include "Afx/windows/Edit.h"

/// Handed to each control in turn. A control that refuses what it holds prepares itself, tells the user, and calls
/// Fail.
class AFX_API CDataExchange
{
public:
    CDataExchange(CWnd* dialog, bool saveAndValidate) noexcept : m_bSaveAndValidate(saveAndValidate), m_pDlgWnd(dialog)
    {}

    bool m_bSaveAndValidate; // true: from the controls to the data
    CWnd* m_pDlgWnd;

    /// Names the field that the exchange goes back to if it fails. Throws CInvalidArgException when the dialog has no
    /// field `id`.
    void PrepareEditCtrl(int id);
    void PrepareEditCtrl(CEdit& edit) noexcept { m_edit = &edit; }
    /// Ends the exchange: while saving the focus goes to the prepared field and its text is selected. Throws
    /// CUserException, on which UpdateData returns false and the dialog stays open.
    [[noreturn]] void Fail();

private:
    CEdit* m_edit = nullptr;
};
