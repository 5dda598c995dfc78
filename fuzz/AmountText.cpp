
#include "fuzz/Targets.h"
#include "Kiln/CAmt.h"
#include "MorvUt/money/Pence.h"

namespace Fuzz
{
namespace
{

using Kiln::CAmt;

void CheckPence(std::int64_t pence)
{
    constexpr std::int64_t kExactDoubles = 100'000'000'000'000; // from £1,000,000,000,000 on pence are not read right
    for (const int commas : {1, 0}) {                           // off at the end, as at first
        SetShowCommaSeparators(commas);
        CString text;
        CurrencyToCStr(pence, text);
        Require(text.IsEmpty() == (pence == 0), "only zero is blank");
        Require(CStrToCurrency(text) == pence && StrToCurrency(text) == pence, "pence come back from their text");
        if (pence > -kExactDoubles && pence < kExactDoubles)
            Require(PoundsToPence(text) == pence, "pence come back through the number");
        char buffer[32];
        ConvertLongPenceToStr(pence, buffer, sizeof buffer);
        Require(text.View() == buffer, "both ways to write pence are one");
        // A calculated amount that happens to be the marker's number reads as the marker, which is the same number.
        Require(ConvertStrToAuto(ConvertAutoToStr(pence, 0)) == pence, "an auto amount comes back from its text");
    }
}

} // namespace

void AmountText(std::string_view input)
{
    const CString text{input};
    CAmt amount(7); // what was there before must not matter
    const bool isAccepted = amount.Parse(text);
    Require(isAccepted == amount.IsValid(), "accepted means valid");
    Require(isAccepted == CAmt::WhyNotAmount(text).IsEmpty(), "a reason is given exactly for what is refused");
    Require(CStrToCurrency(text) == (isAccepted ? amount.GetPence() : 0), "as pence the same, or 0");
    CAmt cut;
    cut.Parse(text.GetString());
    Require(cut == amount || input.find('\0') != std::string_view::npos, "both overloads read alike");
    PoundsToPence(text.GetString()); // takes any text
    if (!isAccepted) {
        const bool isBlank = input.find_first_not_of(" \t\n\v\f\r") == std::string_view::npos;
        Require(amount == (isBlank ? CAmt() : CAmt::Invalid()), "null exactly for a blank text");
        return;
    }
    CAmt again;
    Require(again.Parse(amount.Format()) && again == amount, "the amount comes back from its text");
    CheckPence(amount.GetPence());
}

} // namespace Fuzz
