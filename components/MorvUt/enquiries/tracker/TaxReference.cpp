#include "MorvUt/enquiries/tracker/TaxReference.h"

#include <string>

#include "Afx/text/Ascii.h"
#include "Brix/Records.h"
#include "Quarry/DataCursor.h"

namespace
{

std::string DigitsOf(std::string_view text)
{
    std::string digits;
    for (const char c : text)
        if (Afx::IsDigit(c))
            digits += c;
    return digits;
}

/// The first row of that reference; 0: none. The database cannot leave out what is no digit.
template<class Owner>
long FindHolder(Cellar::CConnection& connection, const std::string& digits, long except)
{
    for (Quarry::CCursor<Owner> owner(connection, {Quarry::Where::NotNull(Owner::kUTR)}, {{0}},
                                      {.columns = {0, Owner::kUTR}});
         owner.Next();)
        if (const long id = owner->GetID(); id != except && DigitsOf(owner->GetUTR().View()) == digits)
            return id;
    return 0;
}

template<class Form>
short LatestYear(Cellar::CConnection& connection, long owner, int ownerColumn)
{
    Form form;
    return form.Open(connection, {{ownerColumn, owner}}, {{Form::kYear, true}}, {.first = 1}) ? form.GetYear()
                                                                                              : short{0};
}

} // namespace

int IsUniqueTaxReference(Cellar::CConnection& connection, long id, bool isPartnership, const char* reference,
                         long& otherId, bool& otherIsPartnership, short& year)
{
    const std::string digits = DigitsOf(reference ? reference : "");
    otherId = 0;
    otherIsPartnership = false;
    year = 0;
    if (digits.empty())
        return 1;
    otherId = FindHolder<Brix::CClient>(connection, digits, isPartnership ? 0 : id);
    if (otherId == 0) {
        otherId = FindHolder<Brix::CPartnership>(connection, digits, isPartnership ? id : 0);
        otherIsPartnership = otherId != 0;
    }
    if (otherId == 0)
        return 1;
    year = otherIsPartnership
               ? LatestYear<Brix::CPartnershipTaxForm>(connection, otherId, Brix::CPartnershipTaxForm::kPClientID)
               : LatestYear<Brix::CTaxForm>(connection, otherId, Brix::CTaxForm::kClientID);
    return 0;
}
