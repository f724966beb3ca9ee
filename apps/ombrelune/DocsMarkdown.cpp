#include <fmt/format.h>

#include "apps/ombrelune/Docs.h"

namespace ombrelune::app {

namespace {

/// Text that Markdown takes as it is, also within a table.
std::string Plain(std::string const& text)
{
    std::string plain;
    for (char c : text) {
        if (std::string_view("\\`*_|<>[]#").find(c) != std::string_view::npos) plain += '\\';
        plain += c == '\n' ? ' ' : c;
    }
    return plain;
}

std::string Code(std::string const& text) { return text.empty() ? "" : "`" + text + "`"; }

std::string TextOf(Json const& json) { return json.get<std::string>(); }

/// A word as a shell takes it.
std::string ShellWord(std::string const& word)
{
    bool const isPlain = word.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                                "0123456789_-+=.,/:%@") == std::string::npos;
    if (isPlain && !word.empty()) return word;
    std::string quoted = "'";
    for (char c : word) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
}

void AddInputs(std::string& text, ToolPage const& page)
{
    if (!page.inputs.empty()) text += "\n## Inputs\n";
    std::string chapter;
    bool hasSoft = false;
    for (InputRow const& row : page.inputs) {
        if (row.page != chapter) {
            chapter = row.page;
            text +=
                fmt::format("\n### {}\n\n| Input | Id | Kind | Default | Range |\n|---|---|---|---|---|\n",
                            Plain(chapter));
        }
        text += fmt::format("| {} | {} | {} | {} | {} |\n", Plain(row.label), Code(row.id), row.kind,
                            Plain(row.value), Plain(row.range));
        hasSoft = hasSoft || row.range.find('~') != std::string::npos;
    }
    if (hasSoft) text += "\n`~` is the end of the control; a value may go beyond.\n";
}

void AddOutputs(std::string& text, ToolPage const& page)
{
    text += "\n## Outputs\n\n| Output | Id | Type |\n|---|---|---|\n";
    for (Json const& output : page.tool["outputs"])
        text += fmt::format("| {} | {} | {} |\n", Plain(TextOf(output["label"])), Code(TextOf(output["id"])),
                            TextOf(output["type"]));
    if (!page.example || page.example->values.empty()) return;
    text += "\nIn the example:\n\n";
    for (auto const& [id, value] : page.example->values) text += fmt::format("    {} = {}\n", id, value);
}

} // namespace

std::string CommandLine(std::vector<std::string> const& words, std::size_t width)
{
    std::string text = "./ombrelune";
    for (std::size_t i = 0; i < words.size(); ++i) {
        std::string word = ShellWord(words[i]);
        // An option and its value stay together.
        if (words[i].starts_with("--") && i + 1 < words.size())
            word.append(" ").append(ShellWord(words[++i]));
        std::size_t const start = text.rfind('\n') + 1; // npos + 1 is 0
        text += text.size() - start + word.size() + 3 > width ? " \\\n    " : " ";
        text += word;
    }
    return text;
}

std::string MarkdownPage(ToolPage const& page)
{
    Json const& tool = page.tool;
    std::string text =
        fmt::format("# {}\n\n{}\n\n{} · {}\n", Plain(TextOf(tool["name"])),
                    Plain(TextOf(tool["description"])), Code(TextOf(tool["class"])), Plain(page.family));
    if (page.example && page.example->picture)
        text += fmt::format("\n![{}](pictures/{}.png)\n", Plain(TextOf(tool["name"])), page.name);
    if (page.example && !page.example->caption.empty())
        text += fmt::format("\n*{}*\n", Plain(page.example->caption));
    if (!page.note.empty()) text += "\n" + page.note;
    AddInputs(text, page);
    AddOutputs(text, page);
    if (!page.example) return text;
    std::string const end = page.example->flow.ends_with('\n') ? "" : "\n";
    text += fmt::format("\n## Flow\n\n`examples/{}.comp`:\n\n```lua\n{}{}```\n", page.name,
                        page.example->flow, end);
    if (!page.example->command.empty())
        text += fmt::format("\n## Command\n\nThe same picture without a flow:\n\n```sh\n{}\n```\n",
                            CommandLine(page.example->command, 100));
    return text;
}

std::string MarkdownIndex(std::vector<ToolPage> const& pages)
{
    std::string text = "# Tools\n\n`index.html` is the same as a gallery with search, for a browser.\n";
    constexpr int kColumns = 4;
    std::string family;
    int column = 0;
    auto const endRow = [&] {
        if (column % kColumns != 0) text += "</tr>\n";
        if (!family.empty()) text += "</table>\n";
    };
    for (ToolPage const& page : pages) {
        if (page.family != family) {
            endRow();
            family = page.family;
            column = 0;
            text += fmt::format("\n## {}\n\n<table>\n", Plain(family));
        }
        if (column % kColumns == 0) text += "<tr>\n";
        std::string const name = TextOf(page.tool["name"]);
        bool const hasPicture = page.example && page.example->picture;
        std::string const picture =
            hasPicture ? fmt::format("<img src=\"pictures/{}.png\" width=\"180\" alt=\"\"><br>", page.name)
                       : "";
        text += fmt::format("<td width=\"200\" valign=\"bottom\"><a href=\"{}.md\">{}{}</a></td>\n",
                            page.name, picture, HtmlText(name));
        if (++column % kColumns == 0) text += "</tr>\n";
    }
    endRow();
    return text;
}

} // namespace ombrelune::app
