#include "host/value/MachineMemory.h"

#include <algorithm>
#include <atomic>
#include <fstream>

#include <unistd.h>

namespace ombrelune {

namespace {

std::size_t MeasuredMemory()
{
    std::size_t memory =
        static_cast<std::size_t>(sysconf(_SC_PHYS_PAGES)) * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    // The number is missing, or the word "max", where there is no limit.
    for (char const* limit : {"/sys/fs/cgroup/memory.max", "/sys/fs/cgroup/memory/memory.limit_in_bytes"}) {
        std::ifstream file(limit);
        if (std::size_t bound = 0; file >> bound) memory = std::min(memory, bound);
    }
    return memory;
}

std::atomic<std::size_t>& Memory()
{
    static std::atomic<std::size_t> bytes{MeasuredMemory()};
    return bytes;
}

} // namespace

std::size_t MachineMemory() { return Memory(); }

void SetMachineMemory(std::size_t bytes) { Memory() = bytes; }

} // namespace ombrelune
