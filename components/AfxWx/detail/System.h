#pragma once

// The window system on the toolkit: what runs, what is to be mirrored, what is to go.

#include <exception>
#include <functional>
#include <memory>
#include <set>
#include <unordered_map>
#include <vector>

#include <wx/window.h>

#include "Afx/windows/Dialog.h"
#include "AfxWx/WxWindowSystem.h"

class wxDialog;

namespace AfxWx
{

class NativePeer;
class WaitWindow;

class AFXWX_API System : public Afx::WindowSystem
{
public:
    explicit System(Observer* observer);
    ~System() override;
    /// Null when another window system is installed.
    static System* Current() noexcept;

    int MessageBox(const std::string& text, unsigned style) override;
    void RunDialog(CDialog& dialog) override;
    void Wait(int change) override;
    void ShowWait(const std::string& text) override;
    bool WaitCancelled() override;
    bool OpenBrowser(const std::string& address) override;
    bool ShowHelp(const std::string& file, unsigned topic) override;
    std::unique_ptr<Afx::WindowPeer> MakePeer(CWnd& window) override;
    std::unique_ptr<CDC> MeasuringContext() const override;
    std::string GetClipboard() override;
    void SetClipboard(const std::string& text) override;

    /// Does what the user has done to `source`, and mirrors what followed from it. What it throws ends the dialog that
    /// runs, and is thrown on by RunDialog: no exception passes through the toolkit.
    void Perform(wxWindow& source, const std::function<void()>& act);
    /// The same when the event of the toolkit has returned, unless `source` is gone by then.
    void PerformLater(NativePeer& source, std::function<void()> act);

    /// Something of it is to be mirrored; at the end of the act that runs, or when the program is idle.
    void Dirty(NativePeer& peer);
    /// Its children are to be placed anew.
    void Unarranged(NativePeer& container);
    /// The native focus is to follow the model's.
    void WantFocus() noexcept { m_wantsFocus = true; }
    void Flush();
    bool IsIdle() const noexcept { return m_dirty.empty() && m_unarranged.empty() && !m_wantsFocus; }
    /// While the model is mirrored the toolkit's notices are not the user's.
    bool IsMirroring() const noexcept { return m_mirroring; }

    void Enlist(NativePeer& peer, wxWindow& native);
    /// Nothing is known of the peer any more; its window is hidden, and goes when no event of its own runs.
    void Bury(NativePeer& peer, wxWindow* native);
    /// The peer whose window is `window`, or is around it; null: none.
    NativePeer* PeerOf(wxWindow* window) const;
    /// The window of the dialog that waits for the user; null: none.
    wxDialog* TopWindow() const noexcept;

private:
    class Running;

    void Mirror();
    void FollowFocus();
    void EndDialogs();
    void EmptyGraves();

    Observer* m_observer;
    std::vector<std::pair<CDialog*, wxDialog*>> m_dialogs; // the one that waits last
    std::vector<NativePeer*> m_dirty;
    std::set<NativePeer*> m_unarranged;
    std::unordered_map<wxWindow*, NativePeer*> m_peers;
    std::vector<wxWindow*> m_graves;
    std::vector<wxWindow*> m_sources; // of the acts that run, the innermost last
    std::unique_ptr<WaitWindow> m_wait;
    std::exception_ptr m_failure;
    std::shared_ptr<void> m_alive = std::make_shared<char>();
    bool m_mirroring = false;
    bool m_wantsFocus = false;
};

} // namespace AfxWx
