#include "hmrc-sandbox/Scenarios.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <regex>
#include <set>

namespace Sandbox
{

TEST(PayeScenarios, HoldEveryGroupAndAmountsInPence)
{
    for (const Scenario& scenario : PayeScenarios()) {
        SCOPED_TRACE(scenario.name);
        const auto json = nlohmann::json::parse(scenario.body);
        for (const char* group :
             {"employments", "privatePensions", "taxableSocialSecurityBenefits", "taxFreeAllowances"})
            EXPECT_TRUE(json.at(group).is_array()) << group;
        const std::string text = scenario.body;
        EXPECT_FALSE(std::regex_search(text, std::regex(R"(: -?[0-9]+(\.[0-9]?|\.[0-9]{3,})?[,\s}])")))
            << "an amount without two decimals";
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
