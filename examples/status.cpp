// What every client and partnership of a practice is in a tax year, with the reasons.
// usage: status FILE YEAR

#include <cstdlib>
#include <iostream>

#include "Example.h"

namespace
{

/// What a list of clients shows: read set by set, whatever the number of clients.
void ShowAll(short year)
{
    for (const ClientStatus& status : StatusOfAll(year)) {
        std::cout << (status.IsPartnership() ? "partnership " : "client ") << status.GetId() << ": " << status.Word();
        if (status.Is(StatusQuestion::Trust))
            std::cout << " (" << status.ReasonText(StatusQuestion::Estate) << ')';
        std::cout << '\n';
    }
}

/// What a screen asks when a client is opened.
void ShowOne(long client, short year)
{
    std::cout << "dead or dormant: " << IsClientDeadDormant(client, false, year)
              << ", inactive: " << IsClientInactiveInYear(client, false, year)
              << ", finalised: " << IsTaxReturnFinalisedForYear(client, year) << '\n';
    const StatusAnswer answer = StatusOf(client, false, year).AnswerOf(StatusQuestion::DeadOrDormant);
    if (answer.reason == StatusReason::InactivityPeriod)
        std::cout << "by period " << answer.recordId << ", from " << answer.from.FormatIso() << '\n';
}

int Work(const std::string& path, short year)
{
    if (const std::string problem = OpenPractice(path, "alice"); !problem.empty()) {
        std::cerr << problem << '\n';
        return 1;
    }
    ShowAll(year);
    ShowOne(1, year);
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    return RunExample([&] {
        return argc == 3 ? Work(argv[1], static_cast<short>(std::atoi(argv[2]))) : Usage("usage: status FILE YEAR");
    });
}
