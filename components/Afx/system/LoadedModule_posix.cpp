#include "Afx/system/LoadedModule.h"

#include <cinttypes>
#include <cstdio>
#include <cstring>
#include <fstream>

#include <dlfcn.h>
#include <link.h>

namespace Afx
{
namespace
{

/// The path of the file that is mapped at the address; empty when the system does not tell.
std::string MappedFile(const void* address)
{
    const auto wanted = reinterpret_cast<std::uintptr_t>(address);
    std::ifstream maps("/proc/self/maps");
    for (std::string line; std::getline(maps, line);) {
        std::uintptr_t first = 0, end = 0;
        if (std::sscanf(line.c_str(), "%" SCNxPTR "-%" SCNxPTR, &first, &end) == 2 && wanted >= first && wanted < end)
            return line.find('/') == std::string::npos ? std::string() : line.substr(line.find('/'));
    }
    return {};
}

/// The library's path. The name by which it was loaded may be relative to a folder that was left since.
std::string LibraryOf(const void* own)
{
    Dl_info info{};
    if (dladdr(own, &info) != 0 && info.dli_fname && *info.dli_fname == '/')
        return info.dli_fname;
    return MappedFile(own);
}

/// The headers of sections stand at the end of such a file. One that was cut short would be mapped all the same, and
/// end the program with a bus error. What cannot be read is left to the loader, whose words are better.
bool IsCutShort(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    ElfW(Ehdr) header{};
    if (!file.read(reinterpret_cast<char*>(&header), sizeof header) ||
        std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0)
        return false;
    file.seekg(0, std::ios::end);
    const auto size = static_cast<std::uintmax_t>(file.tellg());
    return std::uintmax_t{header.e_phoff} + std::uintmax_t{header.e_phnum} * header.e_phentsize > size ||
           std::uintmax_t{header.e_shoff} + std::uintmax_t{header.e_shnum} * header.e_shentsize > size;
}

ModuleEntry Failure()
{
    const char* problem = dlerror();
    return {nullptr, problem ? problem : "a module cannot be loaded"};
}

} // namespace

ModuleEntry LoadModuleBeside(const void* own, const char* file, const char* entry)
{
    const std::string library = LibraryOf(own);
    if (library.empty())
        return {nullptr,
                std::string(file) + " cannot be found: the system does not tell where the library beside it stands"};
    const std::string path = library.substr(0, library.rfind('/') + 1) + file;
    if (IsCutShort(path))
        return {nullptr, path + " is cut short"};
    void* module = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    void* function = module ? dlsym(module, entry) : nullptr;
    return function ? ModuleEntry{reinterpret_cast<void (*)()>(function), {}} : Failure();
}

} // namespace Afx
