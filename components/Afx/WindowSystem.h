#pragma once

// The port behind which windows are shown, and the two systems that need no display.

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Afx/Export.h"

namespace Afx
{

/// What a window system must offer. One is installed at a time; none is allowed.
class AFX_API WindowSystem
{
public:
    virtual ~WindowSystem();
    /// Shows a message and answers IDOK, IDCANCEL, IDYES or IDNO as `style` (MB_...) offers.
    virtual int MessageBox(const std::string& text, unsigned style) = 0;
    /// A wait cursor begins (+1) or ends (-1); scopes nest.
    virtual void Wait(int change);
    /// A long operation begins, with a text that tells what is waited for; ends with an empty text.
    virtual void ShowWait(const std::string& text);
    /// Asked during long operations: true when the user wants to stop.
    virtual bool WaitCancelled();
    /// Opens an address in the user's browser; false when it cannot.
    virtual bool OpenBrowser(const std::string& address);

    static WindowSystem* Current() noexcept;
    /// Installs `system` and gives back the one before.
    static std::unique_ptr<WindowSystem> Install(std::unique_ptr<WindowSystem> system);
};

/// The answer that changes nothing: No, Cancel or OK.
AFX_API int SafeAnswer(unsigned style) noexcept;

/// Prints messages on standard error and answers with the button that changes nothing.
class AFX_API ConsoleWindowSystem : public WindowSystem
{
public:
    int MessageBox(const std::string& text, unsigned style) override;
};

/// Runs a script: each message box takes the next answer and is kept for the test to read.
/// A box without a scripted answer, or with one that its style does not offer, goes to `OnUnexpected`, which by default
/// answers as the console does.
class AFX_API HeadlessWindowSystem : public WindowSystem
{
public:
    struct Shown
    {
        std::string text;
        unsigned style;
    };

    int MessageBox(const std::string& text, unsigned style) override;
    void Answer(int button) { m_answers.push_back(button); }
    /// How many scripted answers no box has taken.
    std::size_t AnswersLeft() const noexcept { return m_answers.size(); }
    const std::vector<Shown>& Messages() const noexcept { return m_shown; }
    void Clear()
    {
        m_shown.clear();
        m_answers.clear();
    }
    void OnUnexpected(std::function<int(const Shown&)> handler) { m_unexpected = std::move(handler); }

private:
    std::deque<int> m_answers;
    std::vector<Shown> m_shown;
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
