#pragma once

// The tax data model, whole.

#include "Brix/Check.h"
#include "Brix/Copy.h"
#include "Brix/Kinds.h"
#include "Brix/PracticeKey.h"
#include "Brix/Records.h"
#include "Brix/RowOf.h"
#include "Brix/Schema.h"
#include "Brix/Subjects.h"
