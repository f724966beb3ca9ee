#include "shapes/svg/SvgReader.h"

#include <algorithm>
#include <cmath>

#include <fmt/format.h>
#include <nanosvg.h>

#include "shapes/svg/SvgXml.h"

namespace ombrelune {

namespace {

using ImagePointer = std::unique_ptr<NSVGimage, decltype(&nsvgDelete)>;

constexpr float kFarthest = 1e9F; // pixels; beyond it a float cannot tell neighbours on any screen

KColor ColorOf(unsigned word)
{
    auto const channel = [&](unsigned shift) { return static_cast<float>(word >> shift & 0xFFU) / 255.0F; };
    return {channel(0), channel(8), channel(16), channel(24)};
}

/// Colour of a paint, alpha as its opacity.
KColor ColorOf(NSVGpaint const& paint)
{
    if (paint.type == NSVG_PAINT_COLOR) return ColorOf(paint.color);
    KColor sum;
    for (int i = 0; i < paint.gradient->nstops; ++i) sum += ColorOf(paint.gradient->stops[i].color);
    return sum /= static_cast<float>(paint.gradient->nstops);
}

bool IsPainted(NSVGpaint const& paint)
{
    return paint.type == NSVG_PAINT_COLOR ||
           (paint.type > NSVG_PAINT_COLOR && paint.gradient && paint.gradient->nstops > 0);
}

/// A paint as the colour of a fill and the opacity of its channel.
void SetPaint(KFillStyle& fill, ChannelStyle& channel, NSVGpaint const& paint, float opacity)
{
    channel.enabled = IsPainted(paint);
    if (!channel.enabled) return;
    fill.color = ColorOf(paint);
    channel.opacity = fill.color.alpha * opacity;
    fill.color.alpha = 1.0F;
}

class Converter {
public:
    explicit Converter(NSVGimage const& image) : width_(image.width), height_(image.height) {}

    void Add(KShapeGroup& group, NSVGshape const& drawn) const
    {
        KStyle style;
        SetPaint(style.fill, style.brush, drawn.fill, drawn.opacity);
        style.fill.type = drawn.fillRule == NSVG_FILLRULE_EVENODD ? 1 : 0;
        SetPen(style, drawn);
        // A fill closes open paths, and a pen does not: then each is a list of its own.
        bool const isOpen = HasOpenPath(drawn);
        if (!isOpen || !style.brush.enabled) return AddList(group, drawn, style, false);
        KStyle brushOnly = style;
        brushOnly.penChannel.enabled = false;
        AddList(group, drawn, brushOnly, true);
        style.brush.enabled = false;
        if (style.penChannel.enabled) AddList(group, drawn, style, false);
    }

private:
    static bool HasOpenPath(NSVGshape const& drawn)
    {
        for (NSVGpath const* path = drawn.paths; path; path = path->next)
            if (!path->closed) return true;
        return false;
    }

    void SetPen(KStyle& style, NSVGshape const& drawn) const
    {
        KPenStyle& pen = style.pen;
        SetPaint(pen, style.penChannel, drawn.stroke, drawn.opacity);
        style.penChannel.enabled = style.penChannel.enabled && drawn.strokeWidth > 0.0F;
        if (!style.penChannel.enabled) return;
        pen.thickness = drawn.strokeWidth / width_ * 100.0F;
        pen.joinType = drawn.strokeLineJoin == NSVG_JOIN_ROUND   ? kJoinRound
                       : drawn.strokeLineJoin == NSVG_JOIN_BEVEL ? kJoinBevel
                                                                 : kJoinMiter;
        pen.miterLimit = drawn.miterLimit / 2.0F; // theirs counts from tip to tip, ours from the path
        pen.joinPrecision = 24;
        pen.endType = drawn.strokeLineCap == NSVG_CAP_BUTT ? 0 : 1;
        pen.endRoundness = drawn.strokeLineCap == NSVG_CAP_SQUARE ? 0.0F : 1.0F;
        int const count = static_cast<unsigned char>(drawn.strokeDashCount);
        if (count <= 0) return;
        pen.dash.lineType = 3;
        // An odd number of lengths goes round twice, gaps and dashes changing places.
        pen.dash.dashCount = count % 2 == 0 ? count / 2 : count;
        for (int i = 0; i < pen.dash.dashCount; ++i) {
            pen.dash.dashLengths[i] = drawn.strokeDashArray[2 * i % count] / drawn.strokeWidth;
            pen.dash.spaceLengths[i] = drawn.strokeDashArray[(2 * i + 1) % count] / drawn.strokeWidth;
        }
    }

    void AddList(KShapeGroup& group, NSVGshape const& drawn, KStyle const& style, bool closeAll) const
    {
        auto shape = std::make_unique<KShape>();
        // The reader puts the paths of a shape in front of each other.
        std::vector<NSVGpath const*> paths;
        for (NSVGpath const* path = drawn.paths; path; path = path->next) paths.push_back(path);
        for (auto path = paths.rbegin(); path != paths.rend(); ++path) AddPath(*shape, **path, closeAll);
        if (shape->GetCount() == 0) return;
        auto list = std::make_unique<KShapeList>();
        list->SetStyle(style);
        list->mapping.Move(0.5F, 0.5F, 0.0F).Scale(1.0F, width_ / height_, 1.0F);
        list->AddLast(shape.release());
        group.Add(list.release(), false);
    }

    void AddPath(KShape& shape, NSVGpath const& path, bool close) const
    {
        float const* const p = path.pts;
        if (!HasLength(path)) return; // it would end the list of subpaths and hide what follows
        shape.MoveTo(At(p));
        int count = (path.npts - 1) / 3;
        // Closing adds a side back to the start, also where the path is there already.
        if (path.closed && count > 1 && IsSame(p + 6 * count, p) && IsLine(p + 6 * (count - 1))) --count;
        for (int i = 0; i < count; ++i) {
            float const* const c = p + std::ptrdiff_t{6} * i;
            if (IsLine(c)) shape.LineTo(At(c + 6));
            else shape.BezierTo(At(c + 2), At(c + 4), At(c + 6), false);
        }
        if (close || path.closed) shape.Close();
    }

    /// Whether any two points differ in units of shapes.
    bool HasLength(NSVGpath const& path) const
    {
        for (int i = 1; i < path.npts; ++i)
            if (At(path.pts) != At(path.pts + std::ptrdiff_t{2} * i)) return true;
        return false;
    }

    static bool IsSame(float const* a, float const* b) { return a[0] == b[0] && a[1] == b[1]; }

    /// Whether the handles of a curve lie at the thirds of its chord, as those of a straight side do.
    static bool IsLine(float const* c)
    {
        float const reach =
            std::max({std::abs(c[0]), std::abs(c[1]), std::abs(c[6]), std::abs(c[7])}) * 2e-6F + 1e-12F;
        for (int axis = 0; axis < 2; ++axis) {
            float const third = (c[6 + axis] - c[axis]) / 3.0F;
            if (!(std::abs(c[2 + axis] - c[axis] - third) <= reach) ||
                !(std::abs(c[4 + axis] - c[6 + axis] + third) <= reach))
                return false;
        }
        return true;
    }

    KVector2 At(float const* p) const
    {
        double const w = width_, h = height_;
        return {static_cast<float>((p[0] - 0.5 * w) / w), static_cast<float>((0.5 * h - p[1]) / w)};
    }

    float width_, height_;
};

bool IsInReach(NSVGshape const& drawn)
{
    auto const fits = [](float v) { return std::abs(v) <= kFarthest; };
    if (!fits(drawn.strokeWidth)) return false;
    for (NSVGpath const* path = drawn.paths; path; path = path->next)
        if (!std::all_of(path->pts, path->pts + std::ptrdiff_t{2} * path->npts, fits)) return false;
    return true;
}

} // namespace

SvgShapes ReadSvg(std::string const& text)
{
    std::map<std::string, int> leftOut;
    if (auto problem = CheckSvgXml(text, leftOut)) return {nullptr, std::move(problem)};
    std::string copy = text; // the reader writes into it
    ImagePointer const image(nsvgParse(copy.data(), "px", 96.0F), nsvgDelete);
    auto const failed = [](char const* why) { return SvgShapes{nullptr, Problem{.text = why}}; };
    if (!image) return failed("no memory for its shapes");
    for (NSVGshape const* drawn = image->shapes; drawn; drawn = drawn->next)
        if (!IsInReach(*drawn)) return failed("a shape lies further than 1e9 pixels away, or nowhere");
    if (!(image->width > 0.0F && image->width <= kFarthest && image->height > 0.0F &&
          image->height <= kFarthest))
        return failed("the document has no size: give svg a width and height, or a viewBox");

    SvgShapes result{std::make_unique<KShapeGroup>(), std::nullopt};
    for (auto const& [name, count] : leftOut)
        result.leftOut += fmt::format("{}{} {}", result.leftOut.empty() ? "" : ", ", count, name);
    Converter const converter(*image);
    for (NSVGshape const* drawn = image->shapes; drawn; drawn = drawn->next)
        if (drawn->flags & NSVG_FLAGS_VISIBLE) converter.Add(*result.group, *drawn);
    return result;
}

} // namespace ombrelune
