#pragma once

// The window that is shown while the user waits for a long operation.

#include <chrono>
#include <memory>

#include <wx/dialog.h>
#include <wx/utils.h>

class wxGauge;
class wxStaticText;

namespace AfxWx
{

/// Text, a sign of life and Cancel, which Escape presses. No other window takes input while it lives.
class WaitWindow
{
public:
    WaitWindow(wxWindow* owner, const wxString& text);
    WaitWindow(const WaitWindow&) = delete;
    WaitWindow& operator=(const WaitWindow&) = delete;
    ~WaitWindow();

    void Tell(const wxString& text);
    /// Whether it is time again for IsCancelled to look.
    bool IsDue() const;
    /// Lets all windows be painted and the button be pressed.
    bool IsCancelled();

private:
    wxDialog* m_dialog;
    wxStaticText* m_text;
    wxGauge* m_gauge;
    std::unique_ptr<wxWindowDisabler> m_others;
    std::chrono::steady_clock::time_point m_pulsed;
    bool m_cancelled = false;
    bool m_yielding = false;
};

} // namespace AfxWx
