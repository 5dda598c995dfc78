#include <cstdio>

#include "MorvUt/MorvUt.h"

int main()
{
    // Tax year 2024 runs from 6 April 2023 to 5 April 2024.
    const TaxYear year(2024);
    std::printf("Tax year %s: %s to %s\n", year.Format().GetString(), year.GetStart().FormatIso().GetString(),
                year.GetEnd().FormatIso().GetString());
    std::printf("UTR 2234567890 is %s\n", IsValidUTR("2234567890") ? "well formed" : "mistyped");
    return 0;
}
