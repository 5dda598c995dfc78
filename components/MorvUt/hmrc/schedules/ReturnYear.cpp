#include "MorvUt/hmrc/schedules/ReturnYear.h"

#include <unordered_map>

#include "Brix/Records.h"

namespace HmrcApi
{
namespace
{

using Brix::CNewEmploy;
using Brix::CNewEmployBenefits;
using Brix::CPensionStateBenefits;
using Brix::CTaxForm;
using Quarry::Where;

Where OfYear(int ordinal, ClientId client, short year)
{
    return Where::Under(ordinal, CTaxForm::Declaration(),
                        {{CTaxForm::kClientID, client.Get()}, {CTaxForm::kYear, year}});
}

ReturnEmployment Read(const CNewEmploy& row)
{
    return {row.GetID(),
            row.GetOrdering(),
            row.GetGUID(),
            row.GetEmployerName(),
            row.GetPAYEReference(),
            row.GetWorksNumber(),
            row.GetStart(),
            row.GetEnd(),
            row.GetPay(),
            row.GetTax(),
            row.GetStudentLoan(),
            row.GetFromHMRC(),
            {}};
}

ReturnPension Read(const CPensionStateBenefits& row)
{
    return {row.GetID(),          row.GetOrdering(), row.GetSection(),   row.GetType(),
            row.GetDescription(), row.GetPayer(),    row.GetReference(), row.GetWorksNumber(),
            row.GetStart(),       row.GetAmount(),   row.GetTax()};
}

std::vector<ReturnEmployment> LoadEmployments(ClientId client, short year)
{
    std::vector<ReturnEmployment> employments;
    CNewEmploy rows;
    for (rows.Open({OfYear(rows.kTaxFormID, client, year)}, {{rows.kOrdering}}); !rows.IsEOL(); rows.MoveNext())
        employments.push_back(Read(rows));
    std::unordered_map<long, ReturnEmployment*> byId;
    for (ReturnEmployment& employment : employments)
        byId.emplace(employment.id, &employment);
    CNewEmployBenefits benefits;
    benefits.Open({Where::Under(benefits.kNewEmployID, CNewEmploy::Declaration(),
                                {OfYear(CNewEmploy::kTaxFormID, client, year)})});
    for (; !benefits.IsEOL(); benefits.MoveNext())
        if (const auto own = byId.find(benefits.GetNewEmployID()); own != byId.end())
            own->second->benefits.push_back({benefits.GetType(), benefits.GetBenefit(), benefits.GetEstimate()});
    return employments;
}

std::vector<ReturnPension> LoadPensions(ClientId client, short year)
{
    std::vector<ReturnPension> pensions;
    CPensionStateBenefits rows;
    for (rows.Open({OfYear(rows.kTaxFormID, client, year)}, {{rows.kOrdering}}); !rows.IsEOL(); rows.MoveNext())
        pensions.push_back(Read(rows));
    return pensions;
}

} // namespace

ReturnYear LoadReturnYear(ClientId client, short year)
{
    ReturnYear loaded;
    CTaxForm form;
    if (!form.Open({{form.kClientID, client.Get()}, {form.kYear, year}}))
        return loaded;
    loaded.taxFormId = form.GetID();
    loaded.finalised = form.GetFinalised();
    loaded.employments = LoadEmployments(client, year);
    loaded.pensions = LoadPensions(client, year);
    return loaded;
}

} // namespace HmrcApi
