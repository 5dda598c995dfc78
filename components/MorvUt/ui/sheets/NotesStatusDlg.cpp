#include "MorvUt/ui/sheets/NotesStatusDlg.h"

#include "MorvUt/res/layouts/Notes.h"
#include "MorvUt/res/Strings.h"
#include "MorvUt/ui/sheets/TXPropertySheet.h"

using Kiln::CExDialog;

IMPLEMENT_DYNAMIC(CNotesStatusDlg, CExDialog)

BEGIN_MESSAGE_MAP(CNotesStatusDlg, CExDialog)
ON_BN_CLICKED(IDC_STATUS_COMPLETED, OnCompleted)
ON_BN_CLICKED(IDC_STATUS_NOTES, OnNotes)
END_MESSAGE_MAP()

CNotesStatusDlg::CNotesStatusDlg(TXPropertySheet& sheet, const StatusRowParts& parts)
    : CExDialog(kNotesStatusLayout), m_sheet(sheet), m_parts(parts)
{}

bool CNotesStatusDlg::OnInitDialog()
{
    const bool setsFocus = CExDialog::OnInitDialog();
    GetDlgItem(IDC_STATUS_COMPLETED)->ShowWindow(m_parts.completedBox);
    GetDlgItem(IDC_STATUS_NOTES)->ShowWindow(m_parts.notes);
    GetDlgItem(IDC_STATUS_NOTES_LABEL)->ShowWindow(m_parts.notes);
    CWnd* const name = GetDlgItem(IDC_STATUS_PARTNERSHIP);
    name->ShowWindow(m_parts.partnershipName);
    name->SetAccessibleName(LibraryText(IDS_PARTNERSHIP_NAME));
    SetCompleted(m_sheet.GetCompletedStatus());
    return setsFocus;
}

void CNotesStatusDlg::SetCompleted(int completed)
{
    static_cast<CButton*>(GetDlgItem(IDC_STATUS_COMPLETED))->SetCheck(completed);
}

void CNotesStatusDlg::EnableNotes(bool enable) { GetDlgItem(IDC_STATUS_NOTES)->EnableWindow(enable); }
void CNotesStatusDlg::SetLabel(const CString& label) { GetDlgItem(IDC_STATUS_NOTES_LABEL)->SetWindowText(label); }
void CNotesStatusDlg::SetPartnershipName(const CString& name)
{
    GetDlgItem(IDC_STATUS_PARTNERSHIP)->SetWindowText(name);
}

void CNotesStatusDlg::OnCompleted()
{
    m_sheet.OnCompletedClicked(static_cast<CButton*>(GetDlgItem(IDC_STATUS_COMPLETED))->GetCheck());
}

void CNotesStatusDlg::OnNotes() { m_sheet.OnNotesClicked(m_sheet.FirstNotesType()); }
