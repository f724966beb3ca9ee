#include <cmath>

#include <opencv2/imgproc.hpp>

#include "bench/Floor.h"
#include "host/image/Sampler.h"

namespace ombrelune::bench {
namespace {

std::vector<int> const kFloatOnly = {kDepthFloat};

cv::Mat MatOf(Image const& image)
{
    return {image.Height(), image.Width(), image.IsFloat() ? CV_32FC4 : CV_16UC4, image.MainRow(0),
            image.RowBytes()};
}

/// Largest difference between two pictures of one depth, in the words as stored.
double Difference(Image const& a, Image const& b) { return cv::norm(MatOf(a), MatOf(b), cv::NORM_INF); }

/// One pixel in 16.16, hidden from the compiler, which would drop the interpolation at whole places.
int OnePixel()
{
    int one = 65536;
    benchmark::DoNotOptimize(one);
    return one;
}

/// Fills every pixel of the target by sample(x, y, record) in the record of its depth.
template <class Record, class Stored, class Bind> void SampleAll(Image& target, Bind const& bind)
{
    ParallelFor(target.Height(), [&](int y) {
        PlainPixPtr<Stored> out(&target, 0, y);
        auto const sample = bind();
        Record record;
        for (int x = 0; x < target.Width(); ++x) {
            sample(x, y, record);
            out >>= record;
        }
    });
}

template <class Record, class Stored> void BilinearIdentity(Image const& source, Image& target)
{
    SampleAll<Record, Stored>(target, [&] {
        return [sampler = BilinearSampler<Record, kEdgeBlack>(source),
                one = OnePixel()](int x, int y, Record& record) { sampler(x * one, y * one, record); };
    });
}

template <class Record, class Stored> void AreaIdentity(Image const& source, Image& target)
{
    constexpr int kHalf = 32768;
    SampleAll<Record, Stored>(target, [&] {
        return [&source, one = OnePixel()](int column, int row, Record& record) {
            int const x = column * one, y = row * one;
            source.SampleAreaB(x - kHalf, y - kHalf, x + kHalf, y - kHalf, x - kHalf, y + kHalf, x + kHalf,
                               y + kHalf, record);
        };
    });
}

/// Unit cells turned by 30 degrees, which go through strips.
template <class Record, class Stored> void AreaTurned(Image const& source, Image& target)
{
    SampleAll<Record, Stored>(target, [&] {
        return [&source](int column, int row, Record& record) {
            constexpr int kA = 44761, kB = 11994; // (cos 30 + sin 30) / 2, (cos 30 - sin 30) / 2 in 16.16
            int const x = column << 16, y = row << 16;
            source.SampleAreaB(x - kB, y - kA, x + kA, y - kB, x - kA, y + kB, x + kB, y + kA, record);
        };
    });
}

/// Work that fills another picture of the same format; checked against what the picture should be.
Prepare Filling(std::function<void(Image const&, Image&)> fill,
                std::function<bool(Image const& source, Image const& target)> check)
{
    return [=](Case const& row) -> Work {
        Ref<Image> target = row.picture->CopyOfImage(true);
        fill(*row.picture, *target);
        if (!check(*row.picture, *target)) return nullptr;
        return [=] { fill(*row.picture, *target); };
    };
}

bool IsIdentity(Image const& source, Image const& target) { return Difference(source, target) <= 1e-6; }

void Bilinear(Image const& source, Image& target)
{
    if (source.IsFloat()) BilinearIdentity<FltPixel, float>(source, target);
    else BilinearIdentity<Pixel, std::uint16_t>(source, target);
}

void Area(Image const& source, Image& target)
{
    const_cast<Image&>(source).UseSAT(); // made at the first, untimed call
    if (source.IsFloat()) AreaIdentity<FltPixel, float>(source, target);
    else AreaIdentity<Pixel, std::uint16_t>(source, target);
}

void AreaStrips(Image const& source, Image& target)
{
    const_cast<Image&>(source).UseSAT();
    if (source.IsFloat()) AreaTurned<FltPixel, float>(source, target);
    else AreaTurned<Pixel, std::uint16_t>(source, target);
}

/// OpenCV's remap through a ready map of the identity.
Work Remap(Case const& row)
{
    cv::setNumThreads(row.threads);
    Ref<Image> target = row.picture->CopyOfImage(true);
    cv::Mat map(row.picture->Height(), row.picture->Width(), CV_32FC2);
    for (int y = 0; y < map.rows; ++y)
        for (int x = 0; x < map.cols; ++x)
            map.at<cv::Vec2f>(y, x) = {static_cast<float>(x), static_cast<float>(y)};
    auto const run = [=] {
        cv::Mat out = MatOf(*target);
        cv::remap(MatOf(*row.picture), out, map, cv::noArray(), cv::INTER_LINEAR);
    };
    run();
    return IsIdentity(*row.picture, *target) ? Work(run) : nullptr;
}

Work SatBuild(Case const& row)
{
    // A picture keeps its table, so each run takes a new picture whose buffer comes from the pool.
    auto const run = [=] {
        Ref<Image> copy = row.picture->CopyOfImage(true);
        copy->UseSAT();
    };
    run();
    return run;
}

/// Gaussian of a radius in pixels, held against OpenCV's direct one in the middle of the picture.
Prepare Blur(double radius)
{
    return [=](Case const& row) -> Work {
        TagList const tags{{Blur_Type, kBlurGaussian}, {Blur_XSize, radius / row.picture->Width()}};
        Ref<Image> const blurred = row.picture->BlurOfImageTagList(tags);
        cv::Rect const middle(row.picture->Width() / 2 - 300, row.picture->Height() / 2 - 300, 600, 600);
        cv::Mat gauss, difference;
        cv::GaussianBlur(MatOf(*row.picture)(middle), gauss, {}, radius / 2.0);
        cv::absdiff(gauss, MatOf(*blurred)(middle), difference);
        double const unit = row.picture->IsFloat() ? 1.0 : 65535.0;
        cv::Rect const inner(250, 250, 100, 100);
        if (cv::norm(difference(inner), cv::NORM_INF) > 0.05 / radius * unit + 1e-3) return nullptr;
        return [=] { row.picture->BlurOfImageTagList(tags); };
    };
}

/// OpenCV's box filter three times, of the size that gives the same Gaussian.
Prepare ThreeBoxes(int size)
{
    return [=](Case const& row) -> Work {
        cv::setNumThreads(row.threads);
        Ref<Image> target = row.picture->CopyOfImage(true);
        return [=] {
            cv::Mat out = MatOf(*target);
            cv::blur(MatOf(*row.picture), out, {size, size}, {-1, -1}, cv::BORDER_REPLICATE);
            for (int i = 0; i < 2; ++i) cv::blur(out, out, {size, size}, {-1, -1}, cv::BORDER_REPLICATE);
        };
    };
}

bool const kRows =
    RatioRows("Bilinear", Filling(Bilinear, IsIdentity)) &&
    RatioRows("BilinearOpenCVRemap", Remap, kFloatOnly) && RatioRows("Area", Filling(Area, IsIdentity)) &&
    RatioRows("AreaTurned", Filling(AreaStrips,
                                    [](Image const& source, Image const& target) {
                                        // A turned unit cell stays a mean: the overall mean is kept.
                                        cv::Scalar const difference =
                                            cv::mean(MatOf(source)) - cv::mean(MatOf(target));
                                        return cv::norm(difference) < (source.IsFloat() ? 1e-3 : 65.0);
                                    })) &&
    RatioRows("UseSAT", SatBuild) && RatioRows("Blur10", Blur(10.0)) &&
    RatioRows("Blur10OpenCVBoxes", ThreeBoxes(11), kFloatOnly) && RatioRows("Blur100", Blur(100.0)) &&
    RatioRows("Blur100OpenCVBoxes", ThreeBoxes(101), kFloatOnly);

} // namespace
} // namespace ombrelune::bench
