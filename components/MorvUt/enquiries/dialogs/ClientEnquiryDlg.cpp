#include "MorvUt/enquiries/dialogs/ClientEnquiryDlg.h"

#include "Afx/windows/DataExchange.h"
#include "Afx/windows/MessageBox.h"
#include "Kiln/controls/HelpPages.h"
#include "MorvUt/context/BusyPractice.h"
#include "MorvUt/enquiries/rules/LinkedTasks.h"
#include "MorvUt/res/layouts/Enquiries.h"
#include "MorvUt/res/Strings.h"

using Kiln::CDate;
using Kiln::CExDialog;

IMPLEMENT_DYNAMIC(CClientEnquiryDlg, CExDialog)

BEGIN_MESSAGE_MAP(CClientEnquiryDlg, CExDialog)
ON_BN_CLICKED(IDC_ENQUIRY_HAS_REMINDER, OnReminderBox)
ON_BN_CLICKED(IDC_ENQUIRY_RECEIVED, OnReceivedBox)
ON_BN_CLICKED(IDC_ENQUIRY_LINKED, OnLinkBox)
ON_CBN_SELCHANGE(IDC_ENQUIRY_SOURCE, OnSourceChosen)
END_MESSAGE_MAP()

namespace
{

/// What stands in the dialog when it opens. A new enquiry starts today.
EnquiryDraft FirstDraft(const Brix::CClientEnquiry& enquiry, bool isNew)
{
    if (enquiry.IsEOL())
        return NewEnquiryDraft();
    EnquiryDraft draft = DraftOf(enquiry);
    if (isNew && draft.start.IsNull())
        draft.start = CDate::Today();
    return draft;
}

} // namespace

CClientEnquiryDlg::CClientEnquiryDlg(long clientId, long partnershipId, int year, Brix::CClientEnquiry& enquiry,
                                     bool isNew, CWnd*)
    : CExDialog(kEnquiryLayout), m_owner(OwnerOf(clientId, partnershipId)), m_year(static_cast<short>(year)),
      m_enquiry(enquiry), m_draft(FirstDraft(enquiry, isNew))
{
    SetWindowText(LibraryText(isNew ? IDS_ENQUIRY_NEW : IDS_ENQUIRY_EDIT));
}

CString CClientEnquiryDlg::HelpFilePath() const { return Kiln::HelpPage("enquiries"); }

void CClientEnquiryDlg::SetLink(long sourceId, long taskId)
{
    m_draft.isLinked = true;
    m_draft.sourceId = sourceId;
    m_draft.taskId = taskId;
}

CComboBox& CClientEnquiryDlg::Combo(unsigned id) const
{
    return *static_cast<CComboBox*>(GetDlgItem(static_cast<int>(id)));
}
CButton& CClientEnquiryDlg::Box(unsigned id) const { return *static_cast<CButton*>(GetDlgItem(static_cast<int>(id))); }

void CClientEnquiryDlg::DoDataExchange(CDataExchange* exchange)
{
    DDX_Control(exchange, IDC_ENQUIRY_START, m_start);
    DDX_Control(exchange, IDC_ENQUIRY_DUE, m_due);
    DDX_Control(exchange, IDC_ENQUIRY_REMINDER, m_reminder);
    DDX_Control(exchange, IDC_ENQUIRY_RECEIVED_DATE, m_received);
    DDX_Text(exchange, IDC_ENQUIRY_DESCRIPTION, m_draft.description);
    if (exchange->m_bSaveAndValidate)
        return;
    m_start.SetDate(m_draft.start);
    m_due.SetDate(m_draft.due);
    m_reminder.SetDate(m_draft.reminder);
    m_received.SetDate(m_draft.received);
    Box(IDC_ENQUIRY_HAS_REMINDER).SetCheck(m_draft.hasReminder);
    Box(IDC_ENQUIRY_RECEIVED).SetCheck(m_draft.isReceived);
    Box(IDC_ENQUIRY_LINKED).SetCheck(m_draft.isLinked);
    Box(IDC_ENQUIRY_CARRY_FORWARD).SetCheck(m_draft.carriesForward);
}

bool CClientEnquiryDlg::OnInitDialog()
{
    const bool setsFocus = CExDialog::OnInitDialog();
    m_reminder.SetAccessibleName(Box(IDC_ENQUIRY_HAS_REMINDER).GetAccessibleName());
    m_received.SetAccessibleName(Box(IDC_ENQUIRY_RECEIVED).GetAccessibleName());
    LoadSourceCombo();
    EnableDate(IDC_ENQUIRY_HAS_REMINDER, m_reminder);
    EnableDate(IDC_ENQUIRY_RECEIVED, m_received);
    EnableCombos();
    return setsFocus;
}

/// A date that no box asks for is none.
void CClientEnquiryDlg::EnableDate(unsigned boxId, Kiln::CDateEdit& edit)
{
    const bool isAsked = Box(boxId).GetCheck() != 0;
    if (!isAsked)
        edit.SetDate(CDate());
    edit.EnableWindow(isAsked);
}

void CClientEnquiryDlg::OnReminderBox() { EnableDate(IDC_ENQUIRY_HAS_REMINDER, m_reminder); }
void CClientEnquiryDlg::OnReceivedBox() { EnableDate(IDC_ENQUIRY_RECEIVED, m_received); }
void CClientEnquiryDlg::OnLinkBox() { EnableCombos(); }
void CClientEnquiryDlg::OnSourceChosen() { LoadTaskCombo(); }

void CClientEnquiryDlg::EnableCombos()
{
    const bool isLinked = Box(IDC_ENQUIRY_LINKED).GetCheck() != 0;
    Combo(IDC_ENQUIRY_SOURCE).EnableWindow(isLinked);
    Combo(IDC_ENQUIRY_TASK).EnableWindow(isLinked);
}

void CClientEnquiryDlg::LoadSourceCombo()
{
    CComboBox& combo = Combo(IDC_ENQUIRY_SOURCE);
    combo.ResetContent();
    for (const SourceChoice& source : ListSources(m_enquiry.Connection(), m_owner)) {
        CString name = source.name;
        name.AppendFormat(" (%d)", source.year); // a job has the same name each year
        const int item = combo.AddString(name, static_cast<std::uintptr_t>(source.id));
        if (source.id == m_draft.sourceId)
            combo.SetCurSel(item);
    }
    LoadTaskCombo();
}

void CClientEnquiryDlg::LoadTaskCombo()
{
    const CComboBox& sources = Combo(IDC_ENQUIRY_SOURCE);
    CComboBox& combo = Combo(IDC_ENQUIRY_TASK);
    combo.ResetContent();
    if (sources.GetCurSel() == CComboBox::kNone)
        return;
    const auto source = static_cast<long>(sources.GetItemData(sources.GetCurSel()));
    for (const TaskChoice& task : ListTasks(m_enquiry.Connection(), source)) {
        const int item = combo.AddString(task.name, static_cast<std::uintptr_t>(task.typeId));
        if (source == m_draft.sourceId && task.typeId == m_draft.taskId)
            combo.SetCurSel(item);
    }
}

bool CClientEnquiryDlg::IsEnquiryLinked() const
{
    const EnquiryDraft draft = IsOpen() ? Entered() : m_draft;
    return draft.isLinked && draft.sourceId != 0 && draft.taskId != 0;
}

/// What stands in the dialog.
EnquiryDraft CClientEnquiryDlg::Entered() const
{
    EnquiryDraft draft = m_draft;
    const auto chosen = [this](unsigned id) {
        const CComboBox& combo = Combo(id);
        return combo.GetCurSel() == CComboBox::kNone ? 0 : static_cast<long>(combo.GetItemData(combo.GetCurSel()));
    };
    draft.description = GetDlgItem(IDC_ENQUIRY_DESCRIPTION)->Text();
    draft.start = m_start.GetDate();
    draft.due = m_due.GetDate();
    draft.hasReminder = Box(IDC_ENQUIRY_HAS_REMINDER).GetCheck() != 0;
    draft.reminder = m_reminder.GetDate();
    draft.isReceived = Box(IDC_ENQUIRY_RECEIVED).GetCheck() != 0;
    draft.received = m_received.GetDate();
    draft.isLinked = Box(IDC_ENQUIRY_LINKED).GetCheck() != 0;
    draft.sourceId = draft.isLinked ? chosen(IDC_ENQUIRY_SOURCE) : 0;
    draft.taskId = draft.isLinked ? chosen(IDC_ENQUIRY_TASK) : 0;
    draft.carriesForward = Box(IDC_ENQUIRY_CARRY_FORWARD).GetCheck() != 0;
    return draft;
}

void CClientEnquiryDlg::OnOK()
{
    if (!MayChangeEnquiries())
        return;
    m_acceptsPastReminder = false;
    m_draft = Entered();
    while (const std::optional<EnquiryProblem> problem = CheckEnquiry(m_draft, CDate::Today(), m_acceptsPastReminder))
        if (!Tell(*problem))
            return;
    if (Save())
        EndDialog(IDOK);
}

/// Shows a problem. Whether the user goes on as it is; otherwise the focus is at the field.
bool CClientEnquiryDlg::Tell(const EnquiryProblem& problem)
{
    const CString text = LibraryText(problem.text);
    if (problem.isQuestion) {
        if (AfxMessageBox(text, MB_YESNO) != IDYES)
            return m_acceptsPastReminder = true;
        FocusAndSelect(ControlOf(problem.field));
        return false;
    }
    return Refuse(ControlOf(problem.field), text, problem.isWarning ? MB_ICONWARNING : MB_OK);
}

CWnd& CClientEnquiryDlg::ControlOf(EnquiryField field)
{
    switch (field) {
    case EnquiryField::Start:
        return m_start;
    case EnquiryField::Due:
        return m_due;
    case EnquiryField::Reminder:
        return m_reminder;
    case EnquiryField::Received:
        return m_received;
    case EnquiryField::Source:
        return Combo(IDC_ENQUIRY_SOURCE);
    case EnquiryField::Task:
        return Combo(IDC_ENQUIRY_TASK);
    default:
        return *GetDlgItem(IDC_ENQUIRY_DESCRIPTION);
    }
}

bool CClientEnquiryDlg::Save()
{
    try {
        const std::optional<EnquiryProblem> problem = SaveEnquiry(m_enquiry, m_draft, m_owner, m_year);
        return !problem || Tell(*problem);
    } catch (const Quarry::ChangedByAnotherUser&) {
        AfxMessageBox(LibraryText(IDS_ENQUIRY_CHANGED));
    } catch (const Cellar::DatabaseError& error) {
        TellBusyOrThrow(error);
    }
    return false;
}
