#pragma once

// Parts of a library that are loaded when they are needed: what they stand on would cost the start of every program.

#include <string>
#include <utility>

#include "Afx/Export.h"

/// Stands before a module's entry point, which is extern "C".
#ifdef _WIN32
#define AFX_MODULE_ENTRY __declspec(dllexport)
#else
#define AFX_MODULE_ENTRY __attribute__((visibility("default")))
#endif

namespace Afx
{

/// A module's entry point, or why there is none.
struct ModuleEntry
{
    void (*function)() = nullptr; // to be cast to what the module declares
    std::string problem;          // for people, with the path; empty when there is one
};

/// Loads `file` from the folder of the library (or program) in which `own`, something static, stands, and finds `entry`
/// in it. Neither the working directory nor the environment has a say in which file that is. The module stays for the
/// life of the process, since what came from it may live as long.
AFX_API ModuleEntry LoadModuleBeside(const void* own, const char* file, const char* entry);

/// A module's table of functions, or why there is none.
template<class Functions>
struct ModuleFunctions
{
    const Functions* functions = nullptr;
    std::string problem; // empty when they are there
};

/// The same where the entry point takes nothing and gives the table.
template<class Functions>
ModuleFunctions<Functions> LoadFunctionsBeside(const void* own, const char* file, const char* entry)
{
    ModuleEntry found = LoadModuleBeside(own, file, entry);
    if (!found.function)
        return {nullptr, std::move(found.problem)};
    return {reinterpret_cast<const Functions* (*)()>(found.function)(), {}};
}

} // namespace Afx
