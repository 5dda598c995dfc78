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

Quarry::Where OfYear(int ordinal, ClientId client, short year)
{
    return Quarry::Where::Under(ordinal, CTaxForm::Declaration(),
                                {{CTaxForm::kClientID, client.Get()}, {CTaxForm::kYear, year}});
}

ReturnEmployment Read(const CNewEmploy& row)
{
    ReturnEmployment own;
    own.id = row.GetID();
    own.ordering = row.GetOrdering();
    own.guid = row.GetGUID();
    own.employer = row.GetEmployerName();
    own.reference = row.GetPAYEReference();
    own.worksNumber = row.GetWorksNumber();
    own.start = row.GetStart();
    own.end = row.GetEnd();
    own.pay = row.GetPay();
    own.tax = row.GetTax();
    own.studentLoan = row.GetStudentLoan();
    own.isFromHmrc = row.GetFromHMRC();
    return own;
}

ReturnPension Read(const CPensionStateBenefits& row)
{
    ReturnPension own;
    own.id = row.GetID();
    own.ordering = row.GetOrdering();
    own.section = row.GetSection();
    own.type = row.GetType();
    own.description = row.GetDescription();
    own.payer = row.GetPayer();
    own.reference = row.GetReference();
    own.worksNumber = row.GetWorksNumber();
    own.start = row.GetStart();
    own.amount = row.GetAmount();
    own.tax = row.GetTax();
    own.isFromHmrc = row.GetFromHMRC();
    return own;
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
    benefits.Open({Quarry::Where::Under(benefits.kNewEmployID, CNewEmploy::Declaration(),
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
    for (; !form.IsEOL() && !loaded.finalised.IsValid(); form.MoveNext()) // several count as one
        loaded.finalised = form.GetFinalised();
    loaded.employments = LoadEmployments(client, year);
    loaded.pensions = LoadPensions(client, year);
    return loaded;
}

} // namespace HmrcApi
