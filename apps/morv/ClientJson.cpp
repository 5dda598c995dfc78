#include "ClientJson.h"

#include "MorvUt/hmrc/schedules/StagedWords.h"

namespace Morv
{

namespace
{

Json ToJson(const HmrcApi::ReturnEmployment& own)
{
    Json benefits = Json::array();
    for (const HmrcApi::ReturnBenefit& benefit : own.benefits)
        benefits.push_back({{"code", TextOf(KeyOf(benefit))},
                            {"amountPence", PenceOf(benefit.amount)},
                            {"estimate", benefit.isEstimate}});
    return {{"ordering", own.ordering},
            {"guid", TextOf(own.guid)},
            {"employer", TextOf(own.employer)},
            {"reference", TextOf(own.reference)},
            {"worksNumber", TextOf(own.worksNumber)},
            {"start", DateOf(own.start)},
            {"end", DateOf(own.end)},
            {"payPence", PenceOf(own.pay)},
            {"taxPence", PenceOf(own.tax)},
            {"studentLoanPence", PenceOf(own.studentLoan)},
            {"benefits", benefits}};
}

Json ToJson(const HmrcApi::ReturnPension& own)
{
    return {{"ordering", own.ordering},
            {"section", own.section},
            {"type", own.type},
            {"description", TextOf(own.description)},
            {"payer", TextOf(own.payer)},
            {"reference", TextOf(own.reference)},
            {"worksNumber", TextOf(own.worksNumber)},
            {"date", DateOf(own.start)},
            {"amountPence", PenceOf(own.amount)},
            {"taxPence", PenceOf(own.tax)}};
}

Json ToJson(const HmrcApi::StagedEmployment& staged)
{
    Json benefits = Json::array();
    for (const HmrcApi::StagedBenefit& benefit : staged.benefits)
        benefits.push_back({{"type", TextOf(benefit.type)},
                            {"amountPence", PenceOf(benefit.amount)},
                            {"forecast", benefit.isForecast},
                            {"withdrawn", benefit.isWithdrawn}});
    return {{"key", TextOf(staged.key)},
            {"employer", TextOf(staged.employer)},
            {"reference", TextOf(staged.reference)},
            {"worksNumber", TextOf(staged.worksNumber)},
            {"start", DateOf(staged.start)},
            {"end", DateOf(staged.end)},
            {"payPence", PenceOf(staged.pay)},
            {"taxPence", PenceOf(staged.tax)},
            {"studentLoanPence", PenceOf(staged.studentLoan)},
            {"benefits", benefits},
            {"withdrawn", staged.isWithdrawn}};
}

Json ToJson(const HmrcApi::StagedPension& staged)
{
    return {{"mtdType", staged.kind},
            {"reference", TextOf(staged.reference)},
            {"worksNumber", TextOf(staged.worksNumber)},
            {"payer", TextOf(staged.payer)},
            {"date", DateOf(staged.date)},
            {"end", DateOf(staged.end)},
            {"amountPence", PenceOf(staged.amount)},
            {"taxPence", PenceOf(staged.tax)},
            {"withdrawn", staged.isWithdrawn}};
}

Json ToJson(const HmrcApi::StagedAllowance& staged)
{
    return {{"type", TextOf(staged.type)}, {"amountPence", PenceOf(staged.amount)}, {"withdrawn", staged.isWithdrawn}};
}

Json ToJson(const HmrcApi::StagedNationalInsurance& staged)
{
    return {{"class1EarningsPence", PenceOf(staged.class1Earnings)},
            {"class2DuePence", PenceOf(staged.class2Due)},
            {"updated", MomentOf(staged.updated)}};
}

template<class T>
Json ListOf(const std::vector<T>& values)
{
    Json list = Json::array();
    for (const T& value : values)
        list.push_back(ToJson(value));
    return list;
}

} // namespace

Json ToJson(const ClientView& client)
{
    return {{"id", client.id},
            {"partnership", client.IsPartnership()},
            {"code", TextOf(client.code)},
            {"name", TextOf(client.name)},
            {"kind", NameOf(client.kind)}};
}

Json ToJson(const ClientStatus& status)
{
    Json json;
    for (std::size_t i = 0; i < kStatusQuestions; ++i) {
        const auto question = static_cast<StatusQuestion>(i);
        json[NameOf(question)] = status.Is(question);
    }
    json["because"] = ToJson(status.Because());
    return json;
}

Json ToJson(const HmrcApi::ReturnYear& own)
{
    return {{"employments", ListOf(own.employments)}, {"pensionsAndBenefits", ListOf(own.pensions)}};
}

Json ToJson(const HmrcApi::StagedYear& staged)
{
    return {{"employments", ListOf(staged.employments)},
            {"pensionsAndBenefits", ListOf(staged.pensions)},
            {"taxFreeAllowances", ListOf(staged.allowances)},
            {"nationalInsurance", staged.nationalInsurance ? ToJson(*staged.nationalInsurance) : Json(nullptr)}};
}

Json ToJson(const std::vector<CString>& texts)
{
    Json list = Json::array();
    for (const CString& text : texts)
        list.push_back(TextOf(text));
    return list;
}

} // namespace Morv
