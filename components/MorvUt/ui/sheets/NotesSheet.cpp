#include "MorvUt/ui/sheets/NotesSheet.h"

#include "Afx/text/Numbers.h"
#include "Afx/windows/Button.h"
#include "Afx/windows/DataExchange.h"
#include "Afx/windows/MessageBox.h"
#include "MorvUt/res/layouts/Notes.h"
#include "MorvUt/res/Strings.h"
#include "MorvUt/taxyear/CurrentTaxYear.h"

IMPLEMENT_DYNAMIC(CNotesPage, TXPropertyPage)

CNotesPage::CNotesPage(const CString& caption, const CString& description, const CString& text)
    : TXPropertyPage(kNotesPageLayout), m_description(description), m_text(text)
{
    SetWindowText(caption);
}

bool CNotesPage::OnInitDialog()
{
    GetDlgItem(IDC_NOTES_DESCRIPTION)->SetWindowText(m_description);
    if (m_description.IsEmpty())
        m_edit.SetAccessibleName(Text());
    return TXPropertyPage::OnInitDialog();
}

void CNotesPage::DoDataExchange(CDataExchange* exchange)
{
    DDX_Control(exchange, IDC_NOTES_TEXT, m_edit);
    DDX_Text(exchange, IDC_NOTES_TEXT, m_text);
}

IMPLEMENT_DYNAMIC(CNotesAvoidancePage, TXPropertyPage)

BEGIN_MESSAGE_MAP(CNotesAvoidancePage, TXPropertyPage)
ON_BN_CLICKED(IDC_AVOIDANCE_HAS_YEAR, OnYearChoice)
ON_BN_CLICKED(IDC_AVOIDANCE_CURRENT_YEAR, OnYearChoice)
ON_BN_CLICKED(IDC_AVOIDANCE_OTHER_YEAR, OnYearChoice)
ON_EN_KILLFOCUS(IDC_AVOIDANCE_YEAR, OnYearLeft)
END_MESSAGE_MAP()

CNotesAvoidancePage::CNotesAvoidancePage(const CString& reference, const CString& notes, short year, int earliestYear,
                                         const CString& tooEarly)
    : TXPropertyPage(kAvoidancePageLayout), m_reference(reference), m_notes(notes), m_tooEarly(tooEarly), m_year(year),
      m_earliestYear(earliestYear)
{
    SetWindowText(LibraryText(IDS_NOTES_AVOIDANCE));
}

bool CNotesAvoidancePage::OnInitDialog()
{
    const bool setsFocus = TXPropertyPage::OnInitDialog();
    const short current = GetCurrentRealTaxYear();
    CString text;
    text.Format("%d", current);
    GetDlgItem(IDC_AVOIDANCE_CURRENT_YEAR)->SetWindowText(text);
    const bool isOther = m_year != 0 && m_year != current;
    static_cast<CButton*>(GetDlgItem(IDC_AVOIDANCE_HAS_YEAR))->SetCheck(m_year != 0);
    static_cast<CButton*>(GetDlgItem(IDC_AVOIDANCE_CURRENT_YEAR))->SetCheck(!isOther);
    static_cast<CButton*>(GetDlgItem(IDC_AVOIDANCE_OTHER_YEAR))->SetCheck(isOther);
    text.Format("%d", m_year);
    GetDlgItem(IDC_AVOIDANCE_YEAR)->SetWindowText(isOther ? text : CString());
    GetDlgItem(IDC_AVOIDANCE_YEAR)->SetAccessibleName(GetDlgItem(IDC_AVOIDANCE_OTHER_YEAR)->GetAccessibleName());
    OnYearChoice();
    return setsFocus;
}

void CNotesAvoidancePage::DoDataExchange(CDataExchange* exchange)
{
    DDX_Control(exchange, IDC_AVOIDANCE_NOTES, m_edit);
    DDX_Text(exchange, IDC_AVOIDANCE_REFERENCE, m_reference);
    DDX_Text(exchange, IDC_AVOIDANCE_NOTES, m_notes);
}

bool CNotesAvoidancePage::HasYear() const
{
    return static_cast<CButton*>(GetDlgItem(IDC_AVOIDANCE_HAS_YEAR))->GetCheck() != 0;
}

bool CNotesAvoidancePage::IsOtherYear() const
{
    return static_cast<CButton*>(GetDlgItem(IDC_AVOIDANCE_OTHER_YEAR))->GetCheck() != 0;
}

/// The year that is chosen or typed; 0 for a text that is none.
int CNotesAvoidancePage::TypedYear() const
{
    if (!IsOtherYear())
        return GetCurrentRealTaxYear();
    CString year = ExpandAvoidanceYear(GetDlgItem(IDC_AVOIDANCE_YEAR)->Text());
    return Afx::ParseWhole<short>(year.Trim().View()).value_or(0);
}

void CNotesAvoidancePage::OnYearChoice()
{
    for (const unsigned id : {IDC_AVOIDANCE_CURRENT_YEAR, IDC_AVOIDANCE_OTHER_YEAR})
        GetDlgItem(static_cast<int>(id))->EnableWindow(HasYear());
    GetDlgItem(IDC_AVOIDANCE_YEAR)->EnableWindow(HasYear() && IsOtherYear());
}

void CNotesAvoidancePage::OnYearLeft()
{
    CWnd* const edit = GetDlgItem(IDC_AVOIDANCE_YEAR);
    edit->SetWindowText(ExpandAvoidanceYear(edit->Text()));
}

bool CNotesAvoidancePage::OnKillActive()
{
    if (!UpdateData(true))
        return false;
    const std::optional<AvoidanceRefusal> refusal =
        CheckAvoidance({HasYear(), TypedYear(), m_reference}, m_earliestYear, m_tooEarly);
    if (refusal) {
        const bool isYear = refusal->field == AvoidanceField::Year && IsOtherYear();
        return Refuse(*GetDlgItem(isYear                                        ? IDC_AVOIDANCE_YEAR
                                  : refusal->field == AvoidanceField::Reference ? IDC_AVOIDANCE_REFERENCE
                                                                                : IDC_AVOIDANCE_CURRENT_YEAR),
                      refusal->message);
    }
    m_year = HasYear() ? static_cast<short>(TypedYear()) : short{0};
    return TXPropertyPage::OnKillActive();
}

IMPLEMENT_DYNAMIC(CNotesSheet, TXPropertySheet)

CNotesSheet::CNotesSheet(TXPropertySheet& owner, unsigned kinds, const std::vector<TXPropertyPage*>& special,
                         const Handling& handling)
    : TXPropertySheet(LibraryText(IDS_NOTES)), m_owner(owner), m_handling(handling), m_kinds(NotesPagesOf(kinds))
{
    if (!handling.description.IsEmpty())
        SetWindowText(LibraryText(IDS_NOTES) + " - " + handling.description);
    SetNoApply();
    const bool applies = handling.estimatesDoNotApply == 0;
    for (const NotesPageInfo& page : m_kinds) {
        CString reference, text;
        short year = 0;
        if (page.kind == NotesAvoidance) {
            owner.GetAvoidanceNotes(reference, text, year);
            CString tooEarly;
            owner.GetAlternateValidationYearErrorMessage(tooEarly);
            m_avoidance = std::make_unique<CNotesAvoidancePage>(reference, text, year,
                                                                owner.GetAvoidanceValidationYear(), tooEarly);
            m_notes.push_back(nullptr);
            AddPage(m_avoidance.get());
            continue;
        }
        owner.GetNotes(page.kind, text);
        m_notes.push_back(
            std::make_unique<CNotesPage>(LibraryText(page.caption), NotesDescription(page, applies), text));
        AddPage(m_notes.back().get());
    }
    for (TXPropertyPage* const page : special)
        AddPage(page);
}

CNotesSheet::~CNotesSheet() = default;

bool CNotesSheet::Run(NotesType first)
{
    SetActivePage(static_cast<int>(FirstNotesPage(m_kinds, first)));
    return DoModal() == IDOK;
}

void CNotesSheet::OnOK()
{
    const WindowRef here(this);
    TXPropertySheet::OnOK();
    if (here && WasAccepted())
        WriteBack();
}

void CNotesSheet::WriteBack()
{
    const bool applies = m_handling.estimatesDoNotApply == 0;
    for (std::size_t i = 0; i < m_kinds.size(); ++i)
        if (m_kinds[i].kind == NotesAvoidance)
            m_owner.SetAvoidanceNotes(m_avoidance->GetReference(), m_avoidance->GetNotes(), m_avoidance->GetYear());
        else if (IsNotesPageWritten(m_kinds[i], applies))
            m_owner.SetNotes(m_kinds[i].kind, m_notes[i]->GetNotes());
}
