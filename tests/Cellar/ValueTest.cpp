#include "Cellar/Value.h"

#include <cmath>
#include <limits>

#include "CellarTestSupport.h"
#include "support/Case.h"

namespace Cellar
{
namespace
{

using Kiln::CAmt;
using Kiln::CDate;

TEST(Value, TakesNothingFromWhatIsNotValid)
{
    EXPECT_TRUE(Value(static_cast<const char*>(nullptr)).IsNull());
    EXPECT_TRUE(Value(CDate()).IsNull());
    EXPECT_TRUE(Value(CDate(2024, 2, 30)).IsNull());
    EXPECT_TRUE(Value(COleDateTime::Null()).IsNull());
    EXPECT_TRUE(Value(CAmt()).IsNull());
    EXPECT_TRUE(Value(CAmt::Invalid()).IsNull());
    EXPECT_EQ(Value(CAmt::kZero).integer, 0);
    EXPECT_FALSE(Value(CAmt::kZero).IsNull()); // absent is not zero
    EXPECT_EQ(Value(CDate(2024, 4, 6)).text, "2024-04-06");
    EXPECT_EQ(Value(COleDateTime(2024, 4, 6, 7, 8, 9, 10)).text, "2024-04-06 07:08:09.010");
}

TEST(ValueReading, NumbersFromWhateverTheDriverGave)
{
    const struct
    {
        Value value;
        std::int64_t wide;
        long narrow;
        double real;
        const char* why;
    } rows[] = {
        {{}, -1, -1, -1, "NULL"},
        {2147483648LL, 2147483648, -1, 2147483648.0, "beyond 32 bits"},
        {-2147483649LL, -2147483649, -1, -2147483649.0, "beyond 32 bits, below"},
        {3.0, 3, 3, 3, "real without a fraction"},
        {3.5, -1, -1, 3.5, "a fraction is no integer"},
        {1e300, -1, -1, 1e300, "beyond 64 bits"},
        {std::numeric_limits<double>::quiet_NaN(), -1, -1, std::nan(""), "not a number"},
        {"42", 42, 42, 42, "text, as servers give sums"},
        {"-42.5", -1, -1, -42.5, "text with a fraction"},
        {"42 ", -1, -1, -1, "more than the number"},
        {"nan", -1, -1, -1, "what only the parser takes for a number"},
        {CAmt(12'5000), 12'5000, 12'5000, 12.5, "money"},
        {CDate(2024, 4, 6), -1, -1, -1, "a date"},
        {Bytes{'4'}, -1, -1, -1, "bytes"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        EXPECT_EQ(ToInt64(row.value, -1), row.wide);
        EXPECT_EQ(ToLong(row.value, -1), row.narrow);
        if (std::isnan(row.real))
            EXPECT_TRUE(std::isnan(ToDouble(row.value, -1)));
        else
            EXPECT_EQ(ToDouble(row.value, -1), row.real);
    }
}

TEST(ValueReading, Amounts)
{
    const ::Test::Case<Value, CAmt> rows[] = {
        {{}, CAmt(), "NULL is no amount"},
        {0, CAmt::kZero, "zero is one"},
        {125000, CAmt(125000), "ten-thousandths, as the embedded database holds them"},
        {CAmt(-1), CAmt(-1), "money"},
        {125000.0, CAmt(125000), "ten-thousandths that another program wrote as real"},
        {12.5, CAmt::Invalid(), "a fraction of a ten-thousandth"},
        {"12.5000", CAmt(125000), "pounds, as servers write money"},
        {"twelve", CAmt::Invalid(), "no amount"},
        {Bytes{1}, CAmt::Invalid(), "bytes"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        EXPECT_EQ(ToAmount(row.in), row.out);
    }
}

TEST(ValueReading, DatesAndDateTimesReadForEither)
{
    const struct
    {
        Value value;
        CDate date;
        const char* iso; // of the date-time; empty: not valid
        const char* why;
    } rows[] = {
        {{}, CDate(), "", "NULL"},
        {"2024-04-06", CDate(2024, 4, 6), "2024-04-06 00:00:00.000", "a date"},
        {"2024-04-06 23:59:59.999", CDate(2024, 4, 6), "2024-04-06 23:59:59.999", "the day is not rounded up"},
        {"2024-04-06T01:02", CDate(2024, 4, 6), "2024-04-06 01:02:00.000", "T between"},
        {"1899-12-29 18:00:00", CDate(1899, 12, 29), "1899-12-29 18:00:00.000", "before day 0 of OLE dates"},
        {"06/04/2024", CDate::Invalid(), "", "as users write it"},
        {"", CDate::Invalid(), "", "empty text"},
        {45388, CDate::Invalid(), "", "a number is no date"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        EXPECT_EQ(ToDate(row.value).FormatIso(), row.date.FormatIso());
        EXPECT_EQ(ToDate(row.value).GetStatus(), row.date.GetStatus());
        EXPECT_EQ(ToDateTime(row.value).FormatIso(), row.iso);
    }
    EXPECT_EQ(ToDateTime({}).GetStatus(), COleDateTime::null);
    EXPECT_EQ(ToDateTime("x").GetStatus(), COleDateTime::invalid);
}

TEST(ValueReading, Texts)
{
    EXPECT_EQ(ToText({}), "");
    EXPECT_EQ(ToText(-5), "-5");
    EXPECT_EQ(ToText(0.1), "0.1");
    EXPECT_EQ(ToText(CAmt(-125000)), "-12.50");
    EXPECT_EQ(ToText(CDate(2024, 4, 6)), "2024-04-06");
    EXPECT_EQ(ToText(Bytes{0xC3, 0xA9}), "\xC3\xA9");
    EXPECT_EQ(ToText(Bytes{0xFF}), ""); // no text
    EXPECT_EQ(ToBytes("ab"), (Bytes{'a', 'b'}));
    EXPECT_EQ(ToBytes(12), Bytes{});
}

} // namespace
} // namespace Cellar
