// The warp tools over whole pictures: affine ones against OpenCV's warpAffine, others against its remap with
// a ready map of the same places, and with under-sampling against themselves.

#include <algorithm>

#include <opencv2/imgproc.hpp>

#include "bench/Frame.h"

namespace ombrelune::bench {
namespace {

KProcessImageData UnderSample(int factor)
{
    KProcessImageData data;
    data.underSample = factor;
    return data;
}

cv::Mat MatOf(KImage const& image)
{
    return {image.Height(), image.Width(), CV_32FC4, image.FImage()->MainRow(0), image.FImage()->RowBytes()};
}

/// Where the effect takes a pixel from, in pixels.
cv::Vec2f SourceOf(KEffectWarp& warp, KImage const& image, int x, int y)
{
    float const scaleX = static_cast<float>(image.Width() - 1);
    float const scaleY = static_cast<float>(image.Height() - 1) * image.FrameAspect();
    KVector2 const place(static_cast<float>(x) / scaleX, static_cast<float>(y) / scaleY);
    KVector2 source;
    warp.F(source, place);
    return {source.x * scaleX, source.y * scaleY};
}

/// Places of 32nds of a pixel, as OpenCV takes them, of noise: no pixel is the same, but the pictures are.
bool AreNear(KImage const& a, KImage const& b)
{
    cv::Mat difference;
    cv::absdiff(MatOf(a), MatOf(b), difference);
    return cv::mean(difference)[0] < 0.01;
}

/// Fills some rows of the output, from `first` on.
using Run = std::function<void(cv::Mat const& in, cv::Mat& rows, int first)>;

/// OpenCV doing what the effect does, by bands on our threads; checked against the effect's own picture.
/// @param prepare  makes the run of a warp over a picture
Prepare OpenCv(MakeEffect const& make, std::function<Run(KEffectWarp&, KImage const&)> const& prepare)
{
    return [=](Case const& row) -> Work {
        cv::setNumThreads(1); // its own threads would wait for those of our pool
        auto const source = std::make_shared<KImage>(Ref<Image>::Share(row.picture.Get()).Release(), true);
        std::unique_ptr<KEffect> const effect = make();
        auto& warp = dynamic_cast<KEffectWarp&>(*effect);
        std::unique_ptr<KImage> const expected = test::Apply(warp, *source);
        warp.Init(source.get());
        Run const run = prepare(warp, *source);
        auto const target = std::shared_ptr<KImage>(source->CopyOf());
        Work const work = [=] {
            cv::Mat const in = MatOf(*source), out = MatOf(*target);
            constexpr int kBand = 64;
            ParallelFor((out.rows + kBand - 1) / kBand, [&](int band) {
                int const first = band * kBand;
                cv::Mat rows = out.rowRange(first, std::min(first + kBand, out.rows));
                run(in, rows, first);
            });
        };
        work();
        return AreNear(*target, *expected) ? work : nullptr;
    };
}

Run WarpAffine(KEffectWarp& warp, KImage const& image)
{
    cv::Vec2f const o = SourceOf(warp, image, 0, 0);
    cv::Vec2f const x = (SourceOf(warp, image, 1000, 0) - o) / 1000.0F;
    cv::Vec2f const y = (SourceOf(warp, image, 0, 1000) - o) / 1000.0F;
    return [=](cv::Mat const& in, cv::Mat& rows, int first) {
        cv::Vec2f const start = o + static_cast<float>(first) * y;
        cv::Matx23d const matrix(x[0], y[0], start[0], x[1], y[1], start[1]);
        cv::warpAffine(in, rows, matrix, rows.size(), cv::INTER_LINEAR | cv::WARP_INVERSE_MAP);
    };
}

Run Remap(KEffectWarp& warp, KImage const& image)
{
    cv::Mat map(image.Height(), image.Width(), CV_32FC2);
    for (int y = 0; y < map.rows; ++y)
        for (int x = 0; x < map.cols; ++x) map.at<cv::Vec2f>(y, x) = SourceOf(warp, image, x, y);
    return [=](cv::Mat const& in, cv::Mat& rows, int first) {
        cv::remap(in, rows, map.rowRange(first, first + rows.rows), cv::noArray(), cv::INTER_LINEAR);
    };
}

std::vector<int> const kFloatOnly = {kDepthFloat};

bool AffineRows(std::string const& name, MakeEffect const& make)
{
    return RatioRows("Warp/" + name, Frame(make, changed), kFloatOnly) &&
           RatioRows("Warp/" + name + "OpenCVAffine", OpenCv(make, WarpAffine), kFloatOnly);
}

bool CurvedRows(std::string const& name, MakeEffect const& make)
{
    return RatioRows("Warp/" + name, Frame(make, changed), kFloatOnly) &&
           RatioRows("Warp/" + name + "OpenCVRemap", OpenCv(make, Remap), kFloatOnly);
}

bool UnderSampledRows(std::string const& name, MakeEffect const& make)
{
    return RatioRows("Warp/" + name, Frame(make, changed), kFloatOnly) &&
           RatioRows("Warp/" + name + "Under4", Frame(make, changed, UnderSample(4)), kFloatOnly);
}

// Points as the bridge gives them for a picture of 16 by 9.
using Point = Setting<KVector2>;
KVector2 const kMiddle(0.5F, 0.28125F), kLeft(0.3F, 0.2F), kRight(0.7F, 0.2F), kTop(0.5F, 0.4F), kNone;
Point const kCenter{"Cent"_id, kMiddle};

bool const kRows =
    AffineRows("Transform", Tool("BF_Transform", Point{"Cent"_id, kNone}, Point{"Axis"_id, kMiddle},
                                 Setting<float>{"Angl"_id, 0.3F}, Setting<float>{"SizX"_id, 1.2F})) &&
    AffineRows("Mirror", Tool("BF_Mirror", Point{"MirL"_id, kLeft}, Point{"MirR"_id, kTop},
                              Setting<bool>{"MAll"_id, true})) &&
    AffineRows("DirectionalScale", Tool("BF_DirectionalScale", kCenter, Setting<float>{"Angl"_id, 0.3F},
                                        Setting<float>{"Size"_id, 1.5F}, Setting<bool>{"SAll"_id, true})) &&
    CurvedRows("LensDistortion", Tool("BF_LensDistortion", kCenter)) &&
    CurvedRows("Spherize", Tool("BF_Spherize", kCenter)) &&
    CurvedRows("Kaleidoscope", Tool("BF_Kaleidoscope", kCenter, Point{"SoCe"_id, kLeft})) &&
    CurvedRows("KaleidoscopeFancy", Tool("BF_Kaleidoscope", Setting<int>{"Type"_id, 1}, kCenter,
                                         Point{"SoCe"_id, kMiddle}, Setting<float>{"AngE"_id, 0.8F})) &&
    UnderSampledRows("Bend",
                     Tool("BF_Bend", Point{"BeSt"_id, kLeft}, Point{"BeMi"_id, kTop},
                          Point{"BeEn"_id, kRight}, Point{"SoSt"_id, kLeft}, Point{"SoEn"_id, kRight})) &&
    UnderSampledRows("RemapToSpherical", Tool("BF_Remap")) &&
    UnderSampledRows("RemapToProbe",
                     Tool("BF_Remap", Setting<int>{"Inpu"_id, 1}, Setting<int>{"Outp"_id, 0}));

} // namespace
} // namespace ombrelune::bench
