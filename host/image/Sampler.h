#pragma once

#include <type_traits>

#include "host/image/Image.h"
#include "host/image/Vector4.h"

namespace ombrelune {

/// Bilinear samples of one picture through one kind of record under one edge rule. Pixel (x, y) lies at the
/// place (x, y) itself, so a whole place gives the pixel exactly. Bind it once per row or picture: the inner
/// case (own depth, no auxiliary channels, all four neighbours inside) is inlined, everything else is a call.
/// The arithmetic is in single floats; a Pixel is rounded to the nearest.
template <class Record, EdgeModes Edges> class BilinearSampler {
public:
    static constexpr bool kIsInt = std::is_same_v<Record, Pixel>;
    using Stored = std::conditional_t<kIsInt, std::uint16_t, float>;

    explicit BilinearSampler(Image const& image)
        : image_(image), base_(image.MainRow(0)), stride_(static_cast<std::ptrdiff_t>(image.RowBytes()))
    {
        // A picture without an inner case has an empty inner area.
        if (image.IsPlain() && image.Depth() == (kIsInt ? kDepthInt16 : kDepthFloat)) {
            innerWidth_ = static_cast<unsigned>(image.Width() - 1);
            innerHeight_ = static_cast<unsigned>(image.Height() - 1);
        }
    }

    /// @param x, y  place in 16.16 pixels; negative places are floored, not truncated
    void operator()(int x, int y, Record& record) const
    {
        int const column = x >> 16, row = y >> 16;
        if (static_cast<unsigned>(column) >= innerWidth_ || static_cast<unsigned>(row) >= innerHeight_)
            return Outer(x, y, record);
        auto const* low =
            reinterpret_cast<Stored const*>(base_ + row * stride_) + static_cast<std::ptrdiff_t>(column) * 4;
        auto const* high = reinterpret_cast<Stored const*>(reinterpret_cast<std::byte const*>(low) + stride_);
        Blend(low, high, x, y, record.word);
        record.DropAux();
    }

    /// Asks for the pixels of a place early, so that they come while others are worked on.
    void Prefetch(int x, int y) const
    {
        int const column = x >> 16, row = y >> 16;
        if (static_cast<unsigned>(column) >= innerWidth_ || static_cast<unsigned>(row) >= innerHeight_)
            return;
        std::byte const* const low =
            base_ + row * stride_ + column * static_cast<std::ptrdiff_t>(4 * sizeof(Stored));
        __builtin_prefetch(low);
        __builtin_prefetch(low + stride_);
    }

private:
    /// Mean of two neighbouring pixels of each row by the fractions of the place. Integers go through floats,
    /// which hold every step to 1/60 of a value and a whole place exactly.
    template <class Word> static void Blend(Stored const* low, Stored const* high, int x, int y, Word* out)
    {
        float const u = static_cast<float>(x & 0xffff) / 65536.0F;
        float const v = static_cast<float>(y & 0xffff) / 65536.0F;
        auto const across = [u](Stored const* row) {
            Float4 const a = LoadFloat4(row), b = LoadFloat4(row + 4);
            return a + (b - a) * u;
        };
        Float4 const from = across(low), to = across(high);
        Store(from + (to - from) * v, out);
    }
    void Outer(int x, int y, Record& record) const;

    Image const& image_;
    std::byte const* base_;
    std::ptrdiff_t stride_;
    unsigned innerWidth_ = 0, innerHeight_ = 0;
};

extern template class BilinearSampler<Pixel, kEdgeBlack>;
extern template class BilinearSampler<Pixel, kEdgeWrap>;
extern template class BilinearSampler<Pixel, kEdgeDuplicate>;
extern template class BilinearSampler<FltPixel, kEdgeBlack>;
extern template class BilinearSampler<FltPixel, kEdgeWrap>;
extern template class BilinearSampler<FltPixel, kEdgeDuplicate>;

} // namespace ombrelune
