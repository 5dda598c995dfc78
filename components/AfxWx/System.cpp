#include "AfxWx/detail/System.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include <wx/app.h>
#include <wx/clipbrd.h>
#include <wx/dataobj.h>
#include <wx/dialog.h>
#include <wx/msgdlg.h>
#include <wx/utils.h>

#include "Afx/windows/Button.h"
#include "Afx/windows/ComboBox.h"
#include "Afx/windows/Edit.h"
#include "Afx/windows/ListCtrl.h"
#include "Afx/windows/MessageBox.h"
#include "Afx/windows/PropertySheet.h"
#include "Afx/windows/Static.h"
#include "AfxWx/detail/Context.h"
#include "AfxWx/detail/Peer.h"
#include "AfxWx/detail/WaitWindow.h"
#include "Lattice/Grid.h"

namespace AfxWx
{

Observer::~Observer() = default;
void Observer::DialogRuns(CDialog&) {}
void Observer::MessageRuns(const std::string&, unsigned) {}
bool Observer::Opens(const std::string&) { return false; }
bool Observer::Helps(const std::string&, unsigned) { return false; }

/// An act that runs, for a window that may be gone before it has.
class System::Running
{
public:
    Running(System& system, wxWindow& source) : m_system(system) { m_system.m_sources.push_back(&source); }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;
    ~Running() { m_system.m_sources.pop_back(); }

private:
    System& m_system;
};

System::System(Observer* observer) : m_observer(observer)
{
    wxTheApp->Bind(wxEVT_IDLE, [this, alive = std::weak_ptr<void>(m_alive)](wxIdleEvent& event) {
        event.Skip();
        if (alive.expired())
            return;
        Flush();
        EmptyGraves();
    });
}

System::~System()
{
    m_wait.reset();
    EmptyGraves();
    m_alive.reset();
}

System* System::Current() noexcept { return dynamic_cast<System*>(Afx::WindowSystem::Current()); }

std::unique_ptr<Afx::WindowSystem> MakeWindowSystem(Observer* observer) { return std::make_unique<System>(observer); }

// What runs.

void System::Perform(wxWindow& source, const std::function<void()>& act)
{
    if (m_failure || m_wait)
        return;
    const Running running(*this, source);
    try {
        act();
    } catch (...) {
        m_failure = std::current_exception();
    }
    Flush();
}

void System::PerformLater(NativePeer& source, std::function<void()> act)
{
    wxTheApp->CallAfter([this, alive = std::weak_ptr<void>(source.m_alive), peer = &source, act = std::move(act)] {
        if (!alive.expired())
            Perform(*peer->Native(), act);
    });
}

void System::RunDialog(CDialog& dialog)
{
    const NativePeer* const peer = AfxWx::PeerOf(&dialog);
    auto* const window = peer ? dynamic_cast<wxDialog*>(peer->Native()) : nullptr;
    if (!window)
        return;
    m_dialogs.emplace_back(&dialog, window);
    WantFocus();
    Flush();
    if (dialog.IsOpen()) {
        wxTheApp->CallAfter([this, window, &dialog, alive = std::weak_ptr<void>(peer->m_alive)] {
            if (alive.expired())
                return;
            WantFocus(); // the toolkit gives it to the first control
            Flush();
            if (m_observer)
                Perform(*window, [this, &dialog] { m_observer->DialogRuns(dialog); });
        });
        window->ShowModal();
    }
    m_dialogs.pop_back();
    if (m_failure)
        std::rethrow_exception(std::exchange(m_failure, nullptr));
}

/// The dialog that runs closes when its model has ended, and when something has failed in it.
void System::EndDialogs()
{
    if (m_dialogs.empty())
        return;
    const auto& [dialog, window] = m_dialogs.back();
    if ((m_failure || !dialog->IsOpen()) && window->IsModal())
        window->EndModal(0);
}

wxDialog* System::TopWindow() const noexcept { return m_dialogs.empty() ? nullptr : m_dialogs.back().second; }

// What is to be mirrored.

void System::Enlist(NativePeer& peer, wxWindow& native)
{
    m_peers[&native] = &peer;
    native.Bind(wxEVT_DESTROY, [this, alive = std::weak_ptr<void>(m_alive), &native](wxWindowDestroyEvent& event) {
        event.Skip();
        if (event.GetWindow() != &native || alive.expired())
            return;
        m_peers.erase(&native); // with the window around it
        std::erase(m_graves, &native);
    });
}

void System::Dirty(NativePeer& peer)
{
    if (std::find(m_dirty.begin(), m_dirty.end(), &peer) == m_dirty.end())
        m_dirty.push_back(&peer);
    wxWakeUpIdle();
}

void System::Unarranged(NativePeer& container)
{
    m_unarranged.insert(&container);
    wxWakeUpIdle();
}

void System::Flush()
{
    if (m_mirroring)
        return;
    m_mirroring = true;
    try {
        Mirror();
        FollowFocus();
        Mirror(); // what the toolkit selects when the focus comes is not what the model has selected
    } catch (...) {
        if (!m_failure)
            m_failure = std::current_exception();
    }
    m_mirroring = false;
    EndDialogs();
}

void System::Mirror()
{
    while (!m_dirty.empty() || !m_unarranged.empty()) {
        while (!m_dirty.empty()) {
            NativePeer* const peer = m_dirty.front();
            m_dirty.erase(m_dirty.begin());
            peer->MirrorNow();
        }
        if (!m_unarranged.empty()) {
            NativePeer* const container = *m_unarranged.begin();
            m_unarranged.erase(m_unarranged.begin());
            container->Arrange();
        }
    }
}

void System::FollowFocus()
{
    if (!std::exchange(m_wantsFocus, false))
        return;
    NativePeer* const peer = AfxWx::PeerOf(CWnd::GetFocus());
    if (!peer || !peer->Native()->IsShown())
        return;
    if (PeerOf(wxWindow::FindFocus()) != peer)
        peer->FocusTarget()->SetFocus();
    peer->FocusCame();
}

NativePeer* System::PeerOf(wxWindow* window) const
{
    for (; window; window = window->GetParent())
        if (const auto found = m_peers.find(window); found != m_peers.end())
            return found->second;
    return nullptr;
}

// What is to go.

void System::Bury(NativePeer& peer, wxWindow* native)
{
    std::erase(m_dirty, &peer);
    m_unarranged.erase(&peer);
    if (!native)
        return;
    m_peers.erase(native);
    native->Hide();
    m_graves.push_back(native);
    wxWakeUpIdle();
}

/// What an event of its own, or of a window inside it, still runs for waits for the next time; so does a dialog whose
/// loop has not returned yet.
void System::EmptyGraves()
{
    const auto isBusy = [this](wxWindow* grave) {
        for (const auto& [dialog, window] : m_dialogs)
            if (window == grave)
                return true;
        return std::any_of(m_sources.begin(), m_sources.end(), [grave](wxWindow* source) {
            for (; source; source = source->GetParent())
                if (source == grave)
                    return true;
            return false;
        });
    };
    for (;;) {
        const auto going = std::find_if_not(m_graves.begin(), m_graves.end(), isBusy);
        if (going == m_graves.end())
            return;
        wxWindow* const window = *going;
        m_graves.erase(going); // those inside it leave when they go with it
        if (window->IsTopLevel())
            window->Destroy();
        else
            delete window;
    }
}

// Boxes, the cursor, the desktop.

int System::MessageBox(const std::string& text, unsigned style)
{
    Flush(); // what the user is asked about can be seen
    const bool isYesNo = (style & MB_YESNO) != 0, hasCancel = (style & MB_OKCANCEL) != 0;
    long look = isYesNo ? wxYES_NO : hasCancel ? wxOK | wxCANCEL : wxOK;
    if (style & MB_DEFBUTTON2)
        look |= isYesNo ? wxNO_DEFAULT : hasCancel ? wxCANCEL_DEFAULT : 0;
    look |= (style & MB_ICONWARNING) ? wxICON_WARNING : isYesNo ? wxICON_QUESTION : wxICON_INFORMATION;
    wxMessageDialog box(TopWindow(), ToWx(text), wxTheApp->GetAppDisplayName(), look);
    if (m_observer)
        wxTheApp->CallAfter([this, &box, &text, style] {
            Perform(box, [this, &text, style] { m_observer->MessageRuns(text, style); });
        });
    switch (box.ShowModal()) {
    case wxID_OK:
        return IDOK;
    case wxID_YES:
        return IDYES;
    case wxID_NO:
        return IDNO;
    default: // closed by Escape
        return Afx::SafeAnswer(style);
    }
}

void System::Wait(int change)
{
    if (change > 0)
        wxBeginBusyCursor();
    else if (wxIsBusy())
        wxEndBusyCursor();
}

void System::ShowWait(const std::string& text)
{
    Flush();
    if (text.empty() && m_wait) {
        m_wait.reset();
        if (NativePeer* const peer = AfxWx::PeerOf(CWnd::GetFocus())) { // which lost the keyboard when it was disabled
            peer->FocusTarget()->SetFocus();
            peer->FocusCame();
        }
    } else if (text.empty()) {
        return;
    } else if (m_wait) {
        m_wait->Tell(ToWx(text));
    } else {
        m_wait = std::make_unique<WaitWindow>(TopWindow(), ToWx(text));
    }
}

bool System::WaitCancelled()
{
    if (m_wait && m_wait->IsDue())
        Flush(); // how far the operation is, which the other windows may tell
    return m_wait && m_wait->IsCancelled();
}

bool System::OpenBrowser(const std::string& address)
{
    return (m_observer && m_observer->Opens(address)) || wxLaunchDefaultBrowser(ToWx(address));
}

/// A topic is a place in the file.
bool System::ShowHelp(const std::string& file, unsigned topic)
{
    if (m_observer && m_observer->Helps(file, topic))
        return true;
    std::error_code ignored;
    const std::filesystem::path path = std::filesystem::absolute(file, ignored);
    return std::filesystem::exists(path, ignored) &&
           wxLaunchDefaultBrowser(ToWx("file://" + path.string() + '#' + std::to_string(topic)));
}

std::unique_ptr<CDC> System::MeasuringContext() const { return std::make_unique<MeasuringDC>(); }

std::string System::GetClipboard()
{
    wxClipboardLocker lock;
    wxTextDataObject data;
    return !!lock && wxTheClipboard->GetData(data) ? FromWx(data.GetText()) : std::string();
}

void System::SetClipboard(const std::string& text)
{
    if (wxClipboardLocker lock; !!lock)
        wxTheClipboard->SetData(new wxTextDataObject(ToWx(text))); // which owns it
}

// Peers.

std::unique_ptr<Afx::WindowPeer> System::MakePeer(CWnd& window)
{
    NativePeer* const around = AfxWx::PeerOf(window.GetParent());
    if (!window.GetParent())
        return dynamic_cast<CDialog*>(&window) ? MakeDialog(*this, window, TopWindow()) : nullptr;
    if (!around)
        return nullptr;
    wxWindow& parent = *around->Client();
    if (dynamic_cast<CPropertyPage*>(&window)) {
        auto* const sheet = dynamic_cast<CPropertySheet*>(window.GetParent());
        NativePeer* const tabs = sheet ? AfxWx::PeerOf(&sheet->GetTabControl()) : nullptr;
        return MakePanel(*this, window, tabs ? HolderOf(*tabs, window) : parent);
    }
    if (dynamic_cast<CDialog*>(&window))
        return MakePanel(*this, window, parent);
    if (dynamic_cast<CStatic*>(&window))
        return MakeStatic(*this, window, parent);
    if (dynamic_cast<CEdit*>(&window))
        return MakeEdit(*this, window, parent);
    if (dynamic_cast<CButton*>(&window))
        return MakeButton(*this, window, parent);
    if (dynamic_cast<CComboBox*>(&window))
        return MakeCombo(*this, window, parent);
    if (dynamic_cast<CListCtrl*>(&window))
        return MakeList(*this, window, parent);
    if (dynamic_cast<CTabCtrl*>(&window))
        return MakeTabs(*this, window, parent);
    if (dynamic_cast<Lattice::CGrid*>(&window))
        return MakeGrid(*this, window, parent);
    return MakePlaceholder(*this, window, parent);
}

} // namespace AfxWx
