// calc: the rules at the prompt.

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <sstream>

#include "apps/morv/Program.h"
#include "support/Case.h"
#include "support/TestSupport.h"

namespace
{

using namespace Test;

TEST(Calc, AnswersInTheUnitsOfTheList)
{
    const ::Test::Case<std::string, const char*> rows[] = {
        {"GetTaxYear 2024-04-06", "2025", "year"},
        {"GetTaxYear null", "-1", "null date"},
        {"GetTaxYearStart 2024", "\"2023-04-06\"", "date"},
        {"GetTaxYearStart 50", "null", "no such date"},
        {"TaxYear::GetPeriod 2024", R"({"from":"2023-04-06","to":"2024-04-05"})", "period"},
        {"validXDate 1900-02-29", "true", "a record that is no date elsewhere"},
        {"DtoxL 5 4 2024", "20240405", "long date"},
        {"ParseDateStr ''", R"({"day":0,"month":0,"year":0})", "empty text"},
        {"CalculateFilingDate 2024-12-01 sa100 --year 2024", "\"2025-02-28\"", "option behind"},
        {"CurrencyToCStr -123456", "\"-1234.56\"", "negative number"},
        {"CurrencyToCStr -123456 1", "\"-1,234.56\"", "argument that may be left out"},
        {"GrossFromNet 8000 20", "10000", "pence"},
        {"JointSpousePercentOf 1001 50 1", "501", "the odd penny"},
        {"JointSpousePercentOf null 50 1", "null", "no amount"},
        {"DecimalToCurrency -12.3456", "-1234", "decimal"},
        {"DecimalToCAmt 79228162514264337593543950335", "null", "largest decimal, too large"},
        {"Allocate 500 300", R"({"allocatedPence":300,"availablePence":0})", "two results"},
        {"HexToBinary::Convert 00FF", "[0,255]", "bytes"},
        {"getTaxYear 2024-04-06", "2025", "capitals do not count"},
        {"CStrToCurrency [5]", "0", "brackets are no list"},
        {"FormatSortCode [5,6]", "\"[5-,6-]\"", "nor is a comma"},
        {"FormatSortCode ++", "\"++--\"", "signs"},
        {"GrossFromNet 500 -.5", "498", "no option"},
        {"FormatSortCode --ab=", "\"--ab=\"", "an empty value of no option"},
        {"FormatSortCode client", "\"cl-ie-nt\"", "no command"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(MorvJson("calc " + row.in)["result"], Json::parse(row.out)) << row.why;
    EXPECT_EQ(RunMorv("--year 2024 calc FormatSortCode --quiet -- --json").out, "--json\n") << "behind -- all is text";
    EXPECT_EQ(RunMorv("calc FormatSortCode -- -").out, "-\n") << "also what else reads lines";
    EXPECT_EQ(RunMorv("calc --user= GetMaxTaxYear").exit, 2) << "an option's empty value stays one";
}

TEST(Calc, RefusesBadArgumentsInOneLine)
{
    const ::Test::Case<std::string, const char*> rows[] = {
        {"", "no rule", "nothing"},
        {"GetTaxYaer", "no rule \"GetTaxYaer\"; did you mean GetTaxYear?", "unknown rule"},
        {"QQ123456C", "no rule of that name.", "may be an identifier"},
        {"--list GetTaxYear", "--list takes no rule", "one or the other"},
        {"DtoxL 256 1 2024", "0 to 255", "beyond the record's field"},
        {"GetTaxYear", "takes 1 argument, not 0", "too few"},
        {"GetTaxYear 2024-01-01 1", "takes 1 argument, not 2", "too many"},
        {"CurrencyToCStr", "takes 1 to 2 arguments", "too few where one may be left out"},
        {"GetTaxYear 2023-02-29", "argument 1 (date)", "no such day"},
        {"GetTaxYear -024-01-01", "argument 1 (date)", "no ISO date"},
        {"GetTaxYearStart 32768", "argument 1 (year)", "beyond 16 bits"},
        {"GrossFromNet 80.00 20", "a whole number of pence", "pounds"},
        {"GrossFromNet 9223372036854775808 20", "argument 1 (net)", "beyond 64 bits"},
        {"GrossFromNet 8000 nan", "argument 2 (rate)", "no number"},
        {"DecimalToCAmt 79228162514264337593543950336", "argument 1 (value)", "beyond 96 bits"},
        {"DecimalToCAmt 1.2.3", "argument 1 (value)", "two points"},
        {"arrDateFormatStrings 4", "0, 1, 2 or 3", "the end of the table"},
        {"HexToBinary::Convert ab", "hexadecimal", "refused by the rule itself"},
    };
    for (const auto& row : rows) {
        const Ended ended = RunMorv("calc " + row.in);
        EXPECT_EQ(ended.err.find("123456C"), std::string::npos) << row.why;
        EXPECT_EQ(ended.exit, 2) << row.why;
        EXPECT_NE(ended.err.find(row.out), std::string::npos) << row.why << ": " << ended.err;
        EXPECT_EQ(std::count(ended.err.begin(), ended.err.end(), '\n'), 1) << row.why;
        EXPECT_EQ(ended.out, "") << row.why;
    }
}

TEST(Calc, ListsEveryRuleOnce)
{
    std::set<std::string> names;
    const Json list = MorvJson("calc --list");
    for (const Json& rule : list) {
        EXPECT_TRUE(names.insert(rule["rule"]).second) << rule;
        EXPECT_NE(rule["result"], "") << rule;
    }
    EXPECT_GT(list.size(), 80u);
}

TEST(Calc, KeepsAPersonsIdentifierOffTheOutput)
{
    for (const char* line : {"IsValidNINumber QQ123456C", "IsValidNINumber -QQ123456C", "WhyNotNINumber QQ123456C",
                             "IsValidUTR 1234567890", "WhyNotUTR 1234567890"}) {
        const Ended ended = RunMorv(std::string("calc --json ") + line);
        EXPECT_EQ(ended.exit, 0);
        EXPECT_EQ((ended.out + ended.err).find("23456"), std::string::npos) << line;
    }
}

TEST(Calc, AnswersALineWithALine)
{
    const std::string lines = WriteFile("lines", "8000 20\nx 20\n\n -1\t20 \r\n\"2\" 20\n2 \"20\n");
    const Ended ended = RunMorv("calc GrossFromNet - --json", lines);
    EXPECT_EQ(ended.exit, 2) << "there were bad lines";
    EXPECT_EQ(std::count(ended.err.begin(), ended.err.end(), '\n'), 3) << ended.err;
    std::istringstream stream(ended.out);
    std::vector<Json> results; // null for an error
    for (std::string line; std::getline(stream, line);) {
        const Json document = Json::parse(line);
        results.push_back(document.contains("error") ? Json() : document["result"]);
    }
    EXPECT_EQ(Json(results), Json::parse("[10000, null, null, 0, 3, null]"));
    EXPECT_EQ(RunMorv("calc GetTaxYear -", TempDir()).exit, 2) << "a folder cannot be read";
}

TEST(Calc, KeepsControlCharactersOffTheTerminal)
{
    const std::string lines =
        WriteFile("control", "\xEF\xBB\xBF\033[2J1\n\"a\rb\033\xC2\x9B\" 1\n" + std::string("2234567890\0", 11));
    const Ended ended = RunMorv("calc FormatSortCode -", lines);
    EXPECT_EQ(ended.out, " [-2J-1\n") << "the mark of the file's encoding is passed over";
    EXPECT_EQ(std::count(ended.err.begin(), ended.err.end(), '\n'), 2) << "one line each: " << ended.err;
    for (const char c : {'\033', '\r', '\0', '\x9B'})
        EXPECT_EQ(ended.err.find(c), std::string::npos) << int{c};
    EXPECT_NE(ended.err.find("line 3: FormatSortCode: argument 1 (code)"), std::string::npos)
        << "a zero byte: " << ended.err;
}

} // namespace
