#include "ClientView.h"

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

Json BenefitsOf(const Brix::CNewEmploy& employment)
{
    Json list = Json::array();
    Brix::CNewEmployBenefits rows;
    for (rows.Open({{Brix::CNewEmployBenefits::kNewEmployID, employment.GetID()}}); !rows.IsEOL(); rows.MoveNext())
        list.push_back({{"code", BenefitKey(rows.GetType())},
                        {"amountPence", PenceOf(rows.GetBenefit())},
                        {"estimate", rows.GetEstimate()}});
    return list;
}

Json EmploymentsOf(long taxForm)
{
    Json list = Json::array();
    Brix::CNewEmploy rows;
    for (rows.Open({{Brix::CNewEmploy::kTaxFormID, taxForm}}, {{Brix::CNewEmploy::kOrdering}}); !rows.IsEOL();
         rows.MoveNext())
        list.push_back({{"ordering", rows.GetOrdering()},
                        {"guid", TextOf(rows.GetGUID())},
                        {"employer", TextOf(rows.GetEmployerName())},
                        {"reference", TextOf(rows.GetPAYEReference())},
                        {"worksNumber", TextOf(rows.GetWorksNumber())},
                        {"start", DateOf(rows.GetStart())},
                        {"end", DateOf(rows.GetEnd())},
                        {"payPence", PenceOf(rows.GetPay())},
                        {"taxPence", PenceOf(rows.GetTax())},
                        {"studentLoanPence", PenceOf(rows.GetStudentLoan())},
                        {"benefits", BenefitsOf(rows)}});
    return list;
}

Json PensionsOf(long taxForm)
{
    Json list = Json::array();
    Brix::CPensionStateBenefits rows;
    for (rows.Open({{Brix::CPensionStateBenefits::kTaxFormID, taxForm}}, {{Brix::CPensionStateBenefits::kOrdering}});
         !rows.IsEOL(); rows.MoveNext())
        list.push_back({{"ordering", rows.GetOrdering()},
                        {"section", rows.GetSection()},
                        {"type", rows.GetType()},
                        {"description", TextOf(rows.GetDescription())},
                        {"payer", TextOf(rows.GetPayer())},
                        {"reference", TextOf(rows.GetReference())},
                        {"date", DateOf(rows.GetStart())},
                        {"amountPence", PenceOf(rows.GetAmount())},
                        {"taxPence", PenceOf(rows.GetTax())}});
    return list;
}

Json StagedBenefitsOf(const Brix::CMTD_Employments& employment)
{
    using Rows = Brix::CMTD_EmploymentsCompanyBenefits;
    Json list = Json::array();
    Rows rows;
    for (rows.Open({{Rows::kMTD_EmploymentsID, employment.GetID()}}); !rows.IsEOL(); rows.MoveNext())
        list.push_back({{"type", TextOf(rows.GetBenefitTypeName())},
                        {"amountPence", PenceOf(rows.GetAmount())},
                        {"forecast", rows.GetForecast()},
                        {"withdrawn", rows.GetWithdrawn()}});
    return list;
}

Json StagedEmploymentsOf(long year)
{
    Json list = Json::array();
    Brix::CMTD_Employments rows;
    for (rows.Open({{Brix::CMTD_Employments::kMTD_TaxYearID, year}}, {{Brix::CMTD_Employments::kKey}}); !rows.IsEOL();
         rows.MoveNext())
        list.push_back({{"key", TextOf(rows.GetKey())},
                        {"employer", TextOf(rows.GetEmployerName())},
                        {"reference", TextOf(rows.GetPAYEReference())},
                        {"worksNumber", TextOf(rows.GetWorksNumber())},
                        {"start", DateOf(rows.GetStart())},
                        {"end", DateOf(rows.GetEnd())},
                        {"payPence", PenceOf(rows.GetPay())},
                        {"taxPence", PenceOf(rows.GetTax())},
                        {"studentLoanPence", PenceOf(rows.GetStudentLoan())},
                        {"benefits", StagedBenefitsOf(rows)},
                        {"withdrawn", rows.GetWithdrawn()}});
    return list;
}

Json StagedPensionsOf(long year)
{
    using Rows = Brix::CMTD_PensionStateBenefits;
    Json list = Json::array();
    Rows rows;
    for (rows.Open({{Rows::kMTD_TaxYearID, year}}, {{Rows::kStart}}); !rows.IsEOL(); rows.MoveNext())
        list.push_back({{"mtdType", rows.GetMTDType()},
                        {"reference", TextOf(rows.GetReference())},
                        {"payer", TextOf(rows.GetPayer())},
                        {"date", DateOf(rows.GetStart())},
                        {"amountPence", PenceOf(rows.GetAmount())},
                        {"taxPence", PenceOf(rows.GetTax())},
                        {"withdrawn", rows.GetWithdrawn()}});
    return list;
}

Json StagedAllowancesOf(long year)
{
    using Rows = Brix::CMTD_TaxFreeAllowances;
    Json list = Json::array();
    Rows rows;
    for (rows.Open({{Rows::kMTD_TaxYearID, year}}, {{Rows::kAmount}}); !rows.IsEOL(); rows.MoveNext())
        list.push_back({{"type", TextOf(rows.GetAllowanceTypeName())},
                        {"amountPence", PenceOf(rows.GetAmount())},
                        {"withdrawn", rows.GetWithdrawn()}});
    return list;
}

Json NationalInsuranceOf(long year)
{
    Brix::CMTD_NIC rows;
    if (!rows.Open({{Brix::CMTD_NIC::kMTD_TaxYearID, year}}))
        return nullptr;
    return {{"class1EarningsPence", PenceOf(rows.GetClass1Earnings())},
            {"class2DuePence", PenceOf(rows.GetClass2Due())},
            {"updated", MomentOf(rows.GetUpdated())}};
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
    Brix::CTaxForm form;
    const bool exists = form.Open({{Brix::CTaxForm::kClientID, clientId}, {Brix::CTaxForm::kYear, year}});
    return {{"employments", exists ? EmploymentsOf(form.GetID()) : Json::array()},
            {"pensionsAndBenefits", exists ? PensionsOf(form.GetID()) : Json::array()}};
}

Json StagedOf(long clientId, short year)
{
    Brix::CMTD_TaxYear staged;
    const bool exists = staged.Open({{Brix::CMTD_TaxYear::kClientID, clientId}, {Brix::CMTD_TaxYear::kYear, year}});
    const long id = exists ? staged.GetID() : 0;
    return {{"employments", exists ? StagedEmploymentsOf(id) : Json::array()},
            {"pensionsAndBenefits", exists ? StagedPensionsOf(id) : Json::array()},
            {"taxFreeAllowances", exists ? StagedAllowancesOf(id) : Json::array()},
            {"nationalInsurance", exists ? NationalInsuranceOf(id) : Json(nullptr)}};
}

} // namespace Morv
