#include "ClientView.h"

#include "MorvUt/hmrc/schedules/ReturnYear.h"
#include "MorvUt/hmrc/staging/StagedYear.h"
#include "MorvUt/mappings/TypeMappings.h"

namespace Morv
{

namespace
{

const char* KindOf(const Brix::CClient& client)
{
    if (!client.GetTrust())
        return "individual";
    return client.GetEntityType().CompareNoCase("Estate") == 0 ? "estate" : "trust";
}

// The key of a benefit's code; the number where the table has none.
Json BenefitKey(int code)
{
    const char* key = nullptr;
    return GetMapShortNameFromIndex(mapNewEmployBenefitsGrid, &key, code) ? Json(key) : Json(std::to_string(code));
}

Json ViewOf(const HmrcApi::ReturnEmployment& own)
{
    Json benefits = Json::array();
    for (const HmrcApi::ReturnBenefit& benefit : own.benefits)
        benefits.push_back({{"code", BenefitKey(benefit.code)},
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

Json ViewOf(const HmrcApi::ReturnPension& own)
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

Json ViewOf(const HmrcApi::StagedEmployment& staged)
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

Json ViewOf(const HmrcApi::StagedPension& staged)
{
    return {{"mtdType", staged.kind},
            {"reference", TextOf(staged.reference)},
            {"worksNumber", TextOf(staged.worksNumber)},
            {"payer", TextOf(staged.payer)},
            {"date", DateOf(staged.date)},
            {"amountPence", PenceOf(staged.amount)},
            {"taxPence", PenceOf(staged.tax)},
            {"withdrawn", staged.isWithdrawn}};
}

Json ViewOf(const HmrcApi::StagedAllowance& staged)
{
    return {{"type", TextOf(staged.type)}, {"amountPence", PenceOf(staged.amount)}, {"withdrawn", staged.isWithdrawn}};
}

Json ViewOf(const HmrcApi::StagedNationalInsurance& staged)
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
        list.push_back(ViewOf(value));
    return list;
}

} // namespace

Json ViewOf(const Brix::CClient& client)
{
    return {{"id", client.GetID()},
            {"partnership", false},
            {"code", TextOf(client.GetCode())},
            {"name", TextOf(client.GetName())},
            {"kind", KindOf(client)}};
}

Json ViewOf(const Brix::CPartnership& partnership)
{
    return {{"id", partnership.GetID()},
            {"partnership", true},
            {"code", TextOf(partnership.GetCode())},
            {"name", TextOf(partnership.GetName())},
            {"kind", partnership.GetLLP() ? "llp" : "partnership"}};
}

Json SchedulesOf(long clientId, short year)
{
    const HmrcApi::ReturnYear own = HmrcApi::LoadReturnYear(ClientId(clientId), year);
    return {{"employments", ListOf(own.employments)}, {"pensionsAndBenefits", ListOf(own.pensions)}};
}

Json StagedOf(long clientId, short year)
{
    const HmrcApi::StagedYear staged = HmrcApi::LoadStagedYear(ClientId(clientId), year);
    return {{"employments", ListOf(staged.employments)},
            {"pensionsAndBenefits", ListOf(staged.pensions)},
            {"taxFreeAllowances", ListOf(staged.allowances)},
            {"nationalInsurance", staged.nationalInsurance ? ViewOf(*staged.nationalInsurance) : Json(nullptr)}};
}

} // namespace Morv
