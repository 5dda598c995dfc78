#include "AfxWx/detail/WaitWindow.h"

#include <wx/app.h>
#include <wx/button.h>
#include <wx/evtloop.h>
#include <wx/gauge.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include "AfxWx/detail/Peer.h"

namespace AfxWx
{
namespace
{

constexpr int kWaitGap = 12, kWaitWidth = 320; // device-independent pixels
constexpr std::chrono::milliseconds kBetweenPulses{50};

} // namespace

WaitWindow::WaitWindow(wxWindow* owner, const wxString& text)
    : m_dialog(
          new wxDialog(owner, wxID_ANY, wxTheApp->GetAppDisplayName(), wxDefaultPosition, wxDefaultSize, wxCAPTION)),
      m_text(new wxStaticText(m_dialog, wxID_ANY, {})), m_gauge(new wxGauge(m_dialog, wxID_ANY, 100))
{
    auto* const cancel = new wxButton(m_dialog, wxID_CANCEL);
    cancel->Bind(wxEVT_BUTTON, [this, cancel](wxCommandEvent&) {
        m_cancelled = true;
        cancel->Disable(); // heard, though the operation may take a moment to end
    });
    auto* const rows = new wxBoxSizer(wxVERTICAL);
    const int gap = m_dialog->FromDIP(kWaitGap);
    m_gauge->SetMinSize({m_dialog->FromDIP(kWaitWidth), -1});
    rows->Add(m_text, 0, wxALL | wxEXPAND, gap);
    rows->Add(m_gauge, 0, wxLEFT | wxRIGHT | wxEXPAND, gap);
    rows->Add(cancel, 0, wxALL | wxALIGN_RIGHT, gap);
    m_dialog->SetSizer(rows);
    Tell(text);
    m_dialog->CentreOnParent();
    m_dialog->Show();
    cancel->SetFocus();
    m_others = std::make_unique<wxWindowDisabler>(m_dialog);
    IsCancelled();
}

WaitWindow::~WaitWindow()
{
    m_others.reset();
    m_dialog->Hide();
    m_dialog->Destroy();
}

void WaitWindow::Tell(const wxString& text)
{
    m_text->SetLabelText(text);
    SpeakAs(*m_gauge, text);
    m_text->Wrap(m_dialog->FromDIP(kWaitWidth));
    m_dialog->Fit();
}

bool WaitWindow::IsDue() const { return !m_yielding && std::chrono::steady_clock::now() - m_pulsed >= kBetweenPulses; }

bool WaitWindow::IsCancelled()
{
    if (!IsDue())
        return m_cancelled;
    m_pulsed = std::chrono::steady_clock::now();
    m_gauge->Pulse();
    m_yielding = true;
    std::unique_ptr<wxEventLoopBase> own;
    std::unique_ptr<wxEventLoopActivator> active;
    if (!wxEventLoopBase::GetActive()) { // no dialog runs: the operation began with the program
        own = std::make_unique<wxGUIEventLoop>();
        active = std::make_unique<wxEventLoopActivator>(own.get());
    }
    wxEventLoopBase::GetActive()->Yield(true);
    m_yielding = false;
    return m_cancelled;
}

} // namespace AfxWx
