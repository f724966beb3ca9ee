#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <fstream>
#include <functional>
#include <string>
#include <type_traits>
#include <vector>

#include <benchmark/benchmark.h>

#include "host/image/PixPtr.h"
#include "host/value/Parallel.h"

namespace ombrelune::bench {

using Work = std::function<void()>;

/// One row of a bench: the picture it works on and the threads that it may use.
struct Case {
    Ref<Image> picture; ///< seeded noise; shared between rows, so never written to
    int threads;
};

/// Prepares a row: makes what the work needs, runs it once, checks the result, and returns the work. Null
/// when the result is wrong, which fails the row.
using Prepare = std::function<Work(Case const&)>;

inline Ref<Image> Noise(int width, int height, int depth)
{
    Ref<Image> image = NewImageTagList({{Img_Width, width}, {Img_Height, height}, {Img_Depth, depth}});
    ParallelFor(height, [&](int y) {
        std::uint32_t state = 0x9e3779b9U * static_cast<std::uint32_t>(y + 1) | 1U;
        PixPtr out(image.Get(), 0, y);
        Pixel pixel;
        pixel.DropAux();
        for (int x = 0; x < width; ++x) {
            for (std::uint32_t& word : pixel.word) {
                state ^= state << 13;
                state ^= state >> 17;
                state ^= state << 5;
                word = state >> 16;
            }
            out >>= pixel;
        }
    });
    return image;
}

/// The yardstick: reads every channel of a picture, does one multiply-add and writes to another, warm
/// picture.
template <class Word> void RunFloor(Image const& from, Image& to)
{
    ParallelFor(from.Height(), [&](int y) {
        auto const* in = reinterpret_cast<Word const*>(from.MainRow(y));
        auto* out = reinterpret_cast<Word*>(to.MainRow(y));
        for (int i = 0; i < from.Width() * 4; ++i) {
            if constexpr (std::is_integral_v<Word>) out[i] = static_cast<Word>(in[i] * 3U + 1U);
            else out[i] = in[i] * 0.75F + 0.125F;
        }
    });
}

inline void RunFloor(Image const& from, Image& to)
{
    switch (from.Depth()) {
    case kDepthInt8: return RunFloor<std::uint8_t>(from, to);
    case kDepthFloat: return RunFloor<float>(from, to);
    default: return RunFloor<std::uint16_t>(from, to); // halves too: the same bytes
    }
}

inline double Seconds(Work const& work)
{
    auto const start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

inline double Quantile(std::vector<double> values, double q)
{
    std::sort(values.begin(), values.end());
    return values[static_cast<std::size_t>(q * static_cast<double>(values.size() - 1) + 0.5)];
}

/// Most memory that the process has held since ResetPeak, in MB; 0 where the system does not tell.
inline double PeakMegabytes()
{
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;)
        if (word == "VmHWM:") return status >> word ? std::stod(word) / 1024.0 : 0.0;
    return 0.0;
}

inline void ResetPeak() { std::ofstream("/proc/self/clear_refs") << "5"; }

/// Times the work and the floor in turns. Counters: `ratio` of the medians, `spread` (the middle half of the
/// work's times over their median), `ns_px`, the floor's median in `floor_ms`, and `peak_MB`.
inline void RatioBench(benchmark::State& state, Case const& row, Prepare const& prepare)
{
    SetThreadCount(row.threads);
    Ref<Image> const warm = row.picture->CopyOfImage(false);
    ResetPeak();
    Work const work = prepare(row);
    if (!work) return state.SkipWithError("wrong result");
    std::vector<double> times, floors;
    for (auto _ : state) {
        times.push_back(Seconds(work));
        floors.push_back(Seconds([&] { RunFloor(*row.picture, *warm); }));
        state.SetIterationTime(times.back());
    }
    SetThreadCount(0);
    double const median = Quantile(times, 0.5), floor = Quantile(floors, 0.5);
    double const pixels = static_cast<double>(row.picture->Width()) * row.picture->Height();
    state.counters["ratio"] = median / floor;
    state.counters["spread"] = (Quantile(times, 0.75) - Quantile(times, 0.25)) / median;
    state.counters["ns_px"] = median * 1e9 / pixels;
    state.counters["floor_ms"] = floor * 1e3;
    state.counters["peak_MB"] = PeakMegabytes();
}

/// Registers a row for each size, depth and number of threads, named like "Blur10/3840x2160/float/threads:2".
/// Call it from the initialiser of a static object.
inline bool RatioRows(std::string const& name, Prepare const& prepare,
                      std::vector<int> const& depths = {kDepthInt16, kDepthFloat})
{
    struct Size {
        int width, height;
    };
    for (Size size : {Size{3840, 2160}, Size{1999, 1123}}) {
        for (int depth : depths) {
            for (int threads : {1, 2}) {
                char const* const depthNames[] = {"8bit", "16bit", "half", "float"};
                std::string const row = name + "/" + std::to_string(size.width) + "x" +
                                        std::to_string(size.height) + "/" + depthNames[depth - kDepthInt8] +
                                        "/threads:" + std::to_string(threads);
                benchmark::RegisterBenchmark(
                    row.c_str(),
                    [=](benchmark::State& state) {
                        RatioBench(state, {Noise(size.width, size.height, depth), threads}, prepare);
                    })
                    ->UseManualTime()
                    ->Iterations(40)
                    ->Unit(benchmark::kMillisecond);
            }
        }
    }
    return true;
}

} // namespace ombrelune::bench
