// Engines with effects that do nothing, and the colour tools, over whole pictures as the bridge runs them.

#include <opencv2/imgproc.hpp>

#include "bench/Floor.h"
#include "framework/Registration.h"

namespace ombrelune::bench {
namespace {

struct SameColor : KEffectColor {
    KColor32 F(KColor32 const& c) override { return c; }
    KColor F(KColor const& c) override { return c; }
};

struct SamePixel : KEffectPixel {
    Pixel F(int x, int y, KImage* source) override
    {
        Pixel pixel;
        source->GetPixel(x, y, pixel);
        return pixel;
    }
    FltPixel FFlt(int x, int y, KImage* source) override
    {
        FltPixel pixel;
        source->GetPixel(x, y, pixel);
        return pixel;
    }
};

struct SamePosition : KEffectPosition {
    Pixel F(Pixel& source, KVector2&) override { return source; }
    FltPixel F(FltPixel& source, KVector2&) override { return source; }
};

struct SamePlace : KEffectWarp {
    bool F(KVector2& source, KVector2 const& destination) override
    {
        source = destination;
        return true;
    }
};

/// One frame: a destination from the pool, the engine, its steps on the worker threads.
std::unique_ptr<KImage> RunFrame(KEffectImage& effect, KImage& source, KProcessImageData data)
{
    data.depth = source.IsFloat() ? 2 : 1;
    KImage* destination = source.LikeOf(-1, -1, -1.0F, -1.0F);
    effect.SetData(data);
    {
        auto const engine = MakeEngine(&source, &destination, &effect, data);
        for (int step = 0; step < engine->GetStepCount(); ++step) {
            engine->Init(step);
            ParallelFor(engine->GetThreadCount(step), [&](int chunk) { engine->DoThread(chunk, step); });
            engine->Done(step);
        }
    }
    return std::unique_ptr<KImage>(destination);
}

using MakeEffect = std::function<std::unique_ptr<KEffect>()>;
using Check = std::function<bool(KImage const& source, KImage const& result)>;

bool IsSame(KImage const& source, KImage const& result, int limit)
{
    for (int y = 0; y < source.Height(); y += 97) {
        for (int x = 0; x < source.Width(); x += 61) {
            Pixel a, b;
            source.GetPixel(x, y, a);
            result.GetPixel(x, y, b);
            for (int w = 0; w < 4; ++w)
                if (std::abs(static_cast<int>(a.word[w]) - static_cast<int>(b.word[w])) > limit) return false;
        }
    }
    return true;
}

Prepare Frame(MakeEffect const& make, Check const& check, KProcessImageData const& data = {})
{
    return [=](Case const& row) -> Work {
        auto source = std::make_shared<KImage>(Ref<Image>::Share(row.picture.Get()).Release(), true);
        std::shared_ptr<KEffect> const effect = make();
        auto* const image = dynamic_cast<KEffectImage*>(effect.get());
        if (!check(*source, *RunFrame(*image, *source, data))) return nullptr;
        return [image, source, data, owner = effect] { RunFrame(*image, *source, data); };
    };
}

template <class Effect> MakeEffect Direct()
{
    return [] { return std::make_unique<KRowForm<Effect>>(); };
}

template <class T> struct Setting {
    std::uint32_t id;
    T value;
};

/// A registered tool with some of its members set.
template <class... T> MakeEffect Tool(char const* name, Setting<T>... settings)
{
    return [=] {
        auto effect = FindEffectFactory(name)->makeRowForm();
        [[maybe_unused]] auto const set = [&]<class V>(Setting<V> const& setting) {
            for (KParameter* parameter : effect->parameters.template Each<KParameter>())
                if (parameter->id[0] == setting.id) *static_cast<V*>(parameter->target) = setting.value;
        };
        (set(settings), ...);
        return effect;
    };
}

Check const same = [](KImage const& source, KImage const& result) { return IsSame(source, result, 0); };
// A place goes to 0 to 1 and back in floats: at x = 3839 up to 4.6e-4 pixels off, 31 of 65535 between black
// and white, and as much for y; then it is truncated to 65536ths, 1 each.
Check const near = [](KImage const& source, KImage const& result) { return IsSame(source, result, 64); };
Check const changed = [](KImage const& source, KImage const& result) { return !IsSame(source, result, 1); };

bool const engines[] = {
    RatioRows("Engine/Color", Frame(Direct<SameColor>(), same)),
    RatioRows("Engine/Pixel", Frame(Direct<SamePixel>(), same)),
    RatioRows("Engine/Position", Frame(Direct<SamePosition>(), same)),
    RatioRows("Engine/Warp", Frame(Direct<SamePlace>(), near)),
};

KColor const tint(0.2F, 0.4F, 0.6F, 1.0F);

bool const tools[] = {
    RatioRows("Tool/Invert", Frame(Tool("BF_Invert"), changed)),
    RatioRows("Tool/Color",
              Frame(Tool("BF_Color", Setting<KColor>{"ColR"_id, tint}, Setting<int>{"InTy"_id, 1}), changed)),
    RatioRows("Tool/Threshold", Frame(Tool("BF_Threshold"), changed)),
    RatioRows("Tool/HueSaturation", Frame(Tool("BF_HueSaturation", Setting<float>{"sHue"_id, 0.1F},
                                               Setting<float>{"sSaM"_id, 1.5F}),
                                          changed)),
    RatioRows("Tool/MatchColor", Frame(Tool("BF_MatchColor", Setting<KColor>{"CDR1"_id, tint}), changed)),
    RatioRows("Tool/ReplaceColor",
              Frame(Tool("BF_ReplaceColor", Setting<KColor>{"CoSR"_id, tint}, Setting<float>{"CoRe"_id, 0.3F},
                         Setting<float>{"SeRR"_id, 0.4F}),
                    changed)),
};

/// RGB to HLS and back by OpenCV over the same picture: the peer of Hue/Saturation.
Work OpenCvHls(Case const& row)
{
    cv::setNumThreads(row.threads);
    Image const& image = *row.picture;
    auto const bands = [&](auto const& convert) {
        // By bands, so that each thread's share stays in its cache between the conversions.
        ParallelFor(image.Height() / 16 + 1, [&](int band) {
            int const first = band * 16, count = std::min(16, image.Height() - first);
            if (count > 0) convert(first, count);
        });
    };
    auto out = std::make_shared<cv::Mat>(image.Height(), image.Width(), CV_32FC3);
    return [=, &image] {
        bands([&](int first, int count) {
            cv::Mat const in(count, image.Width(), CV_32FC4, image.MainRow(first), image.RowBytes());
            cv::Mat bgr, hls, back = out->rowRange(first, first + count);
            cv::cvtColor(in, bgr, cv::COLOR_BGRA2BGR);
            cv::cvtColor(bgr, hls, cv::COLOR_BGR2HLS);
            cv::cvtColor(hls, back, cv::COLOR_HLS2BGR);
        });
    };
}

bool const peers[] = {RatioRows("OpenCV/RgbHlsRgb", OpenCvHls, {kDepthFloat})};

} // namespace
} // namespace ombrelune::bench
