#pragma once

// Among whom an amount of a client, a partnership or a joint source is split.
//
// Each once, clients first, then partnerships, both by name without regard to case; one without a record is left out.
// All read the current connection and throw Cellar::DatabaseError.

#include "MorvUt/Export.h"
#include "MorvUt/ui/grids/Entity.h"
#include "Quarry/Keys.h"

/// The client, and the partnerships that the client is a member of.
MORVUT_API CEntityArray EntitiesOf(const ClientId& client);
/// The members of the partnership.
MORVUT_API CEntityArray EntitiesOf(const PartnershipId& partnership);
/// The client of a joint source of a tax year (the id of its CJointIncomeSourceTaxYear), then the spouse, whatever
/// their names.
MORVUT_API CEntityArray EntitiesOfJointSource(long jointIncomeSourceTaxYearId);
