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
    for (const auto& [format, month, why] : ::Test::Table<int, int>("MorvUt/context/DateFormat.tsv")) {
        SCOPED_TRACE(why);
        Quarry::RemoveAllListeners();
        Kiln::CDate::SetParseOrder(month == 4 ? Kiln::CDate::ParseOrder::MonthFirst
                                              : Kiln::CDate::ParseOrder::DayFirst);
        Store(format);
        FollowDateFormat();
        EXPECT_EQ(Month(), month) << "when the practice is opened";
        {
            const Quarry::CTransaction cancelled;
            Store(month == 4 ? 1 : 0);
            EXPECT_EQ(Month(), 9 - month) << "when the option changes";
        }
        EXPECT_EQ(Month(), month) << "when that is rolled back";
    }
    Quarry::GetConnection().ExecuteDirect("UPDATE BRIXOptions SET nDateFormat = 1");
    EXPECT_EQ(Month(), 5) << "a statement";
    Brix::COptions options;
    options.Open();
    options.Delete();
    EXPECT_EQ(Month(), 4) << "no record";
}
