#include "host/value/TagList.h"

#include <algorithm>

namespace ombrelune {

TagList& TagList::Add(Tag tag)
{
    tags_.push_back(std::move(tag));
    return *this;
}

TagList& TagList::Set(Tag tag)
{
    std::erase_if(tags_, [&](Tag const& old) { return old.key == tag.key; });
    return Add(std::move(tag));
}

TagList& TagList::Merge(TagList const& other)
{
    for (Tag const& tag : other) std::erase_if(tags_, [&](Tag const& old) { return old.key == tag.key; });
    tags_.insert(tags_.end(), other.begin(), other.end());
    return *this;
}

TagValue const* TagList::Find(std::uint32_t key) const
{
    auto found = std::find_if(tags_.begin(), tags_.end(), [&](Tag const& tag) { return tag.key == key; });
    return found == tags_.end() ? nullptr : &found->value;
}

std::vector<TagValue> TagList::All(std::uint32_t key) const
{
    std::vector<TagValue> values;
    for (Tag const& tag : tags_)
        if (tag.key == key) values.push_back(tag.value);
    return values;
}

std::int64_t TagList::GetInt(std::uint32_t key, std::int64_t fallback) const
{
    auto const* value = Find(key);
    if (!value) return fallback;
    if (auto const* number = std::get_if<std::int64_t>(value)) return *number;
    if (auto const* number = std::get_if<double>(value)) return static_cast<std::int64_t>(*number);
    return fallback;
}

double TagList::GetFloat(std::uint32_t key, double fallback) const
{
    auto const* value = Find(key);
    if (!value) return fallback;
    if (auto const* number = std::get_if<double>(value)) return *number;
    if (auto const* number = std::get_if<std::int64_t>(value)) return static_cast<double>(*number);
    return fallback;
}

std::string TagList::GetText(std::uint32_t key, std::string const& fallback) const
{
    auto const* value = Find(key);
    if (!value) return fallback;
    if (auto const* text = std::get_if<std::string>(value)) return *text;
    if (auto const* id = std::get_if<FuID>(value)) return id->Text();
    return fallback;
}

} // namespace ombrelune
