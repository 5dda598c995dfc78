#include "MorvUt/taxyear/CurrentTaxYear.h"

#include "Afx/system/Application.h"
#include "MorvUt/taxyear/PFileYearOffsetter.h"
#include "MorvUt/taxyear/TaxYear.h"

namespace
{

constexpr char kSection[] = "Preferences";
constexpr char kRemember[] = "RememberYOA";
constexpr char kLastYear[] = "LastYOA";

constexpr short kEarliestRemembered = 13; // relative: 2003/04; older profiles come up in this year
constexpr short kRememberedEnd = 100;     // relative; from here on a remembered year is taken for damage

bool IsYearRemembered(CWinApp& app) { return app.GetProfileInt(kSection, kRemember, 0) != 0; }

/// The real year to begin with. A remembered year beyond the supported range is kept: a later version wrote it.
short FirstRealYear()
{
    CWinApp* const app = AfxGetApp();
    if (!app || !IsYearRemembered(*app))
        return kDefaultRealTaxYear;
    // The profile holds 32 bits, the year 16.
    const auto last = static_cast<short>(app->GetProfileInt(kSection, kLastYear, kEarliestRemembered));
    if (last >= kRememberedEnd)
        return kDefaultRealTaxYear;
    return ToRealTaxYear(last > kEarliestRemembered ? last : kEarliestRemembered);
}

[[gnu::noinline]] short Establish()
{
    const short realYear = FirstRealYear();
    CCurrentTaxYearSingleton::Instance().SetRealYear(realYear);
    return realYear;
}

} // namespace

short GetCurrentRealTaxYear()
{
    const short realYear = CCurrentTaxYearSingleton::Instance().GetRealYear();
    return realYear != 0 ? realYear : Establish();
}

short GetCurrentTaxYear() { return ToRelativeTaxYear(GetCurrentRealTaxYear()); }

void SetCurrentTaxYear(short relative)
{
    CCurrentTaxYearSingleton::Instance().SetRealYear(ToRealTaxYear(relative));
    CWinApp* const app = AfxGetApp();
    if (app && IsYearRemembered(*app))
        app->WriteProfileInt(kSection, kLastYear, relative);
}

short GetCurrentRealTaxYear_WithPFileYearOffset()
{
    return static_cast<short>(GetCurrentRealTaxYear() + GetPFileYearOffset());
}
