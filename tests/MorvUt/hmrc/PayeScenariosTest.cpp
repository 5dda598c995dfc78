// HMRC's published examples, from the answer to the schedules, with every figure written out.

#include <cstring>
#include <regex>

#include "MorvUt/hmrc/HmrcTest.h"

namespace
{

using Type = HmrcApi::IEndpointOverride::ResponseType;

struct Scenario
{
    Type type;
    const char* why;
    HmrcApi::StagedCounts counts;
    const char* staged;
    int employments, pensionsAndBenefits; // schedules made
    const char* schedules;
};

const Scenario kScenarios[] = {
    {Type::Everything,
     "everything",
     {18, 0, 0},
     "123/AB456|Company XYZ|123/AB456|A123456|-|2017-08-20|22551.05|900.38|284.85\n"
     "+ 31 CarBenefit 44.00\n"
     "+ 29 CarFuelBenefit 99.00\n"
     "+ 30 MedicalInsurance 64.00\n"
     "456/AB456|Company ABC|456/AB456|00191048716|2017-09-05|-|8650.20|224.99|-\n"
     "+ 54 VoucherAndCreditCards 80.00 forecast\n"
     "+ 8 EmployerProvidedServices 125.00 forecast\n"
     "+ 38 Accommodation 375.00 forecast\n"
     "0 State Pension||-|3910.01|-\n"
     "0 State Pension lump sum||2018-03-05|10520.80|2520.60\n"
     "1 321/AB456|Pension Provider XYZ|-|10150.62|2563.18\n"
     "1 654/AB456|Pension Provider ABC|2015-03-04|3874.42|0.00\n"
     "2 475/BB00987||2017-05-01|2010.10|502.02\n"
     "3 892/BA500||2017-08-14|800.64|200.16\n"
     "4 267/ESA500||2018-03-20|456.11|118.04\n"
     "allowance 56 FlatRateJobExpenses 200.00\n"
     "allowance 57 ProfessionalSubscriptions 100.00\n"
     "allowance 101 EarlierYearsAdjustment 155.00\n",
     2,
     7,
     "1 Company XYZ|123/AB456|A123456|-|2017-08-20|22551.05|900.38|284.85\n"
     "+ 70 44.00\n"
     "+ 80 99.00\n"
     "+ 120 64.00\n"
     "2 Company ABC|456/AB456|00191048716|2017-09-05|-|8650.20|224.99|-\n"
     "+ 40 80.00 estimate\n"
     "+ 50 375.00 estimate\n"
     "+ 140 125.00 estimate\n"
     "1 200/1050 Pension Provider XYZ|Pension Provider XYZ|321/AB456|-|10150.62|2563.18\n"
     "2 200/1050 Pension Provider ABC|Pension Provider ABC|654/AB456|2015-03-04|3874.42|0.00\n"
     "3 300/1090 ||475/BB00987|2017-05-01|2010.10|502.02\n"
     "4 300/1140 Taxable Incapacity Benefit||892/BA500|2017-08-14|800.64|200.16\n"
     "5 300/1140 Employment and Support Allowance||267/ESA500|2018-03-20|456.11|118.04\n"
     "6 200/1060 State Pension|||-|3910.01|-\n"
     "7 200/1060 State Pension lump sum|||2018-03-05|10520.80|2520.60\n"},
    {Type::EverythingMissingPayAndTax,
     "figures that HMRC leaves out are null, not 0",
     {18, 0, 0},
     nullptr, // as everything, but for what HMRC leaves out
     2,
     7,
     nullptr},
    {Type::Employed,
     "one employment",
     {4, 0, 0},
     "789/AB456|Company PQR|789/AB456|B987654|2015-07-08|-|33100.82|7502.22|788.11\n"
     "+ 42 Entertaining 284.00\n"
     "+ 51 EmployerProvidedProfessionalSubscription 82.00\n"
     "+ 49 PersonalIncidentExpenses 71.00\n",
     1,
     0,
     "1 Company PQR|789/AB456|B987654|2015-07-08|-|33100.82|7502.22|788.11\n"
     "+ 160 82.00\n"
     "+ 220 284.00\n"
     "+ 260 71.00\n"},
    {Type::Employed2,
     "two periods with one employer",
     {5, 0, 0},
     "789/AB456 C123456|Company EFG|789/AB456|C123456|2017-12-01|-|8946.28|198.04|-\n"
     "789/AB456 C654321|Company EFG|789/AB456|C654321|2014-09-08|2017-06-30|10502.81|205.21|-\n"
     "allowance 56 FlatRateJobExpenses 250.00\n"
     "allowance 57 ProfessionalSubscriptions 120.00\n"
     "allowance 101 EarlierYearsAdjustment 101.00\n",
     2,
     0,
     "1 Company EFG|789/AB456|C123456|2017-12-01|-|8946.28|198.04|-\n"
     "2 Company EFG|789/AB456|C654321|2014-09-08|2017-06-30|10502.81|205.21|-\n"},
    {Type::Pensioner,
     "private and state pension",
     {3, 0, 0},
     "0 State Pension||-|4650.67|-\n"
     "0 State Pension lump sum||2012-06-01|30680.55|7521.12\n"
     "1 678/AB456|Pension Provider GHI|2015-01-01|35987.23|8062.11\n",
     0,
     3,
     "1 200/1050 Pension Provider GHI|Pension Provider GHI|678/AB456|2015-01-01|35987.23|8062.11\n"
     "2 200/1060 State Pension|||-|4650.67|-\n"
     "3 200/1060 State Pension lump sum|||2012-06-01|30680.55|7521.12\n"},
    {Type::Jobseeker,
     "an employment, then the allowance",
     {2, 0, 0},
     "567/AB456|Company JKL|567/AB456|Q345678|2016-01-25|2017-06-11|4560.95|1125.01|-\n"
     "2 475/BB00987||2017-06-12|1040.84|270.16\n",
     1,
     1,
     "1 Company JKL|567/AB456|Q345678|2016-01-25|2017-06-11|4560.95|1125.01|-\n"
     "1 300/1090 ||475/BB00987|2017-06-12|1040.84|270.16\n"},
};

/// The rows of "everything" without the figures that HMRC leaves out of the example of that name.
std::string WithoutPayAndTax(std::string text)
{
    for (const char* figures :
         {"22551.05|900.38|284.85", "44.00", "99.00", "3910.01", "10520.80|2520.60", "10150.62|2563.18"}) {
        const std::size_t at = text.find(figures);
        if (at == text.npos)
            ADD_FAILURE() << figures;
        else
            text.replace(at, std::strlen(figures), std::regex_replace(figures, std::regex("[0-9.]+"), "-"));
    }
    return text;
}

class PayeScenarios : public HmrcTest, public testing::WithParamInterface<Scenario>
{};

} // namespace

TEST_P(PayeScenarios, AreStagedAndBecomeSchedulesOnce)
{
    const Scenario& row = GetParam();
    SCOPED_TRACE(row.why);
    const std::string expected = row.staged ? row.staged : WithoutPayAndTax(kScenarios[0].staged);
    const std::string schedules = row.schedules ? row.schedules : WithoutPayAndTax(kScenarios[0].schedules);
    EXPECT_EQ(Fetch(row.type), row.counts);
    EXPECT_EQ(Errors(), "");
    EXPECT_EQ(Staged(), expected);
    EXPECT_EQ(Schedules(), "") << "a fetch makes no schedule";

    HmrcApi::CPAYEPrepop later(m_client, TaxYear(kYear), "AA000001A", Type::Live);
    EXPECT_EQ(later.DoNewEmploymentsExist(), row.employments > 0);
    EXPECT_EQ(later.DoNewPensionStateBenefitsExist(), row.pensionsAndBenefits > 0);
    const HmrcApi::CreatedSchedules created = Create();
    EXPECT_EQ(created.employments, row.employments);
    EXPECT_EQ(created.pensionsAndBenefits, row.pensionsAndBenefits);
    EXPECT_TRUE(created.notes.empty());
    EXPECT_EQ(Schedules(), schedules);

    EXPECT_FALSE(later.DoNewEmploymentsExist());
    EXPECT_FALSE(later.DoNewPensionStateBenefitsExist());
    EXPECT_EQ(Create().employments + Create().pensionsAndBenefits, 0);
    EXPECT_EQ(Schedules(), schedules);

    HmrcApi::CPAYEPrepop again(m_client, TaxYear(kYear), "AA000001A", row.type);
    EXPECT_EQ(Fetch(again), HmrcApi::StagedCounts{}) << "the same answer";
    EXPECT_FALSE(again.HasNewData());
    EXPECT_FALSE(again.HasDifferences());
    EXPECT_EQ(Staged(), expected);
}

INSTANTIATE_TEST_SUITE_P(Published, PayeScenarios, testing::ValuesIn(kScenarios),
                         [](const auto& row) { return "Type" + std::to_string(row.param.type); });
