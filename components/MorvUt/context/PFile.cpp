#include "MorvUt/context/PFile.h"

#include "MorvUt/taxyear/PFileYearOffsetter.h"

namespace
{

constexpr short kEarliestClosestYear = 2021;

Brix::CPFile Open(short year)
{
    Brix::CPFile list;
    list.Open({{Brix::CPFile::kYear, year}});
    return list;
}

short RealYear(short year, bool relative) noexcept
{
    return relative ? static_cast<short>(year + GetPFileYearOffset()) : year;
}

} // namespace

Brix::CPFile GetPFileForYear(short year, bool relative) { return Open(RealYear(year, relative)); }

Brix::CPFile GetClosestPFileForYear(short year, bool relative)
{
    short tried = RealYear(year, relative);
    Brix::CPFile list = Open(tried);
    while (list.IsEOL() && tried > kEarliestClosestYear)
        list = Open(--tried);
    return list;
}
