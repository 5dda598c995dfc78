#pragma once

// Whose work the tracker keeps.

#include "Brix/Subjects.h"
#include "Quarry/Where.h"

/// A client, or a partnership.
struct TrackerOwner
{
    long id = 0; // of its own table
    bool isPartnership = false;

    friend bool operator==(const TrackerOwner&, const TrackerOwner&) = default;
};

/// The client when its id is set, else the partnership.
inline TrackerOwner OwnerOf(long clientId, long partnershipId) noexcept
{
    return clientId > 0 ? TrackerOwner{clientId, false} : TrackerOwner{partnershipId, true};
}

inline Cellar::Subject SubjectOf(const TrackerOwner& owner) noexcept
{
    return owner.isPartnership ? Brix::SubjectOf(PartnershipId(owner.id)) : Brix::SubjectOf(ClientId(owner.id));
}

/// The column of a record class that holds the owner; of those that only one kind of owner has, that one.
template<class Record>
constexpr int OwnerColumn(const TrackerOwner& owner) noexcept
{
    if constexpr (!requires { Record::kPClientID; })
        return Record::kClientID;
    else if constexpr (!requires { Record::kClientID; })
        return Record::kPClientID;
    else
        return owner.isPartnership ? Record::kPClientID : Record::kClientID;
}
/// Rows of a record class that belong to the owner.
template<class Record>
Quarry::Where OwnedBy(const TrackerOwner& owner)
{
    return {OwnerColumn<Record>(owner), owner.id};
}
/// Makes the current row the owner's.
template<class Record>
void SetOwner(Record& row, const TrackerOwner& owner)
{
    row.Set(OwnerColumn<Record>(owner), owner.id);
}
