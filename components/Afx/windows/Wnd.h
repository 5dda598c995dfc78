#pragma once

// The window model: what a window is, apart from how it is drawn.

#include <vector>

#include "Afx/Object.h"
#include "Afx/Platform.h"
#include "Afx/text/CString.h"

class CDataExchange;

/// A window: a control of a dialog, or a dialog. It holds its state itself, so it can be filled and asked before it is
/// shown and where there is no display. Virtual functions are the event mechanism; message maps only name them (see
/// Afx/MessageMap.h). For the user-interface thread only.
class AFX_API CWnd : public CObject
{
    DECLARE_DYNCREATE(CWnd)
    CWnd() = default;
    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;
    ~CWnd() override;

    /// Makes this the control `id` of `parent`, which does not own it; the controls are reached by Tab in the order in
    /// which they are made. False, and nothing done, when it has a parent already.
    bool Create(CWnd* parent, unsigned id);
    CWnd* GetParent() const noexcept { return m_parent; }
    int GetDlgCtrlID() const noexcept { return static_cast<int>(m_id); }
    /// The control `id` of this window, the first when several have it; null when there is none.
    CWnd* GetDlgItem(int id) const noexcept;
    /// In the order in which they were made.
    const std::vector<CWnd*>& Children() const noexcept { return m_children; }

    void SetWindowText(const char* text) { OnSetText(text); }
    void GetWindowText(CString& text) const { text = m_text; }
    /// Each gives the state before.
    bool EnableWindow(bool enable = true) noexcept;
    bool ShowWindow(bool show) noexcept;
    bool IsWindowEnabled() const noexcept { return m_enabled; }
    /// Whether this window and all that it stands in are visible.
    bool IsWindowVisible() const noexcept;
    /// Whether the user can work in it: it and all that it stands in are enabled and visible.
    bool TakesInput() const noexcept;

    /// Moves the focus here and gives the window that had it. A window that takes no input refuses.
    CWnd* SetFocus();
    /// The window that the user types into; null for none.
    static CWnd* GetFocus() noexcept;
    /// Takes the focus away from whatever window has it.
    static void KillFocus();
    /// Whether the focus is on this window or on one inside it.
    bool HasFocusWithin() const noexcept;

    /// Exchanges data with the controls (DoDataExchange): to the data, or from it. False when the exchange was refused,
    /// of which the user has been told.
    bool UpdateData(bool saveAndValidate = true);

    /// For window systems: a key was typed; a control or a menu gave a command. What takes no input gets neither.
    void DeliverChar(unsigned character, unsigned repeat = 1);
    bool DeliverCommand(unsigned id, unsigned notification = 0);

protected:
    /// A character was typed: its Unicode number, 8 for backspace; `repeat` times.
    virtual void OnChar(unsigned character, unsigned repeat, unsigned flags);
    virtual void OnSetText(const char* text);
    /// The focus has moved to `newFocus`; null: to no window of ours.
    virtual void OnKillFocus(CWnd* newFocus);
    /// A command: in `wParam` its id, and above the lowest 16 bits the control's notification. True when it is done.
    virtual bool OnCommand(WPARAM wParam, LPARAM lParam);
    /// Lets each control exchange its data, in the order in which the user meets them.
    virtual void DoDataExchange(CDataExchange* exchange);

private:
    CString m_text;
    CWnd* m_parent = nullptr;
    std::vector<CWnd*> m_children;
    unsigned m_id = 0;
    bool m_enabled = true;
    bool m_visible = true;
};
