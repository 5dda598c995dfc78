#pragma once

// Value types for screens and rules, whole.

#include "Kiln/CAmt.h"
#include "Kiln/CDate.h"
