#include "MorvUt/context/DateFormat.h"

#include "Brix/Records.h"
#include "Kiln/CDate.h"
#include "support/Practice.h"

namespace
{

class DateFormat : public ::Test::OnPractice
{
protected:
    ~DateFormat() override { Kiln::CDate::SetParseOrder(Kiln::CDate::ParseOrder::DayFirst); }

    static void Store(int format)
    {
        Brix::COptions options;
        if (!options.Open())
            options.AddNew();
        options.SetDateFormat(format);
        options.Update();
    }
    /// The month of a date typed as 05/04/2024.
    static int Month()
    {
        Kiln::CDate date;
        return date.ParseDate("05/04/2024") ? date.GetMonth() : 0;
    }
};

ON_BOTH_DATABASES(DateFormat);

} // namespace

TEST_P(DateFormat, OfThePracticeOrdersTypedDates)
{
    const ::Test::Case<int, int> rows[] = {
        {1, 5, "MM/DD/YY"},   {0, 4, "DD/MM/YY"},    {3, 5, "MMM DD YYYY"},
        {-1, 4, "no format"}, {2, 4, "DD MMM YYYY"}, {4, 4, "behind the last"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        Quarry::RemoveAllListeners();
        Kiln::CDate::SetParseOrder(row.out == 4 ? Kiln::CDate::ParseOrder::MonthFirst
                                                : Kiln::CDate::ParseOrder::DayFirst);
        Store(row.in);
        FollowDateFormat();
        EXPECT_EQ(Month(), row.out) << "when the practice is opened";
        {
            const Quarry::CTransaction cancelled;
            Store(row.out == 4 ? 1 : 0);
            EXPECT_EQ(Month(), 9 - row.out) << "when the option changes";
        }
        EXPECT_EQ(Month(), row.out) << "when that is rolled back";
    }
    Quarry::GetConnection().ExecuteDirect("UPDATE BRIXOptions SET nDateFormat = 1");
    EXPECT_EQ(Month(), 5) << "a statement";
    Brix::COptions options;
    options.Open();
    options.Delete();
    EXPECT_EQ(Month(), 4) << "no record";
}
