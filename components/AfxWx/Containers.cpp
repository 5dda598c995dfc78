// What controls stand in: dialogs, panels, and the pages of a sheet under their tabs.

#include <wx/dialog.h>
#include <wx/notebook.h>
#include <wx/panel.h>
#include <wx/sizer.h>

#include <algorithm>

#include "Afx/windows/PropertySheet.h"
#include "AfxWx/detail/Peer.h"

namespace AfxWx
{
namespace
{

using Afx::Has;
using Afx::Part;

class PanelPeer : public ContainerPeer
{
public:
    PanelPeer(System& system, CWnd& model, wxWindow& parent)
        : ContainerPeer(system, model), m_isPage(dynamic_cast<CPropertyPage*>(&model) != nullptr),
          m_panel(new wxPanel(&parent, wxID_ANY))
    {
        Take(m_panel);
        if (!m_isPage)
            return;
        auto* const whole = new wxBoxSizer(wxVERTICAL);
        whole->Add(m_panel, 1, wxEXPAND);
        parent.SetSizer(whole);
    }

protected:
    void Mirror(Part parts) override
    {
        ContainerPeer::Mirror(parts);
        if (m_isPage)
            m_panel->Show(); // the tabs show the one that is active
    }

private:
    bool m_isPage;
    wxPanel* m_panel;
};

/// Each tab has a panel, in which the page stands that it shows.
class TabsPeer : public NativePeer
{
public:
    TabsPeer(System& system, CTabCtrl& model, wxWindow& parent)
        : NativePeer(system, model), m_tabs(model), m_book(new wxNotebook(&parent, wxID_ANY))
    {
        Take(m_book);
        On(*m_book, wxEVT_NOTEBOOK_PAGE_CHANGING, [this](wxBookCtrlEvent& event) {
            if (m_system.IsMirroring())
                return;
            event.Veto(); // the page decides whether it is left
            const int page = event.GetSelection();
            m_system.PerformLater(*this, [this, page] {
                if (CWnd* const sheet = m_tabs.GetParent())
                    Afx::UserActs::Choose(*sheet, page);
            });
        });
    }
    wxWindow& HolderOf(const CWnd& page)
    {
        MatchPages();
        const auto found = std::find(m_pages.begin(), m_pages.end(), &page);
        return found == m_pages.end() ? *m_book : *m_book->GetPage(static_cast<std::size_t>(found - m_pages.begin()));
    }
    bool GrowsDown() const override { return true; }
    wxSize LeastSize(const Afx::LayoutRow*) const override { return wxDefaultSize; }

protected:
    void Mirror(Part parts) override
    {
        if (Has(parts, Part::Pages)) {
            MatchPages();
            const auto& titles = m_tabs.GetItems();
            for (std::size_t i = 0; i < std::min(titles.size(), m_book->GetPageCount()); ++i)
                if (const wxString title = ToWx(Afx::WithoutMnemonic(titles[i])); m_book->GetPageText(i) != title)
                    m_book->SetPageText(i, title);
            const auto active = static_cast<std::size_t>(std::max(m_tabs.GetCurSel(), 0));
            if (active < m_book->GetPageCount() && m_book->GetSelection() != m_tabs.GetCurSel())
                m_book->ChangeSelection(active);
        }
        NativePeer::Mirror(parts);
    }

private:
    /// The tabs are those of the sheet's pages, in their order.
    void MatchPages()
    {
        const auto* const sheet = dynamic_cast<const CPropertySheet*>(m_tabs.GetParent());
        std::vector<const CWnd*> pages;
        for (int i = 0; sheet && i < sheet->GetPageCount(); ++i)
            pages.push_back(sheet->GetPage(i));
        for (std::size_t i = m_pages.size(); i-- > 0;)
            if (std::find(pages.begin(), pages.end(), m_pages[i]) == pages.end()) {
                m_book->DeletePage(i);
                m_pages.erase(m_pages.begin() + static_cast<std::ptrdiff_t>(i));
            }
        for (std::size_t i = 0; i < pages.size(); ++i)
            if (i >= m_pages.size() || m_pages[i] != pages[i]) {
                m_book->InsertPage(i, new wxPanel(m_book), {});
                m_pages.insert(m_pages.begin() + static_cast<std::ptrdiff_t>(i), pages[i]);
            }
    }

    CTabCtrl& m_tabs;
    wxNotebook* m_book;
    std::vector<const CWnd*> m_pages;
};

/// Keys go to the model first, but for those that the toolkit's own window deals with.
class DialogPeer : public ContainerPeer
{
public:
    DialogPeer(System& system, CDialog& model, wxWindow* owner)
        : ContainerPeer(system, model), m_dialog(model),
          m_window(new wxDialog(owner, wxID_ANY, ToWx(model.Text()), wxDefaultPosition, wxDefaultSize,
                                wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER))
    {
        m_window->SetEscapeId(wxID_NONE);
        SpeakAsDialog(*m_window);
        Take(m_window);
        On(*m_window, wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) { KeyPressed(event); });
        On(*m_window, wxEVT_CLOSE_WINDOW, [this](wxCloseEvent& event) {
            event.Veto();
            Act([this] { m_dialog.DeliverCommand(wxIdCancel); });
        });
    }
    void Arrange() override
    {
        ContainerPeer::Arrange();
        FitWindow();
    }
    void FitWindow()
    {
        const wxSize least = m_window->GetSizer()->GetMinSize(), now = m_window->GetClientSize();
        m_window->SetMinClientSize(least);
        if (!m_isPlaced)
            m_window->SetClientSize(least);
        else if (now.x < least.x || now.y < least.y)
            m_window->SetClientSize(std::max(now.x, least.x), std::max(now.y, least.y));
        m_window->Layout();
        if (!std::exchange(m_isPlaced, true))
            m_window->CentreOnParent();
    }

protected:
    void Mirror(Part parts) override
    {
        if (Has(parts, Part::Text) && m_window->GetTitle() != ToWx(Model().Text()))
            m_window->SetTitle(ToWx(Model().Text()));
        if (Has(parts, Part::Pages))
            if (auto* const sheet = dynamic_cast<CPropertySheet*>(&m_dialog))
                if (NativePeer* const tabs = AfxWx::PeerOf(&sheet->GetTabControl()))
                    tabs->Show(Part::Pages);
        if (parts == Part::All)
            m_system.Unarranged(*this);
        // Enabled and visible are matters of the loop that it runs in.
    }
    void SpeakNameAs(const CString&) override {} // its title

private:
    static constexpr unsigned wxIdCancel = 2; // of the model

    void KeyPressed(wxKeyEvent& event)
    {
        NativePeer* peer = m_system.PeerOf(wxWindow::FindFocus());
        if (!peer)
            peer = this;
        const unsigned key = KeyOf(event), modifiers = ModifiersOf(event);
        const bool isText =
            !(modifiers & (Afx::kControl | Afx::kAlt)) &&
            (key == 0 || key == VK_SPACE || key == VK_BACK || (key >= '0' && key <= 'Z') || key == VK_OEM_PERIOD);
        if (isText && peer->TakesLetterKeys()) {
            peer->CharacterTyped(event);
            return;
        }
        if (key == 0 || isText || peer->IsOwnKey(key, modifiers)) {
            event.Skip();
            return;
        }
        bool isUsed = false;
        Act([&isUsed, peer, key, modifiers] {
            CWnd& model = peer->Model();
            const WindowRef here(&model);
            peer->Report();
            isUsed = !here || Afx::UserActs::Key(model, key, modifiers);
        });
        const bool isLetter = key >= '0' && key <= 'Z';
        if (!isUsed && isLetter) // a shortcut of the toolkit's
            event.Skip();
    }

    CDialog& m_dialog;
    wxDialog* m_window;
    bool m_isPlaced = false;
};

} // namespace

std::unique_ptr<NativePeer> MakePanel(System& system, CWnd& model, wxWindow& parent)
{
    return std::make_unique<PanelPeer>(system, model, parent);
}

std::unique_ptr<NativePeer> MakeTabs(System& system, CWnd& model, wxWindow& parent)
{
    return std::make_unique<TabsPeer>(system, dynamic_cast<CTabCtrl&>(model), parent);
}

std::unique_ptr<NativePeer> MakeDialog(System& system, CWnd& model, wxWindow* owner)
{
    return std::make_unique<DialogPeer>(system, dynamic_cast<CDialog&>(model), owner);
}

wxWindow& HolderOf(NativePeer& tabs, const CWnd& page) { return dynamic_cast<TabsPeer&>(tabs).HolderOf(page); }

} // namespace AfxWx
