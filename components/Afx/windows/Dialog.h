#pragma once

// Dialogs, worked through by whatever window system is installed.

#include "Afx/windows/Wnd.h"

/// A dialog. A derived class makes its controls, exchanges their data in DoDataExchange, and checks in OnOK.
class AFX_API CDialog : public CWnd
{
    DECLARE_DYNAMIC(CDialog)

    /// Shows the dialog and returns when it has ended: IDOK, IDCANCEL or what EndDialog was given; -1 when it is open
    /// already, or could not be filled. Without a window system there is nobody to work it: it is cancelled.
    virtual int DoModal();
    /// Ends the dialog with this result as soon as the handler that runs returns.
    void EndDialog(int result) noexcept;
    /// Whether it waits for the user.
    bool IsOpen() const noexcept { return m_open; }
    /// Moves the focus to a control as the Tab key does, which selects the whole text of a field.
    static void GotoDlgCtrl(CWnd* control);

protected:
    /// Fills the controls. True: the focus goes to the first control that takes input; false: it has been set.
    virtual bool OnInitDialog();
    /// Takes the data over and ends the dialog, unless the data are refused.
    virtual void OnOK();
    virtual void OnCancel();
    bool OnCommand(WPARAM wParam, LPARAM lParam) override;

private:
    int m_result = 0;
    bool m_open = false;
};
