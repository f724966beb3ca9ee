// Text to coverage: Pango lays the characters out, Cairo fills their outlines.

#include <algorithm>
#include <cmath>
#include <memory>
#include <mutex>

#include <pango/pangocairo.h>

#include "host/text/TextModule.h"
#include "host/text/drawing/Fonts.h"

namespace ombrelune {

namespace {

constexpr int kTile = 4096; // pixels; Cairo's surfaces end at 32767

template <class T, void (*release)(T*)> struct Releaser {
    void operator()(T* object) const { release(object); }
};
template <class T> struct Unref {
    void operator()(T* object) const { g_object_unref(object); }
};

using Surface = std::unique_ptr<cairo_surface_t, Releaser<cairo_surface_t, cairo_surface_destroy>>;
using Context = std::unique_ptr<cairo_t, Releaser<cairo_t, cairo_destroy>>;
using FontOptions =
    std::unique_ptr<cairo_font_options_t, Releaser<cairo_font_options_t, cairo_font_options_destroy>>;
using Description =
    std::unique_ptr<PangoFontDescription, Releaser<PangoFontDescription, pango_font_description_free>>;
using Attributes = std::unique_ptr<PangoAttrList, Releaser<PangoAttrList, pango_attr_list_unref>>;
using Layout = std::unique_ptr<PangoLayout, Unref<PangoLayout>>;
using LayoutContext = std::unique_ptr<PangoContext, Unref<PangoContext>>;

/// Fonts are read once. The map is used under the lock of Draw.
PangoFontMap* Fonts()
{
    static PangoFontMap* const fonts = pango_cairo_font_map_new();
    return fonts;
}

Layout MakeLayout(TextBlock const& block, PangoFontDescription* font)
{
    LayoutContext const context(pango_font_map_create_context(Fonts()));
    FontOptions const options(cairo_font_options_create());
    cairo_font_options_set_antialias(options.get(), CAIRO_ANTIALIAS_GRAY);
    cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
    pango_cairo_context_set_font_options(context.get(), options.get());
    pango_context_set_round_glyph_positions(context.get(), FALSE);
    // Not the language and direction that the environment says: the same text everywhere.
    pango_context_set_language(context.get(), pango_language_from_string("en"));
    pango_context_set_base_dir(context.get(), PANGO_DIRECTION_WEAK_LTR);

    Layout layout(pango_layout_new(context.get()));
    pango_font_description_set_absolute_size(font, block.size * PANGO_SCALE);
    pango_layout_set_font_description(layout.get(), font);
    char* const valid = g_utf8_make_valid(block.text.data(), static_cast<gssize>(block.text.size()));
    pango_layout_set_text(layout.get(), valid, -1);
    g_free(valid);
    constexpr PangoAlignment alignments[] = {PANGO_ALIGN_LEFT, PANGO_ALIGN_CENTER, PANGO_ALIGN_RIGHT};
    pango_layout_set_alignment(layout.get(), alignments[static_cast<int>(block.horizontal)]);
    pango_layout_set_line_spacing(layout.get(), static_cast<float>(block.lineSpacing));
    if (block.characterExtra != 0.0) {
        Attributes const attributes(pango_attr_list_new());
        auto const extra = static_cast<int>(std::lround(block.characterExtra * PANGO_SCALE));
        pango_attr_list_insert(attributes.get(), pango_attr_letter_spacing_new(extra));
        pango_layout_set_attributes(layout.get(), attributes.get());
    }
    return layout;
}

double PartBefore(TextAlign align)
{
    return align == TextAlign::kStart ? 0.0 : align == TextAlign::kCenter ? 0.5 : 1.0;
}

/// From the units of the layout, y downwards, to pixels of the grid, y upwards.
cairo_matrix_t PlaceOf(PangoLayout* layout, TextBlock const& block, TextGrid const& grid)
{
    PangoRectangle box;
    pango_layout_get_extents(layout, nullptr, &box);
    double const left = block.x - PartBefore(block.horizontal) * box.width / PANGO_SCALE -
                        static_cast<double>(box.x) / PANGO_SCALE;
    double const top = block.y + PartBefore(block.vertical) * box.height / PANGO_SCALE +
                       static_cast<double>(box.y) / PANGO_SCALE;
    cairo_matrix_t place;
    cairo_matrix_init(&place, 1.0, 0.0, 0.0, -1.0 / grid.yStep, left, (top - grid.yOrigin) / grid.yStep);
    return place;
}

/// Box of what shows of the text on the grid.
void FindBox(TextCoverage& result, PangoLayout* layout, cairo_matrix_t const& place, TextGrid const& grid)
{
    PangoRectangle ink;
    pango_layout_get_extents(layout, &ink, nullptr);
    double x0 = static_cast<double>(ink.x) / PANGO_SCALE, y0 = static_cast<double>(ink.y) / PANGO_SCALE;
    double x1 = x0 + static_cast<double>(ink.width) / PANGO_SCALE,
           y1 = y0 + static_cast<double>(ink.height) / PANGO_SCALE;
    cairo_matrix_transform_point(&place, &x0, &y0);
    cairo_matrix_transform_point(&place, &x1, &y1);
    // A pixel more: extents are rounded.
    auto const first = [](double v, int size) {
        return static_cast<int>(std::clamp(std::floor(v) - 1.0, 0.0, static_cast<double>(size)));
    };
    auto const last = [](double v, int size) {
        return static_cast<int>(std::clamp(std::ceil(v) + 1.0, 0.0, static_cast<double>(size)));
    };
    result.x = first(x0, grid.width);
    result.y = first(y1, grid.height);
    result.width = last(x1, grid.width) - result.x;
    result.height = last(y0, grid.height) - result.y;
}

void DrawTile(TextCoverage& result, PangoLayout* layout, cairo_matrix_t place, int x, int y)
{
    int const width = std::min(kTile, result.width - x), height = std::min(kTile, result.height - y);
    Surface const surface(cairo_image_surface_create(CAIRO_FORMAT_A8, width, height));
    Context const context(cairo_create(surface.get()));
    cairo_set_antialias(context.get(), CAIRO_ANTIALIAS_GRAY);
    place.x0 -= result.x + x;
    place.y0 -= result.y + y;
    cairo_set_matrix(context.get(), &place);
    // Outlines and not glyphs, which Cairo would put on whole pixels.
    pango_cairo_layout_path(context.get(), layout);
    cairo_fill(context.get());
    cairo_surface_flush(surface.get());
    unsigned char const* const rows = cairo_image_surface_get_data(surface.get());
    if (!rows) return; // memory is out
    for (int row = 0; row < height; ++row) {
        unsigned char const* const from =
            rows + static_cast<std::ptrdiff_t>(row) * cairo_image_surface_get_stride(surface.get());
        std::copy(from, from + width,
                  result.coverage.begin() + static_cast<std::ptrdiff_t>(y + row) * result.width + x);
    }
}

TextCoverage Draw(TextBlock const& block, TextGrid const& grid)
{
    static std::mutex lock; // a font map serves one thread at a time
    std::lock_guard const guard(lock);
    TextCoverage result;
    ChosenFont const font = ChooseFont(Fonts(), block.family, block.style);
    if (!font.description) {
        result.problem = "no font is installed; a package such as fonts-dejavu-core brings some";
        return result;
    }
    Description const description(font.description);
    result.usedFamily = font.otherFamily;
    result.usedStyle = font.otherStyle;

    Layout const layout = MakeLayout(block, description.get());
    cairo_matrix_t const place = PlaceOf(layout.get(), block, grid);
    FindBox(result, layout.get(), place, grid);
    if (result.width <= 0 || result.height <= 0) {
        result.width = result.height = 0;
        return result;
    }
    result.coverage.resize(static_cast<std::size_t>(result.width) * static_cast<std::size_t>(result.height));
    for (int y = 0; y < result.height; y += kTile)
        for (int x = 0; x < result.width; x += kTile) DrawTile(result, layout.get(), place, x, y);
    return result;
}

} // namespace

} // namespace ombrelune

extern "C" __attribute__((visibility("default"))) ombrelune::TextModule const* OmbreluneText()
{
    static ombrelune::TextModule const module{ombrelune::Draw};
    return &module;
}
