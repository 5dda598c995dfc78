#pragma once

// Where practices of the benchmarks lie.

#include <functional>
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
/// The whole of a program that uses them: starts the library up with a key for practices, gives what `run` answers (2,
/// with the reason on stderr, when it throws), closes the practice and removes the places.
int RunWithPlaces(const std::function<int()>& run);
/// Makes the practice, which replaces one that is there, and opens it.
void OpenPractice(const std::string& path);
