#include "MorvUt/context/status/OwnerRecords.h"

#include <climits>
#include <stdexcept>

#include "Brix/Subjects.h"
#include "MorvUt/taxyear/TaxYear.h"
#include "MorvUt/users/UserData.h"
#include "Quarry/Session.h"

namespace
{

constexpr int kEarliestYearly = 1997; // rows of earlier years stand in for no other year

/// How near a row's year is to the year that is asked for, 0 for that year itself: earlier years come before later
/// ones. INT_MAX: it does not serve.
int Remoteness(int rowYear, int year)
{
    constexpr int kLater = 1 << 16; // behind all earlier years
    if (rowYear == year)
        return 0;
    if (rowYear < year)
        return rowYear >= kEarliestYearly ? year - rowYear : INT_MAX;
    return rowYear <= GetMaxRealTaxYear() ? kLater + rowYear - year : INT_MAX;
}

/// Moves to the first of the nearest rows.
template<class Yearly>
bool MoveToNearest(Yearly& rows, short year)
{
    int nearest = INT_MAX, position = -1;
    for (rows.MoveFirst(); !rows.IsEOL(); rows.MoveNext()) {
        if (const int remoteness = Remoteness(rows.GetYear(), year); remoteness < nearest) {
            nearest = remoteness;
            position = rows.GetPosition();
        }
    }
    return rows.MoveTo(position);
}

template<class Yearly>
struct OwnerOf;
template<>
struct OwnerOf<Brix::CClientYearly>
{
    using Id = ClientId;
    static constexpr int kColumn = Brix::CClientYearly::kClientID;
};
template<>
struct OwnerOf<Brix::CPartnershipYearly>
{
    using Id = PartnershipId;
    static constexpr int kColumn = Brix::CPartnershipYearly::kPClientID;
};

/// Whose rows the list was opened for: a new row has what the list was opened with. Takes a copy.
template<class Yearly>
long OwnerOfList(Yearly rows)
{
    rows.AddNew();
    const long owner = rows.Current().GetLong(OwnerOf<Yearly>::kColumn);
    if (owner == 0)
        throw std::logic_error(std::string(rows.GetTable().sqlName) +
                               ": a row can be made only in a list that was opened for one owner");
    return owner;
}

template<class Yearly>
void Create(Yearly& rows, short year)
{
    const long owner = OwnerOfList(rows);
    Quarry::CTransaction transaction(Cellar::Intent::Write, Brix::SubjectOf(typename OwnerOf<Yearly>::Id(owner)));
    Yearly made;
    if (made.Open({{OwnerOf<Yearly>::kColumn, owner}, {Yearly::kYear, year}})) { // since the list was read
        made.Open({{OwnerOf<Yearly>::kColumn, owner}});
        MoveToNearest(made, year);
    } else {
        made = rows;
        if (MoveToNearest(made, year)) {
            made.CopyRow();
            made.SetYear(year);
        } else {
            made.AddNew();
            made.SetYear(year);
            made.SetStatus(0);
        }
        made.Update();
    }
    transaction.Commit();
    rows = std::move(made);
}

template<class Yearly>
bool GetYearly(Yearly& rows, short year, bool create)
{
    if (MoveToNearest(rows, year) && (!create || rows.GetYear() == year))
        return true;
    if (create)
        Create(rows, year);
    return create;
}

/// The statement is direct, so that the row's version stays; no cache holds what it writes.
void Stamp(const Cellar::SqlText& statement, long id)
{
    const Quarry::CIgnoreDirectSQL quiet;
    const Kiln::CDate today = Kiln::CDate::Today();
    Quarry::GetConnection().ExecuteDirectf(
        statement, COleDateTime(today.GetYear(), today.GetMonth(), today.GetDay(), 0, 0, 0), CUserData::m_strUser, id);
}

} // namespace

bool GetClientYearly(Brix::CClientYearly& rows, short year, bool create) { return GetYearly(rows, year, create); }

bool GetPartnershipYearly(Brix::CPartnershipYearly& rows, short year, bool create)
{
    return GetYearly(rows, year, create);
}

void UpdateClientModified(long clientId)
{
    Stamp("UPDATE [BRIXClient] SET [dtModified] = %t, [strModifiedBy] = %s WHERE [lID] = %ld", clientId);
}

void UpdatePartnershipModified(long partnershipId)
{
    Stamp("UPDATE [BRIXPartnership] SET [dtModified] = %t, [strModifiedBy] = %s WHERE [lID] = %ld", partnershipId);
}
