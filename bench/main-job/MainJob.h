#pragma once

// What the two measurements of the main job share.

#include <string>
#include <vector>

#include "MorvUt/MorvUt.h"
#include "support/Practice.h"

/// One client beside the same rows written in C.
int RunComparison(int argc, char** argv);
/// How the time grows with what HMRC sends for one client.
int RunGrowth();

/// A folder for practices that lasts as long as the program.
struct Place
{
    const char* name;
    std::string folder;
};
/// The disk, then, on machines that have one, a file system in memory, which nobody waits for.
const std::vector<Place>& Places();
/// Makes the practice, which replaces one that is there, and opens it.
void OpenPractice(const std::string& path);
