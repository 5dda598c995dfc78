#include "ClientYearSheet.h"

#include "Afx/windows/ComboBox.h"
#include "Afx/windows/MessageBox.h"
#include "Kiln/controls/DateEdit.h"
#include "Kiln/controls/HelpPages.h"
#include "layouts/ClientYear.h"
#include "MorvUt/context/BusyPractice.h"
#include "MorvUt/enquiries/dialogs/ClientEnquiriesListDlg.h"
#include "MorvUt/taxyear/YearTitles.h"
#include "MorvUt/users/UserData.h"
#include "Quarry/Session.h"
#include "Remembered.h"

namespace Desk
{

using Kiln::CExPropertyPage;
using Kiln::CExPropertySheet;

namespace
{

/// A partnership has other pages.
const char* SheetName(const ClientView& client) { return client.IsPartnership() ? "PartnershipYear" : "ClientYear"; }

} // namespace

// What the pages share.

CYearPage::CYearPage(CClientYearSheet& sheet, const Afx::DialogLayout& layout, const char* name, unsigned listId,
                     std::vector<Heading> headings, const char* help)
    : CExPropertyPage(layout), m_sheet(sheet), m_name(name), m_listId(listId), m_headings(std::move(headings)),
      m_help(help)
{}

BEGIN_MESSAGE_MAP(CYearPage, CExPropertyPage)
ON_BN_CLICKED(IDC_RETURN_HELP, OnHelpButton)
ON_BN_CLICKED(IDC_HMRC_HELP, OnHelpButton)
ON_BN_CLICKED(IDC_YEAR_ENQUIRIES_HELP, OnHelpButton)
ON_BN_CLICKED(IDC_YEAR_TRACKER_HELP, OnHelpButton)
END_MESSAGE_MAP()

CString CYearPage::HelpFilePath() const { return Kiln::HelpPage(m_help); }
void CYearPage::OnHelpButton() { ShowHelp(m_listId); }

bool CYearPage::OnInitDialog()
{
    const bool setsFocus = CExPropertyPage::OnInitDialog();
    int column = 0;
    for (const Heading& heading : m_headings)
        List().InsertColumn(column++, heading.text, heading.width);
    RestoreWidths(List(), m_name);
    m_isMade = true;
    Fill();
    return setsFocus;
}

void CYearPage::Remember() const
{
    if (m_isMade)
        KeepWidths(List(), m_name);
}

int CYearPage::Selected() const
{
    const std::vector<int> rows = List().GetSelectedRows();
    return rows.size() == 1 ? rows.front() : -1;
}

void CYearPage::ShowRows(const std::vector<std::vector<CString>>& rows)
{
    CListCtrl& list = List();
    const int before = Selected();
    list.SetRedraw(false);
    list.SetQuiet(true);
    list.DeleteAllItems();
    for (const auto& texts : rows) {
        const int row = list.InsertItem(list.GetItemCount(), "");
        for (std::size_t i = 0; i < texts.size(); ++i)
            list.SetItemText(row, static_cast<int>(i), texts[i]);
    }
    if (!rows.empty()) {
        const int row = before >= 0 && before < list.GetItemCount() ? before : 0;
        list.SetFocusedRow(row);
        list.Select(row);
    }
    list.SetQuiet(false);
    list.SetRedraw(true);
}

// The return.

CReturnPage::CReturnPage(CClientYearSheet& sheet)
    : CYearPage(sheet, kReturnLayout, "Schedules", IDC_RETURN_SCHEDULES,
                {{"Kind", 90}, {"Description", 150}, {"Reference", 70}, {"Amount", 60}, {"Tax", 60}}, "desk")
{}

BEGIN_MESSAGE_MAP(CReturnPage, CYearPage)
ON_BN_CLICKED(IDC_RETURN_OPEN, OnOpen)
ON_BN_CLICKED(IDC_RETURN_NEW, OnNew)
ON_NOTIFY(Afx::kNotifyDoubleClick, IDC_RETURN_SCHEDULES, OnDoubleClick)
END_MESSAGE_MAP()

bool CReturnPage::OnInitDialog()
{
    auto& kinds = static_cast<CComboBox&>(*GetDlgItem(IDC_RETURN_KIND));
    for (const ScheduleKind kind : NewKindsOf(m_sheet.Owner()))
        kinds.AddString(NameOf(kind), static_cast<std::uintptr_t>(kind));
    kinds.SetCurSel(0);
    GetDlgItem(IDC_RETURN_NEW)->EnableWindow(kinds.GetCount() > 0);
    return CYearPage::OnInitDialog();
}

void CReturnPage::Fill()
{
    GetDlgItem(IDC_RETURN_CLIENT)->SetWindowText(Afx::WithoutMarks(m_sheet.Shown().heading));
    GetDlgItem(IDC_RETURN_STATUS)->SetWindowText(m_sheet.Shown().status);
    std::vector<std::vector<CString>> rows;
    for (const ScheduleLine& line : m_sheet.Shown().schedules)
        rows.push_back({NameOf(line.kind), line.text, line.reference, line.amount.Format(), line.tax.Format()});
    ShowRows(rows);
    GetDlgItem(IDC_RETURN_OPEN)->EnableWindow(!rows.empty());
}

void CReturnPage::OnOpen()
{
    const int row = Selected();
    if (row < 0)
        return;
    const ScheduleLine line = m_sheet.Shown().schedules[static_cast<std::size_t>(row)];
    OpenSchedule(m_sheet.Owner(), line.kind, line.id);
    m_sheet.Refresh();
}

void CReturnPage::OnNew()
{
    const auto& kinds = static_cast<const CComboBox&>(*GetDlgItem(IDC_RETURN_KIND));
    OpenSchedule(m_sheet.Owner(), static_cast<ScheduleKind>(kinds.GetItemData(kinds.GetCurSel())), 0);
    m_sheet.Refresh();
}

void CReturnPage::OnDoubleClick(NMHDR*, LRESULT*) { OnOpen(); }

// Enquiries.

CYearEnquiriesPage::CYearEnquiriesPage(CClientYearSheet& sheet)
    : CYearPage(sheet, kYearEnquiriesLayout, "Enquiries", IDC_YEAR_ENQUIRIES,
                {{"Status", 60}, {"Date", 50}, {"Description", 150}, {"Due", 50}, {"Task", 80}}, "enquiries")
{}

BEGIN_MESSAGE_MAP(CYearEnquiriesPage, CYearPage)
ON_BN_CLICKED(IDC_YEAR_ENQUIRIES_EDIT, OnEdit)
ON_NOTIFY(Afx::kNotifyDoubleClick, IDC_YEAR_ENQUIRIES, OnDoubleClick)
END_MESSAGE_MAP()

void CYearEnquiriesPage::Fill()
{
    std::vector<std::vector<CString>> rows;
    for (const EnquiryLine& line : m_sheet.Shown().enquiries)
        rows.push_back({TextOf(line.status), Kiln::FormatDateShown(line.start), line.description,
                        Kiln::FormatDateShown(line.due), TextOf(line.task.state)});
    ShowRows(rows);
}

void CYearEnquiriesPage::OnEdit()
{
    const ClientView& client = m_sheet.Owner().client;
    const auto id = static_cast<unsigned long>(client.id);
    HandleEnquiriesDialog(Quarry::GetConnection(), client.IsPartnership() ? 0 : id, client.IsPartnership() ? id : 0,
                          m_sheet.Owner().year, CUserData::IsReadOnly() != 0, 0, 0, this);
    m_sheet.Refresh();
}

void CYearEnquiriesPage::OnDoubleClick(NMHDR*, LRESULT*) { OnEdit(); }

// The work tracker.

CYearTrackerPage::CYearTrackerPage(CClientYearSheet& sheet)
    : CYearPage(sheet, kYearTrackerLayout, "Tracker", IDC_YEAR_TRACKER,
                {{"Source", 110}, {"Task", 150}, {"Due", 50}, {"Assigned to", 60}, {"State", 70}}, "enquiries")
{}

void CYearTrackerPage::Fill()
{
    std::vector<std::vector<CString>> rows;
    for (const TrackerLine& line : m_sheet.Shown().tracker)
        rows.push_back({line.source, line.task, Kiln::FormatDateShown(line.due), line.assignedTo, TextOf(line.state)});
    ShowRows(rows);
}

// The sheet.

CClientYearSheet::CClientYearSheet(const ClientView& client, short year)
    : CExPropertySheet(client.name + " - " + FormatYearString42Digit(year), LastPage(SheetName(client))), m_owner{
                                                                                                              client,
                                                                                                              year}
{
    SetNoApply();
    m_yearPages = {&m_return, &m_enquiries, &m_tracker};
    if (!client.IsPartnership()) // HMRC's records are about people
        m_yearPages.insert(m_yearPages.begin() + 1, &m_hmrc);
    for (CYearPage* const page : m_yearPages)
        AddPage(page);
}

CClientYearSheet::~CClientYearSheet() = default;

CString CClientYearSheet::HelpFilePath() const { return Kiln::HelpPage("desk"); }

bool CClientYearSheet::OnInitDialog()
{
    // The list that names the client has not all particulars.
    const std::string code = m_owner.client.code.Str();
    for (const ClientView& found : m_owner.client.IsPartnership() ? FindPartnerships(code) : FindClients(code))
        if (found.id == m_owner.client.id) // another program may have given one code twice
            m_owner.client = found;
    m_shown = ReadClientYear(m_owner);
    const bool setsFocus = CExPropertySheet::OnInitDialog();
    GetDlgItem(IDOK)->ShowWindow(false);
    GetDlgItem(IDCANCEL)->SetWindowText("Close");
    PlaceButtons(GetRect().Width(), GetRect().Height());
    return setsFocus;
}

void CClientYearSheet::Refresh()
{
    try {
        m_shown = ReadClientYear(m_owner);
    } catch (const Cellar::DatabaseError& error) {
        TellBusyOrThrow(error);
        return;
    }
    for (CYearPage* const page : m_yearPages)
        if (page->IsOpen()) // shown once, so that it has its controls filled
            page->Fill();
}

void CClientYearSheet::OnOK()
{
    if (auto* const page = dynamic_cast<CYearPage*>(GetActivePage()))
        page->Enter();
}

void CClientYearSheet::OnCancel()
{
    for (const CYearPage* const page : m_yearPages)
        page->Remember();
    KeepPage(SheetName(m_owner.client), GetActiveIndex());
    CExPropertySheet::OnCancel();
}

} // namespace Desk
