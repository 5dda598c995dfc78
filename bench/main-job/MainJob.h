#pragma once

// What the two measurements of the main job share.

#include "MorvUt/MorvUt.h"
#include "Places.h"
#include "support/Practice.h"

/// One client beside the same rows written in C.
int RunComparison(int argc, char** argv);
/// How the time grows with what HMRC sends for one client.
int RunGrowth();
