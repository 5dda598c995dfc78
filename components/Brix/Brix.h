#pragma once

// The tax data model, whole.

#include "Brix/Keys.h"
#include "Brix/Records.h"
#include "Brix/Schema.h"
