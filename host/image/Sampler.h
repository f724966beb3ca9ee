#pragma once

#include <type_traits>

#include "host/image/Image.h"

namespace ombrelune {

/// Bilinear samples of one picture through one kind of record under one edge rule. Pixel (x, y) lies at the
/// place (x, y) itself, so a whole place gives the pixel exactly. Bind it once per row or picture: the inner
/// case (own depth, no auxiliary channels, all four neighbours inside) is inlined, everything else is a call.
/// Pixel is interpolated in integers and rounded to the nearest, FltPixel in single floats.
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
        Fraction const fx = ToFraction(x), fy = ToFraction(y);
        for (int i = 0; i < 4; ++i) record.word[i] = Blend(low[i], low[i + 4], high[i], high[i + 4], fx, fy);
        record.DropAux();
    }

private:
    using Fraction = std::conditional_t<kIsInt, std::int64_t, float>;
    using Word = std::remove_all_extents_t<decltype(Record::word)>;

    static Fraction ToFraction(int place)
    {
        int const fraction = place & 0xffff;
        if constexpr (kIsInt) return fraction;
        else return static_cast<float>(fraction) * (1.0F / 65536.0F);
    }
    static Word Blend(Fraction a, Fraction b, Fraction c, Fraction d, Fraction fx, Fraction fy)
    {
        if constexpr (kIsInt) {
            Fraction const low = (a << 16) + (b - a) * fx, high = (c << 16) + (d - c) * fx;
            return static_cast<Word>(((low << 16) + (high - low) * fy + (Fraction{1} << 31)) >> 32);
        } else {
            Fraction const low = a + (b - a) * fx, high = c + (d - c) * fx;
            return low + (high - low) * fy;
        }
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
