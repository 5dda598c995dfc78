// Tax years and dates: the two numberings, titles, dates as users type them, years with bounds of their own.

#include <iostream>

#include "MorvUt/MorvUt.h"

namespace
{

void ShowTaxYear()
{
    const TaxYear year(2024);
    std::cout << year.Format() << ": " << year.GetStart().FormatIso() << " to " << year.GetEnd().FormatIso()
              << ", relative year " << year.GetRelativeTaxYear() << ", after " << (year - 1).Format() << '\n';
}

void ShowTitles()
{
    for (const int year : {1999, 2000, 2001, 2024})
        std::cout << year << "  " << FormatYearString2Digit(year) << "  " << FormatYearString42Digit(year) << "  "
                  << FormatYearString42DigitWithHyphen(year) << "  " << FormatYearString4Digit(year) << '\n';
}

void ShowTypedDate(const char* text)
{
    Kiln::CDate date;
    if (!date.ParseDate(text))
        std::cout << text << ": " << Kiln::CDate::WhyNotDate(text) << '\n';
    else
        std::cout << text << ": " << date.FormatIso() << ", tax year " << GetTaxYear(date) << '\n';
}

class SchoolYear : public SplitYear
{
public:
    SchoolYear() = default;
    explicit SchoolYear(short yearEnd) : SplitYear(yearEnd) {}
    explicit SchoolYear(const Kiln::CDate& date) { Create(date); }

    Kiln::DatePeriod GetYearPeriod(short yearEnd) const override
    {
        return {Kiln::CDate(yearEnd - 1, 9, 1), Kiln::CDate(yearEnd, 8, 31)};
    }
};

void Show(const char* what, const SchoolYear& year)
{
    std::cout << what << ": ";
    if (year.IsValid())
        std::cout << year.Format() << " from " << year.GetStart().FormatIso() << '\n';
    else
        std::cout << (year.IsNull() ? "null" : "invalid") << '\n';
}

void ShowSchoolYears()
{
    Show("no argument", SchoolYear());
    Show("2024", SchoolYear(2024));
    Show("2100", SchoolYear(2100)); // numbers run from 1802 to 2099
    Show("31 August 2024", SchoolYear(Kiln::CDate(2024, 8, 31)));
    Show("1 September 2024", SchoolYear(Kiln::CDate(2024, 9, 1)));
    Show("null date", SchoolYear(Kiln::CDate()));
}

} // namespace

int main()
{
    ShowTaxYear();
    ShowTitles();
    for (const char* const text : {"5/4/24", "6.4.2024", "5 Apr 2024", "050424", "31/4/2024", "4/13/2024"})
        ShowTypedDate(text);
    ShowSchoolYears();
    return 0;
}
