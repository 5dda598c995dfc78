#pragma once

// The field in which an amount of money is typed.

#include "Afx/windows/Edit.h"
#include "Kiln/CAmt.h"

class CDataExchange;

namespace Kiln
{

/// Amounts added up and taken away as they are typed into a field: "120+35.50", "1,000 - 250". A text that is one
/// amount is that amount. Invalid, as CAmt::Parse says of it, when a part is no amount; null for an empty or blank
/// text.
KILN_API CAmt ParseAmountSum(const CString& text);

/// The same of what may be typed for an amount that the system calculates: "A" in front of it, or alone, or "AUTO".
KILN_API CAmt ParseAmountShown(const CString& typed);

/// How amounts are shown in fields and grids: "1,234.56", with a minus in front; "A" and the amount for one that the
/// system has calculated; nothing when it is not valid.
KILN_API CString FormatAmountShown(const CAmt& amount);

/// A field for an amount. A sum may be typed; the amount that it makes is shown, for the user to see, before it is
/// taken (GetPreview), and takes the sum's place when the field is left. An automatic amount stands in the field with
/// an "A" in front; typing replaces it. With the focus, all is selected.
class KILN_API CAmtEdit : public CEdit
{
    DECLARE_DYNCREATE(CAmtEdit)
    CAmtEdit();

    /// Empties the field for an amount that is null or invalid, unless it is automatic.
    void SetAmt(const CAmt& amount);
    /// The amount in the field, automatic when it begins with "A"; null when the field is empty, invalid when it holds
    /// no amount.
    CAmt GetAmt() const;
    /// "= 155.50" while a sum stands in the field; otherwise empty.
    CString GetPreview() const;

    /// Shows `amount`, or takes it over. A text that is no amount is refused, and `amount` left as it was: the user is
    /// told why, and the exchange fails with the text selected.
    void DDX(CDataExchange* exchange, CAmt& amount);

protected:
    void OnSetFocus(CWnd* oldFocus) override;
    void OnKillFocus(CWnd* newFocus) override;
};

} // namespace Kiln
