#pragma once

#include <optional>
#include <string>
#include <vector>

#include "apps/ombrelune/Example.h"
#include "apps/ombrelune/ToolJson.h"

namespace ombrelune::app {

/// A row of a tool's table of inputs; the four inputs of a colour are one.
struct InputRow {
    std::string page, label, id, kind, value, range;
};

/// What a page tells of a tool.
struct ToolPage {
    std::string name; ///< of its files: "Invert" for BF_Invert, "built-in-Merge" for an operator of the host
    std::string family;
    Json tool; ///< ToolJson
    std::vector<InputRow> inputs;
    std::string note; ///< Markdown, may be empty
    std::optional<Example> example;
};

/// Text with what HTML means something by escaped.
std::string HtmlText(std::string const& text);
/// "./ombrelune ..." as a shell takes it, broken into lines of about `width` letters.
std::string CommandLine(std::vector<std::string> const& words, std::size_t width);

/// Pages of one family stand together, the families in order.
std::string MarkdownPage(ToolPage const& page);
std::string MarkdownIndex(std::vector<ToolPage> const& pages);
/// One HTML file with search; pictures lie beside it.
std::string GalleryHtml(std::vector<ToolPage> const& pages);

} // namespace ombrelune::app
