// Work on paths against the library that does the same, in turns: the ratio is ours over theirs.

#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>
#include <numbers>
#include <random>

#include <cairo.h>
#include <polyclipping/clipper.hpp>
#include <potracelib.h>

#include "bench/Floor.h"
#include "image/KImage.h"
#include "image/KImageMap.h"
#include "image/KRandom.h"
#include "shapes/KShapeGroup.h"

namespace ombrelune::bench {
namespace {

constexpr int kStars = 1000;

/// A star of 24 corners somewhere in the frame, in shape units.
std::vector<KVector2> Star(std::mt19937& random)
{
    std::uniform_real_distribution<float> place(-0.45F, 0.45F), radius(0.01F, 0.04F);
    KVector2 const centre(place(random), place(random));
    float const outer = radius(random);
    std::vector<KVector2> star;
    for (int i = 0; i < 24; ++i) {
        float const angle = static_cast<float>(std::numbers::pi * i / 12.0),
                    r = i % 2 == 0 ? outer : 0.4F * outer;
        star.push_back({centre.x + r * std::cos(angle), centre.y + r * std::sin(angle)});
    }
    return star;
}

/// Stars as one shape, or as one each.
std::unique_ptr<KShapeList> Stars(unsigned seed, bool together)
{
    std::mt19937 random(seed);
    auto list = std::make_unique<KShapeList>();
    KShape* shape = nullptr;
    for (int i = 0; i < kStars; ++i) {
        if (!shape || !together) list->AddLast(shape = new KShape);
        std::vector<KVector2> const star = Star(random);
        for (std::size_t k = 0; k < star.size(); ++k) shape->To(star[k], k == 0, k + 1 == star.size());
    }
    return list;
}

ClipperLib::Paths StarPaths(unsigned seed)
{
    std::mt19937 random(seed);
    ClipperLib::Paths paths(kStars);
    for (ClipperLib::Path& path : paths)
        for (KVector2 const& p : Star(random))
            path.emplace_back(static_cast<ClipperLib::cInt>(p.x * 1e6),
                              static_cast<ClipperLib::cInt>(p.y * 1e6));
    return paths;
}

/// Ours and theirs, made ready.
struct Pair {
    Work ours, theirs;
};

/// All stars at once, or a few of them one by one, each with all of the others.
Pair Boolean(bool together)
{
    std::shared_ptr<KShapeList> const subject = Stars(1, together);
    while (!together && subject->Count() > 4) delete subject->RemoveFirst();
    auto const other = std::make_shared<KShapeGroup>(Stars(2, together).release(), false);
    auto const paths = std::make_shared<ClipperLib::Paths>(StarPaths(1));
    if (!together) paths->erase(paths->begin(), paths->end() - 4);
    auto const clip = std::make_shared<ClipperLib::Paths>(StarPaths(2));
    auto const combine = [clip](ClipperLib::Paths const& from) {
        ClipperLib::Clipper clipper;
        ClipperLib::Paths solution;
        clipper.AddPaths(from, ClipperLib::ptSubject, true);
        clipper.AddPaths(*clip, ClipperLib::ptClip, true);
        clipper.Execute(ClipperLib::ctUnion, solution, ClipperLib::pftEvenOdd, ClipperLib::pftEvenOdd);
        benchmark::DoNotOptimize(solution);
    };
    return {[=] {
                KShapeEffectBooleanData data;
                data.type = 1;
                data.other = other.get();
                benchmark::DoNotOptimize(std::unique_ptr<KShapeList>(subject->BooleanOf(data)));
            },
            [=] {
                if (together) return combine(*paths);
                for (ClipperLib::Path const& path : *paths) combine({path});
            }};
}

Pair Offset()
{
    std::shared_ptr<KShapeList> const stars = Stars(1, true);
    auto const paths = std::make_shared<ClipperLib::Paths>(StarPaths(1));
    return {[=] {
                KShapeEffectOffsetData const data(0.003F, kJoinMiter, 8, 16);
                benchmark::DoNotOptimize(std::unique_ptr<KShapeList>(stars->OffsetOf(data)));
            },
            [=] {
                ClipperLib::ClipperOffset offset(0.0, 0.0);
                ClipperLib::Paths solution;
                offset.AddPaths(*paths, ClipperLib::jtMiter, ClipperLib::etClosedPolygon);
                offset.Execute(solution, 0.003 * 1e6);
                benchmark::DoNotOptimize(solution);
            }};
}

/// Outlines of dashes along 1,000 curves; the peer makes the region of the same stroke as trapezoids.
Pair Stroke()
{
    std::mt19937 random(5);
    std::uniform_real_distribution<double> place(100.0, 1900.0);
    std::vector<double> numbers(8 * kStars);
    for (double& v : numbers) v = place(random);
    auto shape = std::make_shared<KShape>();
    auto const at = [&](std::size_t i) {
        return KVector2(static_cast<float>(numbers[i] / 2000.0 - 0.5),
                        static_cast<float>(numbers[i + 1] / 2000.0 - 0.5));
    };
    for (std::size_t i = 0; i < numbers.size(); i += 8) {
        shape->MoveTo(at(i));
        shape->BezierTo(at(i + 2), at(i + 4), at(i + 6), false);
    }
    return {[=] {
                KShapeEffectOutlineData data;
                data.pen.thickness = 0.002F;
                data.pen.joinType = kJoinRound;
                data.pen.dash.lineType = 1;
                benchmark::DoNotOptimize(std::unique_ptr<KShape>(shape->OutlineOf(data)));
            },
            [=] {
                cairo_surface_t* const surface = cairo_image_surface_create(CAIRO_FORMAT_A8, 2000, 2000);
                cairo_t* const cairo = cairo_create(surface);
                double const dashes[] = {8.0, 8.0};
                cairo_set_dash(cairo, dashes, 2, 0.0);
                cairo_set_line_width(cairo, 4.0);
                cairo_set_line_join(cairo, CAIRO_LINE_JOIN_ROUND);
                cairo_set_line_cap(cairo, CAIRO_LINE_CAP_ROUND);
                for (std::size_t i = 0; i < numbers.size(); i += 8) {
                    cairo_move_to(cairo, numbers[i], numbers[i + 1]);
                    cairo_curve_to(cairo, numbers[i + 2], numbers[i + 3], numbers[i + 4], numbers[i + 5],
                                   numbers[i + 6], numbers[i + 7]);
                }
                double x = 0.0, y = 0.0, right = 0.0, top = 0.0;
                cairo_stroke_extents(cairo, &x, &y, &right, &top); // makes the outline and draws nothing
                benchmark::DoNotOptimize(x);
                cairo_destroy(cairo);
                cairo_surface_destroy(surface);
            }};
}

/// Blobs and grain: a slow wave and a fast one.
Ref<Image> Landscape(int depth)
{
    Ref<Image> image = NewImageTagList({{Img_Width, 1920}, {Img_Height, 1080}, {Img_Depth, depth}});
    for (int y = 0; y < 1080; ++y) {
        PixPtr row(image.Get(), 0, y);
        for (int x = 0; x < 1920; ++x) {
            double const wave =
                std::sin(x * 0.021) * std::cos(y * 0.017) + 0.4 * std::sin(x * 0.11 + y * 0.13);
            Pixel pixel;
            pixel.red = pixel.green = pixel.blue = static_cast<std::uint32_t>(32768.0 + 20000.0 * wave);
            pixel.alpha = 65535;
            row >>= pixel;
        }
    }
    return image;
}

Pair Trace(int depth)
{
    auto const image = std::make_shared<KImage>(Landscape(depth).Release(), true);
    // The peer gets the bitmap for nothing.
    constexpr int kWordBits = 8 * sizeof(potrace_word), kWords = 1920 / kWordBits;
    auto const words = std::make_shared<std::vector<potrace_word>>(std::size_t{kWords} * 1080);
    for (int y = 0; y < 1080; ++y) {
        PixPtr row(image->FImage(), 0, y);
        for (int x = 0; x < 1920; ++x) {
            Pixel pixel;
            pixel >>= row;
            if (pixel.red <= 32767) continue;
            (*words)[static_cast<std::size_t>(y * kWords + x / kWordBits)] |=
                potrace_word{1} << (kWordBits - 1 - x % kWordBits);
        }
    }
    return {[=] {
                KShapeList list;
                list.Trace(image.get(), 0, 0.5F, false, 8);
                benchmark::DoNotOptimize(list.Count());
            },
            [=] {
                potrace_param_t* const settings = potrace_param_default();
                settings->turdsize = 0;
                potrace_bitmap_t const bitmap{1920, 1080, kWords, words->data()};
                potrace_state_free(potrace_trace(settings, &bitmap));
                potrace_param_free(settings);
            }};
}

/// The walk against its draws and one sort of the same keys.
Pair RandomWalk()
{
    auto const seed = std::make_shared<unsigned>(0U);
    return {[=] {
                KImageMapIterator walk;
                walk.SetSize(1920, 1080, ++*seed);
                KVector2i p;
                while (walk.Next(p)) benchmark::DoNotOptimize(p);
            },
            [=] {
                KRandomSeed(++*seed);
                std::vector<float> keys(std::size_t{1920} * 1080);
                for (float& key : keys) key = KRandom(1.0F);
                std::sort(keys.begin(), keys.end());
                benchmark::DoNotOptimize(keys);
            }};
}

void Run(benchmark::State& state, std::function<Pair()> const& make, int threads)
{
    SetThreadCount(threads);
    Pair const pair = make();
    pair.ours();
    pair.theirs();
    std::vector<double> ours, theirs;
    for (auto _ : state) {
        ours.push_back(Seconds(pair.ours));
        theirs.push_back(Seconds(pair.theirs));
        state.SetIterationTime(ours.back());
    }
    SetThreadCount(0);
    state.counters["ratio"] = Quantile(ours, 0.5) / Quantile(theirs, 0.5);
    state.counters["spread"] = (Quantile(ours, 0.75) - Quantile(ours, 0.25)) / Quantile(ours, 0.5);
    state.counters["ns_px"] = 0.0;
}

bool Register()
{
    auto const add = [](std::string const& name, std::function<Pair()> make, int iterations = 20) {
        for (int threads : {1, 2})
            benchmark::RegisterBenchmark((name + "/threads:" + std::to_string(threads)).c_str(),
                                         [=](benchmark::State& state) { Run(state, make, threads); })
                ->UseManualTime()
                ->Iterations(iterations)
                ->Unit(benchmark::kMillisecond);
    };
    add("Trace vs potrace/1920x1080/16bit", [] { return Trace(kDepthInt16); });
    add("Trace vs potrace/1920x1080/8bit", [] { return Trace(kDepthInt8); });
    add(
        "Union of stars vs polyclipping/1000/shape", [] { return Boolean(true); }, 5);
    add(
        "Union of stars vs polyclipping/4x1000/list", [] { return Boolean(false); }, 5);
    add(
        "Offset of stars vs polyclipping/1000/shape", [] { return Offset(); }, 5);
    add("Dashes along curves vs Cairo/1000/shape", [] { return Stroke(); });
    add("Random walk vs std::sort/1920x1080/map", [] { return RandomWalk(); });
    return true;
}

[[maybe_unused]] bool const registered = Register();

} // namespace
} // namespace ombrelune::bench
