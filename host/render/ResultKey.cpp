#include "host/render/ResultKey.h"

#define XXH_INLINE_ALL
#include <xxhash.h>

namespace ombrelune {

ResultKeyBuilder& ResultKeyBuilder::AddBytes(void const* bytes, std::size_t count)
{
    bytes_.append(static_cast<char const*>(bytes), count);
    return *this;
}

ResultKeyBuilder& ResultKeyBuilder::Add(std::string_view text)
{
    // The length keeps "ab", "c" apart from "a", "bc".
    return Add(std::uint64_t{text.size()}).AddBytes(text.data(), text.size());
}

ResultKey ResultKeyBuilder::Key() const
{
    XXH128_hash_t const hash = XXH3_128bits(bytes_.data(), bytes_.size());
    return {hash.low64, hash.high64};
}

} // namespace ombrelune
