#include "HmrcApi/json/Json.h"

#include "HmrcApi/json/ExactAmount.h"
#include "support/Test.h"

using HmrcApi::ExactTenThousandths;
using HmrcApi::JsonProblem;
using HmrcApi::JsonValue;
using HmrcApi::ParseJson;

namespace
{

std::string Nested(std::size_t levels) { return std::string(levels, '[') + std::string(levels, ']'); }

/// `[1,1,1…]`
std::string Ones(std::size_t count)
{
    std::string list = "[1";
    for (std::size_t i = 1; i < count; ++i)
        list += ",1";
    return list + ']';
}

} // namespace

TEST(ParseJson, KeepsTheTextOfNumbersAndTheOrderOfMembers)
{
    const auto json = ParseJson(R"({"b":1.10,"a":[18446744073709551616,-3,true,1e400],"c":"Caf\u00e9 \" 7","d":null})");
    ASSERT_TRUE(json);
    EXPECT_EQ(json->names, (std::vector<std::string>{"b", "a", "c", "d"}));
    EXPECT_EQ(json->Find("b")->text, "1.10");
    const JsonValue& list = *json->Find("a");
    EXPECT_EQ(list.items[0].text, "18446744073709551616") << "beyond 64 bits";
    EXPECT_EQ(list.items[1].text, "-3");
    EXPECT_TRUE(list.items[2].boolean);
    EXPECT_EQ(list.items[3].text, "1e400") << "beyond binary floating point";
    EXPECT_EQ(json->Find("c")->text, "Café \" 7");
    EXPECT_EQ(json->Find("d"), nullptr) << "null is absent";
}

TEST(ParseJson, RefusesWhatIsAmbiguousOrNotJson)
{
    const ::Test::Row<std::string> rows[] = {
        {"", "nothing"},
        {"{\"a\":1", "cut off"},
        {"{\"a\":1}{\"a\":1}", "two values"},
        {"{\"a\":1,\"b\":2,\"a\":3}", "two members of one name"},
        {"{\"a\":\"\xC3\x28\"}", "invalid UTF-8"},
        {"{\"a\":\"\\uD800\"}", "half a surrogate pair"},
        {"{\"a\":NaN}", "no number"},
        {"[1.5.3]", "two numbers in one"},
        {"[01]", "a zero in front"},
        {"[1e]", "no exponent"},
        {"[-]", "a sign alone"},
        {std::string("{}\0", 3), "a zero byte behind the value"},
        {std::string("{}\0{\"a\":1}", 10), "another value behind a zero byte"},
        {R"({"nino":"AA000001A" "secret")", "what it must not quote"},
        {Nested(33), "33 levels"},
        {std::string(100'000, '['), "very deep"},
        {Ones(200'000), "too many values, with the list itself"},
    };
    for (const auto& [json, why] : rows) {
        SCOPED_TRACE(why);
        JsonProblem problem;
        EXPECT_FALSE(ParseJson(json, &problem));
        EXPECT_FALSE(problem.text.empty());
        for (const char* secret : {"AA000001A", "secret"})
            EXPECT_EQ(problem.text.find(secret), std::string::npos) << problem.text;
    }
    EXPECT_TRUE(ParseJson(Nested(32))) << "the deepest that is allowed";
    EXPECT_TRUE(ParseJson(Ones(199'999))) << "the longest that is allowed";
}

TEST(ExactTenThousandths, ReadsEveryFormOfAJsonNumberExactly)
{
    const ::Test::Case<const char*, std::int64_t> rows[] = {
        {"22551.05", 225510500, "pence"},
        {"44", 440000, "no decimals"},
        {"0.0001", 1, "the smallest step"},
        {"-12.5", -125000, "a refund"},
        {"-0", 0, "minus nothing"},
        {"0.07", 700, "no binary fraction"},
        {"1.5e2", 1500000, "exponent"},
        {"1e-4", 1, "the last exponent that fits"},
        {"1.00000000", 10000, "zeros beyond the fourth decimal"},
        {"100000e-9", 1, "zeros that an exponent pushes beyond it"},
        {"0.0e-999999999999", 0, "nothing, divided"},
        {"922337203685477.5807", INT64_MAX, "the largest amount"},
        {"-922337203685477.5808", INT64_MIN, "the smallest amount"},
        {"0.00009223372036854775807e19", 9223372036854775807, "many zeros in front"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(ExactTenThousandths(row.in), row.out) << row.why;
}

TEST(ExactTenThousandths, RefusesWhatItCannotKeep)
{
    const char* const texts[] = {// a fifth decimal
                                 "0.00001", "1.23456", "1e-5", "1e-999999999999",
                                 // too large
                                 "922337203685477.5808", "-922337203685477.5809", "1e15", "1e999999999999",
                                 "99999999999999999999",
                                 // no number of JSON
                                 "", "-", ".5", "5.", "01", "+1", "1e", "1e+", "1,5", "NaN", "0x10", " 1"};
    for (const char* text : texts)
        EXPECT_EQ(ExactTenThousandths(text), std::nullopt) << text;
}
