#pragma once

// Tax forms of the sample's individuals, with what stands on them.

#include <vector>

#include "Names.h"
#include "Rows.h"

namespace Morv::Sample
{

struct Individual
{
    long id = 0;
    int number = 0; // the how manieth client
    short firstYear = kSampleYear;
    bool isDormant = false; // in the sample's year
    bool isMinister = false;
    bool isActive = true;
    std::vector<Form> forms = {}; // youngest last
};

Form AddForm(long client, short year, bool isDormant);

/// Forms from the first year to the sample's, or to the one after it, with their schedules and submissions. The
/// accrued allowance of an interest source is entered in its first year and worked out from then on.
void AddReturns(Individual& client, Dice& dice);

/// One source of interest that is shared equally, on the returns of both.
void AddJointInterest(const Individual& client, const Individual& spouse, Dice& dice);

} // namespace Morv::Sample
