#pragma once

// What tells employments and private pensions apart: HMRC's items, staged rows and schedules of the return alike.

#include <string>
#include <unordered_map>
#include <vector>

#include "MorvUt/hmrc/staging/Pairing.h"
#include "MorvUt/hmrc/staging/StagedYear.h"

namespace HmrcApi
{

struct Payee
{
    std::string reference, worksNumber;
    std::string start;        // the day; empty for none
    std::string figures;      // pay and tax; empty for none
    std::string more;         // whatever else is compared when all else is equal
    bool isWithdrawn = false; // of a staged row
    bool isFromHmrc = false;  // of a schedule: made from HMRC's records, not typed
    std::string rest = {};    // of items and rows of a reference that several items have: all that is left

    std::string Identity() const { return Joined({reference, worksNumber}); }
};

Payee PayeeOf(const StagedEmployment& item);
Payee PayeeOf(const StagedPension& item);
/// The start for comparing; the figures likewise.
std::string StartOf(const Kiln::CDate& start);
std::string FiguresOf(const Kiln::CAmt& pay, const Kiln::CAmt& tax);

template<class T>
std::vector<Payee> PayeesOf(const std::vector<T>& values)
{
    std::vector<Payee> payees;
    payees.reserve(values.size());
    for (const T& value : values)
        payees.push_back(PayeeOf(value));
    return payees;
}

/// The rounds in which two payees with the same reference and works number are found: by start and figures, by start,
/// by figures, in order.
inline constexpr int kSameRounds = 4;
Trait SameTrait(int round, const Payee& payee);
/// With another works number: by start, else by figures.
Trait ByStart(const Payee& payee);
Trait ByFigures(const Payee& payee);

using Counts = std::unordered_map<std::string, int>;
/// How many of each reference, withdrawn ones left out.
Counts CountByReference(const std::vector<Payee>& payees);
int CountOf(const Counts& counts, const std::string& text);

} // namespace HmrcApi
