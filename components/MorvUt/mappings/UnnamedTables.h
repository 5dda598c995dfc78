#pragma once

// The tables that have no published name: other programs reach them through ppAllMappings only.

#include "MorvUt/mappings/TypeMappings.h"

namespace Mappings
{

#define NAMED(table)
#define UNNAMED(table) extern const TypeMapping table[];
#define OUTSIDE(table)
#include "MorvUt/mappings/tables.def"

} // namespace Mappings
