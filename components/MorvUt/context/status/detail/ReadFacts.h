#pragma once

// The facts that the rules look at, from the current connection. Throws Cellar::DatabaseError.

#include <span>
#include <vector>

#include "Brix/Records.h"
#include "MorvUt/context/status/StatusRules.h"

namespace Context::Detail
{

/// Which records a question looks at: one statement each.
struct Wanted
{
    bool owner = false;
    bool form = false;
    bool info = false; // and the form
    bool periods = false;
    bool submissions = false;
    bool currentYear = false; // no statement; but asking establishes it for the process
};
inline constexpr Wanted kEverything{true, true, true, true, true, true};

StatusFacts ReadFacts(long id, bool isPartnership, short year, const Wanted& wanted);
/// The facts of every client, then every partnership, each in the order of their ids: one statement for each table,
/// whatever their number.
std::vector<StatusFacts> ReadFactsOfAll(short year);

/// Of the current row alone.
StatusFacts FactsOf(const Brix::CClient& client);
StatusFacts FactsOf(const Brix::CPartnership& partnership);
/// Adds the year and what hangs on those rows: clients only or partnerships only, each after one of a smaller id. One
/// statement for each table.
void CompleteFacts(std::span<StatusFacts> owners, short year);

/// Of the current row of a tax form, and its further information.
StatusFacts FactsOf(const Brix::CTaxForm& form);

} // namespace Context::Detail
