// Amounts and rates: typed texts, pence, grossing up, shares, a year's worth.

#include <iostream>

#include "MorvUt/MorvUt.h"

namespace
{

void ShowTypedAmount(const char* text)
{
    Kiln::CAmt amount;
    if (amount.Parse(text))
        std::cout << text << " is " << amount.GetPence() << " pence, shown as " << amount.Format() << '\n';
    else
        std::cout << text << ": " << Kiln::CAmt::WhyNotAmount(text) << '\n';
}

void ShowPence(__int64 pence)
{
    CString plain, separated;
    CurrencyToCStr(pence, plain);
    SetShowCommaSeparators(1); // for the whole process
    CurrencyToCStr(pence, separated);
    SetShowCommaSeparators(0);
    std::cout << pence << ": \"" << plain << "\", \"" << separated << "\"\n";
}

void ShowGrossingUp()
{
    const Kiln::CAmt net = Kiln::CAmt::FromPence(80'00);
    const Kiln::CAmt gross = GrossFromNet(net, 20.0), tax = TaxFromNet(net, 20.0);
    std::cout << net.Format() << " net at 20 %: gross " << gross.Format() << ", tax " << tax.Format() << '\n';
    for (const __int64 pence : {1, 2, 3})
        std::cout << pence << "p net: " << GrossFromNet(pence, 20.0) << "p gross, " << TaxFromNet(pence, 20.0)
                  << "p tax\n";
    std::cout << "at 100 %: " << (GrossFromNet(net, 100.0).IsValid() ? "an amount" : "no gross") << '\n';
}

void ShowShares()
{
    const Kiln::CAmt joint = Kiln::CAmt::FromPence(10'01);
    std::cout << joint.Format() << " at 50 %: " << JointSpousePercentOf(joint, 50.0, 0).Format()
              << ", and with the remainder " << JointSpousePercentOf(joint, 50.0, 1).Format() << '\n';
}

void ShowYearsWorth()
{
    struct Earned
    {
        __int64 pence;
        Kiln::CDate from, to;
    };
    const Earned rows[] = {
        {1000'00, {2014, 4, 6}, {2014, 6, 17}}, // 73 of 365 days
        {1'00, {2016, 2, 29}, {2016, 2, 29}},   // 1 of 366
        {548'00, {2013, 4, 6}, {2014, 10, 5}},  // 548 of 365
        {549'00, {2015, 4, 6}, {2016, 10, 5}},  // 549 of 366: leap days on both sides
        {1'00, {2012, 2, 29}, {2012, 3, 1}},    // 1 of 365: before 2012/13 the leap day is not counted
    };
    for (const Earned& row : rows)
        std::cout << row.from.FormatIso() << " to " << row.to.FormatIso() << ": " << row.pence << " is "
                  << AnnualiseAmount(row.pence, row.from, row.to) << " a year\n";
}

} // namespace

int main()
{
    for (const char* const text : {"£1,234.56", "(5)", ".5", "1,23", "1.23456"})
        ShowTypedAmount(text);
    for (const __int64 pence : {0, -5, 99999, -123456})
        ShowPence(pence);
    ShowGrossingUp();
    ShowShares();
    ShowYearsWorth();
    return 0;
}
