#include "MorvUt/enquiries/dialogs/ClientEnquiriesListDlg.h"

#include <algorithm>

#include "Afx/windows/DataExchange.h"
#include "Afx/windows/MessageBox.h"
#include "Kiln/controls/HelpPages.h"
#include "MorvUt/context/BusyPractice.h"
#include "MorvUt/enquiries/dialogs/ClientEnquiryDlg.h"
#include "MorvUt/enquiries/dialogs/StatusImages.h"
#include "MorvUt/res/layouts/Enquiries.h"
#include "MorvUt/res/Strings.h"
#include "MorvUt/users/UserData.h"

using Kiln::CExDialog;

IMPLEMENT_DYNAMIC(CClientEnquiriesListDlg, CExDialog)

BEGIN_MESSAGE_MAP(CClientEnquiriesListDlg, CExDialog)
ON_BN_CLICKED(IDC_ENQUIRIES_NEW, OnNew)
ON_BN_CLICKED(IDC_ENQUIRIES_EDIT, OnEdit)
ON_BN_CLICKED(IDC_ENQUIRIES_DELETE, OnDelete)
ON_BN_CLICKED(IDC_ENQUIRIES_HIDE_COMPLETED, OnFilter)
ON_BN_CLICKED(IDC_ENQUIRIES_ALL_YEARS, OnFilter)
ON_NOTIFY(Afx::kNotifyDoubleClick, IDC_ENQUIRIES_LIST, OnDoubleClick)
ON_NOTIFY(Afx::kNotifyKeyDown, IDC_ENQUIRIES_LIST, OnKeyDownList)
ON_NOTIFY(Afx::kNotifyItemChanged, IDC_ENQUIRIES_LIST, OnSelection)
END_MESSAGE_MAP()

CClientEnquiriesListDlg::CClientEnquiriesListDlg(Cellar::CConnection& connection, long clientId, long partnershipId,
                                                 int year, bool readOnly, long sourceId, long taskId, CWnd*)
    : CExDialog(kEnquiriesLayout), m_connection(connection), m_clientId(clientId), m_partnershipId(partnershipId),
      m_year(static_cast<short>(year)), m_readOnly(readOnly), m_sourceId(sourceId), m_taskId(taskId)
{}

CString CClientEnquiriesListDlg::HelpFilePath() const { return Kiln::HelpPage("enquiries"); }

void CClientEnquiriesListDlg::DoDataExchange(CDataExchange* exchange)
{
    DDX_Control(exchange, IDC_ENQUIRIES_LIST, m_list);
}

bool CClientEnquiriesListDlg::OnInitDialog()
{
    const bool setsFocus = CExDialog::OnInitDialog();
    const EnquirySettings settings = ReadEnquirySettings(m_connection, CUserData::m_strUser);
    static_cast<CButton*>(GetDlgItem(IDC_ENQUIRIES_HIDE_COMPLETED))->SetCheck(settings.hideCompleted);
    static_cast<CButton*>(GetDlgItem(IDC_ENQUIRIES_ALL_YEARS))->SetCheck(settings.allYears);
    m_list.SetAccessibleName(Text());
    m_list.SetHeadings(kEnquiryHeadings);
    AddEnquiryStatusImages(m_images);
    m_list.SetImageList(&m_images);
    GetDlgItem(IDC_ENQUIRIES_NEW)->EnableWindow(!m_readOnly);
    FillList();
    return setsFocus;
}

bool CClientEnquiriesListDlg::IsTicked(unsigned id) const
{
    return static_cast<CButton*>(GetDlgItem(static_cast<int>(id)))->GetCheck() != 0;
}

void CClientEnquiriesListDlg::FillList()
{
    m_list.SetRedraw(false);
    m_list.RemoveAllRows();
    m_list.lines = ListEnquiries(m_connection, OwnerOf(m_clientId, m_partnershipId),
                                 {m_year, IsTicked(IDC_ENQUIRIES_ALL_YEARS), IsTicked(IDC_ENQUIRIES_HIDE_COMPLETED)});
    for (const EnquiryLine& line : m_list.lines)
        m_list.AddRow({static_cast<int>(line.status), line.start, line.description, line.due, line.reminder,
                       TextOf(line.task.state), line.YearText()},
                      static_cast<std::uintptr_t>(line.id));
    m_list.Sort();
    m_list.SetRedraw(true);
    UpdateDeleteButton();
}

std::vector<long> CClientEnquiriesListDlg::SelectedIds() const
{
    std::vector<long> ids;
    for (const int row : m_list.GetSelectedRows())
        ids.push_back(static_cast<long>(m_list.GetItemData(row)));
    return ids;
}

void CClientEnquiriesListDlg::UpdateDeleteButton()
{
    const std::size_t selected = m_list.GetSelectedRows().size();
    GetDlgItem(IDC_ENQUIRIES_DELETE)->EnableWindow(selected > 0 && !m_readOnly);
    GetDlgItem(IDC_ENQUIRIES_EDIT)->EnableWindow(selected == 1 && !m_readOnly);
}

void CClientEnquiriesListDlg::OnNew()
{
    Brix::CClientEnquiry enquiry;
    enquiry.Use(m_connection);
    CClientEnquiryDlg dialog(m_clientId, m_partnershipId, m_year, enquiry, true, this);
    if (m_sourceId != 0)
        dialog.SetLink(m_sourceId, m_taskId);
    if (dialog.DoModal() == IDOK)
        FillList();
}

void CClientEnquiriesListDlg::OnEdit()
{
    const std::vector<long> ids = SelectedIds();
    if (ids.size() != 1 || m_readOnly)
        return;
    Brix::CClientEnquiry enquiry;
    if (!enquiry.Open(m_connection, {{0, ids.front()}})) {
        FillList(); // somebody else has deleted it
        return;
    }
    CClientEnquiryDlg dialog(m_clientId, m_partnershipId, m_year, enquiry, false, this);
    dialog.DoModal();
    FillList();
}

void CClientEnquiriesListDlg::OnDelete()
{
    const std::vector<long> ids = SelectedIds();
    if (ids.empty() || m_readOnly || !MayChangeEnquiries())
        return;
    if (AfxMessageBox(LibraryText(IDS_ENQUIRY_DELETE), MB_YESNO) != IDYES)
        return;
    try {
        DeleteEnquiries(m_connection, ids);
    } catch (const Quarry::ChangedByAnotherUser&) {
        AfxMessageBox(LibraryText(IDS_ENQUIRY_CHANGED));
    } catch (const Cellar::DatabaseError& error) {
        TellBusyOrThrow(error);
    }
    FillList();
}

void CClientEnquiriesListDlg::OnFilter()
{
    try {
        KeepEnquirySettings(m_connection, CUserData::m_strUser,
                            {IsTicked(IDC_ENQUIRIES_HIDE_COMPLETED), IsTicked(IDC_ENQUIRIES_ALL_YEARS)});
    } catch (const Cellar::DatabaseError&) {
        // The list shows what was asked for, also in a practice that can only be read or is busy; a lost connection
        // is told by the list itself.
    }
    FillList();
}

void CClientEnquiriesListDlg::OnOK() { OnEdit(); }
void CClientEnquiriesListDlg::OnDoubleClick(NMHDR*, LRESULT*) { OnEdit(); }
void CClientEnquiriesListDlg::OnSelection(NMHDR*, LRESULT*) { UpdateDeleteButton(); }

void CClientEnquiriesListDlg::OnKeyDownList(NMHDR*, LRESULT*)
{
    if (m_list.GetPressedKey() == VK_DELETE)
        OnDelete();
    else if (m_list.GetPressedKey() == VK_F2)
        OnEdit();
}

CString CClientEnquiriesListDlg::CEnquiryListCtrl::GetTip(int row) const
{
    const auto id = static_cast<long>(GetItemData(row));
    const auto line = std::find_if(lines.begin(), lines.end(), [id](const EnquiryLine& one) { return one.id == id; });
    return line == lines.end() ? CString() : line->task.TipText();
}

void HandleEnquiriesDialog(Cellar::CConnection& connection, unsigned long clientId, unsigned long partnershipId,
                           short year, bool readOnly, long sourceId, long taskId, CWnd* parent)
{
    CClientEnquiriesListDlg dialog(connection, static_cast<long>(clientId), static_cast<long>(partnershipId), year,
                                   readOnly, sourceId, taskId, parent);
    dialog.DoModal();
}

bool HandleEditEnquiriesDialog(Brix::CClientEnquiry& enquiry)
{
    CClientEnquiryDlg dialog(enquiry.GetClientID(), enquiry.GetPClientID(), enquiry.GetYear(), enquiry, false);
    return dialog.DoModal() == IDOK;
}
