#pragma once

// Property sheets: a dialog of pages with tabs, and OK, Cancel and Apply below.

#include <vector>

#include "Afx/windows/Button.h"
#include "Afx/windows/Dialog.h"

class CPropertySheet;

inline constexpr unsigned ID_APPLY_NOW = 12321;

/// A page of a sheet. It is filled (OnInitDialog) when it is shown first.
class AFX_API CPropertyPage : public CDialog
{
    DECLARE_DYNAMIC(CPropertyPage)

    CPropertyPage() = default;
    ~CPropertyPage() override;
    explicit CPropertyPage(const Afx::DialogLayout& layout) noexcept : CDialog(layout) {}
    /// The sheet that it stands in, or will; null before it was added to one.
    CPropertySheet* GetSheet() const noexcept { return m_sheet; }
    /// There is something to apply, or no longer.
    void SetModified(bool modified = true);
    bool IsModified() const noexcept { return m_modified; }

    /// The page is about to be shown.
    virtual bool OnSetActive();
    /// The page is about to be left, or the sheet to be accepted: takes the data over. False: it stays.
    virtual bool OnKillActive();
    /// OK or Apply was pressed and no page refused to be left. False: the sheet stays open at this page.
    virtual bool OnApply();
    void OnOK() override;
    void OnCancel() override;

private:
    friend class CPropertySheet;

    CPropertySheet* m_sheet = nullptr;
    bool m_modified = false;
    bool m_filled = false;
};

/// The row of tabs of a sheet: which page is chosen.
class AFX_API CTabCtrl : public CWnd
{
    DECLARE_DYNAMIC(CTabCtrl)

    const std::vector<CString>& GetItems() const noexcept { return m_items; }
    int GetCurSel() const noexcept { return m_selected; }

protected:
    /// Left and Right choose.
    bool OnKey(unsigned key, unsigned modifiers) override;

private:
    friend class CPropertySheet;

    std::vector<CString> m_items;
    int m_selected = 0;
};

/// A sheet of pages, which it does not own. Pages count from 0.
class AFX_API CPropertySheet : public CDialog
{
    DECLARE_DYNAMIC(CPropertySheet)

    explicit CPropertySheet(const char* caption = "", int firstPage = 0);
    ~CPropertySheet() override;

    void AddPage(CPropertyPage* page);
    void RemovePage(CPropertyPage* page);
    int GetPageCount() const noexcept { return static_cast<int>(m_pages.size()); }
    CPropertyPage* GetPage(int index) const noexcept; // null: none
    int GetActiveIndex() const noexcept { return m_active; }
    CPropertyPage* GetActivePage() const noexcept { return GetPage(m_active); }
    /// Leaves the page that is active and shows another. False when the page refuses to be left, or there is no other.
    bool SetActivePage(int index);
    CTabCtrl& GetTabControl() noexcept { return m_tabs; }
    /// Without the Apply button.
    void SetNoApply() { m_apply.ShowWindow(false); }
    /// Whether the last OK or Apply was accepted by all pages.
    bool WasAccepted() const noexcept { return m_accepted; }

protected:
    friend class CPropertyPage;

    bool OnInitDialog() override;
    void OnOK() override;
    void OnCancel() override;
    bool OnCommand(WPARAM wParam, LPARAM lParam) override;
    /// Ctrl+Tab and Ctrl+Page keys change the page.
    bool OnDialogKey(CWnd& focus, unsigned key, unsigned modifiers) override;
    void OnDestroy() override;
    /// A page has become active.
    virtual void PageActivated(int page);

    /// Adds to the sheet's size below the tabs, and moves OK, Cancel and Apply.
    void PlaceButtons(int width, int height);

private:
    void Forget(const CPropertyPage& page) noexcept;
    bool ApplyPages();
    void MakePage(CPropertyPage& page);
    void ShowPage(int index);
    void FocusPage();
    void PageModified();

    std::vector<CPropertyPage*> m_pages;
    CTabCtrl m_tabs;
    CButton m_ok, m_cancel, m_apply;
    int m_active = 0;
    bool m_accepted = false;
};
