#include "HmrcApi/json/Json.h"

#include <clocale>

#include <gtest/gtest.h>

using HmrcApi::JsonProblem;
using HmrcApi::JsonValue;
using HmrcApi::ParseJson;

namespace
{

std::string Nested(std::size_t levels) { return std::string(levels, '[') + std::string(levels, ']'); }

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
    const struct
    {
        std::string text;
        const char* why;
    } rows[] = {
        {"", "nothing"},
        {"{\"a\":1", "cut off"},
        {"{\"a\":1}{\"a\":1}", "two values"},
        {"{\"a\":1,\"b\":2,\"a\":3}", "two members of one name"},
        {"{\"a\":\"\xC3\x28\"}", "invalid UTF-8"},
        {"{\"a\":\"\\uD800\"}", "half a surrogate pair"},
        {"{\"a\":NaN}", "no number"},
        {Nested(33), "33 levels"},
        {std::string(100'000, '['), "very deep"},
        {'[' + std::string(200'000, '1').replace(1, 199'999, 199'999, ',') + ']', "commas alone"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        JsonProblem problem;
        EXPECT_FALSE(ParseJson(row.text, &problem));
        EXPECT_FALSE(problem.text.empty());
        EXPECT_FALSE(problem.isNumberTooLarge);
    }
    EXPECT_TRUE(ParseJson(Nested(32))) << "the deepest that is allowed";
}

TEST(ParseJson, TellsTooManyValuesAndANumberThatNothingCanHold)
{
    std::string text = "[0";
    for (int i = 0; i < 200'000; ++i)
        text += ",0";
    JsonProblem problem;
    EXPECT_FALSE(ParseJson(text + ']', &problem));
    EXPECT_EQ(problem.text, "too many values");
    EXPECT_FALSE(ParseJson(R"({"a":1e400})", &problem));
    EXPECT_TRUE(problem.isNumberTooLarge);
}

TEST(ParseJson, DoesNotQuoteTheTextInItsProblem)
{
    JsonProblem problem;
    EXPECT_FALSE(ParseJson(R"({"nino":"AA000001A" "secret")", &problem));
    EXPECT_EQ(problem.text.find("AA000001A"), std::string::npos);
    EXPECT_EQ(problem.text.find("secret"), std::string::npos);
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
