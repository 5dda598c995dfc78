#include "HmrcApi/interfaces/Interface.h"

namespace HmrcApi
{

const InterfaceFacts kPayeFacts{"Individual PAYE", "individual-paye/nino/", "1.0", "read:individual-paye"};
const InterfaceFacts kNationalInsuranceFacts{"National Insurance", "national-insurance/sa/", "1.1",
                                             "read:national-insurance"};

} // namespace HmrcApi
