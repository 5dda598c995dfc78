#pragma once

// A client's, or a partnership's, tax year: pages for the return, HMRC's records, enquiries and the work tracker.

#include "Afx/windows/ListCtrl.h"
#include "Afx/windows/MessageMap.h"
#include "ClientYear.h"
#include "Kiln/controls/ExDialog.h"
#include "MorvUt/hmrc/fetch/FetchData.h"

namespace Desk
{

class CClientYearSheet;

/// A page with one list, whose columns' widths are remembered.
class CYearPage : public Kiln::CExPropertyPage
{
public:
    struct Heading
    {
        const char* text;
        int width; // dialog units
    };
    CYearPage(CClientYearSheet& sheet, const Afx::DialogLayout& layout, const char* name, unsigned listId,
              std::vector<Heading> headings, const char* help);
    CString HelpFilePath() const override;

    /// Shows what the sheet holds.
    virtual void Fill() = 0;
    /// Enter was pressed on the page, or a row of the list double-clicked.
    virtual void Enter() {}
    void Remember() const;

protected:
    bool OnInitDialog() override;
    DECLARE_MESSAGE_MAP()
    afx_msg void OnHelpButton();

    CListCtrl& List() const { return static_cast<CListCtrl&>(*GetDlgItem(static_cast<int>(m_listId))); }
    /// The list's one selected row; -1: none.
    int Selected() const;
    /// Puts the rows into the list, and the selection where it was.
    void ShowRows(const std::vector<std::vector<CString>>& rows);

    CClientYearSheet& m_sheet;

private:
    const char* m_name;
    unsigned m_listId;
    std::vector<Heading> m_headings;
    const char* m_help;
    bool m_isMade = false;
};

class CReturnPage : public CYearPage
{
public:
    explicit CReturnPage(CClientYearSheet& sheet);
    void Fill() override;
    void Enter() override { OnOpen(); }

protected:
    bool OnInitDialog() override;
    DECLARE_MESSAGE_MAP()
    afx_msg void OnOpen();
    afx_msg void OnNew();
    afx_msg void OnDoubleClick(NMHDR* header, LRESULT* result);
};

class CHmrcPage : public CYearPage
{
public:
    explicit CHmrcPage(CClientYearSheet& sheet);
    void Fill() override;

protected:
    bool OnInitDialog() override;
    DECLARE_MESSAGE_MAP()
    afx_msg void OnAuthorise();
    afx_msg void OnFetch();
    afx_msg void OnCreate();
    afx_msg void OnReview();

private:
    /// What stands in the box; empty, and told, when nothing does.
    std::string Gateway();
    void FillGateways();
    void ShowResult(const CString& text);
    void ShowFetched(const HmrcApi::FetchResult& result, const std::string& gateway);
};

class CYearEnquiriesPage : public CYearPage
{
public:
    explicit CYearEnquiriesPage(CClientYearSheet& sheet);
    void Fill() override;
    void Enter() override { OnEdit(); }

protected:
    DECLARE_MESSAGE_MAP()
    afx_msg void OnEdit();
    afx_msg void OnDoubleClick(NMHDR* header, LRESULT* result);
};

class CYearTrackerPage : public CYearPage
{
public:
    explicit CYearTrackerPage(CClientYearSheet& sheet);
    void Fill() override;
};

class CClientYearSheet : public Kiln::CExPropertySheet
{
public:
    CClientYearSheet(const ClientView& client, short year);
    ~CClientYearSheet() override;
    CString HelpFilePath() const override;

    const ScheduleOwner& Owner() const noexcept { return m_owner; }
    const ClientYear& Shown() const noexcept { return m_shown; }
    /// Reads everything again and shows it on the pages. A practice that cannot be read is told.
    void Refresh();

protected:
    bool OnInitDialog() override;
    void OnOK() override; // Enter
    void OnCancel() override;

private:
    ScheduleOwner m_owner;
    ClientYear m_shown;
    CReturnPage m_return{*this};
    CHmrcPage m_hmrc{*this};
    CYearEnquiriesPage m_enquiries{*this};
    CYearTrackerPage m_tracker{*this};
    std::vector<CYearPage*> m_yearPages;
};

} // namespace Desk
