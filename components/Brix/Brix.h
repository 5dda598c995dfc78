#pragma once

// The tax data model, whole.

#include "Brix/Check.h"
#include "Brix/Keys.h"
#include "Brix/PracticeKey.h"
#include "Brix/Records.h"
#include "Brix/Schema.h"
