#include "MorvUt/ui/sheets/TXPropertySheet.h"

#include <algorithm>
#include <utility>

#include "Afx/windows/MessageBox.h"
#include "Afx/windows/Static.h"
#include "MorvUt/context/BusyPractice.h"
#include "MorvUt/res/Strings.h"
#include "MorvUt/taxyear/CurrentTaxYear.h"
#include "MorvUt/ui/sheets/JointSpouseIncomeDlg.h"
#include "MorvUt/ui/sheets/NotesSheet.h"
#include "MorvUt/ui/sheets/NotesStatusDlg.h"
#include "MorvUt/ui/sheets/TXPropertyPage.h"
#include "Quarry/Session.h"

using Kiln::CExPropertySheet;

IMPLEMENT_DYNAMIC(TXPropertySheet, CExPropertySheet)

BEGIN_MESSAGE_MAP(TXPropertySheet, CExPropertySheet)
ON_WM_WINDOWPOSCHANGING()
END_MESSAGE_MAP()

TXPropertySheet::TXPropertySheet(const char* caption, int firstPage) : CExPropertySheet(caption, firstPage) {}
TXPropertySheet::~TXPropertySheet() = default;

// The transaction.

bool TXPropertySheet::OnInitDialog()
{
    auto level = Quarry::HasConnection() ? std::make_unique<Quarry::CTransaction>() : nullptr;
    if (!UpdateMTDScheduleData()) {
        EndDialog(IDCANCEL);
        return false;
    }
    m_level = std::move(level);
    return CExPropertySheet::OnInitDialog();
}

bool TXPropertySheet::OnCommand(WPARAM wParam, LPARAM lParam)
{
    const WindowRef here(this);
    try {
        const bool isDone = CExPropertySheet::OnCommand(wParam, lParam);
        if (here && (wParam == IDOK || wParam == ID_APPLY_NOW) && WasAccepted())
            CommitEdits(wParam == ID_APPLY_NOW);
        return isDone;
    } catch (const Cellar::DatabaseError& error) {
        if (!here)
            throw;
        KeepOpen(); // before the message: a window that is shown closes when its model has ended
        if (CPropertyPage* const page = GetActivePage())
            page->SetModified(); // there is something to apply still
        TellBusyOrThrow(error);
        return true;
    }
}

void TXPropertySheet::CommitEdits(bool staysOpen)
{
    if (!m_level)
        return;
    m_level->Commit();
    m_level.reset();
    if (staysOpen)
        m_level = std::make_unique<Quarry::CTransaction>(); // Cancel undoes what comes after Apply
}

// The furniture.

void TXPropertySheet::OnAddExtraControls(int& width, int& height)
{
    DisplayInfoControl(kInfoLine1Id, height);
    DisplayInfoControl(kInfoLine2Id, height);
    if (ShowJointSpouseIncome()) {
        m_joint = std::make_unique<CJointSpouseIncomeDlg>(*this);
        PlacePanel(*m_joint, kJointSpouseId, width, height);
    }
    const StatusRowParts parts = StatusRowPartsOf(ShowCompletedCheckBox() != 0, GetNotesTypes(),
                                                  GetSpecialNotesPanelText(), ShowPartnershipNameBox() != 0);
    if (parts.IsEmpty())
        return;
    m_status = std::make_unique<CNotesStatusDlg>(*this, parts);
    PlacePanel(*m_status, kNotesStatusId, width, height);
    EnableNotes(m_notesEnabled);
    UpdateNotesPanelText();
}

void TXPropertySheet::DisplayInfoControl(unsigned id, int& height)
{
    const CString text = GetInfoLine(id);
    if (text.IsEmpty())
        return;
    auto line = std::make_unique<CStatic>();
    line->SetWindowText(text);
    CWnd& placed = Adopt(std::move(line), id);
    const int top = AddFurnitureRow(height);
    placed.MoveWindow({kFurnitureGap, top, GetRect().Width() - kFurnitureGap, top + kFurnitureRow});
}

/// Under what is there already, and behind OK in the tab order.
void TXPropertySheet::PlacePanel(CDialog& panel, unsigned id, int& width, int& height)
{
    panel.Create(this, id);
    const CSize size = panel.GetRect().Size();
    panel.SetWindowPos(GetDlgItem(IDOK), 0, height, size.cx, size.cy, 0);
    width = std::max(width, size.cx);
    height += size.cy;
}

void TXPropertySheet::PageSetActive(int page)
{
    for (const unsigned id : {kInfoLine1Id, kInfoLine2Id})
        if (CWnd* const line = GetDlgItem(static_cast<int>(id)))
            line->ShowWindow(ShowInfoLine(page, id) != 0);
}

void TXPropertySheet::OnWindowPosChanging(WINDOWPOS* position)
{
    const int width = position && !(position->flags & SWP_NOSIZE) ? position->cx : GetRect().Width();
    for (const unsigned id : {kInfoLine1Id, kInfoLine2Id, kJointSpouseId, kNotesStatusId})
        SizeFurniture(static_cast<int>(id), width);
}

void TXPropertySheet::OnSizeDlgItem(int id) { SizeFurniture(id, GetRect().Width()); }

/// Of a sheet that is so wide.
void TXPropertySheet::SizeFurniture(int id, int sheetWidth)
{
    CWnd* const control = GetDlgItem(id);
    const int right = sheetWidth - kFurnitureGap;
    if (!control || right <= control->GetRect().left)
        return;
    CRect place = control->GetRect();
    place.right = std::max(right, place.left);
    control->MoveWindow(place);
}

void TXPropertySheet::OnDestroy()
{
    CExPropertySheet::OnDestroy();
    m_status.reset();
    m_joint.reset();
    m_level.reset(); // what was not committed is rolled back
}

// The defaults of what a derived sheet may override.

void TXPropertySheet::OnCompletedClicked(int completed) { m_completed = completed; }
int TXPropertySheet::EnableJointSpouseIncome(CString&) { return 1; }
void TXPropertySheet::OnJointSpouseIncome() {}
void TXPropertySheet::OnJointSpouseShareKillFocus() {}
void TXPropertySheet::OnJointSpouseView() {}
CString TXPropertySheet::GetInfoLine(unsigned) { return {}; }
int TXPropertySheet::ShowInfoLine(int, unsigned) { return 1; }
int TXPropertySheet::ShowCompletedCheckBox() { return 0; }
int TXPropertySheet::ShowPartnershipNameBox() { return 0; }
int TXPropertySheet::ShowJointSpouseIncome() { return 0; }

void TXPropertySheet::GetJointSpouseIncome(int& isJoint, double& share, int& view)
{
    const JointIncome nothing;
    isJoint = nothing.isJoint;
    share = nothing.clientShare;
    view = nothing.view;
}

unsigned TXPropertySheet::GetNotesTypes() { return NotesKindsOf(m_notesList != nullptr, m_notesRows); }
CString TXPropertySheet::GetPartnershipName() { return {}; }
void TXPropertySheet::GetNotesDescription(CString& description) { description.Empty(); }
int TXPropertySheet::GetAvoidanceValidationYear() { return GetCurrentRealTaxYear(); }
void TXPropertySheet::GetAlternateValidationYearErrorMessage(CString& message) { message.Empty(); }
int TXPropertySheet::IsClientAPartnership() { return 0; }
CString TXPropertySheet::GetSpecialNotesPanelText() { return {}; }
bool TXPropertySheet::UpdateMTDScheduleData() { return true; }
CString TXPropertySheet::HelpFilePath() const { return {}; }

// Completed, and notes.

void TXPropertySheet::SetCompletedStatus(int completed)
{
    m_completed = completed;
    if (m_status)
        m_status->SetCompleted(completed);
}

void TXPropertySheet::SetNotesRowHandling(Quarry::CDataList* list, int auditRow, int returnRow, int estimateRow,
                                          int avoidanceRow, int extra1, int extra2)
{
    m_notesList = list;
    m_notesRows = {auditRow, returnRow, estimateRow, avoidanceRow};
    m_notesExtra1 = extra1;
    m_notesExtra2 = extra2;
}

void TXPropertySheet::EnableNotes(bool enable)
{
    m_notesEnabled = enable;
    if (m_status)
        m_status->EnableNotes(enable);
}

void TXPropertySheet::AddSpecialNotesPage(TXPropertyPage* page)
{
    if (page && std::find(m_specialPages.begin(), m_specialPages.end(), page) == m_specialPages.end())
        m_specialPages.push_back(page);
}
void TXPropertySheet::RemoveSpecialNotesPage(TXPropertyPage* page) { std::erase(m_specialPages, page); }

TXPropertySheet::NotesType TXPropertySheet::FirstNotesType()
{
    const std::vector<NotesPageInfo> pages = NotesPagesOf(GetNotesTypes());
    return pages.empty() ? NotesNone : pages.front().kind;
}

void TXPropertySheet::OnNotesClicked(NotesType first)
{
    CString description;
    GetNotesDescription(description);
    CNotesSheet notes(*this, GetNotesTypes(), m_specialPages, {m_notesExtra1, m_notesExtra2, description});
    if (notes.Run(first))
        UpdateNotesPanelText();
}

void TXPropertySheet::GetNotes(NotesType type, CString& notes)
{
    notes.Empty();
    const int column = m_notesRows.Of(type);
    if (m_notesList && column != -1 && !m_notesList->IsEOL())
        notes = m_notesList->Current().GetText(column);
}

void TXPropertySheet::SetNotes(NotesType type, const CString& notes)
{
    const int column = m_notesRows.Of(type);
    if (!m_notesList || column == -1 || m_notesList->IsEOL())
        return;
    const Cellar::Value before = m_notesList->Get(column);
    m_notesList->Set(column, notes.Str());
    try {
        m_notesList->Update();
    } catch (...) {
        m_notesList->Set(column, before); // else the row's next change would save a note that was cancelled
        throw;
    }
}

void TXPropertySheet::GetAvoidanceNotes(CString& schemeReference, CString& notes, short& year)
{
    schemeReference.Empty();
    notes.Empty();
    year = 0;
}

void TXPropertySheet::SetAvoidanceNotes(const CString&, const CString&, const short&) {}

void TXPropertySheet::UpdateNotesPanelText()
{
    unsigned withText = 0;
    for (const NotesPageInfo& page : NotesPagesOf(GetNotesTypes())) {
        CString reference, notes;
        short year = 0;
        if (page.kind == NotesAvoidance)
            GetAvoidanceNotes(reference, notes, year);
        else
            GetNotes(page.kind, notes);
        if (!notes.IsEmpty() || !reference.IsEmpty())
            withText |= page.kind;
    }
    if (m_status)
        m_status->SetLabel(NotesPanelLabel(withText, m_specialPages.empty() ? CString() : GetSpecialNotesPanelText()));
    UpdatePartnershipNameBox();
}

void TXPropertySheet::UpdatePartnershipNameBox()
{
    if (m_status)
        m_status->SetPartnershipName(GetPartnershipName());
}

// Income shared with a spouse.

void TXPropertySheet::UpdateJointSpouseIncome()
{
    if (m_joint)
        m_joint->Load();
}

bool TXPropertySheet::ValidateJointSpouseIncome()
{
    if (!ShowJointSpouseIncome() || !m_joint)
        return true;
    const JointIncome panel = m_joint->Get();
    if (IsJointIncomeValid(&panel))
        return true;
    return Refuse(m_joint->ShareEdit(), LibraryText(IDS_SHARE_NOT_VALID));
}

int TXPropertySheet::JointSpouseIncomeDDX() const { return m_joint ? m_joint->Get().isJoint : 0; }

void TXPropertySheet::JointSpouseIncomeDDX(int isJoint)
{
    if (m_joint)
        m_joint->SetJoint(isJoint);
}

double TXPropertySheet::GetJointSpouseShare()
{
    return ShowJointSpouseIncome() && m_joint ? m_joint->Get().clientShare : 0.0;
}

int TXPropertySheet::GetJointSpouseView() { return ShowJointSpouseIncome() && m_joint ? m_joint->Get().view : 0; }

bool TXPropertySheet::IsJointSpouseIncome() const { return JointSpouseIncomeDDX() != 0; }
