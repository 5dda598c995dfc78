#include "HmrcApi/Responses.h"

#include <gtest/gtest.h>

#include "HmrcApi/CannedAnswers.h"
#include "HmrcApi/Errors.h"

using namespace HmrcApi;
using Kiln::CAmt;
using Kiln::CDate;

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

TEST(ReadPayeResponse, ReadsEveryGroup)
{
    const CPayeResponse response = ReadPayeResponse(CannedPayeAnswer(IEndpointOverride::Everything));
    ASSERT_EQ(response.GetEmploymentUpperBound(), 1);
    const auto employment = response.GetEmploymentAt(0);
    EXPECT_EQ(employment->employerPayeReference, "123/AB456");
    EXPECT_EQ(employment->employerName, "Company XYZ");
    EXPECT_EQ(employment->worksNumber, "A123456");
    EXPECT_TRUE(employment->startDate.IsNull());
    EXPECT_EQ(employment->endDate, CDate(2017, 8, 20));
    EXPECT_EQ(employment->taxablePayTotal, CAmt::FromPence(2255105));
    EXPECT_EQ(employment->taxTotal, CAmt::FromPence(90038));
    EXPECT_EQ(employment->studentLoan, CAmt::FromPence(28485));
    ASSERT_EQ(employment->companyBenefits.size(), 3u);
    EXPECT_EQ(employment->companyBenefits[1].benefitNumber, 29);
    EXPECT_EQ(employment->companyBenefits[1].amount, CAmt::FromPence(9900));
    EXPECT_FALSE(employment->companyBenefits[1].isForecastBenefit);
    EXPECT_TRUE(response.GetEmploymentAt(1)->companyBenefits[0].isForecastBenefit);
    EXPECT_TRUE(response.GetEmploymentAt(1)->studentLoan.IsNull()) << "absent is not zero";

    ASSERT_EQ(response.GetPrivatePensionUpperBound(), 1);
    EXPECT_TRUE(response.GetPrivatePensionAt(1)->taxTotal.IsZero()) << "zero is not absent";
    ASSERT_EQ(response.GetTaxableSocialSecurityBenefitUpperBound(), 2);
    EXPECT_EQ(response.GetTaxableSocialSecurityBenefitAt(2)->benefitType,
              TaxableSocialSecurityBenefit_t::EmploymentAndSupportAllowance);
    ASSERT_EQ(response.GetTaxFreeAllowanceUpperBound(), 2);
    EXPECT_EQ(response.GetTaxFreeAllowanceAt(2)->allowanceNumber, 101);
    ASSERT_TRUE(response.getStatePension());
    EXPECT_EQ(response.getStatePension()->grossAmount, CAmt::FromPence(391001));
    ASSERT_TRUE(response.getStatePension()->lumpSum);
    EXPECT_EQ(response.getStatePension()->lumpSum->taxTotal, CAmt::FromPence(252060));
    EXPECT_EQ(response.GetEmploymentAt(2), nullptr);
    EXPECT_EQ(response.GetEmploymentAt(-1), nullptr);
}

TEST(ReadPayeResponse, ReadsEveryPublishedExample)
{
    const struct
    {
        IEndpointOverride::ResponseType type;
        int employments, pensions, benefits, allowances; // upper bounds
        bool hasStatePension;
    } rows[] = {
        {IEndpointOverride::Everything, 1, 1, 2, 2, true},
        {IEndpointOverride::EverythingMissingPayAndTax, 1, 1, 2, 2, true},
        {IEndpointOverride::Employed, 0, -1, -1, -1, false},
        {IEndpointOverride::Employed2, 1, -1, -1, 2, false},
        {IEndpointOverride::Pensioner, -1, 0, -1, -1, true},
        {IEndpointOverride::Jobseeker, 0, -1, 0, -1, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.type);
        const CPayeResponse response = ReadPayeResponse(CannedPayeAnswer(row.type));
        EXPECT_EQ(response.GetEmploymentUpperBound(), row.employments);
        EXPECT_EQ(response.GetPrivatePensionUpperBound(), row.pensions);
        EXPECT_EQ(response.GetTaxableSocialSecurityBenefitUpperBound(), row.benefits);
        EXPECT_EQ(response.GetTaxFreeAllowanceUpperBound(), row.allowances);
        EXPECT_EQ(response.getStatePension() != nullptr, row.hasStatePension);
        EXPECT_NO_THROW(ReadNationalInsuranceResponse(CannedNationalInsuranceAnswer(row.type)));
    }
    const CPayeResponse missing = ReadPayeResponse(CannedPayeAnswer(IEndpointOverride::EverythingMissingPayAndTax));
    EXPECT_TRUE(missing.GetEmploymentAt(0)->taxablePayTotal.IsNull());
    EXPECT_TRUE(missing.GetEmploymentAt(0)->companyBenefits[0].amount.IsNull());
    EXPECT_TRUE(missing.getStatePension()->grossAmount.IsNull());
    EXPECT_TRUE(missing.getStatePension()->lumpSum->taxablePayTotal.IsNull());
}

TEST(ReadPayeResponse, TakesWhatIsAbsentUnknownOrLoose)
{
    EXPECT_EQ(ReadPayeResponse("{}").GetEmploymentUpperBound(), -1);
    EXPECT_EQ(ReadPayeResponse(R"({"employments":null,"statePension":null})").getStatePension(), nullptr);
    EXPECT_EQ(RefusalOf(Employment(R"("new":{"deep":[1]},"taxTotal":null)")), "none");
    const auto benefit = ReadPayeResponse(R"({"taxableSocialSecurityBenefits":[{"benefitType":"NewBenefit"}]})")
                             .GetTaxableSocialSecurityBenefitAt(0);
    EXPECT_EQ(benefit->benefitType, TaxableSocialSecurityBenefit_t::Unknown);
    EXPECT_EQ(benefit->benefitTypeName, "NewBenefit");
}

TEST(ReadPayeResponse, ReadsDatesWithOneDigitAndDropsUnreadableOnes)
{
    const struct
    {
        const char* json;
        CDate date;
        const char* why;
    } rows[] = {
        {"\"2017-05-01\"", CDate(2017, 5, 1), "as published"},
        {"\"2017-05-1\"", CDate(2017, 5, 1), "in HMRC's own data"},
        {"\"2017-5-1\"", CDate(2017, 5, 1), "both short"},
        {"\"2016-02-29\"", CDate(2016, 2, 29), "leap day"},
        {"\"2017-02-29\"", CDate(), "no such day"},
        {"\"2017-13-01\"", CDate(), "no such month"},
        {"\"2017-05-01T00:00\"", CDate(), "a time behind it"},
        {"\"17-05-01\"", CDate(), "a short year"},
        {"\"2017-005-1\"", CDate(), "three digits"},
        {"\"2017-05-\"", CDate(), "no day"},
        {"\"\"", CDate(), "nothing"},
        {"20170501", CDate(), "a number"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        const auto response = ReadPayeResponse(Employment("\"startDate\":" + std::string(row.json)));
        EXPECT_EQ(response.GetEmploymentAt(0)->startDate, row.date);
    }
}

TEST(ReadPayeResponse, RefusesWhatWouldLoseAFigureAndNamesThePlace)
{
    const struct
    {
        std::string json;
        const char* refusal;
        const char* why;
    } rows[] = {
        {"[]", "ANSWER_MALFORMED ", "no object"},
        {"{", "ANSWER_MALFORMED ", "cut off"},
        {R"({"employments":{}})", "ANSWER_MALFORMED /employments", "no array"},
        {R"({"employments":[5]})", "ANSWER_MALFORMED /employments/0", "no record"},
        {R"({"employments":[{"employerName":"X"}]})", "ANSWER_MALFORMED /employments/0/employerPayeReference",
         "no key"},
        {R"({"employments":[{"employerPayeReference":""}]})", "ANSWER_MALFORMED /employments/0/employerPayeReference",
         "an empty key"},
        {R"({"employments":[{"employerPayeReference":7}]})", "ANSWER_MALFORMED /employments/0/employerPayeReference",
         "a key that is no text"},
        {Employment(R"("taxTotal":"12.50")"), "ANSWER_MALFORMED /employments/0/taxTotal", "an amount in quotes"},
        {Employment(R"("companyBenefits":[{"benefitType":"CarBenefit"},{}])"),
         "ANSWER_MALFORMED /employments/0/companyBenefits/1/benefitType", "a benefit without its name"},
        {R"({"statePension":[]})", "ANSWER_MALFORMED /statePension", "no object inside"},
        {Employment(R"("taxTotal":0.00001)"), "AMOUNT_NOT_EXACT /employments/0/taxTotal", "a fifth decimal"},
        {Employment(R"("taxTotal":1e15)"), "AMOUNT_NOT_EXACT /employments/0/taxTotal", "too large"},
        {Employment(R"("taxTotal":1e400)"), "AMOUNT_NOT_EXACT ", "too large for the parser"},
        {R"({"statePension":{"lumpSum":{"taxTotal":0.12345}}})", "AMOUNT_NOT_EXACT /statePension/lumpSum/taxTotal",
         "deep inside"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        EXPECT_EQ(RefusalOf(row.json), row.refusal);
    }
}

TEST(ReadNationalInsuranceResponse, TellsZeroFromAbsent)
{
    const auto full = ReadNationalInsuranceResponse(CannedNationalInsuranceAnswer(IEndpointOverride::Everything));
    EXPECT_EQ(full.class1NicableEarnings, CAmt::FromPence(1700));
    EXPECT_EQ(full.class2Due, CAmt::FromPence(31957));
    EXPECT_TRUE(full.maxNicsReached);
    const auto part = ReadNationalInsuranceResponse(R"({"class1":{"totalNICableEarnings":0.00}})");
    EXPECT_TRUE(part.class1NicableEarnings.IsZero());
    EXPECT_TRUE(part.class2Due.IsNull());
}
