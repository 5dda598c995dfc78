#include "MorvUt/money/detail/PenceText.h"
#include "MorvUt/money/Pence.h"

using Detail::Magnitude;
using Detail::PenceMark;

CString ConvertAutoToStr(__int64 value, int blankAuto)
{
    if (value == kAutoMarker)
        return blankAuto ? "" : "AUTO";
    if (value == 0)
        return {};
    return Detail::PenceText(Magnitude(value), value < 0 ? PenceMark::Calculated : PenceMark::None).View();
}

__int64 ConvertStrToAuto(const CString& text)
{
    CString amount(text);
    amount.Remove(' ');
    amount.MakeUpper();
    if (amount == "AUTO" || amount == "A")
        return kAutoMarker;
    if (amount.GetAt(0) == 'A')
        return -CStrToCurrency(amount.Mid(1)); // an amount in pence is far from the ends of 64 bits
    return CStrToCurrency(amount);
}
