// What screens ask without a window: countries with their rates, a split in amounts and per cent, a new row.
// usage: screens FILE YEAR

#include <cstdlib>
#include <iostream>

#include "Example.h"

namespace
{

/// The limit of the credit for foreign tax on a dividend.
void ShowCredit(const char* abbreviation, const Kiln::CDate& paid)
{
    double limit = 0; // per cent
    if (!TXCountryComboData::GetCountryAbbrDTADividendRate(abbreviation, paid, limit))
        std::cout << abbreviation << ": no such country\n";
    else
        std::cout << abbreviation << ": " << limit << " %, of "
                  << TXCountryComboData::GetCountryAbbrNumberOfDTAs(abbreviation) << " sets of rates\n";
}

void ShowCountries()
{
    ShowCredit("FRA", Kiln::CDate(2018, 1, 15));
    ShowCredit("FRA", Kiln::CDate(2004, 1, 15));
    ShowCredit("gsy", Kiln::CDate());
    CString abbreviation, currency, currencyAbbreviation;
    if (TXCountryComboData::GetCountryDataCI("croatia", abbreviation, currency, currencyAbbreviation))
        std::cout << abbreviation << ' ' << currency << ' ' << currencyAbbreviation << '\n';
}

void ShowSplit()
{
    const Kiln::CAmt income = Kiln::CAmt::FromPence(100'00);
    std::vector<Kiln::CAmt> amounts(3, Kiln::CAmt::FromPence(33'33));
    std::cout << "left: " << ShownRemainder(income, amounts).Format() << '\n';
    amounts.back() = Kiln::CAmt::FromPence(33'34);
    auto shares = AmountsToPercents(amounts, income);
    for (const PercentShare& share : shares)
        std::cout << FormatPercentUnits(share.units) << '\n';
    std::cout << "left: " << FormatPercentUnits(PercentRemainder(shares)) << '\n';
    shares[0].units = shares[1].units = shares[2].units = kUnitsOfAll / 3;
    PercentsToAmounts(shares, income, amounts);
    std::cout << "left: " << FormatPercentUnits(PercentRemainder(shares)) << " %, £"
              << ShownRemainder(income, amounts).Format() << '\n';
}

void ShowNewRow()
{
    const NewRowGrid grid{true, true, 1, 10};
    const NewRowCell entered[] = {{kColumnRequired, false, false, "15/01/2018"}, {0, false, true, "A20.00"}};
    const NewRowCell automatic[] = {{0, false, false, ""}, {0, false, true, "A20.00"}};
    std::cout << "new row: " << IsNewRowDue(grid, entered) << ", " << IsNewRowDue(grid, automatic) << '\n';
}

void ShowProgress()
{
    int seconds = SecondsToGo(1000, 20, 100).value_or(0); // a fifth was done in 1,000 seconds
    std::cout << CLongProcess::FormatTimeRemaining(seconds) << '\n';
    CLongProcess::RoundSecondsToGo(seconds);
    std::cout << CLongProcess::FormatTimeRemaining(seconds) << '\n';
}

int Work(const std::string& path, short year)
{
    if (const std::string problem = OpenPractice(path, "alice"); !problem.empty()) {
        std::cerr << problem << '\n';
        return 1;
    }
    SetCurrentTaxYear(ToRelativeTaxYear(year));
    ShowCountries();
    ShowSplit();
    ShowNewRow();
    ShowProgress();
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    return RunExample([&] {
        return argc == 3 ? Work(argv[1], static_cast<short>(std::atoi(argv[2]))) : Usage("usage: screens FILE YEAR");
    });
}
