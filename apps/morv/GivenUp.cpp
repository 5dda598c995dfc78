#include "GivenUp.h"

#include <cstdio>

#include "Output.h"

namespace Morv
{
namespace
{

using HmrcApi::Absence;

constexpr GivenUp kGivenUp[] = {
    {Absence::Unreachable, "HMRC could not be reached for 3 clients in a row",
     "Check this computer's internet connection", Exit::Refused},
    {Absence::Overloaded, "HMRC could not serve 3 clients in a row", "Wait some minutes", Exit::Refused},
    {Absence::Busy, "another program was writing to the practice for 3 clients in a row", "Wait until it has finished",
     Exit::CannotOpen},
    {Absence::Maintenance, "HMRC's service is closed for maintenance", "Wait until it is open again", Exit::Refused},
    {Absence::NoAuthority, "HMRC's authority is missing or has ended", "Give it with morv hmrc authorise",
     Exit::Refused},
    {Absence::NotAllowed, "nothing may be fetched here", "See why above", Exit::Refused},
    {Absence::Unusable, "the practice cannot be read or written", "See that it can", Exit::CannotOpen},
    {Absence::Cancelled, "it was cancelled", "", Exit::Refused},
};

} // namespace

const GivenUp* FindGivenUp(Absence absence)
{
    for (const GivenUp& each : kGivenUp)
        if (each.absence == absence)
            return &each;
    return nullptr;
}

void TellGivenUp(const GivenUp& given, int left, const char* what, const char* next)
{
    const std::string remedy = *given.remedy ? std::string(given.remedy) + ", then give" : "Give";
    std::fprintf(stderr, "morv: stopped, because %s; %s %s. %s the same command again: it %s.\n", given.why,
                 (Counted(left, "client") + (left == 1 ? " was" : " were")).c_str(), what, remedy.c_str(), next);
}

} // namespace Morv
