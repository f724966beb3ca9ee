#include "host/graph/FusionDoc.h"

#include <algorithm>
#include <filesystem>

namespace ombrelune {

Operator* FusionDoc::AddOperator(Registry const& registry, std::string const& name, ScriptVal const& settings)
{
    TagList const tags{{Op_Document, this}, {Op_Name, name}};
    operators_.emplace_back(registry.NewFunction()(&registry, settings, tags));
    return operators_.back().get();
}

Operator* FusionDoc::FindOperator(std::string_view name) const
{
    auto found = std::find_if(operators_.begin(), operators_.end(),
                              [&](auto const& op) { return op->Name() == name; });
    return found == operators_.end() ? nullptr : found->get();
}

std::string ResolvePath(FusionDoc const* document, std::string const& path)
{
    std::filesystem::path const given(path);
    if (given.is_absolute() || !document || document->file.empty()) return path;
    return (std::filesystem::path(document->file).parent_path() / given).string();
}

FrameFormat const& FormatOf(FusionDoc const* document)
{
    static FrameFormat const standard;
    return document ? document->format : standard;
}

} // namespace ombrelune
