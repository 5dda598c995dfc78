#pragma once

// The field in which a date is typed.

#include "Afx/windows/Edit.h"
#include "Kiln/CDate.h"

class CDataExchange;

namespace Kiln
{

/// For `CDateEdit::DDX`: an empty field is refused. Without it an empty field is the null date.
inline constexpr unsigned kDateRequired = 0x1;

/// How dates are shown in fields, grids and lists: 05/04/2024, or 04/05/2024 where the month comes first, so that
/// what is shown means the same day when it is typed; nothing when it is not valid.
KILN_API CString FormatDateShown(const CDate& date);

/// A field for a date, typed in any form that `CDate::ParseDate` takes and shown by FormatDateShown. A date that is
/// left is rewritten in that form, so that the user sees which year was taken.
class KILN_API CDateEdit : public CEdit
{
    DECLARE_DYNCREATE(CDateEdit)

    /// Empties the field for a date that is not valid.
    void SetDate(const CDate& date);
    /// The date in the field; null when it is empty or blank, invalid when it holds no date.
    CDate GetDate() const;
    /// Why what the field holds is no date, for the user; only where it is none.
    CString WhyNot() const { return StaysRefused() ? m_whyRefused : CDate::WhyNotDate(MeantText()); }

    /// The last day that a date can have, as a date of birth has today. A later date of which the year was typed in two
    /// digits, or not at all, is meant a century earlier; one with all four digits is taken as it stands. A date that
    /// is not valid lifts this.
    void SetLatest(const CDate& latest) noexcept
    {
        m_latest = latest;
        m_refused.Empty();
    }

    /// Shows `date`, or takes it over. A text that is no date is refused, and `date` left as it was: the user is told
    /// why, and the exchange fails with the text selected. `flags` is 0 or kDateRequired.
    void DDX(CDataExchange* exchange, CDate& date, unsigned flags);

    /// Takes what stands in the field as if it were left: by the field's own rule of the year.
    void TakeAsLeft() { OnKillFocus(nullptr); }

    /// Who gives the year of a date typed as day and month alone, in this and all date fields: see
    /// CDate::SetYearHandler. A field with a rule of its own keeps a YearHandlerScope while OnKillFocus runs.
    static CDate::YearHandler SetYearHandler(CDate::YearHandler handler) noexcept
    {
        return CDate::SetYearHandler(handler);
    }
    using YearHandlerScope = Kiln::YearHandlerScope;

protected:
    void OnKillFocus(CWnd* newFocus) override;

private:
    CString MeantText() const;
    bool StaysRefused() const;

    CDate m_latest;
    /// A text that was no date when the field was left, by the year handler of that moment, and why. It stays refused
    /// until it changes: another handler must not make it a date of another year.
    CString m_refused, m_whyRefused;
};

} // namespace Kiln
