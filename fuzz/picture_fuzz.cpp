// Any bytes as a picture file.

#include <string>

#include <sys/mman.h>
#include <unistd.h>

#include "fuzz/Require.h"
#include "host/io/Pictures.h"
#include "host/value/MachineMemory.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    using namespace ombrelune;
    // Most of the time would go into clearing the large pictures that broken headers ask for.
    static bool const isSmall = (SetMachineMemory(std::size_t{4} << 20), true);
    Require(isSmall, "the machine counts as small");
    static int const file = memfd_create("picture", 0);
    static std::string const path = "/proc/self/fd/" + std::to_string(file);
    Require(ftruncate(file, 0) == 0 && pwrite(file, data, size, 0) == static_cast<ssize_t>(size),
            "the file can be written");
    ReadResult const whole = ReadPicture(path);
    Require(!whole.image == whole.problem.has_value(), "there is a picture or a problem");
    if (!whole.image) return 0;
    ReadResult const half = ReadPicture(path, {.proxy = 2});
    Require(half.image || half.problem, "there is a proxy or a problem");
    return 0;
}
