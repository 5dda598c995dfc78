#include "Afx/system/LoadedModule.h"

#include <filesystem>

#include "Afx/Platform.h"

namespace Afx
{
namespace
{

/// The path of the library that holds the address; empty on failure.
std::filesystem::path LibraryOf(const void* own)
{
    HMODULE library = nullptr;
    wchar_t path[32768]; // the longest there is
    if (!GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                            static_cast<LPCWSTR>(own), &library))
        return {};
    const DWORD length = GetModuleFileNameW(library, path, static_cast<DWORD>(std::size(path)));
    return std::wstring(path, length);
}

} // namespace

ModuleEntry LoadModuleBeside(const void* own, const char* file, const char* entry)
{
    const std::filesystem::path path = LibraryOf(own).replace_filename(file);
    // What the module needs in turn is looked for beside it and in the system's folder.
    const HMODULE module =
        path.is_absolute()
            ? LoadLibraryExW(path.c_str(), nullptr, LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_DEFAULT_DIRS)
            : nullptr;
    const FARPROC function = module ? GetProcAddress(module, entry) : nullptr;
    if (function)
        return {reinterpret_cast<void (*)()>(function), {}};
    return {nullptr, path.string() + " cannot be loaded (Windows error " + std::to_string(GetLastError()) + ')'};
}

} // namespace Afx
