#pragma once

// HMRC's PAYE answer in the terms of the staging rows, and how rows are brought into line with it.

#include <string>
#include <vector>

#include "MorvUt/hmrc/detail/StagingKeys.h"
#include "MorvUt/hmrc/detail/YearRecords.h"
#include "MorvUt/hmrc/fetch/PayePrepop.h"

namespace HmrcApi
{

/// A pension or state benefit as its staging row must be.
struct StagedPsb
{
    long mtdType = CPAYEPrepop::MTD_None;
    PayeIdentity identity; // of a private pension
    CString reference;     // for a row that is new
    CString payer;
    Kiln::CDate date;
    Kiln::CAmt amount;
    Kiln::CAmt tax;
};

struct CPAYEPrepop::Answer
{
    struct Employment
    {
        std::string key;
        std::shared_ptr<const Employment_t> record;
    };

    ClientId client;
    TaxYear taxYear;
    std::vector<Employment> employments;
    std::vector<StagedPsb> pensions;
    std::vector<StagedPsb> benefits;
    std::vector<StagedPsb> other; // state pension and its lump sum
    std::vector<std::shared_ptr<const TaxFreeAllowance_t>> allowances;
    StagedCounts counts; // of what the Update operations did

    short Year() const noexcept { return taxYear.GetRealTaxYear(); }
};

/// Pairs the items of an answer with stored rows, each row once: the row's number, or -1. `fits(pass, item, row)` is
/// asked for the best kind of fit first (pass 0), for every item, before the next.
template<class Fits>
std::vector<int> PairUp(std::size_t items, int rows, int passes, Fits fits)
{
    std::vector<int> rowOf(items, -1);
    std::vector<bool> isTaken(static_cast<std::size_t>(rows));
    for (int pass = 0; pass < passes; ++pass)
        for (std::size_t item = 0; item < items; ++item)
            for (int row = 0; row < rows && rowOf[item] < 0; ++row)
                if (!isTaken[static_cast<std::size_t>(row)] && fits(pass, item, row)) {
                    isTaken[static_cast<std::size_t>(row)] = true;
                    rowOf[item] = row;
                }
    return rowOf;
}

/// Items that nothing but their place in the answer tells apart swap keys, so that each has the key under which its
/// figures are stored: an answer's order means nothing. `holds(item, key)`: the row of that key has the item's figures.
template<class Holds>
void KeepKeys(std::vector<std::string>& keys, const std::vector<PayeIdentity>& identities, Holds holds)
{
    std::vector<bool> isKept(keys.size());
    for (std::size_t item = 0; item < keys.size(); ++item)
        for (std::size_t other = 0; other < keys.size() && !isKept[item]; ++other)
            if (!isKept[other] && identities[item] == identities[other] && holds(item, keys[other])) {
                keys[item].swap(keys[other]);
                isKept[item] = true;
            }
}

/// Saves the current row when it is not what is stored.
template<class List>
void SaveChanged(List& list, int& count)
{
    if (!list.IsDirty())
        return;
    list.Update();
    ++count;
}

/// Writes the items: `fill(list, item, isNew)` sets the columns of the row the list stands on. Rows that no item has
/// are marked withdrawn; a row that was withdrawn is so no longer. Gives the id of each item's row.
template<class List, class Fill>
std::vector<long> BringIntoLine(RowsUnder<List>& rows, const std::vector<int>& rowOf, Fill fill, StagedCounts& counts)
{
    std::vector<long> ids;
    std::vector<bool> isSent(static_cast<std::size_t>(rows.GetCount()));
    for (std::size_t item = 0; item < rowOf.size(); ++item) {
        const bool isNew = rowOf[item] < 0;
        List& list = isNew ? rows.AddNew() : rows[rowOf[item]];
        fill(list, item, isNew);
        Assign(list, &List::GetWithdrawn, &List::SetWithdrawn, false);
        SaveChanged(list, isNew ? counts.added : counts.changed);
        ids.push_back(list.GetID());
        if (!isNew)
            isSent[static_cast<std::size_t>(rowOf[item])] = true;
    }
    for (int row = 0; row < rows.GetCount(); ++row) {
        if (isSent[static_cast<std::size_t>(row)])
            continue;
        List& list = rows[row];
        Assign(list, &List::GetWithdrawn, &List::SetWithdrawn, true);
        SaveChanged(list, counts.withdrawn);
    }
    return ids;
}

} // namespace HmrcApi
