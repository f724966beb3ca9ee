#pragma once

#include <compare>
#include <functional>
#include <string>
#include <string_view>

namespace ombrelune {

/// Interned identifier of inputs, outputs, data types and registered classes: equal texts share one address,
/// so comparing is comparing pointers. Texts stay for the life of the process. Thread-safe.
class FuID {
public:
    FuID() : FuID(std::string_view{}) {}
    FuID(std::string_view text);
    FuID(char const* text) : FuID(std::string_view{text}) {}
    FuID(std::string const& text) : FuID(std::string_view{text}) {}

    std::string const& Text() const { return *text_; }
    bool IsEmpty() const { return text_->empty(); }

    bool operator==(FuID const& other) const { return text_ == other.text_; }
    std::strong_ordering operator<=>(FuID const& other) const { return *text_ <=> *other.text_; }

private:
    std::string const* text_;
};

} // namespace ombrelune

template <> struct std::hash<ombrelune::FuID> {
    std::size_t operator()(ombrelune::FuID const& id) const noexcept
    {
        return std::hash<void const*>{}(&id.Text());
    }
};
