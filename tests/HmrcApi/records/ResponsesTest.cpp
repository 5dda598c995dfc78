#include "HmrcApi/records/Responses.h"

#include "HmrcApi/answers/Errors.h"
#include "support/Test.h"

using namespace HmrcApi;

namespace
{

/// Code and path of the refusal; "none" when the answer is taken.
std::string RefusalOf(const std::string& json)
{
    try {
        ReadPayeResponse(json);
    } catch (const HmrcApiErrorException& error) {
        EXPECT_FALSE(std::string(error.what()).empty());
        return error.GetCode() + ' ' + error.GetThird();
    }
    return "none";
}

std::string Employment(const std::string& members)
{
    return R"({"employments":[{"employerPayeReference":"123/AB456")" + (members.empty() ? "" : "," + members) + "}]}";
}

} // namespace

TEST(ReadPayeResponse, TakesWhatIsAbsentUnknownOrLoose)
{
    EXPECT_EQ(ReadPayeResponse(R"({"taxFreeAllowances":[]})").GetEmploymentUpperBound(), -1);
    EXPECT_EQ(ReadPayeResponse(R"({"employments":[],"statePension":null})").getStatePension(), nullptr);
    for (const char* unread : {R"({"deep":[1]})", "1e400", "[0.123456789012345678901234567890123456789]"})
        EXPECT_EQ(RefusalOf(Employment(R"("taxTotal":null,"new":)" + std::string(unread))), "none") << unread;
    for (const std::string kind : {"UniversalCredit", "jobseekersallowance"}) {
        const std::string json = R"({"taxableSocialSecurityBenefits":[{"benefitType":")" + kind + "\"}]}";
        const auto benefit = ReadPayeResponse(json).GetTaxableSocialSecurityBenefitAt(0);
        EXPECT_EQ(benefit->benefitType, TaxableSocialSecurityBenefit_t::Unknown);
        EXPECT_EQ(benefit->benefitTypeName, kind);
    }
    EXPECT_EQ(BenefitNumber("NurseryPlaces"), 46);
}

TEST(ReadPayeResponse, ReadsDatesWithOneDigitAndDropsUnreadableOnes)
{
    for (const auto& [in, out, why] : ::Test::Table<const char*, const char*>("HmrcApi/records/Responses.tsv")) {
        const auto response = ReadPayeResponse(Employment("\"startDate\":" + std::string(in)));
        EXPECT_EQ(response.GetEmploymentAt(0)->startDate.FormatIso(), out) << why;
    }
}

TEST(ReadPayeResponse, RefusesWhatWouldLoseAFigureAndNamesThePlace)
{
    for (const auto& [in, out, why] : ::Test::Table<const char*, const char*>("HmrcApi/records/Responses.tsv"))
        EXPECT_EQ(RefusalOf(in), out) << why;
}

TEST(ReadNationalInsuranceResponse, RefusesTheAnswerOfAnother)
{
    EXPECT_THROW(ReadNationalInsuranceResponse(R"({"employments":[]})"), HmrcApiErrorException);
}
