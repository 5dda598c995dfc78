#include "HmrcApi/records/Summaries.h"

#include "HmrcApi/records/detail/AnswerNode.h"

namespace HmrcApi
{
namespace
{

using Detail::AnswerNode;

constexpr char kOtherIncome[] = "pensionsAnnuitiesAndOtherStateBenefits";

constexpr const char* kSums[] = {"companyCarsAndVansBenefit",
                                 "fuelForCompanyCarsAndVansBenefit",
                                 "privateMedicalDentalInsurance",
                                 "vouchersCreditCardsExcessMileageAllowance",
                                 "goodsEtcProvidedByEmployer",
                                 "accommodationProvidedByEmployer",
                                 "otherBenefits",
                                 "expensesPaymentsReceived"};

/// An answer that has at least one of the members; `part` reads what it has of one employment.
template<class Response, class ReadPart>
Response ReadEmployments(const AnswerNode& root, std::initializer_list<const char*> members, ReadPart part)
{
    root.NeedsOneOf(members);
    Response response;
    root.Each("employments", [&](const AnswerNode& node) {
        Employment_t employment;
        employment.employerPayeReference = node.Key("employerPayeReference");
        part(node, employment);
        response.Add(std::move(employment));
    });
    return response;
}

} // namespace

CEmploymentHistoryResponse ReadEmploymentHistoryResponse(std::string_view json)
{
    return Detail::WithRoot(json, [](const AnswerNode& root) {
        return ReadEmployments<CEmploymentHistoryResponse>(
            root, {"employments"}, [](const AnswerNode& node, Employment_t& employment) {
                employment.employerName = node.Text("employerName");
                employment.offPayrollWorkFlag = node.Flag("offPayrollWorkFlag");
            });
    });
}

CBenefitsSummaryResponse ReadBenefitsSummaryResponse(std::string_view json)
{
    return Detail::WithRoot(json, [](const AnswerNode& root) {
        return ReadEmployments<CBenefitsSummaryResponse>(
            root, {"employments"}, [](const AnswerNode& node, Employment_t& employment) {
                for (const char* sum : kSums)
                    if (const Kiln::CAmt amount = node.Amount(sum); amount.IsValid())
                        employment.companyBenefits.push_back({sum, BenefitNumber(sum), amount, false});
            });
    });
}

CIncomeSummaryResponse ReadIncomeSummaryResponse(std::string_view json)
{
    return Detail::WithRoot(json, [](const AnswerNode& root) {
        auto response = ReadEmployments<CIncomeSummaryResponse>(
            root, {"employments", kOtherIncome}, [](const AnswerNode& node, Employment_t& employment) {
                employment.taxablePayTotal = node.Amount("payFromEmployment");
            });
        if (const std::optional<AnswerNode> other = root.Object(kOtherIncome)) {
            response.otherPensionsAndRetirementAnnuities = other->Amount("otherPensionsAndRetirementAnnuities");
            response.incapacityBenefit = other->Amount("incapacityBenefit");
            response.jobseekersAllowance = other->Amount("jobseekersAllowance");
            response.seissNetPaid = other->Amount("seissNetPaid");
        }
        return response;
    });
}

CTaxSummaryResponse ReadTaxSummaryResponse(std::string_view json)
{
    return Detail::WithRoot(json, [](const AnswerNode& root) {
        auto response = ReadEmployments<CTaxSummaryResponse>(root, {"employments", kOtherIncome, "refunds"},
                                                             [](const AnswerNode& node, Employment_t& employment) {
                                                                 employment.taxTotal = node.Amount("taxTakenOffPay");
                                                             });
        if (const std::optional<AnswerNode> other = root.Object(kOtherIncome)) {
            response.otherPensionsAndRetirementAnnuities = other->Amount("otherPensionsAndRetirementAnnuities");
            response.incapacityBenefit = other->Amount("incapacityBenefit");
        }
        if (const std::optional<AnswerNode> refunds = root.Object("refunds"))
            response.taxRefundedOrSetOff = refunds->Amount("taxRefundedOrSetOff");
        return response;
    });
}

} // namespace HmrcApi
