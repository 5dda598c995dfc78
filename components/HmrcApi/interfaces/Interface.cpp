#include "HmrcApi/interfaces/Interface.h"

#include "HmrcApi/records/Responses.h"
#include "HmrcApi/records/Summaries.h"

namespace HmrcApi
{

const Interface<CPayeResponse> kPaye{{"Individual PAYE",
                                      "individual-paye/nino/",
                                      "National Insurance number",
                                      "NINO_INVALID",
                                      "1.0",
                                      "read:individual-paye",
                                      {nullptr, "paye-EVERYTHING", "paye-EVERYTHING_MISSING_PAY_AND_TAX",
                                       "paye-EMPLOYED", "paye-EMPLOYED_2", "paye-PENSIONER", "paye-JOBSEEKER"}},
                                     &ReadPayeResponse};

// The one PAYE example of someone without other income goes with the answer below the maximum.
const Interface<CNationalInsuranceResponse> kNationalInsurance{
    {"National Insurance",
     "national-insurance/sa/",
     "UTR",
     "SA_UTR_INVALID",
     "1.1",
     "read:national-insurance",
     {nullptr, "national-insurance-HAPPY_PATH_2", "national-insurance-HAPPY_PATH_2", "national-insurance-HAPPY_PATH_1",
      "national-insurance-HAPPY_PATH_2", "national-insurance-HAPPY_PATH_2", "national-insurance-HAPPY_PATH_2"}},
    &ReadNationalInsuranceResponse};

// HMRC has two examples of each; the second has the members that are always there, and stands for whatever has less.
#define SUMMARY_EXAMPLES(group)                                                                                        \
    {                                                                                                                  \
        nullptr, group "-HAPPY_PATH_1", group "-HAPPY_PATH_2", group "-HAPPY_PATH_2", group "-HAPPY_PATH_1",           \
            group "-HAPPY_PATH_1", group "-HAPPY_PATH_1"                                                               \
    }

const Interface<CEmploymentHistoryResponse> kEmploymentHistory{
    {"Individual Employment", "individual-employment/sa/", "UTR", "SA_UTR_INVALID", "1.2", "read:individual-employment",
     SUMMARY_EXAMPLES("individual-employment")},
    &ReadEmploymentHistoryResponse};

const Interface<CIncomeSummaryResponse> kIncomeSummary{{"Individual Income", "individual-income/sa/", "UTR",
                                                        "SA_UTR_INVALID", "1.2", "read:individual-income",
                                                        SUMMARY_EXAMPLES("individual-income")},
                                                       &ReadIncomeSummaryResponse};

const Interface<CBenefitsSummaryResponse> kBenefitsSummary{{"Individual Benefits", "individual-benefits/sa/", "UTR",
                                                            "SA_UTR_INVALID", "1.1", "read:individual-benefits",
                                                            SUMMARY_EXAMPLES("individual-benefits")},
                                                           &ReadBenefitsSummaryResponse};

const Interface<CTaxSummaryResponse> kTaxSummary{{"Individual Tax", "individual-tax/sa/", "UTR", "SA_UTR_INVALID",
                                                  "1.1", "read:individual-tax", SUMMARY_EXAMPLES("individual-tax")},
                                                 &ReadTaxSummaryResponse};

} // namespace HmrcApi
