#pragma once

#include <string>

namespace Morv
{

/// What doctor has to say about one thing.
struct Finding
{
    const char* check;
    bool ok;
    std::string found;
    std::string action; // empty when ok
};

} // namespace Morv
