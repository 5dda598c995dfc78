#include "HmrcApi/records/Responses.h"

#include "HmrcApi/answers/Errors.h"
#include "support/Test.h"

using namespace HmrcApi;
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
    const ::Test::Case<const char*, CDate> rows[] = {
        {"\"2017-05-01\"", CDate(2017, 5, 1), "as published"},
        {"\"2017-5-1\"", CDate(2017, 5, 1), "both short"},
        {"\"2016-02-29\"", CDate(2016, 2, 29), "leap day"},
        {"\"2017-02-29\"", CDate(), "no such day"},
        {"\"2017-05-01T00:00\"", CDate(), "a time behind it"},
        {"\"2017-005-1\"", CDate(), "three digits"},
        {"\"\"", CDate(), "nothing"},
        {"20170501", CDate(), "a number"},
    };
    for (const auto& row : rows) {
        const auto response = ReadPayeResponse(Employment("\"startDate\":" + std::string(row.in)));
        EXPECT_EQ(response.GetEmploymentAt(0)->startDate, row.out) << row.why;
    }
}

TEST(ReadPayeResponse, RefusesWhatWouldLoseAFigureAndNamesThePlace)
{
    const ::Test::Case<std::string, const char*> rows[] = {
        {"{", "ANSWER_MALFORMED ", "cut off"},
        {"{}", "ANSWER_MALFORMED ", "nothing, which is not that there is nothing"},
        {R"({"a":1,"employments":null})", "ANSWER_MALFORMED ", "none of what an answer has"},
        {R"({"employments":{}})", "ANSWER_MALFORMED /employments", "no array"},
        {R"({"privatePensions":[{"a":1}]})", "ANSWER_MALFORMED /privatePensions/0/employerPayeReference", "no key"},
        {R"({"taxFreeAllowances":[{"allowanceType":7}]})", "ANSWER_MALFORMED /taxFreeAllowances/0/allowanceType",
         "a key that is no text"},
        {Employment(R"("taxTotal":"12.50")"), "ANSWER_MALFORMED /employments/0/taxTotal", "an amount in quotes"},
        {Employment(R"("companyBenefits":[{"benefitType":"CarBenefit"},{}])"),
         "ANSWER_MALFORMED /employments/0/companyBenefits/1/benefitType", "a benefit without its name"},
        {R"({"statePension":[]})", "ANSWER_MALFORMED /statePension", "no object inside"},
        {Employment(R"("taxTotal":0.00001)"), "AMOUNT_NOT_EXACT /employments/0/taxTotal", "a fifth decimal"},
        {Employment(R"("taxTotal":1e400)"), "AMOUNT_NOT_EXACT /employments/0/taxTotal", "too large"},
        {R"({"statePension":{"lumpSum":{"taxTotal":0.12345}}})", "AMOUNT_NOT_EXACT /statePension/lumpSum/taxTotal",
         "deep inside"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(RefusalOf(row.in), row.out) << row.why;
}

TEST(ReadNationalInsuranceResponse, RefusesTheAnswerOfAnother)
{
    EXPECT_THROW(ReadNationalInsuranceResponse(R"({"employments":[]})"), HmrcApiErrorException);
}
