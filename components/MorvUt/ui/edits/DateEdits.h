#pragma once

// Date fields that complete a date typed as day and month alone.

#include "Kiln/controls/DateEdit.h"
#include "MorvUt/Export.h"

/// Takes the year that puts the day in the current tax year.
class MORVUT_API CSystemDateEdit : public Kiln::CDateEdit
{
    DECLARE_DYNCREATE(CSystemDateEdit)

    /// The year handler while the field is left.
    static int MyTaxYearForDate(int day, int month);
    /// The handler that is put back.
    static Kiln::CDate::YearHandler m_pOldHandler;

protected:
    void OnKillFocus(CWnd* newFocus) override;
};

/// One of two fields whose dates follow each other: takes the year that puts the day on its side of the partner's date,
/// which may be the same day; without a date there, the year that puts it in the current tax year.
class MORVUT_API CPairedDateEdit : public Kiln::CDateEdit
{
    DECLARE_DYNAMIC(CPairedDateEdit)

    /// `after`: this date comes after the partner's. The partner may be constructed later.
    CPairedDateEdit(CPairedDateEdit& partner, bool after) noexcept : m_partner(partner), m_after(after) {}

    static int MyTaxYearForDate(int day, int month);
    static Kiln::CDate::YearHandler m_pOldHandler;

    /// The partner of the field that is being left; null while none is.
    static CPairedDateEdit* m_pStaticPairedEdit;
    static bool m_bStaticAfter;
    /// The partner's date is being read, which may ask for a year itself.
    static bool m_bAlreadyRunning;

protected:
    void OnKillFocus(CWnd* newFocus) override;

private:
    CPairedDateEdit& m_partner;
    bool m_after;
};

/// For underwriters at Lloyd's, whose accounts are of calendar years: the year before the current tax year's last.
/// Otherwise as CSystemDateEdit.
class MORVUT_API CUnderwritingDateEdit : public Kiln::CDateEdit
{
    DECLARE_DYNCREATE(CUnderwritingDateEdit)

    static int MyTaxYearForDate(int day, int month);
    static Kiln::CDate::YearHandler m_pOldHandler;

    bool m_bUnderwriting = true;

protected:
    void OnKillFocus(CWnd* newFocus) override;
};
