// The frame, order and filter tools over whole pictures, as the bridge runs them, and their peers.

#include <algorithm>
#include <array>

#include <opencv2/imgproc.hpp>
#include <opencv2/xphoto.hpp>

#include "bench/Frame.h"

namespace ombrelune::bench {
namespace {

cv::Mat MatOf(Image const& image)
{
    return {image.Height(), image.Width(), CV_32FC4, image.MainRow(0),
            static_cast<std::size_t>(image.RowBytes())};
}

MakeEffect WithStandard(MakeEffect const& make, KParameterStandard standard, int value)
{
    return [=] {
        auto effect = make();
        for (KParameter* parameter : effect->parameters.Each<KParameter>())
            if (parameter->control == KCT_Standard && parameter->standard == standard)
                *static_cast<int*>(parameter->target) = value;
        return effect;
    };
}

constexpr int kKernel = 15;

Work MapFilter(Case const& row)
{
    static KImage map(Noise(kKernel, kKernel, kDepthFloat).Release(), true);
    return Frame(Tool("BF_MapFilter", Setting<bool>{"MaRe"_id, false}, Setting<KImage*>{2, &map}),
                 changed)(row);
}
Work OpenCvFilter(Case const& row)
{
    cv::setNumThreads(row.threads);
    cv::Mat kernel(kKernel, kKernel, CV_32F);
    cv::randu(kernel, 0.0, 1.0 / kKernel / kKernel);
    auto out = std::make_shared<cv::Mat>();
    return [=, picture = row.picture] {
        cv::filter2D(MatOf(*picture), *out, -1, kernel, {-1, -1}, 0.0, cv::BORDER_REPLICATE);
    };
}

/// The same error diffusion of 16-bit words to 4 bits, in the plainest loop.
Work PlainDither(Case const& row)
{
    Ref<Image> const out = row.picture->CopyOfImage(false);
    return [out, picture = row.picture] {
        std::vector<int> below(4 * static_cast<std::size_t>(picture->Width()));
        for (int y = 0; y < picture->Height(); ++y) {
            auto const* in = reinterpret_cast<std::uint16_t const*>(picture->MainRow(y));
            auto* to = reinterpret_cast<std::uint16_t*>(out->MainRow(y));
            std::array<int, 4> carry{}, diagonal{};
            for (int i = 0; i < 4 * picture->Width(); ++i) {
                auto const c = static_cast<std::size_t>(i % 4), at = static_cast<std::size_t>(i);
                int const wanted = in[i] + carry[c] + below[at], high = wanted >> 12 << 12;
                int const q = high + (high >> 4) + (high >> 8) + (high >> 12), error = wanted - q;
                carry[c] = 3 * error / 8;
                below[at] = carry[c] + diagonal[c];
                diagonal[c] = error / 4;
                to[i] = static_cast<std::uint16_t>(std::clamp(q, 0, 65535));
            }
        }
    };
}

/// Luminance, red, green, blue and alpha of each pixel, and its number.
Work StableSort(Case const& row)
{
    struct Entry {
        std::array<float, 5> keys;
        std::uint32_t number;
    };
    auto const entries = std::make_shared<std::vector<Entry>>();
    FltPixel p;
    for (int y = 0; y < row.picture->Height(); ++y)
        for (int x = 0; x < row.picture->Width(); ++x) {
            PixPtr(row.picture.Get(), x, y).GetPixel(p);
            entries->push_back({{PixelGetChannel(p, 4), p.red, p.green, p.blue, p.alpha},
                                static_cast<std::uint32_t>(entries->size())});
        }
    return [=] {
        auto sorted = *entries;
        std::ranges::stable_sort(sorted, {}, &Entry::keys);
    };
}

constexpr float kRadius = 10.0F;

Work BlurInLab(Case const& row)
{
    float const size = kRadius * 720.0F / static_cast<float>(row.picture->Width());
    MakeEffect const make = Tool("BF_BlurSpace", Setting<int>{"cBlF"_id, 3}, Setting<float>{"sBSX"_id, size});
    return Frame(WithStandard(make, KPS_ColorSpace, 7), changed)(row);
}
Work OpenCvBlurInLab(Case const& row)
{
    cv::setNumThreads(row.threads);
    return [picture = row.picture] {
        cv::Mat bgr, lab, blurred, back;
        cv::cvtColor(MatOf(*picture), bgr, cv::COLOR_BGRA2BGR);
        cv::cvtColor(bgr, lab, cv::COLOR_LBGR2Lab);
        cv::GaussianBlur(lab, blurred, {}, kRadius / 2, 0.0, cv::BORDER_REPLICATE);
        cv::cvtColor(blurred, back, cv::COLOR_Lab2LBGR);
    };
}

constexpr float kBrush = 6.0F; // 720ths of the width

/// With as many steps of lightness as the tool. It takes three channels of 8 bits alone.
Work OpenCvOilPainting(Case const& row)
{
    cv::setNumThreads(row.threads);
    cv::Mat const rgba(row.picture->Height(), row.picture->Width(), CV_8UC4, row.picture->MainRow(0),
                       static_cast<std::size_t>(row.picture->RowBytes()));
    auto const rgb = std::make_shared<cv::Mat>(), out = std::make_shared<cv::Mat>();
    cv::cvtColor(rgba, *rgb, cv::COLOR_BGRA2BGR);
    int const reach = static_cast<int>(kBrush * static_cast<float>(row.picture->Width()) / 720.0F);
    return [=] { cv::xphoto::oilPainting(*rgb, *out, reach, 1); };
}

bool const tools[] = {
    RatioRows("Tool/Painterly", Frame(Tool("BF_Painterly", Setting<float>{"Radi"_id, kBrush}), changed),
              {kDepthInt8}),
    RatioRows("OpenCV/OilPainting", OpenCvOilPainting, {kDepthInt8}),
    RatioRows("Tool/MapFilter", MapFilter, {kDepthFloat}),
    RatioRows("OpenCV/Filter2D", OpenCvFilter, {kDepthFloat}),
    RatioRows(
        "Tool/Dither",
        Frame(WithStandard(Tool("BF_Dither", Setting<int>{"sBit"_id, 4}), KPS_ChannelsRGBA, 15), changed),
        {kDepthInt16}),
    RatioRows("Plain/Dither", PlainDither, {kDepthInt16}),
    RatioRows("Tool/Sort", Frame(Tool("BF_Sort"), changed), {kDepthFloat}),
    RatioRows("Plain/StableSort", StableSort, {kDepthFloat}),
    RatioRows("Tool/BlurSpace", BlurInLab, {kDepthFloat}),
    RatioRows("OpenCV/LabBlur", OpenCvBlurInLab, {kDepthFloat}),
};

} // namespace
} // namespace ombrelune::bench
