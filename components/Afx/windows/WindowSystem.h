#pragma once

// The port behind which windows are shown, and the two systems that need no display.

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Afx/Export.h"

#include "Afx/windows/Drawing.h"
#include "Afx/windows/WindowPeer.h"

class CDialog;
class CWnd;

namespace Afx
{

/// What a window system must offer. One is installed at a time; none is allowed.
class AFX_API WindowSystem
{
public:
    virtual ~WindowSystem();
    /// Shows a message and answers IDOK, IDCANCEL, IDYES or IDNO as `style` (MB_...) offers.
    virtual int MessageBox(const std::string& text, unsigned style) = 0;
    /// Lets the user work in an open dialog until it has ended. When this returns before, the dialog is cancelled,
    /// which is all that the default does.
    virtual void RunDialog(CDialog& dialog);
    /// A wait cursor begins (+1) or ends (-1); scopes nest.
    virtual void Wait(int change);
    /// A long operation begins, with a text that tells what is waited for; ends with an empty text.
    virtual void ShowWait(const std::string& text);
    /// Asked during long operations: true when the user wants to stop.
    virtual bool WaitCancelled();
    /// Opens an address in the user's browser; false when it cannot.
    virtual bool OpenBrowser(const std::string& address);
    /// Shows a topic of a help file; false when it cannot.
    virtual bool ShowHelp(const std::string& file, unsigned topic);
    /// The native window of a model's; null: none, as in systems without a display.
    virtual std::unique_ptr<WindowPeer> MakePeer(CWnd& window);
    /// A context to measure texts with.
    virtual std::unique_ptr<CDC> MeasuringContext() const;
    /// The text of the clipboard, which by default is this process's own.
    virtual std::string GetClipboard();
    virtual void SetClipboard(const std::string& text);

    static WindowSystem* Current() noexcept;
    /// Installs `system` and gives back the one before.
    static std::unique_ptr<WindowSystem> Install(std::unique_ptr<WindowSystem> system);

private:
    std::string m_clipboard;
};

/// The answer that changes nothing: No, Cancel or OK.
AFX_API int SafeAnswer(unsigned style) noexcept;

/// Prints messages on standard error and answers with the button that changes nothing.
class AFX_API ConsoleWindowSystem : public WindowSystem
{
public:
    int MessageBox(const std::string& text, unsigned style) override;
};

/// Runs a script: each message box takes the next answer and is kept for the test to read, and each dialog is worked by
/// the next of the scripts for dialogs.
/// A box without a scripted answer, or with one that its style does not offer, goes to `OnUnexpected`, which by default
/// answers as the console does; likewise a dialog that has no script, or whose script leaves it open, as a box that
/// shows the dialog's title and offers OK and Cancel.
class AFX_API HeadlessWindowSystem : public WindowSystem
{
public:
    struct Shown
    {
        std::string text;
        unsigned style;
    };

    using DialogScript = std::function<void(CDialog&)>;

    int MessageBox(const std::string& text, unsigned style) override;
    void RunDialog(CDialog& dialog) override;
    void Answer(int button) { m_answers.push_back(button); }
    /// How many scripted answers no box has taken.
    std::size_t AnswersLeft() const noexcept { return m_answers.size(); }
    /// What the user does in the next dialog that opens, by `Type`, `Leave` and `Click`.
    void Script(DialogScript script) { m_scripts.push_back(std::move(script)); }
    std::size_t ScriptsLeft() const noexcept { return m_scripts.size(); }
    const std::vector<Shown>& Messages() const noexcept { return m_shown; }
    void Clear()
    {
        m_shown.clear();
        m_answers.clear();
        m_scripts.clear();
    }
    void OnUnexpected(std::function<int(const Shown&)> handler) { m_unexpected = std::move(handler); }

    // The user's hands. What the user could not do, as in a control that is disabled, throws std::logic_error.

    /// Types a text, character by character. A control without the focus is first reached by Tab, which selects what a
    /// field holds; with it, typing goes on at the caret.
    static void Type(CWnd& control, std::string_view text);
    /// Leaves the control that has the focus.
    static void Leave();
    /// Clicks the button `id` of a window, which takes the focus. Where there is no such button: the command alone, as
    /// the Enter key and Escape give it.
    static void Click(CWnd& window, unsigned id);
    /// Presses a key (VK_...) in the window that has the focus; nothing without one.
    static bool Key(unsigned key, unsigned modifiers = 0);
    /// Topics of help that were asked for: "file#topic".
    const std::vector<std::string>& Helped() const noexcept { return m_helped; }
    bool ShowHelp(const std::string& file, unsigned topic) override;

private:
    int Unexpected(const Shown& shown) const;

    std::deque<int> m_answers;
    std::deque<DialogScript> m_scripts;
    std::vector<Shown> m_shown;
    std::vector<std::string> m_helped;
    std::function<int(const Shown&)> m_unexpected;
};

} // namespace Afx

/// Shows the wait cursor while it lives.
class AFX_API CWaitCursor
{
public:
    CWaitCursor();
    ~CWaitCursor();
    CWaitCursor(const CWaitCursor&) = delete;
    CWaitCursor& operator=(const CWaitCursor&) = delete;
};
