#include "image/PlaneSampling.h"

#include <algorithm>
#include <cstdint>

namespace ombrelune {

namespace {

/// Moves four places into the first repetition of a side when all lie in the same one.
bool MoveToFirstTile(int (&places)[4], int size)
{
    auto const tileOf = [size](int place) -> std::int64_t {
        std::int64_t const p = place;
        return p >= 0 ? (p >> 16) / size : ~((-p >> 16) / size);
    };
    std::int64_t const tile = tileOf(places[0]);
    for (int place : places)
        if (tileOf(place) != tile) return false;
    for (int& place : places) place = static_cast<int>(place - (tile * size << 16));
    return true;
}

/// Whether no place lies beyond the centre of the last pixel, from where on the next repetition shines in.
bool IsBeforeSeam(int const (&places)[4], int size)
{
    return *std::max_element(places, places + 4) <= std::int64_t{size - 1} << 16;
}

/// Where the ray through x, y meets the plane, through the matrix. The depth comes from the third column and
/// not from the third row: callers count on these elements.
KVector3 OnPlane(double x, double y, KMatrix4 const& m)
{
    double const d = m[10] == 0.0F ? 1.0 : m[10];
    double const z = (-m[2] * x - m[6] * y - m[14]) / d;
    return m * KVector3(static_cast<float>(x), static_cast<float>(y), static_cast<float>(z));
}

template <class Record>
Record ValueAt(double x, double y, KMatrix4 const& m, KImage const* image, SuperSamplingType type,
               EdgeModes edges, double sizeX, double sizeY)
{
    auto const width = static_cast<float>(image->Width()), height = static_cast<float>(image->Height());
    Record record;
    for (auto& word : record.word) word = 0;
    record.DropAux();

    if (type == kSampleArea) {
        double const hx = 0.5 / sizeX, hy = 0.5 / sizeY;
        int px[4], py[4];
        int n = 0;
        for (double const cx : {x - hx, x + hx}) {
            for (double const cy : {y - hy, y + hy}) {
                KVector3 const p = OnPlane(cx, cy, m);
                px[n] = ToFixed16(p.x * width);
                py[n++] = ToFixed16(p.y * height);
            }
        }
        auto const sample = [&](auto sampler) {
            sampler(px[0], py[0], px[1], py[1], px[2], py[2], px[3], py[3]);
        };
        if (edges == kEdgeWrap) sample([&](auto... c) { ImageSampleAreaW(image, c..., record); });
        else if (edges == kEdgeDuplicate) sample([&](auto... c) { image->SampleAreaD(c..., record); });
        else sample([&](auto... c) { image->SampleAreaB(c..., record); });
        return record;
    }

    KVector3 const p = OnPlane(x, y, m);
    if (type == kSampleInterpolated) image->GetSamplePixel(p.x * width, p.y * height, record, edges);
    else image->GetSample(TruncateToInt(p.x * width), TruncateToInt(p.y * height), record, edges);
    return record;
}

} // namespace

template <class Record>
void ImageSampleAreaW(KImage const* image, int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4,
                      Record& record)
{
    int x[4] = {x1, x2, x3, x4}, y[4] = {y1, y2, y3, y4};
    int const width = image->Width(), height = image->Height();
    if (MoveToFirstTile(x, width) && MoveToFirstTile(y, height) && IsBeforeSeam(x, width) &&
        IsBeforeSeam(y, height))
        image->SampleAreaB(x[0], y[0], x[1], y[1], x[2], y[2], x[3], y[3], record);
    else image->SampleAreaW(x[0], y[0], x[1], y[1], x[2], y[2], x[3], y[3], record);
}

template void ImageSampleAreaW(KImage const*, int, int, int, int, int, int, int, int, Pixel&);
template void ImageSampleAreaW(KImage const*, int, int, int, int, int, int, int, int, FltPixel&);

Pixel GetImagePixelValueAt(double x, double y, KMatrix4 const& m, KImage const* image, SuperSamplingType type,
                           EdgeModes edges, double sizeX, double sizeY)
{
    return ValueAt<Pixel>(x, y, m, image, type, edges, sizeX, sizeY);
}

FltPixel GetImageFltPixelValueAt(double x, double y, KMatrix4 const& m, KImage const* image,
                                 SuperSamplingType type, EdgeModes edges, double sizeX, double sizeY)
{
    return ValueAt<FltPixel>(x, y, m, image, type, edges, sizeX, sizeY);
}

} // namespace ombrelune
