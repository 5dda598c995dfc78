#include "HmrcApi/answers/Retry.h"

#include "Afx/time/Clock.h"
#include "support/Test.h"

using namespace HmrcApi;

TEST(RetryWait, GrowsAndHonoursRetryAfterUpToAMinute)
{
    Afx::Clock::Set([] { return Afx::ToUnixMilliseconds({2024, 3, 1, 12, 0, 0, 0}); });
    const ::Test::Row<unsigned, const char*, unsigned, unsigned> rows[] = {
        // most 0: no further try
        {1, "", 500, 625, "first"},
        {3, "", 2000, 2500, "third"},
        {1, "5", 5000, 5000, "seconds"},
        {3, "1", 2000, 2500, "ours is longer"},
        {1, "60", 60000, 60000, "the longest"},
        {1, "61", 0, 0, "too long"},
        {1, "99999999999999999999", 0, 0, "beyond any number"},
        {1, "soon", 500, 625, "no number"},
        {1, "-70", 500, 625, "negative"},
        {1, "70 s", 500, 625, "a unit"},
        {1, "Fri, 01 Mar 2024 12:00:07 GMT", 7000, 7000, "a date"},
        {1, "Fri, 01 Mar 2024 12:01:00 GMT", 60000, 60000, "the longest date"},
        {1, "Fri, 01 Mar 2024 12:01:01 GMT", 0, 0, "a date too far"},
        {1, "Wed, 21 Oct 2015 07:28:00 GMT", 500, 625, "a past date"},
        {1, "Wed, 21 Xxx 2035 07:28:00 GMT", 500, 625, "no month"},
        {1, "Wed, 21 Oct 2035 27:28:00 GMT", 500, 625, "no hour"},
        {1, "Wed, 21-Oct-2035 07:28:00 GMT", 500, 625, "another form"},
    };
    for (const auto& [done, retryAfter, least, most, why] : rows) {
        const unsigned wait = RetryWait(done, retryAfter).value_or(0);
        EXPECT_TRUE(wait >= least && wait <= most) << wait << ": " << why;
        EXPECT_EQ(TryAgainText(retryAfter).empty(), most > 0) << why;
    }
    const std::pair<const char*, const char*> asked[] = {
        {"3541", "after %02d:%02d"}, {"86341", "after %02d:%02d"}, {"86400", "after %02d:%02d on %02d/%02d/%04d"}};
    for (const auto& [seconds, form] : asked) {
        const std::int64_t minutes = (std::stoll(seconds) + 59) / 60;
        const auto when = Afx::FromUnixMilliseconds(Afx::ToUnixMilliseconds(Afx::Clock::Local()) + minutes * 60'000);
        char text[64];
        std::snprintf(text, sizeof text, form, when.hour, when.minute, when.day, when.month, when.year);
        EXPECT_EQ(TryAgainText(seconds), text) << "local time, in whole minutes";
    }
}
