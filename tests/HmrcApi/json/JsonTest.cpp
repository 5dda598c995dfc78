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
    auto rows = ::Test::Table<std::string>("HmrcApi/json/Json.tsv");
    rows.insert(rows.end(), {{std::string("{}\0", 3), "a zero byte behind the value"},
                             {std::string("{}\0{\"a\":1}", 10), "another value behind a zero byte"},
                             {Nested(33), "33 levels"},
                             {std::string(100'000, '['), "very deep"},
                             {Ones(200'000), "too many values, with the list itself"}});
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

TEST(ExactTenThousandths, ReadsEveryFormOfAJsonNumberExactlyOrNone)
{
    for (const auto& [in, out, why] : ::Test::Table<const char*, std::optional<std::int64_t>>("HmrcApi/json/Json.tsv"))
        EXPECT_EQ(ExactTenThousandths(in), out) << in << ": " << why;
}
