#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace ombrelune {

/// Names a result by all that it was made of. Equal keys stand for equal results.
struct ResultKey {
    std::uint64_t low = 0, high = 0;
    bool operator==(ResultKey const&) const = default;
};

struct ResultKeyHash {
    std::size_t operator()(ResultKey const& key) const { return key.low; }
};

/// Gathers what a result is made of; the key is the XXH3 hash of it, 128 bits wide, so that two results never
/// share one by chance.
class ResultKeyBuilder {
public:
    ResultKeyBuilder& Add(std::string_view text);
    ResultKeyBuilder& Add(double number) { return AddBytes(&number, sizeof number); }
    ResultKeyBuilder& Add(std::uint64_t number) { return AddBytes(&number, sizeof number); }
    ResultKeyBuilder& Add(ResultKey const& key) { return Add(key.low).Add(key.high); }
    ResultKey Key() const;

private:
    ResultKeyBuilder& AddBytes(void const* bytes, std::size_t count);

    std::string bytes_;
};

} // namespace ombrelune
