#pragma once

// Dialogs, worked through by whatever window system is installed.

#include "Afx/windows/Layout.h"
#include "Afx/windows/Wnd.h"

/// A dialog. Its controls are made from a layout, or by the derived class; DoDataExchange exchanges their data, OnOK
/// checks. One that stands inside another window (a panel, a page) is made by Create.
class AFX_API CDialog : public CWnd
{
    DECLARE_DYNAMIC(CDialog)

    CDialog() = default;
    /// Its controls are made from `layout`, which outlives it, each time it opens, and end when it has ended.
    explicit CDialog(const Afx::DialogLayout& layout) noexcept : m_layout(&layout) {}
    ~CDialog() override;

    /// Shows the dialog and returns when it has ended: IDOK, IDCANCEL or what EndDialog was given; -1 when it is open
    /// already, or could not be filled. Without a window system there is nobody to work it: it is cancelled. Until it
    /// has ended, no other window takes input.
    virtual int DoModal();
    /// Makes it a panel of `parent`, filled by OnInitDialog. False when it has a parent already.
    bool Create(CWnd* parent, unsigned id);
    /// Ends the dialog with this result as soon as the handler that runs returns.
    void EndDialog(int result) noexcept;
    /// Null: its controls were made without one.
    const Afx::DialogLayout* GetLayout() const noexcept { return m_layout; }
    /// Whether it waits for the user.
    bool IsOpen() const noexcept { return m_open; }
    bool DestroyWindow() override;

    /// The dialog that waits for the user before all others; null when none does.
    static CDialog* GetTopModal() noexcept;
    /// Moves the focus to a control as the Tab key does, which selects the whole text of a field.
    static void GotoDlgCtrl(CWnd* control);
    /// The control that Tab leads to from `from` (null: the first), or with `back` Shift+Tab; panels and pages are gone
    /// through, and after the last comes the first. Null when nothing takes input.
    CWnd* GetNextDlgTabItem(CWnd* from, bool back = false) const;

    bool IsTabStop() const noexcept override { return false; }
    bool NamesItself() const noexcept override { return true; }

protected:
    friend struct Afx::UserActs;

    /// Fills the controls. True: the focus goes to the first control that takes input; false: it has been set.
    virtual bool OnInitDialog();
    /// Takes the data over and ends the dialog, unless the data are refused.
    virtual void OnOK();
    virtual void OnCancel();
    /// The user asks for help on a control. False: not here, whoever is around it is asked.
    virtual bool OnHelp(unsigned controlId);
    /// A key that the control with the focus has left: Tab, Enter, Escape, F1, mnemonics, and Ctrl+. for the next field
    /// that is empty.
    virtual bool OnDialogKey(CWnd& focus, unsigned key, unsigned modifiers);
    bool OnCommand(WPARAM wParam, LPARAM lParam) override;

    /// Takes an EndDialog of the running handler back: something that follows from it has failed.
    void KeepOpen() noexcept { m_open = true; }
    /// Its controls are made and placed.
    void MakeControls();
    void SetLayout(const Afx::DialogLayout& layout) noexcept { m_layout = &layout; }

private:
    friend class CPropertySheet;

    void Run();
    bool Open();
    void GotoNext(bool back);
    void GotoNextEmpty(CWnd& focus);
    void PressDefault(CWnd& focus);
    void PressUnlessDisabled(unsigned id);
    bool PressMnemonic(char letter);

    const Afx::DialogLayout* m_layout = nullptr;
    int m_result = 0;
    bool m_open = false;
    bool m_made = false; // from the layout
};
