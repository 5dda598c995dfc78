#include "ClientsDlg.h"

#include "Afx/windows/ComboBox.h"
#include "Afx/windows/ListCtrl.h"
#include "Afx/windows/MessageBox.h"
#include "ClientYearSheet.h"
#include "Kiln/controls/HelpPages.h"
#include "layouts/Clients.h"
#include "MorvUt/context/BusyPractice.h"
#include "MorvUt/taxyear/CurrentTaxYear.h"
#include "MorvUt/taxyear/TaxYear.h"
#include "Remembered.h"
#include "RollForwardDlg.h"
#include "Years.h"

namespace Desk
{

using Kiln::CExDialog;

namespace
{

constexpr std::size_t kAtOnce = 200;
constexpr char kListName[] = "Clients";

} // namespace

BEGIN_MESSAGE_MAP(CClientsDlg, CExDialog)
ON_EN_CHANGE(IDC_CLIENTS_SEARCH, OnSearch)
ON_CBN_SELCHANGE(IDC_CLIENTS_YEAR, OnYear)
ON_BN_CLICKED(IDC_CLIENTS_MORE, OnMore)
ON_BN_CLICKED(IDC_CLIENTS_REFRESH, OnRefresh)
ON_BN_CLICKED(IDC_CLIENTS_ROLL, OnRollForward)
ON_BN_CLICKED(IDC_CLIENTS_HELP, OnHelpButton)
ON_NOTIFY(Afx::kNotifyDoubleClick, IDC_CLIENTS_LIST, OnDoubleClick)
ON_NOTIFY(Afx::kNotifyItemChanged, IDC_CLIENTS_LIST, OnSelection)
END_MESSAGE_MAP()

CClientsDlg::CClientsDlg() : CExDialog(kClientsLayout), m_limit(kAtOnce) {}

CString CClientsDlg::HelpFilePath() const { return Kiln::HelpPage("desk"); }
CListCtrl& CClientsDlg::List() const { return static_cast<CListCtrl&>(*GetDlgItem(IDC_CLIENTS_LIST)); }
CComboBox& CClientsDlg::Year() const { return static_cast<CComboBox&>(*GetDlgItem(IDC_CLIENTS_YEAR)); }

int CClientsDlg::DoModal()
{
    m_finder.Forget();
    return CExDialog::DoModal();
}

bool CClientsDlg::OnInitDialog()
{
    const bool setsFocus = CExDialog::OnInitDialog();
    int column = 0;
    for (const auto& [heading, width] :
         {std::pair("Code", 50), std::pair("Name", 190), std::pair("Kind", 60), std::pair("Status", 110)})
        List().InsertColumn(column++, heading, width);
    RestoreWidths(List(), kListName);
    FillYears(Year(), GetCurrentRealTaxYear());
    Fill();
    return setsFocus;
}

void CClientsDlg::Fill()
{
    m_found = m_finder.Find(GetDlgItem(IDC_CLIENTS_SEARCH)->Text(), m_limit);
    CListCtrl& list = List();
    list.SetRedraw(false);
    list.SetQuiet(true);
    list.DeleteAllItems();
    for (const FoundClient& one : m_found.shown) {
        const int row = list.InsertItem(list.GetItemCount(), one.client.code);
        list.SetItemText(row, 1, one.client.name);
        list.SetItemText(row, 2, NameOf(one.client.kind));
        list.SetItemText(row, 3, one.status);
    }
    if (!m_found.shown.empty()) {
        list.SetFocusedRow(0);
        list.Select(0);
    }
    list.SetQuiet(false);
    list.SetRedraw(true);
    CString count;
    const int shown = static_cast<int>(m_found.shown.size());
    if (m_found.isThereMore)
        count.Format("The first %d by name. Type more letters, or show more.", shown);
    else
        count.Format("%d found.", shown);
    GetDlgItem(IDC_CLIENTS_COUNT)->SetWindowText(count);
    GetDlgItem(IDC_CLIENTS_MORE)->EnableWindow(m_found.isThereMore);
    GetDlgItem(IDOK)->EnableWindow(shown > 0);
}

void CClientsDlg::OnSearch()
{
    m_limit = kAtOnce;
    Fill();
}

void CClientsDlg::OnYear()
{
    SetCurrentTaxYear(ConvertRealToRelativeTaxYear(ChosenYear(Year())));
    Fill();
}

void CClientsDlg::OnMore()
{
    const int row = List().GetItemCount();
    m_limit += kAtOnce;
    Fill();
    List().SetFocusedRow(row);
    List().Select(row);
    List().SetFocus();
}

void CClientsDlg::OnRefresh()
{
    m_finder.Forget();
    Fill();
}

void CClientsDlg::OnRollForward()
{
    CRollForwardDlg dialog;
    dialog.DoModal();
    Fill();
}

void CClientsDlg::OnHelpButton() { ShowHelp(IDC_CLIENTS_LIST); }
void CClientsDlg::OnDoubleClick(NMHDR*, LRESULT*) { OnOK(); }
void CClientsDlg::OnSelection(NMHDR*, LRESULT*) { GetDlgItem(IDOK)->EnableWindow(!List().GetSelectedRows().empty()); }

void CClientsDlg::OnOK()
{
    const std::vector<int> rows = List().GetSelectedRows();
    if (rows.empty())
        return;
    try {
        CClientYearSheet sheet(m_found.shown[static_cast<std::size_t>(rows.front())].client, GetCurrentRealTaxYear());
        sheet.DoModal();
        const int row = rows.front();
        Fill(); // its status may be another
        List().SetFocusedRow(row);
        List().Select(row);
    } catch (const Cellar::DatabaseError& error) {
        TellBusyOrThrow(error);
    }
}

void CClientsDlg::OnCancel()
{
    KeepWidths(List(), kListName);
    CExDialog::OnCancel();
}

bool CClientsDlg::OnDialogKey(CWnd& focus, unsigned key, unsigned modifiers)
{
    if (key == VK_DOWN && modifiers == 0 && focus.GetDlgCtrlID() == static_cast<int>(IDC_CLIENTS_SEARCH)) {
        GotoDlgCtrl(&List());
        return true;
    }
    return CExDialog::OnDialogKey(focus, key, modifiers);
}

} // namespace Desk
