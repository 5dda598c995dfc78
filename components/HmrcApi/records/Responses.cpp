#include "HmrcApi/records/Responses.h"

#include "HmrcApi/records/detail/AnswerNode.h"

namespace HmrcApi
{
namespace
{

using Detail::AnswerNode;

CompanyBenefit_t ReadCompanyBenefit(const AnswerNode& node)
{
    CompanyBenefit_t benefit;
    benefit.benefitType = node.Key("benefitType");
    benefit.benefitNumber = BenefitNumber(benefit.benefitType);
    benefit.amount = node.Amount("amount");
    benefit.isForecastBenefit = node.Flag("isForecastBenefit").value_or(false);
    return benefit;
}

/// What an employment and a pension have in common. The employer's name is only shown: without it the figures count.
template<class Payer>
Payer ReadPayer(const AnswerNode& node)
{
    Payer payer;
    payer.employerPayeReference = node.Key("employerPayeReference");
    payer.employerName = node.Text("employerName");
    payer.worksNumber = node.Text("worksNumber");
    payer.startDate = node.Date("startDate");
    payer.endDate = node.Date("endDate");
    payer.taxablePayTotal = node.Amount("taxablePayTotal");
    payer.taxTotal = node.Amount("taxTotal");
    return payer;
}

Employment_t ReadEmployment(const AnswerNode& node)
{
    auto employment = ReadPayer<Employment_t>(node);
    employment.studentLoan = node.Amount("studentLoan");
    employment.offPayrollWorkFlag = node.Flag("offPayrollWorkFlag");
    node.Each("companyBenefits",
              [&](const AnswerNode& item) { employment.companyBenefits.push_back(ReadCompanyBenefit(item)); });
    return employment;
}

TaxableSocialSecurityBenefit_t::BenefitType BenefitTypeOf(std::string_view name) noexcept
{
    using Benefit = TaxableSocialSecurityBenefit_t;
    constexpr struct
    {
        std::string_view name;
        Benefit::BenefitType type;
    } kTypes[] = {
        {"JobseekersAllowance", Benefit::JobseekersAllowance},
        {"IncapacityBenefit", Benefit::IncapacityBenefit},
        {"EmploymentAndSupportAllowance", Benefit::EmploymentAndSupportAllowance},
    };
    for (const auto& row : kTypes)
        if (row.name == name)
            return row.type;
    return Benefit::Unknown;
}

TaxableSocialSecurityBenefit_t ReadSocialSecurityBenefit(const AnswerNode& node)
{
    TaxableSocialSecurityBenefit_t benefit;
    benefit.benefitTypeName = node.Key("benefitType");
    benefit.benefitType = BenefitTypeOf(benefit.benefitTypeName);
    benefit.employerPayeReference = node.Text("employerPayeReference");
    benefit.startDate = node.Date("startDate");
    benefit.endDate = node.Date("endDate");
    benefit.taxablePayTotal = node.Amount("taxablePayTotal");
    benefit.taxTotal = node.Amount("taxTotal");
    return benefit;
}

TaxFreeAllowance_t ReadTaxFreeAllowance(const AnswerNode& node)
{
    TaxFreeAllowance_t allowance;
    allowance.allowanceType = node.Key("allowanceType");
    allowance.allowanceNumber = AllowanceNumber(allowance.allowanceType);
    allowance.amount = node.Amount("amount");
    return allowance;
}

StatePension_t ReadStatePension(const AnswerNode& node)
{
    StatePension_t pension;
    pension.grossAmount = node.Amount("grossAmount");
    pension.typeDescription = node.Text("typeDescription");
    if (const std::optional<AnswerNode> item = node.Object("lumpSum")) {
        StatePension_t::LumpSum_t lumpSum;
        lumpSum.startDate = item->Date("startDate");
        lumpSum.endDate = item->Date("endDate");
        lumpSum.taxablePayTotal = item->Amount("taxablePayTotal");
        lumpSum.taxTotal = item->Amount("taxTotal");
        pension.lumpSum = std::make_shared<const StatePension_t::LumpSum_t>(lumpSum);
    }
    return pension;
}

} // namespace

CPayeResponse ReadPayeResponse(std::string_view json)
{
    const auto read = [](const AnswerNode& root) {
        root.NeedsOneOf(
            {"employments", "privatePensions", "taxableSocialSecurityBenefits", "taxFreeAllowances", "statePension"});
        CPayeResponse response;
        root.Each("employments", [&](const AnswerNode& item) { response.Add(ReadEmployment(item)); });
        root.Each("privatePensions", [&](const AnswerNode& item) { response.Add(ReadPayer<PrivatePension_t>(item)); });
        root.Each("taxableSocialSecurityBenefits",
                  [&](const AnswerNode& item) { response.Add(ReadSocialSecurityBenefit(item)); });
        root.Each("taxFreeAllowances", [&](const AnswerNode& item) { response.Add(ReadTaxFreeAllowance(item)); });
        if (const std::optional<AnswerNode> pension = root.Object("statePension"))
            response.SetStatePension(ReadStatePension(*pension));
        return response;
    };
    return Detail::WithRoot(json, read);
}

CNationalInsuranceResponse ReadNationalInsuranceResponse(std::string_view json)
{
    const auto read = [](const AnswerNode& root) {
        root.NeedsOneOf({"class1", "class2", "maxNICsReached"});
        CNationalInsuranceResponse response;
        if (const std::optional<AnswerNode> class1 = root.Object("class1"))
            response.class1NicableEarnings = class1->Amount("totalNICableEarnings");
        if (const std::optional<AnswerNode> class2 = root.Object("class2"))
            response.class2Due = class2->Amount("totalDue");
        response.maxNicsReached = root.Flag("maxNICsReached");
        return response;
    };
    return Detail::WithRoot(json, read);
}

} // namespace HmrcApi
