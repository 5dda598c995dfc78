#pragma once

// The window model: what a window is, apart from how it is drawn.

#include <memory>
#include <vector>

#include "Afx/Object.h"
#include "Afx/Platform.h"
#include "Afx/text/CString.h"
#include "Afx/windows/Geometry.h"
#include "Afx/windows/Messages.h"
#include "Afx/windows/WindowPeer.h"

class CDataExchange;

/// A window: a control of a dialog, or a dialog. It holds its state itself, so it can be filled and asked before it is
/// shown and where there is no display; a native window, where there is one, mirrors it. Virtual functions are the
/// event mechanism, beside message maps (Afx/windows/MessageMap.h). For the user-interface thread only.
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
    /// Makes `control` the control `id` of this window, which owns it from now on.
    CWnd& Adopt(std::unique_ptr<CWnd> control, unsigned id);
    /// Takes the place of the control `id` of `parent`: its text and state, its rectangle and its place in the tab
    /// order; a control that the parent owned ends. Then calls PreSubclassWindow. False when there is none.
    bool SubclassDlgItem(unsigned id, CWnd* parent);
    /// Ends the window and those inside it: it has no parent, no native window and no focus any more. An object that
    /// its parent owned lives until the running event has returned, so a handler may end its own window.
    virtual bool DestroyWindow();

    CWnd* GetParent() const noexcept { return m_parent; }
    /// The window around all: this one when nothing is around it.
    CWnd& GetTopLevel() noexcept;
    int GetDlgCtrlID() const noexcept { return static_cast<int>(m_id); }
    /// The control `id` of this window, the first when several have it; null when there is none.
    CWnd* GetDlgItem(int id) const noexcept;
    /// In the order in which they are reached by Tab.
    const std::vector<CWnd*>& Children() const noexcept { return m_children; }
    /// The window's address as a handle, and the window of a handle; null for null.
    HWND GetSafeHwnd() const noexcept { return reinterpret_cast<HWND>(const_cast<CWnd*>(this)); }
    static CWnd* FromHandle(HWND handle) noexcept { return reinterpret_cast<CWnd*>(handle); }

    void SetWindowText(const char* text) { OnSetText(text); }
    void GetWindowText(CString& text) const { text = m_text; }
    const CString& Text() const noexcept { return m_text; }
    /// Each gives the state before. `ShowWindow` takes SW_SHOW and SW_HIDE too. A window that is disabled or hidden
    /// while it has the focus hands it on to the next control of its dialog.
    bool EnableWindow(bool enable = true);
    bool ShowWindow(bool show);
    bool IsWindowEnabled() const noexcept { return m_enabled; }
    /// Whether it would be visible if all around it were.
    bool IsShown() const noexcept { return m_visible; }
    /// Whether this window and all that it stands in are visible.
    bool IsWindowVisible() const noexcept;
    /// Whether the user can work in it: it and all that it stands in are enabled and visible, and no other window is
    /// waiting for an answer before.
    bool TakesInput() const noexcept;
    /// Whether Tab stops here.
    virtual bool IsTabStop() const noexcept { return true; }
    /// Whether its own text says what it is, as a button's does; a field has a label before it.
    virtual bool NamesItself() const noexcept { return false; }

    /// Its place in its parent, in dialog units.
    const CRect& GetRect() const noexcept { return m_rect; }
    /// The same size, from 0, 0.
    void GetClientRect(CRect& rect) const noexcept { rect = {0, 0, m_rect.Width(), m_rect.Height()}; }
    void MoveWindow(const CRect& rect);
    /// Moves and sizes the window, and puts it behind `after` in the tab order (null: it stays), as `flags` (SWP_...)
    /// say. The message map's OnWindowPosChanging may change where it goes.
    void SetWindowPos(CWnd* after, int x, int y, int cx, int cy, unsigned flags);

    /// While redrawing is off, nothing is shown; switching it on shows all. Calls nest.
    void SetRedraw(bool redraw = true);
    bool IsDrawing() const noexcept { return m_drawingOff == 0; }

    /// The static text before it, which says what is to be entered here; null when there is none.
    CWnd* GetLabel() const noexcept;
    /// How a screen reader calls it: the name that was set, else its label (the static text before it), else its text;
    /// without the mark of a mnemonic.
    CString GetAccessibleName() const;
    void SetAccessibleName(const CString& name);

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

    /// For window systems and UserActs: a key was typed; a control or a menu gave a command or a notification. What
    /// takes no input gets none of them.
    void DeliverChar(unsigned character, unsigned repeat = 1);
    bool DeliverCommand(unsigned id, unsigned notification = 0);
    bool DeliverNotify(unsigned code);
    bool DeliverKey(unsigned key, unsigned modifiers) { return OnKey(key, modifiers); }

    /// The native window, made by the window system that is installed for this window and those inside it.
    void MakePeers();
    void DropPeers() noexcept;
    Afx::WindowPeer* GetPeer() const noexcept { return m_peer.get(); }
    /// A part of the state has changed: the native window copies it.
    void Changed(Afx::Part parts);

    /// Sees each key and character before the window that has the focus, from there outwards. True: it has used it.
    virtual bool PreTranslateMessage(MSG* message);
    /// Which keys it wants for itself that its dialog would take (DLGC_...).
    virtual unsigned OnGetDlgCode();

protected:
    friend struct Afx::UserActs;
    friend class WindowRef;

    /// The window has taken the place of a control (SubclassDlgItem).
    virtual void PreSubclassWindow();
    /// Takes over what the layout gave the control whose place it takes, beyond text and state.
    virtual void TakeStyle(const CWnd& control);
    /// A character was typed: its Unicode number, 8 for backspace; `repeat` times.
    virtual void OnChar(unsigned character, unsigned repeat, unsigned flags);
    /// A key that is no character. True when it is used.
    virtual bool OnKey(unsigned key, unsigned modifiers);
    virtual void OnSetText(const char* text);
    virtual void OnSetFocus(CWnd* oldFocus);
    /// The focus has moved to `newFocus`; null: to no window of ours.
    virtual void OnKillFocus(CWnd* newFocus);
    /// A command: in `wParam` its id, and above the lowest 16 bits the control's notification. True when it is done.
    virtual bool OnCommand(WPARAM wParam, LPARAM lParam);
    /// A notification: in `wParam` the control's id, in `lParam` its NMHDR. True when it is done.
    virtual bool OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result);
    /// The message map. True when a row of it fitted.
    virtual bool OnMapped(Afx::MapMessage& message);
    /// Lets each control exchange its data, in the order in which the user meets them.
    virtual void DoDataExchange(CDataExchange* exchange);
    /// The window ends.
    virtual void OnDestroy();

    /// Tells the parent what happened here.
    bool NotifyParent(unsigned notification);
    /// The text as the user changes it, apart from OnSetText.
    CString& MutableText() noexcept { return m_text; }

private:
    CWnd* NextOfFocus();
    void Unlink() noexcept;
    void LetGo(const CWnd& child);

    CString m_text, m_name;
    CWnd* m_parent = nullptr;
    std::vector<CWnd*> m_children;
    std::vector<std::unique_ptr<CWnd>> m_owned;
    std::unique_ptr<Afx::WindowPeer> m_peer;
    std::shared_ptr<void> m_life; // made when first watched
    CRect m_rect;
    unsigned m_id = 0;
    int m_drawingOff = 0;
    bool m_enabled = true;
    bool m_visible = true;
};

namespace Afx
{

/// The time in which an event of the user's, or what a window does about one, runs. What has ended meanwhile goes when
/// the outermost one ends.
class AFX_API RunningEvent
{
public:
    RunningEvent() noexcept;
    ~RunningEvent();
    RunningEvent(const RunningEvent&) = delete;
    RunningEvent& operator=(const RunningEvent&) = delete;
};

/// "&Name:" without the mark of the mnemonic and the colon; "&&" is a "&".
AFX_API CString WithoutMnemonic(const CString& text);
/// Data for a label, such as a firm's name, with its "&" doubled, so that it shows and is no mark.
AFX_API CString WithoutMarks(const CString& data);
/// The letter after the mark, in upper case; 0 when there is none.
AFX_API char MnemonicOf(const CString& text) noexcept;

} // namespace Afx

/// A window that may end meanwhile.
class AFX_API WindowRef
{
public:
    explicit WindowRef(CWnd* window);
    /// Null when it has ended.
    CWnd* Get() const noexcept { return m_life.expired() ? nullptr : m_window; }
    explicit operator bool() const noexcept { return Get() != nullptr; }

private:
    CWnd* m_window;
    std::weak_ptr<void> m_life;
};
