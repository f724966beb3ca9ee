#include "apps/ombrelune/Docs.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include <fmt/format.h>

#include "apps/ombrelune/Commands.h"
#include "host/builtin/Builtin.h"
#include "host/io/AtomicFile.h"
#include "host/io/Pictures.h"

namespace ombrelune::app {

namespace {

namespace fs = std::filesystem;

constexpr int kThumbnail = 320; // the longer side of a page's picture, in pixels

std::string PageName(Registry const& tool)
{
    std::string const name = ClassName(tool);
    if (tool.Category() == kBuiltinCategory) return "built-in-" + name; // there is a BF_Transform too
    return name.starts_with("BF_") ? name.substr(3) : name;
}

/// "Image Color" of the category "Ombrelune\Image Color".
std::string FamilyOf(Registry const& tool)
{
    std::string const category = tool.Category();
    auto const slash = category.find('\\');
    return slash == std::string::npos ? category : category.substr(slash + 1);
}

std::string DefaultText(Json const& input)
{
    Json const& value = input["default"];
    if (value.is_null() || input["kind"] == "image" || input["kind"] == "mask" || input["kind"] == "button" ||
        input["kind"] == "label" || input["kind"] == "group")
        return "";
    if (value.is_string()) return value.get<std::string>();
    if (value.is_array())
        return NumberText(value[0].get<double>()) + ", " + NumberText(value[1].get<double>());
    auto const number = value.get<double>();
    if (input["kind"] == "checkbox") return number > 0.5 ? "on" : "off";
    if (input.contains("entries") && number >= 0.0 && number < static_cast<double>(input["entries"].size()))
        return input["entries"][static_cast<std::size_t>(number)].get<std::string>();
    return NumberText(number);
}

std::string RangeOf(Json const& input)
{
    if (input["kind"] == "checkbox") return "";
    if (input.contains("required")) return input["required"] ? "required" : "optional";
    std::string range = RangeText(input);
    for (auto bar = range.find(" | "); bar != std::string::npos; bar = range.find(" | "))
        range.replace(bar, 3, ", ");
    return range;
}

std::vector<InputRow> RowsOf(Json const& tool)
{
    std::vector<InputRow> rows;
    auto color = tool["colors"].begin();
    std::set<std::string> grouped;
    for (Json const& input : tool["inputs"]) {
        auto const id = input["id"].get<std::string>();
        if (grouped.contains(id)) {
            rows.back().value += ", " + DefaultText(input);
            continue;
        }
        InputRow row{input["page"], input["label"], id, input["kind"], DefaultText(input), RangeOf(input)};
        if (color != tool["colors"].end() && (*color)["inputs"][0] == id) {
            for (Json const& channel : (*color)["inputs"]) grouped.insert(channel.get<std::string>());
            row.id = (*color)["id"];
            ++color;
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

/// As small as the page shows it: floats and colours beyond 1 are limited then too.
Ref<Image> Thumbnail(Image const& picture)
{
    double const scale =
        std::min(1.0, static_cast<double>(kThumbnail) / std::max(picture.Width(), picture.Height()));
    auto const side = [&](int size) { return std::max(static_cast<int>(size * scale + 0.5), 1); };
    return picture.ResizeOfImage(side(picture.Width()), side(picture.Height()));
}

std::optional<Problem> WriteText(fs::path const& path, std::string const& text)
{
    AtomicFile file(path.string());
    if (auto problem = file.Open()) return problem;
    std::fwrite(text.data(), 1, text.size(), file.Stream());
    return file.Commit();
}

class Writer {
public:
    explicit Writer(DocsOptions const& options)
        : examples_(options.examples), folder_(fs::path(options.folder) / "tools")
    {}

    ExitStatus Run()
    {
        if (std::error_code error; !fs::is_directory(examples_, error))
            return Complain(Problem{.file = examples_.string(),
                                    .text = "is no folder of example flows: name it with --examples",
                                    .isFile = true});
        for (Registry const* tool : Operator::AllOperators()) AddPage(*tool);
        std::stable_sort(pages_.begin(), pages_.end(), [](ToolPage const& a, ToolPage const& b) {
            auto const key = [](ToolPage const& page) {
                return std::tuple(page.family == kBuiltinCategory, page.family,
                                  page.tool["name"].get<std::string>());
            };
            return key(a) < key(b);
        });
        for (ToolPage const& page : pages_)
            Note(WriteText(folder_ / (page.name + ".md"), MarkdownPage(page)));
        Note(WriteText(folder_ / "README.md", MarkdownIndex(pages_)));
        Note(WriteText(folder_ / "index.html", GalleryHtml(pages_)));
        return status_;
    }

private:
    void AddPage(Registry const& tool)
    {
        ToolPage page{PageName(tool), FamilyOf(tool), ToolJson(tool), {}, {}, {}};
        page.inputs = RowsOf(page.tool);
        std::ifstream note(examples_ / (page.name + ".md"));
        std::ostringstream text;
        if (note) text << note.rdbuf();
        page.note = text.str();
        fs::path const flow = examples_ / (page.name + ".comp");
        if (std::error_code error; fs::exists(flow, error)) {
            ExampleReading reading = ReadExample(flow.string(), tool, page.name);
            for (Problem const& problem : reading.problems) Note(problem);
            page.example = std::move(reading.example);
        }
        if (page.example && page.example->picture) {
            page.example->picture = Thumbnail(*page.example->picture);
            fs::path const path = folder_ / "pictures" / (page.name + ".png");
            Note(WritePicture(*page.example->picture, path.string(), {.depth = kDepthInt8, .isSmall = true}));
        }
        pages_.push_back(std::move(page));
    }

    /// A page that fails is told of, and the others are written.
    void Note(std::optional<Problem> const& problem)
    {
        if (problem) status_ = std::max(status_, Complain(*problem));
    }

    fs::path examples_, folder_;
    std::vector<ToolPage> pages_;
    ExitStatus status_ = kDone;
};

} // namespace

ExitStatus Docs(DocsOptions const& options) { return Writer(options).Run(); }

} // namespace ombrelune::app
