#pragma once

// The field in which a number with decimals is typed: a share in per cent, a rate.

#include <optional>

#include "Afx/windows/Edit.h"
#include "Kiln/Export.h"

namespace Kiln
{

/// `value` with up to `decimals` decimals (0 to 15), zeros at the end left out; empty for NaN and infinity.
KILN_API CString FormatNumber(double value, int decimals);
/// A number as users type it: blanks around it, commas between groups of three, a "%" behind it. Nothing for any other
/// text.
KILN_API std::optional<double> ParseNumber(const CString& text);

/// A field for a number. With the focus, all is selected; the number is rewritten when the field is left.
class KILN_API CDoubleEdit : public CEdit
{
    DECLARE_DYNCREATE(CDoubleEdit)

    void SetDecimals(int decimals) noexcept { m_decimals = decimals; }
    void SetDouble(double value) { SetWindowText(FormatNumber(value, m_decimals)); }
    /// Nothing when the field holds no number.
    std::optional<double> GetDouble() const { return ParseNumber(Text()); }

protected:
    void OnSetFocus(CWnd* oldFocus) override;
    void OnKillFocus(CWnd* newFocus) override;

private:
    int m_decimals = 2;
};

} // namespace Kiln
