#include "Kiln/controls/DateEdit.h"

#include "Afx/text/Ascii.h"
#include "Afx/windows/DataExchange.h"
#include "Afx/windows/MessageBox.h"

namespace Kiln
{
namespace
{

/// Whether a text that is a date names all four digits of its year. Day and month have two digits at most, so only such
/// a year, alone or run together with them, makes a run of four or eight.
bool HasWholeYear(const CString& text) noexcept
{
    int run = 0;
    for (int i = 0; i <= text.GetLength(); ++i) { // the end mark ends the last run
        const char c = text.GetAt(i);
        if (Afx::IsDigit(c))
            ++run;
        else if (run == 4 || run == 8)
            return true;
        else
            run = 0;
    }
    return false;
}

/// The same day a hundred years before, in the form in which WhyNotDate can tell why there is none.
CString CenturyBefore(const CDate& date)
{
    CString text;
    text.Format("%04d-%02d-%02d", date.GetYear() - 100, date.GetMonth(), date.GetDay());
    return text;
}

} // namespace

CString FormatDateShown(const CDate& date)
{
    const bool monthFirst = CDate::GetParseOrder() == CDate::ParseOrder::MonthFirst;
    return date.Format(monthFirst ? "%m/%d/%Y" : "%d/%m/%Y");
}

IMPLEMENT_DYNCREATE(CDateEdit, CEdit)

void CDateEdit::SetDate(const CDate& date) { SetWindowText(FormatDateShown(date)); }

bool CDateEdit::StaysRefused() const { return !m_refused.IsEmpty() && Text() == m_refused; }

/// What was typed or, where that means the day a century earlier, that day.
CString CDateEdit::MeantText() const
{
    const CString text = Text();
    CDate date;
    const bool isTooLate = date.ParseDate(text) && date > m_latest; // never when there is no latest day
    return isTooLate && !HasWholeYear(text) ? CenturyBefore(date) : text;
}

CDate CDateEdit::GetDate() const
{
    if (StaysRefused())
        return CDate::Invalid();
    CDate date;
    date.ParseDate(MeantText());
    return date;
}

void CDateEdit::DDX(CDataExchange* exchange, CDate& date, unsigned flags)
{
    if (!exchange->m_bSaveAndValidate) {
        SetDate(date);
        return;
    }
    if (GetFocus() == this)
        TakeAsLeft(); // Enter saves without leaving the field: the year is found by the same rule
    const CDate typed = GetDate();
    const bool mayBeNull = (flags & kDateRequired) == 0;
    if (typed.IsValid() || (typed.IsNull() && mayBeNull)) {
        date = typed;
        return;
    }
    exchange->PrepareEditCtrl(*this);
    AfxMessageBox(WhyNot());
    exchange->Fail();
}

void CDateEdit::OnKillFocus(CWnd* newFocus)
{
    m_refused.Empty(); // the field is being left: the handler of now decides
    if (const CDate date = GetDate(); date.IsValid()) {
        SetDate(date);
    } else if (!date.IsNull()) {
        m_refused = Text();
        m_whyRefused = CDate::WhyNotDate(MeantText());
    }
    CEdit::OnKillFocus(newFocus);
}

} // namespace Kiln
