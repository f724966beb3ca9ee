// Engines with effects that do nothing, and the colour tools, over whole pictures as the bridge runs them.

#include <opencv2/imgproc.hpp>

#include "bench/Frame.h"

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

template <class Effect> MakeEffect Direct()
{
    return [] { return std::make_unique<KRowForm<Effect>>(); };
}

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
