#include "Kiln/controls/AmtEdit.h"

#include "Afx/text/Ascii.h"
#include "Afx/windows/DataExchange.h"
#include "Afx/windows/MessageBox.h"

namespace Kiln
{
namespace
{

constexpr int kLongestText = 200; // room for a sum of several amounts
constexpr int kGroup = 3;

bool IsAutomaticText(const CString& text) noexcept { return text.GetAt(0) == 'A' || text.GetAt(0) == 'a'; }

/// Where the amount that begins at `from` ends: at the next plus or minus that follows a figure. A sign before any
/// figure belongs to the amount, and one in brackets too.
int EndOfTerm(const CString& text, int from) noexcept
{
    bool hasFigure = false;
    int depth = 0;
    for (int i = from; i < text.GetLength(); ++i) {
        const char c = text[i];
        depth += (c == '(') - (c == ')');
        if ((c == '+' || c == '-') && hasFigure && depth == 0) {
            int next = i + 1;
            while (Afx::IsBlank(text[next]))
                ++next;
            return next == text.GetLength() ? next : i; // "12-" is an amount with its sign behind
        }
        hasFigure |= Afx::IsDigit(c);
    }
    return text.GetLength();
}

} // namespace

CAmt ParseAmountSum(const CString& text)
{
    CAmt total;
    if (total.Parse(text) || total.IsNull())
        return total;
    int at = 0;
    bool minus = false;
    CAmt sum = CAmt::kZero;
    while (at < text.GetLength()) {
        const int end = EndOfTerm(text, at);
        CAmt term;
        if (!term.Parse(text.Mid(at, end - at)))
            return CAmt::Invalid();
        sum = minus ? sum - term : sum + term;
        if (end >= text.GetLength())
            return sum;
        minus = text[end] == '-';
        at = end + 1;
    }
    return CAmt::Invalid();
}

CAmt ParseAmountShown(const CString& typed)
{
    CString text = typed;
    text.Trim();
    const bool isAutomatic = IsAutomaticText(text);
    if (isAutomatic)
        text = text.CompareNoCase("AUTO") == 0 ? CString() : text.Mid(1);
    CAmt amount = ParseAmountSum(text);
    amount.SetAuto(isAutomatic);
    return amount;
}

CString FormatAmountShown(const CAmt& amount)
{
    CString text = amount.Format();
    const int first = text.GetAt(0) == '-';
    const int point = text.Find('.') < 0 ? text.GetLength() : text.Find('.');
    for (int i = point - kGroup; i > first; i -= kGroup)
        text.Insert(i, ',');
    if (amount.IsAuto())
        text.Insert(0, amount.IsValid() ? "A " : "A");
    return text;
}

IMPLEMENT_DYNCREATE(CAmtEdit, CEdit)

CAmtEdit::CAmtEdit() { LimitText(kLongestText); }

void CAmtEdit::SetAmt(const CAmt& amount) { SetWindowText(FormatAmountShown(amount)); }

CAmt CAmtEdit::GetAmt() const { return ParseAmountShown(Text()); }

CString CAmtEdit::GetPreview() const
{
    CAmt single;
    if (single.Parse(Text()) || IsAutomaticText(Text()))
        return {};
    const CAmt sum = ParseAmountSum(Text());
    return sum.IsValid() ? "= " + FormatAmountShown(sum) : CString();
}

void CAmtEdit::DDX(CDataExchange* exchange, CAmt& amount)
{
    if (!exchange->m_bSaveAndValidate) {
        SetAmt(amount);
        return;
    }
    const CAmt typed = GetAmt();
    if (typed.IsValid() || typed.IsNull()) {
        amount = typed;
        return;
    }
    exchange->PrepareEditCtrl(*this);
    AfxMessageBox(CAmt::WhyNotAmount(Text()));
    exchange->Fail();
}

void CAmtEdit::OnSetFocus(CWnd* oldFocus)
{
    SetSel(0, -1);
    CEdit::OnSetFocus(oldFocus);
}

void CAmtEdit::OnKillFocus(CWnd* newFocus)
{
    if (const CAmt amount = GetAmt(); amount.IsValid() && !IsReadOnly())
        SetAmt(amount);
    CEdit::OnKillFocus(newFocus);
}

} // namespace Kiln
