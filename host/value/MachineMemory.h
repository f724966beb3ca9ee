#pragma once

#include <cstddef>

namespace ombrelune {

/// Bytes of memory that this process could use at most: the machine's, or those of its control group.
std::size_t MachineMemory();

/// From now on the machine counts as one with so many bytes, as for a test of what is refused.
void SetMachineMemory(std::size_t bytes);

} // namespace ombrelune
