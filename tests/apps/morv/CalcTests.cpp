// calc: the rules at the prompt.

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "apps/morv/Program.h"
#include "support/TestSupport.h"

namespace
{

using namespace Test;

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
