#pragma once

#include <concepts>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "host/value/FuID.h"

namespace ombrelune {

using TagValue = std::variant<std::int64_t, double, std::string, FuID, void*>;

/// One attribute: a number and its value. Booleans and all integers are kept as 64-bit integers.
struct Tag {
    template <class T>
    requires std::integral<T> || std::is_enum_v<T> Tag(std::uint32_t tagKey, T number)
        : key(tagKey), value(static_cast<std::int64_t>(number))
    {}
    template <std::floating_point T>
    Tag(std::uint32_t tagKey, T number) : key(tagKey), value(static_cast<double>(number))
    {}
    Tag(std::uint32_t tagKey, char const* text) : key(tagKey), value(std::string(text)) {}
    Tag(std::uint32_t tagKey, std::string text) : key(tagKey), value(std::move(text)) {}
    Tag(std::uint32_t tagKey, FuID id) : key(tagKey), value(id) {}
    /// Not owned: whoever gives an object keeps it alive as long as the list is read.
    template <class T>
    Tag(std::uint32_t tagKey, T* object)
        : key(tagKey), value(const_cast<void*>(static_cast<void const*>(object)))
    {}
    template <class R, class... A>
    Tag(std::uint32_t tagKey, R (*function)(A...)) : key(tagKey), value(reinterpret_cast<void*>(function))
    {}

    std::uint32_t key;
    TagValue value;
};

/// Ordered list of attributes; a key may occur several times (list entries, image channels).
class TagList {
public:
    TagList() = default;
    TagList(std::initializer_list<Tag> tags) : tags_(tags) {}

    TagList& Add(Tag tag);
    /// Replaces every earlier value of the tag's key.
    TagList& Set(Tag tag);
    /// Sets each key of the other list here.
    TagList& Merge(TagList const& other);

    /// First value of a key, null when absent.
    TagValue const* Find(std::uint32_t key) const;
    bool Has(std::uint32_t key) const { return Find(key) != nullptr; }
    std::vector<TagValue> All(std::uint32_t key) const;

    /// Integers and doubles convert into each other (truncating); any other kind gives the fallback.
    std::int64_t GetInt(std::uint32_t key, std::int64_t fallback = 0) const;
    double GetFloat(std::uint32_t key, double fallback = 0.0) const;
    bool GetBool(std::uint32_t key, bool fallback = false) const { return GetInt(key, fallback) != 0; }
    /// Texts and identifiers as text.
    std::string GetText(std::uint32_t key, std::string const& fallback = {}) const;
    FuID GetId(std::uint32_t key) const { return FuID(GetText(key)); }
    template <class T> T* GetPointer(std::uint32_t key) const
    {
        auto const* found = Find(key);
        auto const* pointer = found ? std::get_if<void*>(found) : nullptr;
        return pointer ? static_cast<T*>(*pointer) : nullptr;
    }
    template <class F> F* GetFunction(std::uint32_t key) const
    {
        return reinterpret_cast<F*>(GetPointer<void>(key));
    }

    auto begin() const { return tags_.begin(); }
    auto end() const { return tags_.end(); }

private:
    std::vector<Tag> tags_;
};

} // namespace ombrelune
