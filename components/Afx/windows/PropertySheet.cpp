#include "Afx/windows/PropertySheet.h"

#include <algorithm>

#include "Afx/windows/MessageBox.h"

namespace
{

constexpr unsigned kTabsId = 0x3020, kPageId = 0x3030;
// Dialog units.
constexpr int kSheetGap = 7, kTabsHeight = 18, kButtonWidth = 50, kButtonHeight = 14,
              kLeastWidth = 3 * (kButtonWidth + kSheetGap);

} // namespace

IMPLEMENT_DYNAMIC(CPropertyPage, CDialog)

CPropertyPage::~CPropertyPage()
{
    if (m_sheet) // which may be ending, too: a derived sheet's own pages end before it
        m_sheet->Forget(*this);
}

void CPropertyPage::SetModified(bool modified)
{
    m_modified = modified;
    if (m_sheet)
        m_sheet->PageModified();
}

bool CPropertyPage::OnSetActive() { return true; }
bool CPropertyPage::OnKillActive() { return UpdateData(true); }

bool CPropertyPage::OnApply()
{
    OnOK();
    return true;
}

void CPropertyPage::OnOK() {}
void CPropertyPage::OnCancel() {}

IMPLEMENT_DYNAMIC(CTabCtrl, CWnd)

bool CTabCtrl::OnKey(unsigned key, unsigned modifiers)
{
    auto* const sheet = dynamic_cast<CPropertySheet*>(GetParent());
    if (!sheet || modifiers || (key != VK_LEFT && key != VK_RIGHT))
        return false;
    sheet->SetActivePage(m_selected + (key == VK_RIGHT ? 1 : -1));
    return true;
}

IMPLEMENT_DYNAMIC(CPropertySheet, CDialog)

CPropertySheet::CPropertySheet(const char* caption, int firstPage) : m_active(firstPage)
{
    SetWindowText(caption);
    m_ok.SetWindowText("OK");
    m_ok.SetKind(CButton::Kind::Default);
    m_cancel.SetWindowText("Cancel");
    m_apply.SetWindowText("&Apply");
}

CPropertySheet::~CPropertySheet()
{
    for (CPropertyPage* const page : m_pages)
        page->m_sheet = nullptr;
}

void CPropertySheet::AddPage(CPropertyPage* page)
{
    page->m_sheet = this;
    m_pages.push_back(page);
    m_tabs.m_items.push_back(page->Text().IsEmpty() && page->GetLayout() ? CString(page->GetLayout()->title)
                                                                         : page->Text());
    Changed(Afx::Part::Pages);
}

/// The page ends.
void CPropertySheet::Forget(const CPropertyPage& page) noexcept
{
    const auto found = std::find(m_pages.begin(), m_pages.end(), &page);
    if (found == m_pages.end())
        return;
    m_tabs.m_items.erase(m_tabs.m_items.begin() + (found - m_pages.begin()));
    m_pages.erase(found);
}

void CPropertySheet::RemovePage(CPropertyPage* page)
{
    const auto found = std::find(m_pages.begin(), m_pages.end(), page);
    if (found == m_pages.end())
        return;
    const auto index = static_cast<int>(found - m_pages.begin());
    const bool hadFocus = page->HasFocusWithin();
    m_pages.erase(found);
    m_tabs.m_items.erase(m_tabs.m_items.begin() + index);
    if (page->GetParent() == this)
        page->DestroyWindow();
    page->m_sheet = nullptr;
    page->m_filled = false;
    if (index < m_active || m_active >= GetPageCount())
        m_active = std::max(0, m_active - 1);
    if (IsOpen()) {
        ShowPage(m_active);
        if (hadFocus)
            FocusPage();
    }
    Changed(Afx::Part::Pages);
}

CPropertyPage* CPropertySheet::GetPage(int index) const noexcept
{
    return index >= 0 && index < GetPageCount() ? m_pages[static_cast<std::size_t>(index)] : nullptr;
}

bool CPropertySheet::SetActivePage(int index)
{
    if (!GetPage(index))
        return false;
    if (!IsOpen()) {
        m_active = index;
        return true;
    }
    if (index == m_active)
        return true;
    const Afx::RunningEvent event;
    const WindowRef here(this);
    CPropertyPage* const page = GetActivePage();
    if (page && !page->OnKillActive())
        return false;
    if (!here || !IsOpen() || !GetPage(index))
        return false;
    ShowPage(index);
    return true;
}

/// Its window and its controls, once.
void CPropertySheet::MakePage(CPropertyPage& page)
{
    if (page.GetParent())
        return;
    page.m_made = false;
    static_cast<CWnd&>(page).Create(this, kPageId);
    page.MakeControls();
}

/// Makes a page the one that is seen. It gets the focus when the page before had it.
void CPropertySheet::ShowPage(int index)
{
    CPropertyPage* const before = GetActivePage();
    const bool hadFocus = before && before->HasFocusWithin();
    m_active = m_tabs.m_selected = index;
    CPropertyPage* const page = GetPage(index);
    if (!page)
        return;
    MakePage(*page);
    if (!page->m_filled) {
        page->m_open = page->m_filled = true;
        page->OnInitDialog();
    }
    for (CPropertyPage* const other : m_pages)
        other->ShowWindow(other == page);
    page->OnSetActive();
    if (GetPeer())
        page->MakePeers();
    Changed(Afx::Part::Pages);
    PageActivated(index);
    if (hadFocus && !page->HasFocusWithin())
        FocusPage();
}

/// The keyboard goes to the first control of the active page; when that has none, to the tabs.
void CPropertySheet::FocusPage()
{
    CWnd* const first = GetActivePage() ? GetActivePage()->GetNextDlgTabItem(nullptr) : nullptr;
    GotoDlgCtrl(first ? first : &m_tabs);
}

void CPropertySheet::PageActivated(int) {}

bool CPropertySheet::OnInitDialog()
{
    m_made = true; // the buttons and the pages' controls end with the window
    m_tabs.CWnd::Create(this, kTabsId);
    CSize largest{kLeastWidth, 0};
    for (CPropertyPage* const page : m_pages) { // all of them, since the largest decides
        MakePage(*page);
        page->ShowWindow(false);
        largest = {std::max(largest.cx, page->GetRect().Width()), std::max(largest.cy, page->GetRect().Height())};
    }
    m_ok.CWnd::Create(this, IDOK);
    m_cancel.CWnd::Create(this, IDCANCEL);
    m_apply.CWnd::Create(this, ID_APPLY_NOW);
    m_apply.EnableWindow(false);
    m_tabs.MoveWindow({kSheetGap, kSheetGap, kSheetGap + largest.cx, kSheetGap + kTabsHeight + largest.cy});
    for (CPropertyPage* const page : m_pages)
        page->MoveWindow(
            {kSheetGap, kSheetGap + kTabsHeight, kSheetGap + largest.cx, kSheetGap + kTabsHeight + largest.cy});
    PlaceButtons(largest.cx + 2 * kSheetGap, largest.cy + kTabsHeight + 3 * kSheetGap + kButtonHeight);
    ShowPage(GetPage(m_active) ? m_active : 0);
    FocusPage();
    return false;
}

void CPropertySheet::PlaceButtons(int width, int height)
{
    MoveWindow({GetRect().left, GetRect().top, GetRect().left + width, GetRect().top + height});
    int right = width - kSheetGap;
    for (CButton* const button : {&m_apply, &m_cancel, &m_ok}) {
        if (!button->IsShown())
            continue;
        button->MoveWindow({right - kButtonWidth, height - kSheetGap - kButtonHeight, right, height - kSheetGap});
        right -= kButtonWidth + kSheetGap;
    }
}

/// All pages take over what they hold. False when one refuses, which is the active one then, and when the program has
/// closed the sheet meanwhile, as it may while a page asks the user.
bool CPropertySheet::ApplyPages()
{
    const WindowRef here(this);
    const auto isOpen = [&] { return here && IsOpen(); };
    CPropertyPage* const active = GetActivePage();
    if ((active && !active->OnKillActive()) || !isOpen())
        return false;
    for (int i = 0; i < GetPageCount(); ++i) {
        CPropertyPage* const page = GetPage(i);
        const bool accepts = !page->m_filled || page->OnApply();
        if (!isOpen())
            return false;
        if (!accepts) {
            if (i != m_active)
                ShowPage(i);
            return false;
        }
    }
    for (CPropertyPage* const page : m_pages)
        page->m_modified = false;
    PageModified();
    return true;
}

void CPropertySheet::PageModified()
{
    m_apply.EnableWindow(
        std::any_of(m_pages.begin(), m_pages.end(), [](const CPropertyPage* page) { return page->m_modified; }));
}

void CPropertySheet::OnOK()
{
    const WindowRef here(this);
    const bool isAccepted = ApplyPages();
    if (!here)
        return;
    m_accepted = isAccepted;
    if (isAccepted)
        EndDialog(IDOK);
}

void CPropertySheet::OnCancel()
{
    for (CPropertyPage* const page : m_pages)
        if (page->m_filled)
            page->OnCancel();
    EndDialog(IDCANCEL);
}

bool CPropertySheet::OnCommand(WPARAM wParam, LPARAM lParam)
{
    m_accepted = false;
    if (wParam == ID_APPLY_NOW) {
        const WindowRef here(this);
        const bool isAccepted = ApplyPages();
        if (here)
            m_accepted = isAccepted;
        return true;
    }
    return CDialog::OnCommand(wParam, lParam);
}

bool CPropertySheet::OnDialogKey(CWnd& focus, unsigned key, unsigned modifiers)
{
    const bool next = key == VK_NEXT || (key == VK_TAB && !(modifiers & Afx::kShift));
    if ((modifiers & Afx::kControl) && (key == VK_TAB || key == VK_NEXT || key == VK_PRIOR) && GetPageCount() > 0) {
        SetActivePage((m_active + (next ? 1 : GetPageCount() - 1)) % GetPageCount());
        return true;
    }
    return CDialog::OnDialogKey(focus, key, modifiers);
}

void CPropertySheet::OnDestroy()
{
    for (CPropertyPage* const page : m_pages)
        page->m_filled = page->m_modified = false;
    CDialog::OnDestroy();
}
