#pragma once

// The suite's text class, under the name by which its callers include it.

#include "Afx/text/CString.h"
