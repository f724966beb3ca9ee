#include "host/flow/ColorGroups.h"

#include <algorithm>
#include <charconv>

#include <fmt/format.h>

namespace ombrelune {

namespace {

std::string IdOfLabel(std::string const& label)
{
    std::string id = label.substr(0, label.find('('));
    std::erase_if(id, [](unsigned char c) { return !std::isalnum(c) && c != '_'; });
    return id;
}

std::string FreeName(Operator const& op, std::vector<ColorGroup> const& groups, std::string const& wanted)
{
    auto const isTaken = [&](std::string const& name) {
        return op.FindInput(name) || std::any_of(groups.begin(), groups.end(),
                                                 [&](ColorGroup const& group) { return group.name == name; });
    };
    std::string name = wanted;
    for (int n = 1; isTaken(name); ++n) name = fmt::format("{}_{}", wanted, n);
    return name;
}

} // namespace

std::vector<ColorGroup> ColorGroups(Operator const& op)
{
    std::vector<ColorGroup> groups;
    std::int64_t open = -1;
    for (auto const& input : op.Inputs()) {
        TagList const& tags = input->Attributes();
        std::int64_t const group = tags.GetId(Attr_InputControl) == CLSID_InputControl_Color
                                       ? tags.GetInt(Attr_GroupNumber, -1)
                                       : -1;
        if (group >= 0 && group != open)
            groups.push_back({FreeName(op, groups, IdOfLabel(input->Label())), {}});
        if (group >= 0) groups.back().channels.push_back(input.get());
        open = group;
    }
    return groups;
}

std::vector<std::string> ColorChannels(std::string_view text)
{
    std::vector<std::string> channels;
    if (text.starts_with('#')) {
        text.remove_prefix(1);
        if (text.size() != 6 && text.size() != 8) return {};
        for (; !text.empty(); text.remove_prefix(2)) {
            unsigned byte = 0;
            auto const [end, error] = std::from_chars(text.data(), text.data() + 2, byte, 16);
            if (error != std::errc() || end != text.data() + 2) return {};
            channels.push_back(fmt::format("{}", byte / 255.0));
        }
        return channels;
    }
    while (true) {
        auto const comma = std::min(text.find(','), text.size());
        channels.emplace_back(text.substr(0, comma));
        if (comma == text.size()) break;
        text.remove_prefix(comma + 1);
    }
    if (channels.size() != 3 && channels.size() != 4) return {};
    return channels;
}

} // namespace ombrelune
