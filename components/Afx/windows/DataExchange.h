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
    void PrepareEditCtrl(CEdit& edit) noexcept { m_control = &edit; }
    /// The same for a control of any kind, which it gives.
    CWnd& PrepareCtrl(int id);
    /// Ends the exchange: while saving the focus goes to the prepared control, and the text of a field is selected.
    /// Throws CUserException, on which UpdateData returns false and the dialog stays open.
    [[noreturn]] void Fail();

private:
    CWnd* m_control = nullptr;
};

// The exchange of the control `id` with a value. Each throws CInvalidArgException when the dialog has no such control.

AFX_API void DDX_Text(CDataExchange* exchange, int id, CString& value);
/// A whole number; a text that is none, or too large, is refused and told.
AFX_API void DDX_Text(CDataExchange* exchange, int id, int& value);
/// 0 or 1.
AFX_API void DDX_Check(CDataExchange* exchange, int id, int& value);
/// The index of the chosen item; -1 for none.
AFX_API void DDX_CBIndex(CDataExchange* exchange, int id, int& value);
/// Puts `control` in the place of the control `id`, once.
AFX_API void DDX_Control(CDataExchange* exchange, int id, CWnd& control);
