#pragma once

#include <cstddef>

namespace ombrelune {

/// Bytes of memory that this process could use at most: the machine's, or those of its control group.
std::size_t MachineMemory();

} // namespace ombrelune
