#include <cmath>

#include <opencv2/imgproc.hpp>

#include "bench/Floor.h"
#include "image/KColor32.h"
#include "image/KImage.h"
#include "image/RowLoop.h"

namespace ombrelune::bench {
namespace {

/// Work on a copy of the picture with a second picture beside it. The operations leave values that stay in
/// range however often they run.
Prepare InPlace(std::function<void(KImage&, KImage const&)> change)
{
    return [=](Case const& row) -> Work {
        Ref<Image> target = row.picture->CopyOfImage(false);
        auto const run = [=] {
            KImage image(target.Get(), false), other(row.picture.Get(), false);
            change(image, other);
        };
        run();
        FltPixel pixel;
        PixPtr(target.Get(), 0, 0).GetPixel(pixel);
        return std::isfinite(pixel.red) ? Work(run) : nullptr;
    };
}

/// A colour operation over the pixels, from one picture to another as an engine does it.
template <class Record, class Color, class Stored, class Function>
void ColorRows(Image* from, Image* to, Function const& f)
{
    ParallelFor(from->Height(), [&](int y) {
        PlainPixPtr<Stored> in(from, 0, y), out(to, 0, y);
        int const width = from->Width();
        auto const local = f;
        Record pixel;
        for (int x = 0; x < width; ++x) {
            pixel >>= in;
            Color const c = local(Color(pixel));
            if constexpr (std::is_same_v<Record, Pixel>) {
                pixel.red = LimitTo16(c.red);
                pixel.green = LimitTo16(c.green);
                pixel.blue = LimitTo16(c.blue);
            } else {
                pixel.red = c.red;
                pixel.green = c.green;
                pixel.blue = c.blue;
            }
            out >>= pixel;
        }
    });
}

template <class Function> Prepare Colors(Function f)
{
    return [=](Case const& row) -> Work {
        Ref<Image> target = row.picture->CopyOfImage(true);
        return [=] {
            if (row.picture->IsFloat())
                ColorRows<FltPixel, KColor, float>(row.picture.Get(), target.Get(), f);
            else ColorRows<Pixel, KColor32, std::uint16_t>(row.picture.Get(), target.Get(), f);
        };
    };
}

/// OpenCV's RGB to HLS and back, on three channels.
Work HlsThereAndBack(Case const& row)
{
    cv::setNumThreads(row.threads);
    cv::Mat const picture(row.picture->Height(), row.picture->Width(), CV_32FC4, row.picture->MainRow(0),
                          row.picture->RowBytes());
    cv::Mat bgr, hls, back;
    cv::cvtColor(picture, bgr, cv::COLOR_BGRA2BGR);
    return [=]() mutable {
        cv::cvtColor(bgr, hls, cv::COLOR_BGR2HLS);
        cv::cvtColor(hls, back, cv::COLOR_HLS2BGR);
    };
}

bool const kRows =
    RatioRows("KImageCopyFrom", InPlace([](KImage& a, KImage const& b) { a.CopyFrom(&b); })) &&
    RatioRows("KImageBlendWith", InPlace([](KImage& a, KImage const& b) { a.BlendWith(&b, 0.5F); })) &&
    RatioRows("KImageMergePixel", InPlace([](KImage& a, KImage const& b) { a.MergePixel(&b); })) &&
    RatioRows("KImageMultiply", InPlace([](KImage& a, KImage const&) { a.Multiply(0.999F); })) &&
    RatioRows("KImageBoundingBox", InPlace([](KImage& a, KImage const&) { a.BoundingBox(); })) &&
    RatioRows("KImageGetSamples", InPlace([](KImage& a, KImage const&) { a.GetSamples(0, 0, {}, 0, 0); })) &&
    RatioRows("ColorInverse", Colors([](auto const& c) { return c.Inverse(1); })) &&
    RatioRows("ColorCorrectHLS",
              Colors([](auto const& c) { return c.CorrectHLS(0.1F, 0, 0, 1.2F, 1, 0); })) &&
    RatioRows("ColorHlsOpenCV", HlsThereAndBack, {kDepthFloat});

} // namespace
} // namespace ombrelune::bench
