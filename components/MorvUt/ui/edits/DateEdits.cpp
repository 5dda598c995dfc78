#include "MorvUt/ui/edits/DateEdits.h"

#include "MorvUt/taxyear/CurrentTaxYear.h"
#include "MorvUt/ui/edits/YearRules.h"

using Kiln::CDateEdit;

namespace
{

/// Installs a class's handler, keeps the one before in its member, and puts it back however the scope ends.
class HandlerScope
{
public:
    HandlerScope(Kiln::CDate::YearHandler handler, Kiln::CDate::YearHandler& before) : m_outer(before), m_before(before)
    {
        m_before = CDateEdit::SetYearHandler(handler);
    }
    HandlerScope(const HandlerScope&) = delete;
    HandlerScope& operator=(const HandlerScope&) = delete;
    ~HandlerScope()
    {
        CDateEdit::SetYearHandler(m_before);
        m_before = m_outer; // scopes nest when leaving one field moves the focus through another
    }

private:
    Kiln::CDate::YearHandler m_outer;
    Kiln::CDate::YearHandler& m_before;
};

/// Sets a value while it lives.
template<class T>
class Kept
{
public:
    Kept(T& place, T value) : m_place(place), m_before(place) { place = value; }
    Kept(const Kept&) = delete;
    Kept& operator=(const Kept&) = delete;
    ~Kept() { m_place = m_before; }

private:
    T& m_place;
    T m_before;
};

bool g_isUnderwriting = true; // of the field that is being left

} // namespace

IMPLEMENT_DYNCREATE(CSystemDateEdit, CDateEdit)

Kiln::CDate::YearHandler CSystemDateEdit::m_pOldHandler = nullptr;

int CSystemDateEdit::MyTaxYearForDate(int day, int month)
{
    return YearWithinTaxYear(day, month, GetCurrentRealTaxYear());
}

void CSystemDateEdit::OnKillFocus(CWnd* newFocus)
{
    const HandlerScope scope(&MyTaxYearForDate, m_pOldHandler);
    CDateEdit::OnKillFocus(newFocus);
}

IMPLEMENT_DYNAMIC(CPairedDateEdit, CDateEdit)

Kiln::CDate::YearHandler CPairedDateEdit::m_pOldHandler = nullptr;
CPairedDateEdit* CPairedDateEdit::m_pStaticPairedEdit = nullptr;
bool CPairedDateEdit::m_bStaticAfter = false;
bool CPairedDateEdit::m_bAlreadyRunning = false;

int CPairedDateEdit::MyTaxYearForDate(int day, int month)
{
    Kiln::CDate partner;
    if (m_pStaticPairedEdit && !m_bAlreadyRunning) {
        const Kept running(m_bAlreadyRunning, true);
        partner = m_pStaticPairedEdit->GetDate();
    }
    return YearBeside(day, month, partner, m_bStaticAfter, GetCurrentRealTaxYear());
}

void CPairedDateEdit::OnKillFocus(CWnd* newFocus)
{
    const Kept partner(m_pStaticPairedEdit, &m_partner);
    const Kept after(m_bStaticAfter, m_after);
    const HandlerScope scope(&MyTaxYearForDate, m_pOldHandler);
    CDateEdit::OnKillFocus(newFocus);
}

IMPLEMENT_DYNCREATE(CUnderwritingDateEdit, CDateEdit)

Kiln::CDate::YearHandler CUnderwritingDateEdit::m_pOldHandler = nullptr;

int CUnderwritingDateEdit::MyTaxYearForDate(int day, int month)
{
    return UnderwritingYear(day, month, GetCurrentRealTaxYear(), g_isUnderwriting);
}

void CUnderwritingDateEdit::OnKillFocus(CWnd* newFocus)
{
    const Kept underwriting(g_isUnderwriting, m_bUnderwriting);
    const HandlerScope scope(&MyTaxYearForDate, m_pOldHandler);
    CDateEdit::OnKillFocus(newFocus);
}
