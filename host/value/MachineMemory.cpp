#include "host/value/MachineMemory.h"

#include <algorithm>
#include <fstream>

#include <unistd.h>

namespace ombrelune {

std::size_t MachineMemory()
{
    static std::size_t const bytes = [] {
        std::size_t memory = static_cast<std::size_t>(sysconf(_SC_PHYS_PAGES)) *
                             static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
        // The number is missing, or the word "max", where there is no limit.
        for (char const* limit :
             {"/sys/fs/cgroup/memory.max", "/sys/fs/cgroup/memory/memory.limit_in_bytes"}) {
            std::ifstream file(limit);
            if (std::size_t bound = 0; file >> bound) memory = std::min(memory, bound);
        }
        return memory;
    }();
    return bytes;
}

} // namespace ombrelune
