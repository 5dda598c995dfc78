#include "MorvUt/taxyear/YearTitles.h"

#include "Afx/text/BoundedCopy.h"
#include "MorvUt/taxyear/TaxYear.h"

namespace
{

/// `year` - 1 in four digits, `separator`, `year` in two. In 64 bits, so that no year overflows.
CString FourAndTwoDigits(int year, char separator)
{
    CString title;
    title.Format("%04lld%c%02d", static_cast<long long>(year) - 1, separator, year % 100);
    return title;
}

} // namespace

CString FormatYearString2Digit(int year)
{
    const int end = year % 100;
    CString title;
    title.Format("%02d-%02d", end == 0 ? 99 : end - 1, end);
    return title;
}

CString FormatYearString42Digit(int year) { return FourAndTwoDigits(year, '/'); }

CString FormatYearString42DigitWithHyphen(int year) { return FourAndTwoDigits(year, '-'); }

CString FormatYearString4Digit(int year)
{
    if (year % 100 != 0)
        return FourAndTwoDigits(year, '/');
    CString title;
    title.Format("%04lld/%04d", static_cast<long long>(year) - 1, year);
    return title;
}

void GetTaxYearTitle(short relative, char* buffer, unsigned size)
{
    Afx::BoundedCopy(buffer, size, FormatYearString42Digit(relative + kFirstRealTaxYear).View());
}
