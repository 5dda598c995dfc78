#pragma once

// What the two measurements of the main job share.

#include <string>

#include "MorvUt/Clients.h"
#include "MorvUt/MorvUt.h"

/// One client beside the same rows written in C.
int RunComparison(int argc, char** argv);
/// How the time grows with what HMRC sends for one client.
int RunGrowth();

/// A folder on the disk that lasts as long as the program.
const std::string& Scratch();
/// Makes the practice, which replaces one that is there, and opens it.
void OpenPractice(const std::string& path);
