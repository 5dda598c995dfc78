#include <cstdio>
#include <limits>

#include "Afx/text/CString.h"
#include "support/Test.h"

namespace
{

template<class... Args>
std::string Formatted(const char* format, const Args&... args)
{
    CString text;
    text.Format(format, args...);
    return text.Str();
}

/// The C library knows these placeholders too, and its locale here is "C".
template<class T>
void ExpectAsPrintf(std::initializer_list<const char*> formats, std::initializer_list<T> values)
{
    char expected[1024];
    for (const char* const format : formats)
        for (const T value : values) {
            std::snprintf(expected, sizeof expected, format, value);
            EXPECT_EQ(Formatted(format, value), expected) << format;
        }
}

// What a literal is checked by while it is compiled.
using Afx::Detail::FitsFormat;
static_assert(FitsFormat<>("100%% and no placeholder"));
static_assert(FitsFormat<int, unsigned char, long long, bool, std::size_t>("%d %-5u %I64d %i %lX"));
static_assert(FitsFormat<char[5], const char*, std::string, std::string_view, CString>("%s%5s%-5s%.2s%s"));
static_assert(FitsFormat<double, float, char, int>("%+010.2f %g %c %c"));
static_assert(!FitsFormat<>("%d") && !FitsFormat<int>("%d %d"), "an argument is missing");
static_assert(!FitsFormat<int>("") && !FitsFormat<int, int>("%d%%"), "an argument is left");
static_assert(!FitsFormat<CString>("%d") && !FitsFormat<char>("%d") && !FitsFormat<double>("%u"), "no whole number");
static_assert(!FitsFormat<int>("%s") && !FitsFormat<char>("%s"), "no text");
static_assert(!FitsFormat<int>("%f") && !FitsFormat<double>("%c") && !FitsFormat<CString>("%c"), "another kind");
static_assert(!FitsFormat<int>("%n") && !FitsFormat<int>("%*d") && !FitsFormat<int>("%ll") && !FitsFormat<int>("%"),
              "no placeholder");
static_assert(!FitsFormat<int>("%513d") && FitsFormat<int>("%512.512d"), "wider than may be");

constexpr std::int64_t kMin64 = std::numeric_limits<std::int64_t>::min();

} // namespace

TEST(Format, AgreesWithPrintf)
{
    ExpectAsPrintf<int>(
        {"%d", "%5d", "%-5d|", "%05d", "%+d", "% d", "%+05d", "%-05d|", "%.3d", "%8.3d", "%08.3d", "%.0d", "%i", "%02d",
         "%09d", "%1d", "%010d", "%+.0d"},
        {0, 1, -1, 9, 10, 99, 100, 12345, -12345, 99999, 100000, 999999999, 2147483647, -2147483647 - 1});
    ExpectAsPrintf<unsigned>({"%u", "%x", "%X", "%08x", "%-10X|", "%.4x"}, {0u, 1u, 0xABCDEFu, 4294967295u});
    ExpectAsPrintf<double>(
        {"%f", "%.2f", "%15.2f", "%-10.1f|", "%010.2f", "%+.0f", "% f", "%g", "%.3g", "%.0g", "%12g"},
        {0.0, -0.0, 0.125, 0.5, 1.5, 2.5, 1234.565, -0.005, 1e15, 1e300, 1e-9, 1e100, 100.0, 1e-5, 0.0001, 123456.0,
         1234567.0, -1.0 / 3});
    EXPECT_EQ(Formatted("%05.1f", std::numeric_limits<double>::infinity()), "  inf") << "no zeros before a word";
}

TEST(Format, TakesAnyWholeNumberThatFits)
{
    EXPECT_EQ(Formatted("%d", std::int64_t{2147483647}), "2147483647");
    EXPECT_EQ(Formatted("%d", 7u), "7");
    EXPECT_EQ(Formatted("%u", 7), "7");
    EXPECT_EQ(Formatted("%ld", 7), "7");
    EXPECT_EQ(Formatted("%I64d", kMin64), "-9223372036854775808");
    EXPECT_EQ(Formatted("%lld.%02I64d", std::int64_t{-12}, std::int64_t{5}), "-12.05");
    EXPECT_EQ(Formatted("%I64u", std::numeric_limits<std::uint64_t>::max()), "18446744073709551615");
}

TEST(Format, WritesTextsAndCharacters)
{
    EXPECT_EQ(Formatted("%s|%5s|%-5s|", "a", std::string("bc"), CString("d")), "a|   bc|d    |");
    EXPECT_EQ(Formatted("%.2s", "abc"), "ab");
    EXPECT_EQ(Formatted("%.2s", "aé"), "a") << "never cuts a character";
    EXPECT_EQ(Formatted("%c%c%3c", 'a', 98, 'c'), "ab  c");
    EXPECT_EQ(Formatted("%s", static_cast<const char*>(nullptr)), "(null)");
    EXPECT_EQ(Formatted("100%%"), "100%");
    const std::string large(1000, 'x');
    EXPECT_EQ(Formatted("<%s>%d", large, 1), "<" + large + ">1") << "more than the buffer holds";
}

TEST(Format, RefusesWhatDoesNotFit)
{
    const auto expect = [](const char* says, const char* format, const auto&... args) {
        const auto message = ::Test::MessageOf<CInvalidArgException>([&] { Formatted(format, args...); });
        EXPECT_NE(message.value_or("").find(says), std::string::npos) << format << ": " << message.value_or("taken");
    };
    expect("Placeholder 2 (%s)", "%d and %s", 1, 2);
    expect("takes a whole number", "%d", "x");
    expect("takes a whole number", "%d", 1.5);
    expect("Placeholder 1 (%5.2f)", "%5.2f", 1);
    expect("too small", "%d", std::int64_t{2147483648});
    expect("too small", "%02d", std::int64_t{-2147483649});
    expect("too small", "%I64d", std::numeric_limits<std::uint64_t>::max());
    expect("no negative", "%u", -1);
    expect("0 to 127", "%c", 128);
    expect("has no argument", "%d %d", 1);
    expect("takes 1 arguments, not 2", "%d", 1, 2);
    for (const char* const cut : {"5%", "%ll"})
        expect("not complete", cut);
    expect("unknown", "%n", 1);
    expect("unknown", "%*d", 1, 2); // a width from an argument
    for (const char* const wide : {"%513d", "%99999999999d"})
        expect("wider", wide, 1);
}

TEST(Format, MayTakeItsOwnTextAndLeavesItAloneWhenItFails)
{
    CString text("inner");
    text.Format("<%s>", text);
    text.AppendFormat("%s", text);
    EXPECT_EQ(text, "<inner><inner>");
    char buffer[] = "<%s>"; // not a literal: checked when it is filled
    text.Format(buffer, "x");
    EXPECT_EQ(text, "<x>");
    EXPECT_TRUE(::Test::MessageOf<CInvalidArgException>([&] { text.Format(buffer, 1); }));
    const char array[] = "%d";
    text.Format(+array, 1);
    EXPECT_EQ(text, "1");
    std::string out = "before";
    const Afx::FormatArg args[] = {std::string_view("x")};
    EXPECT_TRUE(::Test::MessageOf<CInvalidArgException>(
        [&] { Afx::AppendFormat(out, std::string(500, 'y') + "%d", args, 1); }));
    EXPECT_EQ(out, "before");
}
