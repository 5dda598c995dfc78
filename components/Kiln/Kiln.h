#pragma once

// Value types for screens and rules, and controls, whole.

#include "Kiln/CAmt.h"
#include "Kiln/CDate.h"
#include "Kiln/controls/DateEdit.h"
