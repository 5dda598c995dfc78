#include "MorvUt/ui/lists/BankNames.h"

#include "Brix/Records.h"
#include "Quarry/Session.h"

std::vector<CString> BankNames()
{
    std::vector<CString> names;
    if (!Quarry::HasConnection())
        return names;
    Brix::CBank bank;
    for (bank.Open({}, {{Brix::CBank::kName}}); !bank.IsEOL(); bank.MoveNext())
        if (CString name = bank.GetName(); !name.IsEmpty())
            names.push_back(std::move(name));
    return names;
}
