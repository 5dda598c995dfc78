#pragma once

// The review of a client's differences on the screen, one after another.

#include "MorvUt/Export.h"
#include "MorvUt/hmrc/review/DifferencesDlg.h"

namespace HmrcApi
{

/// The rows of one difference, with the item as heading.
MORVUT_API void ShowDifference(CMTDDifferencesGrid& grid, const Difference& difference);

struct ReviewCount
{
    int accepted = 0, rejected = 0, skipped = 0;
    bool stopped = false; // the person did not go on
};

/// Puts each open difference of the client's year before the person and does what they decide. Each decision stands in
/// a transaction of its own, which sends nothing before the decision is confirmed. The person is told when somebody
/// else has decided meanwhile, or the figures are others; nothing is written then. Throws Cellar::DatabaseError.
MORVUT_API ReviewCount ReviewDifferences(ClientId client, TaxYear taxYear, CWnd* parent = nullptr);

} // namespace HmrcApi
