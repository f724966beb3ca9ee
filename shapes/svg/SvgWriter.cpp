#include "shapes/svg/SvgWriter.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <memory>
#include <string_view>

#include <fmt/format.h>

#include "host/value/FrameFormat.h"
#include "shapes/KShapeGroup.h"

namespace ombrelune {

namespace {

constexpr float kFarthest = 1e6F;

/// A number of SVG with at most so many decimals, without zeros at its end.
std::string Digits(double v, int decimals = 4)
{
    std::string text = fmt::format("{:.{}f}", v, decimals);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
    return text == "-0" ? "0" : text;
}

std::string ColorText(KColor const& c)
{
    // Pictures hold colours times alpha, SVG without it.
    float const unmultiply = c.alpha > 0.0F ? 1.0F / c.alpha : 1.0F;
    auto const byte = [&](float v) {
        return static_cast<int>(std::lround(std::clamp(v * unmultiply, 0.0F, 1.0F) * 255.0F));
    };
    return fmt::format("#{:02x}{:02x}{:02x}", byte(c.red), byte(c.green), byte(c.blue));
}

/// The attribute of an opacity below 1.
std::string OpacityText(char const* attribute, KColor const& color, ChannelStyle const& channel)
{
    double const opacity =
        double{std::clamp(channel.opacity, 0.0F, 1.0F)} * std::clamp(color.alpha, 0.0F, 1.0F);
    return opacity < 1.0 ? fmt::format(" {}=\"{}\"", attribute, Digits(opacity)) : "";
}

/// Whether SVG can draw the pen as a stroke: in the middle of the path, with caps that it knows.
bool IsStroke(KPenStyle const& pen)
{
    return pen.bias == 0.0F && (pen.endType == 0 || pen.endRoundness == 0.0F || pen.endRoundness == 1.0F);
}

class Writer {
public:
    Writer(FrameFormat const& format, std::string& text)
        : width_(format.width), height_(format.height * format.yScale / format.xScale), text_(text)
    {}

    void Write(KShapeGroup const& group)
    {
        std::string const w = Digits(width_), h = Digits(height_);
        Add(R"(<svg xmlns="http://www.w3.org/2000/svg" width="{0}" height="{1}" viewBox="0 0 {0} {1}">)", w,
            h);
        text_ += '\n';
        for (int i = 0; i < group.GetCount(); ++i)
            for (KShape const* shape : group.Get(i)->Each<KShape>())
                WriteShape(*shape, group.Get(i)->styles[0]);
        text_ += "</svg>\n";
    }

private:
    template <class... Values> void Add(fmt::format_string<Values...> form, Values&&... values)
    {
        fmt::format_to(std::back_inserter(text_), form, std::forward<Values>(values)...);
    }

    void WriteShape(KShape const& shape, KStyle const& style)
    {
        bool const hasBrush = style.brush.enabled && shape.IsClosed(false);
        bool const hasPen = style.penChannel.enabled && style.pen.thickness > 0.0F;
        bool const isStroke = IsStroke(style.pen);
        if (hasBrush || (hasPen && isStroke)) {
            text_ += "  <path";
            if (hasBrush)
                Add(R"( fill="{}"{} fill-rule="evenodd")", ColorText(style.fill.color),
                    OpacityText("fill-opacity", style.fill.color, style.brush));
            else text_ += R"( fill="none")";
            if (hasPen && isStroke) AddStroke(style);
            AddPath(shape);
        }
        if (!hasPen || isStroke) return;
        KShapeEffectOutlineData stroke;
        stroke.pen = style.pen;
        stroke.pen.thickness *= 0.01F;
        std::unique_ptr<KShape> const outline(shape.OutlineOf(stroke));
        if (outline->GetCount() == 0) return;
        Add(R"(  <path fill="{}"{})", ColorText(style.pen.color),
            OpacityText("fill-opacity", style.pen.color, style.penChannel));
        AddPath(*outline);
    }

    void AddStroke(KStyle const& style)
    {
        KPenStyle const& pen = style.pen;
        double const thickness = 0.01 * pen.thickness * width_;
        Add(R"( stroke="{}"{} stroke-width="{}")", ColorText(pen.color),
            OpacityText("stroke-opacity", pen.color, style.penChannel), Digits(thickness));
        // Theirs counts from tip to tip and is at least 1, ours from the path.
        if (pen.joinType == kJoinMiter)
            Add(R"( stroke-miterlimit="{}")", Digits(std::max(2.0F * pen.miterLimit, 1.0F)));
        else Add(R"( stroke-linejoin="{}")", pen.joinType == kJoinRound ? "round" : "bevel");
        if (pen.endType != 0) Add(R"( stroke-linecap="{}")", pen.endRoundness == 0.0F ? "square" : "round");
        AddDashes(pen.dash, thickness);
    }

    void AddDashes(KShapeEffectDashDotData const& dash, double thickness)
    {
        if (dash.lineType == 0) return;
        constexpr float kShortest = 0.01F; // as the pen counts
        double const unit = thickness * dash.dashScale;
        int const slots =
            dash.lineType == 3 ? std::clamp(dash.dashCount, 1, KShapeEffectDashDotData::kSlots) : 1;
        text_ += " stroke-dasharray=\"";
        for (int i = 0; i < slots; ++i) {
            float const length = dash.lineType == 2 ? kShortest : std::max(dash.dashLengths[i], kShortest);
            Add("{}{} {}", i > 0 ? " " : "", Digits(length * unit),
                Digits(std::max(dash.spaceLengths[i], kShortest) * unit));
        }
        text_ += '"';
    }

    /// The path's attribute and the end of its element.
    void AddPath(KShape const& shape)
    {
        text_ += " d=\"";
        char command = 0;
        int left = 0; // points of a curve still to come
        for (KShapePoint const* p = shape.GetFirstPoint(); p; p = p->next) {
            if (left == 0) {
                constexpr std::string_view kCommands = "MLQC";
                constexpr int kPoints[] = {1, 1, 2, 3};
                left = kPoints[p->type];
                command = kCommands[static_cast<std::size_t>(p->type)];
                text_ += command;
            } else {
                text_ += ' ';
            }
            --left;
            Add("{} {}", Digits((0.5 + double{p->position.x}) * width_),
                Digits(0.5 * height_ - p->position.y * width_));
            if (p->closed) text_ += 'Z';
        }
        text_ += "\"/>\n";
    }

    double const width_, height_;
    std::string& text_;
};

} // namespace

std::optional<Problem> WriteSvg(KShapeGroup const& group, FrameFormat const& format, std::string& text)
{
    if (!group.IsWithin(kFarthest))
        return Problem{.text = "a point lies more than a million frames away, or nowhere: SVG holds none"};
    Writer(format, text).Write(group);
    return std::nullopt;
}

} // namespace ombrelune
