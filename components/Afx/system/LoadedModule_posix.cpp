#include <dlfcn.h>

#include "Afx/system/LoadedModule.h"

namespace Afx
{
namespace
{

ModuleEntry Failure()
{
    const char* problem = dlerror();
    return {nullptr, problem ? problem : "a module cannot be loaded"};
}

} // namespace

ModuleEntry LoadModuleBeside(const void* own, const char* file, const char* entry)
{
    Dl_info info{};
    const std::string library = dladdr(own, &info) != 0 && info.dli_fname ? info.dli_fname : "";
    // A program's name is what it was called by, and a relative path may mean another file by now.
    if (!library.starts_with('/'))
        return {nullptr, std::string(file) +
                             " cannot be found: the library beside which it stands was loaded by the "
                             "relative path \"" +
                             library + '"'};
    const std::string path = library.substr(0, library.rfind('/') + 1) + file;
    void* module = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    void* function = module ? dlsym(module, entry) : nullptr;
    return function ? ModuleEntry{reinterpret_cast<void (*)()>(function), {}} : Failure();
}

} // namespace Afx
