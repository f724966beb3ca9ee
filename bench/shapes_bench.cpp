// Scan conversion from a shape to a picture, against the same work by Cairo in a picture of 32-bit pixels.

#include <cmath>
#include <memory>
#include <numbers>
#include <random>

#include <benchmark/benchmark.h>
#include <cairo.h>

#include "host/value/Parallel.h"
#include "shapes/KImageChannel.h"
#include "shapes/KShape.h"

namespace ombrelune::bench {
namespace {

constexpr int kWidth = 3840, kHeight = 2160;

using Ring = std::vector<KVector2>; // in pixels

/// A star of many points, its radii at random.
std::vector<Ring> LargePolygon()
{
    std::mt19937 random(3);
    std::uniform_real_distribution<float> radius(400.0F, 1050.0F);
    Ring ring;
    for (int i = 0; i < 10000; ++i) {
        float const angle = static_cast<float>(2.0 * std::numbers::pi * i / 10000), r = radius(random);
        ring.push_back({1920.0F + r * std::cos(angle), 1080.0F + r * std::sin(angle)});
    }
    return {ring};
}

/// Hexagons with a radius of 10 to 20 pixels.
std::vector<Ring> SmallPolygons()
{
    std::mt19937 random(4);
    std::uniform_real_distribution<float> x(0.0F, kWidth), y(0.0F, kHeight), radius(10.0F, 20.0F);
    std::vector<Ring> rings(10000);
    for (Ring& ring : rings) {
        KVector2 const centre(x(random), y(random));
        float const r = radius(random);
        for (int i = 0; i < 6; ++i) {
            float const angle = static_cast<float>(std::numbers::pi * i / 3.0 + 0.1);
            ring.push_back({centre.x + r * std::cos(angle), centre.y + r * std::sin(angle)});
        }
    }
    return rings;
}

using Rings = std::vector<Ring> (*)();

/// One shape of all rings, or one for each.
std::vector<std::unique_ptr<KShape>> ShapesOf(std::vector<Ring> const& rings, bool together)
{
    std::vector<std::unique_ptr<KShape>> shapes;
    for (Ring const& ring : rings) {
        if (shapes.empty() || !together) shapes.push_back(std::make_unique<KShape>());
        for (std::size_t i = 0; i < ring.size(); ++i)
            shapes.back()->To((1.0F / kWidth) * ring[i], i == 0, i + 1 == ring.size());
    }
    return shapes;
}

void Ours(benchmark::State& state, Rings rings, bool together, int depth, int threads)
{
    SetThreadCount(threads);
    KImage image(NewImageTagList({{Img_Width, kWidth}, {Img_Height, kHeight}, {Img_Depth, depth}}).Release(),
                 true);
    image.Clear();
    auto const shapes = ShapesOf(rings(), together);
    ChannelStyle style;
    for (auto _ : state) {
        for (auto const& shape : shapes) {
            KImageChannel channel(&image, 8, nullptr, true);
            channel.ShapeFill(shape.get(), kFillNonZero);
            channel.PutToImage(kCombineMerge, style);
        }
    }
    SetThreadCount(0);
}

void Cairo(benchmark::State& state, Rings makeRings, bool together)
{
    auto const rings = makeRings();
    cairo_surface_t* const surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, kWidth, kHeight);
    cairo_t* const cairo = cairo_create(surface);
    cairo_set_antialias(cairo, CAIRO_ANTIALIAS_BEST);
    cairo_set_fill_rule(cairo, CAIRO_FILL_RULE_WINDING);
    cairo_set_source_rgba(cairo, 1, 1, 1, 1);
    for (auto _ : state) {
        for (Ring const& ring : rings) {
            for (std::size_t i = 0; i < ring.size(); ++i)
                i == 0 ? cairo_move_to(cairo, ring[i].x, ring[i].y)
                       : cairo_line_to(cairo, ring[i].x, ring[i].y);
            cairo_close_path(cairo);
            if (!together) cairo_fill(cairo);
        }
        if (together) cairo_fill(cairo);
        cairo_surface_flush(surface);
    }
    cairo_destroy(cairo);
    cairo_surface_destroy(surface);
}

bool Register()
{
    struct Case {
        char const* name;
        Rings rings;
        bool together;
    };
    for (Case const& c :
         {Case{"One10000", LargePolygon, true}, Case{"Small10000/one_shape", SmallPolygons, true},
          Case{"Small10000/each", SmallPolygons, false}}) {
        std::string const name = c.name;
        auto const add = [](std::string const& row, auto const& work) {
            benchmark::RegisterBenchmark(row.c_str(), work)->Unit(benchmark::kMillisecond)->UseRealTime();
        };
        for (int depth : {kDepthInt8, kDepthInt16})
            for (int threads : {1, 2})
                add(name + (depth == kDepthInt8 ? "/8bit" : "/16bit") + "/threads:" + std::to_string(threads),
                    [=](benchmark::State& state) { Ours(state, c.rings, c.together, depth, threads); });
        add(name + "/Cairo", [=](benchmark::State& state) { Cairo(state, c.rings, c.together); });
    }
    return true;
}

[[maybe_unused]] bool const registered = Register();

} // namespace
} // namespace ombrelune::bench
