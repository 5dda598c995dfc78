#include "hmrc-sandbox/Scenarios.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <vector>

namespace Sandbox
{

namespace
{

/// The numbers that are values of members, as they are written.
std::vector<std::string> Numbers(const std::string& text)
{
    std::vector<std::string> numbers;
    for (auto at = text.find(": "); at != std::string::npos; at = text.find(": ", at + 1))
        if (const auto end = text.find_first_not_of("-0123456789.", at + 2); end != at + 2)
            numbers.push_back(text.substr(at + 2, end - at - 2));
    return numbers;
}

} // namespace

TEST(PayeScenarios, HoldEveryGroupAndAmountsInPence)
{
    for (const Scenario& scenario : PayeScenarios()) {
        SCOPED_TRACE(scenario.name);
        const auto json = nlohmann::json::parse(scenario.body);
        for (const char* group :
             {"employments", "privatePensions", "taxableSocialSecurityBenefits", "taxFreeAllowances"})
            EXPECT_TRUE(json.at(group).is_array()) << group;
        for (const std::string& number : Numbers(scenario.body))
            EXPECT_EQ(number.find('.'), number.size() - 3) << number;
    }
}

TEST(PayeScenarios, MissingPayAndTaxLacksTheseFiguresAndNothingElse)
{
    const auto scenarios = PayeScenarios();
    const auto whole = nlohmann::json::parse(FindScenario(scenarios, "EVERYTHING")->body);
    const auto missing = nlohmann::json::parse(FindScenario(scenarios, "EVERYTHING_MISSING_PAY_AND_TAX")->body);
    std::set<std::string> removed;
    for (const auto& step : nlohmann::json::diff(whole, missing)) {
        EXPECT_EQ(step["op"], "remove");
        removed.insert(step["path"]);
    }
    const std::set<std::string> expected = {"/employments/0/taxablePayTotal",
                                            "/employments/0/taxTotal",
                                            "/employments/0/studentLoan",
                                            "/employments/0/companyBenefits/0/amount",
                                            "/employments/0/companyBenefits/1/amount",
                                            "/privatePensions/0/taxablePayTotal",
                                            "/privatePensions/0/taxTotal",
                                            "/statePension/grossAmount",
                                            "/statePension/lumpSum/taxablePayTotal",
                                            "/statePension/lumpSum/taxTotal"};
    EXPECT_EQ(removed, expected);
}

} // namespace Sandbox
