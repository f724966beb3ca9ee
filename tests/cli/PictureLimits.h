#pragma once

#include <cmath>
#include <filesystem>
#include <string>

#include "host/image/PixPtr.h"
#include "host/io/Pictures.h"

namespace ombrelune::test {

/// How far a picture is from its reference, over all channels, in values of 0 to 1.
struct PictureDistance {
    bool sameSize = false;
    double largest = 0.0;
    double shareOff = 0.0; ///< share of the values that are off by more than a step of 8 bits

    /// Machines may round differently: at most 0.02 % of the values by more than a step, none by more than
    /// three.
    bool IsWithinLimits() const { return sameSize && largest <= 0.012 && shareOff <= 0.0002; }
};

inline PictureDistance DistanceOf(Image const& made, Image const& reference)
{
    PictureDistance distance;
    distance.sameSize = made.Width() == reference.Width() && made.Height() == reference.Height();
    if (!distance.sameSize) return distance;
    int off = 0;
    for (int y = 0; y < made.Height(); ++y) {
        PixPtr a(const_cast<Image*>(&made), 0, y), b(const_cast<Image*>(&reference), 0, y); // reads only
        FltPixel p, q;
        for (int x = 0; x < made.Width(); ++x) {
            p >>= a;
            q >>= b;
            for (int w = 0; w < 4; ++w) {
                double const difference = std::abs(p.word[w] - q.word[w]);
                distance.largest = std::max(distance.largest, difference);
                off += difference > 0.004;
            }
        }
    }
    distance.shareOff = off / (4.0 * made.Width() * made.Height());
    return distance;
}

/// Leaves NAME.made.png, NAME.reference.png and NAME.difference.png, ten times as strong, beside each other.
inline void KeepDifference(Image const& made, Image const& reference, std::filesystem::path const& folder,
                           std::string const& name)
{
    auto const write = [&](Image const& image, char const* kind) {
        WritePicture(image, (folder / (name + "." + kind + ".png")).string());
    };
    write(made, "made");
    write(reference, "reference");
    if (!DistanceOf(made, reference).sameSize) return;
    Ref<Image> difference = made.CopyOfImage(true);
    for (int y = 0; y < made.Height(); ++y) {
        PixPtr a(const_cast<Image*>(&made), 0, y), b(const_cast<Image*>(&reference), 0, y);
        PixPtr out(difference.Get(), 0, y);
        FltPixel p, q;
        for (int x = 0; x < made.Width(); ++x) {
            p >>= a;
            q >>= b;
            for (int w = 0; w < 3; ++w) p.word[w] = 10.0F * std::abs(p.word[w] - q.word[w]);
            p.alpha = 1.0F;
            out >>= p;
        }
    }
    write(*difference, "difference");
}

} // namespace ombrelune::test
