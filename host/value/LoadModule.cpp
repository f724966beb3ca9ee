#include "host/value/LoadModule.h"

#include <filesystem>

#include <dlfcn.h>
#include <fmt/format.h>

namespace ombrelune {

namespace fs = std::filesystem;

ModuleEntry LoadModule(char const* file, char const* entry, char const* what)
{
    Dl_info self{};
    dladdr(reinterpret_cast<void const*>(&LoadModule), &self);
    std::string const path = (fs::path(self.dli_fname ? self.dli_fname : "").parent_path() / file).string();
    void* const library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    void* const function = library ? dlsym(library, entry) : nullptr;
    if (function) return {function, {}};
    char const* const reason = dlerror();
    return {nullptr,
            Problem{path, 0,
                    fmt::format("{} cannot be loaded: {}", what, reason ? reason : "it is not one of ours")}};
}

} // namespace ombrelune
