#include "Cellar/Value.h"

#include <cmath>
#include <tuple>

#include "CellarTestSupport.h"

using Kiln::CAmt;
using Kiln::CDate;

TEST(Value, TakesNothingFromWhatIsNotValid)
{
    for (const Value& nothing : {Value(static_cast<const char*>(nullptr)), Value(CDate()), Value(CDate(2024, 2, 30)),
                                 Value(COleDateTime::Null()), Value(CAmt()), Value(CAmt::Invalid())})
        EXPECT_TRUE(nothing.IsNull());
    EXPECT_EQ(Value(CAmt::kZero).GetInteger(), 0);
    EXPECT_FALSE(Value(CAmt::kZero).IsNull()); // absent is not zero
    EXPECT_EQ(Value(CDate(2024, 4, 6)).View(), "2024-04-06");
    EXPECT_EQ(Value(COleDateTime(2024, 4, 6, 7, 8, 9, 10)).View(), "2024-04-06 07:08:09.010");
}

TEST(Value, KeepsTextsOfAnyLength)
{
    for (const std::size_t length : {0U, 1U, 24U, 25U, 10'000U}) {
        SCOPED_TRACE(length);
        const std::string text(length, 'x');
        Value value = text, copy = 1;
        copy = value;
        EXPECT_EQ(copy.View(), text);
        Value moved = std::move(copy);
        copy = moved; // a value that was moved from may be given another
        value = nullptr;
        EXPECT_TRUE(value.IsNull() && value.View().empty());
        value = std::move(moved);
        EXPECT_TRUE(value == copy && value.View() == text);
        EXPECT_NE(value, Value(text + "y"));
        EXPECT_NE(value, Value(Bytes(length, 'x'))) << "bytes are no text";
    }
}

TEST(ValueReading, NumbersFromWhateverTheDriverGave)
{
    // as an integer of 64 bits, of 32, as a real number
    const std::tuple<Value, std::int64_t, long, double, const char*> rows[] = {
        {{}, -1, -1, -1, "NULL"},
        {2147483648LL, 2147483648, -1, 2147483648.0, "beyond 32 bits"},
        {-2147483649LL, -2147483649, -1, -2147483649.0, "beyond 32 bits, below"},
        {3.0, 3, 3, 3, "real without a fraction"},
        {3.5, -1, -1, 3.5, "a fraction is no integer"},
        {1e300, -1, -1, 1e300, "beyond 64 bits"},
        {"42", 42, 42, 42, "text, as servers give sums"},
        {"-42.5", -1, -1, -42.5, "text with a fraction"},
        {"42 ", -1, -1, -1, "more than the number"},
        {"nan", -1, -1, -1, "what only the parser takes for a number"},
        {CAmt(12'5000), 12'5000, 12'5000, 12.5, "money"},
        {CDate(2024, 4, 6), -1, -1, -1, "a date"},
        {Bytes{'4'}, -1, -1, -1, "bytes"},
    };
    for (const auto& [value, wide, narrow, real, why] : rows) {
        SCOPED_TRACE(why);
        EXPECT_EQ(ToInt64(value, -1), wide);
        EXPECT_EQ(ToLong(value, -1), narrow);
        EXPECT_EQ(ToDouble(value, -1), real);
    }
    EXPECT_EQ(ToInt64(std::nan(""), -1), -1);
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
    for (const auto& row : rows)
        EXPECT_EQ(ToAmount(row.in), row.out) << row.why;
}

TEST(ValueReading, DatesAndDateTimesReadForEither)
{
    // the date-time in ISO form; empty: not valid
    const std::tuple<Value, CDate, const char*, const char*> rows[] = {
        {{}, CDate(), "", "NULL"},
        {"2024-04-06", CDate(2024, 4, 6), "2024-04-06 00:00:00.000", "a date"},
        {"2024-04-06 23:59:59.999", CDate(2024, 4, 6), "2024-04-06 23:59:59.999", "the day is not rounded up"},
        {"2024-04-06T01:02", CDate(2024, 4, 6), "2024-04-06 01:02:00.000", "T between"},
        {"1899-12-29 18:00:00", CDate(1899, 12, 29), "1899-12-29 18:00:00.000", "before day 0 of OLE dates"},
        {"06/04/2024", CDate::Invalid(), "", "as users write it"},
        {"", CDate::Invalid(), "", "empty text"},
        {45388, CDate::Invalid(), "", "a number is no date"},
    };
    for (const auto& [value, date, iso, why] : rows) {
        EXPECT_EQ(ToDate(value).FormatIso(), date.FormatIso()) << why;
        EXPECT_EQ(ToDate(value).GetStatus(), date.GetStatus()) << why;
        EXPECT_EQ(ToDateTime(value).FormatIso(), iso) << why;
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
