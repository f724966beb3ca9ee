#include "shapes/svg/SvgXml.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <string>

#include <expat.h>
#include <fmt/format.h>

namespace ombrelune {

namespace {

constexpr int kDeepest = 100; // the reader forgets attributes beyond 127

class Check {
public:
    explicit Check(std::map<std::string, int>& leftOut)
        : leftOut_(leftOut), parser_(XML_ParserCreate(nullptr), XML_ParserFree)
    {
        XML_SetUserData(parser_.get(), this);
        XML_SetElementHandler(
            parser_.get(),
            [](void* check, char const* name, char const**) { static_cast<Check*>(check)->Open(name); },
            [](void* check, char const*) { --static_cast<Check*>(check)->depth_; });
        XML_SetEntityDeclHandler(parser_.get(), [](void* check, char const* name, int, char const*, int,
                                                   char const*, char const*, char const*, char const*) {
            static_cast<Check*>(check)->Stop(
                fmt::format("entity {} is declared: SVG is read without entities, "
                            "write what it stands for",
                            Quoted(name)));
        });
    }

    std::optional<Problem> Run(std::string_view text)
    {
        constexpr std::size_t kPiece = 1 << 20; // lengths are ints
        do {
            std::string_view const piece = text.substr(0, kPiece);
            text.remove_prefix(piece.size());
            if (XML_Parse(parser_.get(), piece.data(), static_cast<int>(piece.size()), text.empty()) !=
                XML_STATUS_OK)
                return ProblemHere();
        } while (!text.empty());
        return std::nullopt;
    }

private:
    void Open(std::string_view name)
    {
        if (depth_ == 0 && name != "svg") Stop(fmt::format("the document is {} and not svg", Quoted(name)));
        constexpr std::string_view kNotRead[] = {"clipPath", "filter",  "foreignObject", "image", "marker",
                                                 "mask",     "pattern", "symbol",        "text",  "use"};
        if (std::ranges::find(kNotRead, name) != std::end(kNotRead)) ++leftOut_[std::string(name)];
        if (++depth_ > kDeepest) Stop(fmt::format("elements are nested deeper than {}", kDeepest));
    }
    void Stop(std::string text)
    {
        if (text_.empty()) text_ = std::move(text);
        XML_StopParser(parser_.get(), XML_FALSE);
    }
    Problem ProblemHere() const
    {
        auto const line =
            static_cast<int>(std::min<XML_Size>(XML_GetCurrentLineNumber(parser_.get()), 1 << 30));
        if (!text_.empty()) return {.line = line, .text = text_};
        return {.line = line,
                .text = fmt::format("not well-formed: {}", XML_ErrorString(XML_GetErrorCode(parser_.get())))};
    }

    std::map<std::string, int>& leftOut_;
    std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser_;
    int depth_ = 0;
    std::string text_; // why we stopped, empty while all is well
};

} // namespace

std::optional<Problem> CheckSvgXml(std::string_view text, std::map<std::string, int>& leftOut)
{
    return Check(leftOut).Run(text);
}

} // namespace ombrelune
