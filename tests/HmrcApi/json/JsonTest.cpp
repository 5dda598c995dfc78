#include "HmrcApi/json/Json.h"

#include <clocale>

#include <gtest/gtest.h>

#include "support/Case.h"

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
    const auto json = ParseJson(R"({"b":1.10,"a":[18446744073709551616,-3,true],"c":"Caf\u00e9","d":null})");
    ASSERT_TRUE(json);
    EXPECT_EQ(json->names, (std::vector<std::string>{"b", "a", "c", "d"}));
    EXPECT_EQ(json->Find("b")->text, "1.10");
    const JsonValue& list = *json->Find("a");
    EXPECT_EQ(list.items[0].text, "18446744073709551616") << "beyond 64 bits";
    EXPECT_EQ(list.items[1].text, "-3");
    EXPECT_TRUE(list.items[2].boolean);
    EXPECT_EQ(json->Find("c")->text, "Café");
    EXPECT_EQ(json->Find("d"), nullptr) << "null is absent";
}

TEST(ParseJson, RefusesWhatIsAmbiguousOrNotJson)
{
    const ::Test::Case<std::string, bool> rows[] = {
        // out: a number is too large
        {"", false, "nothing"},
        {"{\"a\":1", false, "cut off"},
        {"{\"a\":1}{\"a\":1}", false, "two values"},
        {"{\"a\":1,\"b\":2,\"a\":3}", false, "two members of one name"},
        {"{\"a\":\"\xC3\x28\"}", false, "invalid UTF-8"},
        {"{\"a\":\"\\uD800\"}", false, "half a surrogate pair"},
        {"{\"a\":NaN}", false, "no number"},
        {"{\"a\":1e400}", true, "a number that nothing can hold"},
        {R"({"nino":"AA000001A" "secret")", false, "what it must not quote"},
        {Nested(33), false, "33 levels"},
        {std::string(100'000, '['), false, "very deep"},
        {Ones(200'000), false, "too many values, with the list itself"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        JsonProblem problem;
        EXPECT_FALSE(ParseJson(row.in, &problem));
        EXPECT_FALSE(problem.text.empty());
        EXPECT_EQ(problem.isNumberTooLarge, row.out);
        for (const char* secret : {"AA000001A", "secret"})
            EXPECT_EQ(problem.text.find(secret), std::string::npos) << problem.text;
    }
    EXPECT_TRUE(ParseJson(Nested(32))) << "the deepest that is allowed";
    EXPECT_TRUE(ParseJson(Ones(199'999))) << "the longest that is allowed";
}

TEST(ParseJson, KnowsNoLocale)
{
    const std::string before = std::setlocale(LC_NUMERIC, nullptr);
    if (!std::setlocale(LC_NUMERIC, "de_DE.UTF-8"))
        GTEST_SKIP() << "this machine has no locale with a decimal comma";
    const auto json = ParseJson("[1.25]");
    std::setlocale(LC_NUMERIC, before.c_str());
    ASSERT_TRUE(json);
    EXPECT_EQ(json->items[0].text, "1.25");
}
