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

void AddEmployments(Json& list, long taxForm)
{
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
}

void AddPensions(Json& list, long taxForm)
{
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

void AddStagedEmployments(Json& list, long year)
{
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
}

void AddStagedPensions(Json& list, long year)
{
    using Rows = Brix::CMTD_PensionStateBenefits;
    Rows rows;
    for (rows.Open({{Rows::kMTD_TaxYearID, year}}, {{Rows::kStart}}); !rows.IsEOL(); rows.MoveNext())
        list.push_back({{"mtdType", rows.GetMTDType()},
                        {"reference", TextOf(rows.GetReference())},
                        {"payer", TextOf(rows.GetPayer())},
                        {"date", DateOf(rows.GetStart())},
                        {"amountPence", PenceOf(rows.GetAmount())},
                        {"taxPence", PenceOf(rows.GetTax())},
                        {"withdrawn", rows.GetWithdrawn()}});
}

void AddStagedAllowances(Json& list, long year)
{
    using Rows = Brix::CMTD_TaxFreeAllowances;
    Rows rows;
    for (rows.Open({{Rows::kMTD_TaxYearID, year}}, {{Rows::kAmount}}); !rows.IsEOL(); rows.MoveNext())
        list.push_back({{"type", TextOf(rows.GetAllowanceTypeName())},
                        {"amountPence", PenceOf(rows.GetAmount())},
                        {"withdrawn", rows.GetWithdrawn()}});
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
    Json employments = Json::array(), pensions = Json::array();
    Brix::CTaxForm form;
    form.Open({{Brix::CTaxForm::kClientID, clientId}, {Brix::CTaxForm::kYear, year}});
    for (; !form.IsEOL(); form.MoveNext()) { // normally one
        AddEmployments(employments, form.GetID());
        AddPensions(pensions, form.GetID());
    }
    return {{"employments", employments}, {"pensionsAndBenefits", pensions}};
}

Json StagedOf(long clientId, short year)
{
    Json employments = Json::array(), pensions = Json::array(), allowances = Json::array(), insurance = nullptr;
    Brix::CMTD_TaxYear staged;
    staged.Open({{Brix::CMTD_TaxYear::kClientID, clientId}, {Brix::CMTD_TaxYear::kYear, year}});
    for (; !staged.IsEOL(); staged.MoveNext()) { // two when two workstations fetched for the first time at once
        AddStagedEmployments(employments, staged.GetID());
        AddStagedPensions(pensions, staged.GetID());
        AddStagedAllowances(allowances, staged.GetID());
        if (insurance.is_null())
            insurance = NationalInsuranceOf(staged.GetID());
    }
    return {{"employments", employments},
            {"pensionsAndBenefits", pensions},
            {"taxFreeAllowances", allowances},
            {"nationalInsurance", insurance}};
}

} // namespace Morv
