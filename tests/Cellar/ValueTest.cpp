#include "Cellar/Value.h"

#include <iomanip>
#include <sstream>

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

namespace
{

/// "text 42", "bytes 42", "integer 42", "real 42", "money 42" (ten-thousandths), "date 2024-04-06", "null".
Value Given(const std::string& line)
{
    const std::size_t blank = std::min(line.find(' '), line.size());
    const std::string kind = line.substr(0, blank),
                      text = ::Test::Unescaped(line.substr(std::min(blank + 1, line.size())));
    if (kind == "text")
        return text;
    if (kind == "bytes")
        return Bytes(text.begin(), text.end());
    if (kind == "real")
        return std::strtod(text.c_str(), nullptr);
    if (kind == "null")
        return {};
    if (kind == "date")
        return ToDate(text);
    const long long number = std::stoll(text);
    return kind == "money" ? Value(CAmt(number)) : Value(number);
}

/// "-" is null, "?" is not valid.
std::string Shown(bool isNull, const std::string& text) { return isNull ? "-" : text.empty() ? "?" : text; }

} // namespace

/// Numbers are -1 where there is none.
TEST(Value, IsReadAsTold)
{
    ::Test::ExpectTranscript("Cellar/stories/values.txt", [](const std::string& line) {
        const Value value = Given(line);
        const CAmt amount = ToAmount(value);
        const CDate date = ToDate(value);
        const COleDateTime moment = ToDateTime(value);
        std::ostringstream shown;
        shown << std::setprecision(15) << "numbers " << ToInt64(value, -1) << ' ' << ToLong(value, -1) << ' '
              << ToDouble(value, -1) << ", amount "
              << Shown(amount.IsNull(), amount.IsValid() ? std::to_string(amount.GetValue()) : "") << ", date "
              << Shown(date.IsNull(), date.FormatIso().Str()) << ", moment "
              << Shown(moment.GetStatus() == COleDateTime::null, moment.FormatIso().Str()) << ", text '"
              << ToText(value).Str() << "', bytes";
        for (const std::uint8_t byte : ToBytes(value))
            shown << ' ' << static_cast<int>(byte);
        return shown.str() + '\n';
    });
}
