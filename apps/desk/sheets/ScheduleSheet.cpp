#include "sheets/ScheduleSheet.h"

#include "Afx/windows/MessageBox.h"
#include "Kiln/controls/HelpPages.h"
#include "MorvUt/context/status/ClientStatus.h"
#include "MorvUt/res/Strings.h"
#include "MorvUt/taxyear/YearTitles.h"
#include "MorvUt/users/UserData.h"

namespace Desk
{

bool MaySave(const ScheduleOwner& owner)
{
    if (!TheUser().TaxReturnSaveAllowed(true) || CUserData::CheckForReadOnlyWithError())
        return false;
    const int isFinalised = owner.client.IsPartnership() ? IsPartershipTaxReturnFinalised(owner.client.id, owner.year)
                                                         : IsTaxReturnFinalisedForYear(owner.client.id, owner.year);
    if (isFinalised != 0)
        AfxMessageBox(LibraryText(IDS_CLIENT_READ_ONLY));
    return isFinalised == 0;
}

void MoveToTaxForm(Brix::CTaxForm& form, const ScheduleOwner& owner)
{
    using Form = Brix::CTaxForm;
    if (form.Open({{Form::kClientID, owner.client.id}, {Form::kYear, Cellar::Value(owner.year)}}, {{0}}))
        return;
    form.AddNew();
    form.SetClientID(owner.client.id);
    form.SetYear(owner.year);
    form.Update();
}

bool TellGone()
{
    AfxMessageBox("Somebody else has deleted this schedule.");
    return false;
}

bool RunSheet(CScheduleSheet& sheet, std::initializer_list<TXPropertyPage*> pages)
{
    for (TXPropertyPage* const page : pages)
        sheet.AddPage(page);
    return sheet.DoModal() == IDOK;
}

CScheduleSheet::CScheduleSheet(const ScheduleOwner& owner, ScheduleKind kind, Quarry::CDataList& record,
                               const ScheduleColumns& columns)
    : TXPropertySheet(CString(NameOf(kind)) + " - " + owner.client.name), m_owner(owner), m_record(record),
      m_columns(columns)
{
    const NotesRows& notes = columns.notes;
    SetNotesRowHandling(&record, notes.audit, notes.taxReturn, notes.estimate, notes.avoidance, 0, 0);
}

bool CScheduleSheet::OnInitDialog()
{
    const bool setsFocus = TXPropertySheet::OnInitDialog();
    if (m_columns.completed != -1)
        SetCompletedStatus(m_record.Current().GetLong(m_columns.completed) != 0);
    return setsFocus;
}

CString CScheduleSheet::GetInfoLine(unsigned id)
{
    return id == kInfoLine1Id ? m_owner.client.code + " " + Afx::WithoutMarks(m_owner.client.name) + ", tax year " +
                                    FormatYearString42Digit(m_owner.year)
                              : CString();
}

CString CScheduleSheet::HelpFilePath() const { return Kiln::HelpPage("screens"); }

void CScheduleSheet::Modified()
{
    if (CPropertyPage* const first = GetPage(0))
        first->SetModified();
}

void CScheduleSheet::OnCompletedClicked(int completed)
{
    TXPropertySheet::OnCompletedClicked(completed);
    m_record.Set(m_columns.completed, completed != 0);
    Modified();
}

void CScheduleSheet::SetNotes(NotesType type, const CString& notes)
{
    const int column = m_columns.notes.Of(type);
    if (column == -1 || (notes.IsEmpty() && m_record.IsNull(column)))
        return;
    m_record.Set(column, notes);
    Modified();
}

void CScheduleSheet::GetAvoidanceNotes(CString& schemeReference, CString& notes, short& year)
{
    schemeReference = m_record.Current().GetText(m_columns.schemeReference);
    year = static_cast<short>(m_record.Current().GetLong(m_columns.schemeYear));
    GetNotes(NotesAvoidance, notes);
}

void CScheduleSheet::SetAvoidanceNotes(const CString& schemeReference, const CString& notes, const short& year)
{
    m_record.Set(m_columns.schemeReference, schemeReference);
    m_record.Set(m_columns.schemeYear, static_cast<long>(year));
    SetNotes(NotesAvoidance, notes);
}

bool CScheduleSheet::OnCommand(WPARAM wParam, LPARAM lParam)
{
    if ((wParam == IDOK || wParam == ID_APPLY_NOW) && !MaySave(m_owner))
        return true;
    try {
        return TXPropertySheet::OnCommand(wParam, lParam);
    } catch (const Quarry::ChangedByAnotherUser&) {
        KeepOpen(); // before the message, which a window whose model has ended does not outlive
        AfxMessageBox("Another user has changed this schedule. Please close it and open it again.");
        return true;
    }
}

} // namespace Desk
