#pragma once

// Where practices of the benchmarks lie.

#include <string>
#include <vector>

/// A folder for practices that lasts as long as the program.
struct Place
{
    const char* name;
    std::string folder;
};
/// The disk, then, on machines that have one, a file system in memory, which nobody waits for.
const std::vector<Place>& Places();
void RemovePlaces();
/// Makes the practice, which replaces one that is there, and opens it.
void OpenPractice(const std::string& path);
