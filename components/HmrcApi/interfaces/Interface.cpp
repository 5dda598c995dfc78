#include "HmrcApi/interfaces/Interface.h"

#include "HmrcApi/records/Responses.h"

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

} // namespace HmrcApi
