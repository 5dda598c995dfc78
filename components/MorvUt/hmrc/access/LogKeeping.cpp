#include "MorvUt/hmrc/access/LogKeeping.h"

#include <algorithm>
#include <cstdint>
#include <iostream>

#include "Afx/time/Clock.h"
#include "Cellar/BufferedRowList.h"
#include "Kiln/CDate.h"
#include "MorvUt/users/locks/AsideIfPossible.h"
#include "Quarry/Session.h"

namespace HmrcApi
{
namespace
{

constexpr long kAtOnce = 1000; // lines; a practice that logs more between two days' fetches catches up by and by

// Lines stand in the order of their ids. One whose time is still to come (a clock that was wrong) is passed over.
constexpr char kOldest[] =
    "SELECT lID, dtLogged FROM MTDLog WHERE lID = (SELECT MIN(lID) FROM MTDLog WHERE dtLogged <= %t)";
constexpr char kRemove[] = "DELETE FROM MTDLog WHERE lID < %ld AND dtLogged < %t";

COleDateTime DaysBefore(const COleDateTime& moment, int days)
{
    constexpr std::int64_t kDay = 24 * 60 * 60 * std::int64_t{1000}; // milliseconds
    return COleDateTime(Afx::FromUnixMilliseconds(moment.ToMilliseconds() - days * kDay));
}

/// There is one, and it is to go.
bool IsBefore(const Cellar::CBufferedRowList& line, const COleDateTime& end)
{
    const COleDateTime logged = line.IsEOL() ? COleDateTime::Null() : line.GetDateTime("dtLogged");
    return logged.GetStatus() == COleDateTime::valid && logged.ToMilliseconds() < end.ToMilliseconds();
}

/// The day and practice of the last time; a fetch works on one thread.
struct
{
    const Cellar::CConnection* practice = nullptr;
    Kiln::CDate day;
} g_last;

} // namespace

int ThinLog(int days, const COleDateTime& now)
{
    if (days <= 0)
        return 0;
    Cellar::CConnection& connection = Quarry::GetConnection();
    const Quarry::CIgnoreDirectSQL ignore;
    const AsideIfPossible aside(connection);
    const COleDateTime end = DaysBefore(now, days);
    const Cellar::CBufferedRowList oldest(connection, kOldest, now);
    if (!IsBefore(oldest, end)) // looked up by the key, and as a rule all there is to do
        return 0;
    const long last = std::min<long>(oldest.GetLong("lID"), INT32_MAX - kAtOnce) + kAtOnce;
    return static_cast<int>(connection.ExecuteDirectf(kRemove, last, end));
}

void ThinLogOnceADay(int days)
{
    const Cellar::CConnection* const practice = &Quarry::GetConnection();
    const Kiln::CDate today = Kiln::CDate::Today();
    if (g_last.practice == practice && g_last.day.IsSameDay(today))
        return;
    g_last = {practice, today};
    try {
        ThinLog(days, COleDateTime(Afx::Clock::Local()));
    } catch (const Cellar::DatabaseError& error) {
        std::cerr << "HMRC log not thinned: " << error.GetReason() << '\n';
    }
}

} // namespace HmrcApi
