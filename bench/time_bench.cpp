// Tools that read several frames, over pictures in memory: the mean of eight against reading those eight
// once, and a map of times over eight against the floor.

#include <cmath>
#include <memory>
#include <vector>

#include "bench/Floor.h"
#include "framework/Registration.h"
#include "host/image/BufferPool.h"

namespace ombrelune::bench {
namespace {

constexpr int kFrames = 8;

/// A tool with its frames, and a picture that it was given beside them.
struct Job {
    std::unique_ptr<KEffect> effect;
    std::vector<Ref<Image>> frames;
    std::unique_ptr<KImage> map;

    KEffectImage& Effect() const { return dynamic_cast<KEffectImage&>(*effect); }
    template <class T> void Set(std::uint32_t id, T value) const
    {
        for (KParameter* parameter : effect->parameters.Each<KParameter>())
            if (parameter->id[0] == id) *static_cast<T*>(parameter->target) = value;
    }
    std::unique_ptr<KImage> Run() const
    {
        KEffectImage& image = Effect();
        for (std::size_t i = 0; i < frames.size(); ++i)
            image.SetImage(static_cast<int>(i), new KImage(frames[i].Get(), false));
        KImage source(frames[0].Get(), false);
        KProcessImageData data;
        data.depth = source.IsFloat() ? 2 : 1;
        KImage* destination = source.LikeOf(-1, -1, -1.0F, -1.0F);
        image.SetData(data);
        {
            auto const engine = MakeEngine(&source, &destination, &image, data);
            for (int step = 0; step < engine->GetStepCount(); ++step)
                ParallelFor(engine->GetThreadCount(step), [&](int chunk) { engine->DoThread(chunk, step); });
        }
        return std::unique_ptr<KImage>(destination);
    }
};

std::shared_ptr<Job> MakeJob(char const* tool, Case const& row)
{
    auto job = std::make_shared<Job>();
    job->effect = FindEffectFactory(tool)->makeRowForm();
    for (int i = 0; i < kFrames; ++i) job->frames.push_back(row.picture->CopyOfImage(false));
    return job;
}

FltPixel At(KImage const& image, int x, int y)
{
    FltPixel pixel;
    image.GetPixel(x, y, pixel);
    return pixel;
}

/// Frames are all alike, so every mean and every choice is the picture itself, but for truncation.
bool IsThePicture(KImage const& result, Image& picture)
{
    KImage const expected(&picture, false);
    for (int x = 3; x < result.Width(); x += 701)
        for (int w = 0; w < 4; ++w)
            if (std::abs(At(result, x, 5).word[w] - At(expected, x, 5).word[w]) > 2e-5F) return false;
    return true;
}

Prepare const average = [](Case const& row) -> Work {
    auto const job = MakeJob("BF_Average", row);
    if (!IsThePicture(*job->Run(), *row.picture)) return nullptr;
    return [job] { job->Run(); };
};

/// From black on the left to white on the right, as a sweep through time is.
Prepare const timeMapper = [](Case const& row) -> Work {
    auto const job = MakeJob("BF_TimeMapper", row);
    job->map.reset(new KImage(row.picture->CopyOfImage(true).Release(), true));
    int const width = job->map->Width();
    ParallelFor(job->map->Height(), [&](int y) {
        PixPtr out(job->map->FImage(), 0, y);
        for (int x = 0; x < width; ++x) {
            FltPixel pixel;
            for (float& word : pixel.word) word = static_cast<float>(x) / static_cast<float>(width - 1);
            out >>= pixel;
        }
    });
    job->Set("TiOW"_id, kFrames - 1);
    job->Set(2U, job->map.get());
    if (!IsThePicture(*job->Run(), *row.picture)) return nullptr;
    return [job] { job->Run(); };
};

/// Reads every word of the pictures once, and does no more than add them up.
void ReadAll(std::vector<Ref<Image>> const& pictures)
{
    for (auto const& picture : pictures)
        ParallelFor(picture->Height(), [&](int y) {
            auto const* words = reinterpret_cast<std::uint64_t const*>(picture->MainRow(y));
            std::size_t const count =
                static_cast<std::size_t>(picture->Width() * picture->PixelBytes()) / sizeof *words;
            std::uint64_t sum = 0;
            for (std::size_t i = 0; i < count; ++i) sum += words[i];
            benchmark::DoNotOptimize(sum);
        });
}

/// The ratio to reading eight pictures, in turns with the work.
void AverageAgainstReading(benchmark::State& state, int depth, int threads)
{
    SetThreadCount(threads);
    SetPoolLimit(std::size_t{4} << 30); // room for all, so that the result's buffer is warm
    Case const row{Noise(3840, 2160, depth), threads};
    Work const work = average(row);
    if (!work) return state.SkipWithError("wrong result");
    std::vector<Ref<Image>> others;
    for (int i = 0; i < kFrames; ++i) others.push_back(row.picture->CopyOfImage(false));
    std::vector<double> times, reads;
    for (auto _ : state) {
        times.push_back(Seconds(work));
        reads.push_back(Seconds([&] { ReadAll(others); }));
        state.SetIterationTime(times.back());
    }
    SetThreadCount(0);
    state.counters["ratio"] = Quantile(times, 0.5) / Quantile(reads, 0.5);
    state.counters["spread"] = (Quantile(times, 0.75) - Quantile(times, 0.25)) / Quantile(times, 0.5);
    state.counters["ns_px"] = Quantile(times, 0.5) * 1e9 / (3840.0 * 2160.0);
    state.counters["floor_ms"] = Quantile(reads, 0.5) * 1e3; // here the reading
    state.counters["peak_MB"] = PeakMegabytes();
}

bool RegisterAgainstReading()
{
    for (int depth : {kDepthInt16, kDepthFloat})
        benchmark::RegisterBenchmark(depth == kDepthInt16 ? "AverageAgainstReading/3840x2160/16bit/threads:2"
                                                          : "AverageAgainstReading/3840x2160/float/threads:2",
                                     [=](benchmark::State& state) { AverageAgainstReading(state, depth, 2); })
            ->UseManualTime()
            ->Iterations(20)
            ->Unit(benchmark::kMillisecond);
    return true;
}
bool const rows[] = {
    RatioRows("Time/Average8", average),
    RatioRows("Time/TimeMapper8", timeMapper),
    RegisterAgainstReading(),
};

} // namespace
} // namespace ombrelune::bench
