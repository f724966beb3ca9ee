// Matte Cleaner: replaces channels that differ too much from their neighbours by the neighbours' mean, and
// joins a hard matte with the soft edge of another.

#include <algorithm>
#include <memory>
#include <type_traits>

#include "framework/Registration.h"
#include "framework/RowForms.h"
#include "image/ColorVectors.h"

namespace ombrelune {

namespace {

struct Offset {
    int x, y;
};

// The three rings of neighbours.
constexpr Offset kNeighbours[] = {{-1, 0},  {1, 0},   {0, -1}, {0, 1},  {-1, -1}, {1, 1}, {-1, 1},
                                  {1, -1},  {-2, -1}, {-2, 0}, {-2, 1}, {2, -1},  {2, 0}, {2, 1},
                                  {-1, -2}, {0, -2},  {1, -2}, {-1, 2}, {0, 2},   {1, 2}};
constexpr int kFirstRing = 4, kSecondRing = 8, kThirdRing = 20;

/// The words as parts of 1.
Float4 PartsOf(Pixel const& p)
{
    return __builtin_convertvector(reinterpret_cast<Int4>(LoadUInt4(p.word)), Float4) / 65535.0F;
}
Float4 PartsOf(FltPixel const& p) { return LoadFloat4(p.word); }

/// Replaces the words that differ by more than the limit by the mean.
void Replace(Pixel& p, Float4 difference, float limit, Float4 sum, int count)
{
    for (int c = 0; c < 4; ++c)
        if (difference[c] > limit)
            p.word[c] = static_cast<std::uint32_t>(static_cast<int>(sum[c] * 65535.0 / count));
}
void Replace(FltPixel& p, Float4 difference, float limit, Float4 sum, int count)
{
    Store(Select(difference > limit, sum / static_cast<float>(count), LoadFloat4(p.word)), p.word);
}

/// Reads pixels around those of one row, outside as black.
template <class Record> class PixelsAround {
public:
    PixelsAround(KImage const& image, int y, int step) : image_(image), y_(y), step_(step) {}

    Float4 operator()(int x, int neighbour) const
    {
        Record near;
        image_.GetPixelB(x + step_ * kNeighbours[neighbour].x, y_ + step_ * kNeighbours[neighbour].y, near);
        return PartsOf(near);
    }

private:
    KImage const& image_;
    int y_, step_;
};

/// The same of a plain picture, without asking each time where its rows lie.
template <class Record> class RowsAround {
public:
    RowsAround(KImage const& image, int y, int step) : width_(static_cast<unsigned>(image.Width()))
    {
        for (int i = 0; i < kThirdRing; ++i) {
            int const row = y + step * kNeighbours[i].y;
            columns_[i] = step * kNeighbours[i].x;
            bool const isInside = row >= 0 && row < image.Height();
            rows_[i] = isInside ? reinterpret_cast<Stored const*>(image.FImage()->MainRow(row)) : nullptr;
        }
    }
    Float4 operator()(int x, int neighbour) const
    {
        int const column = x + columns_[neighbour];
        if (!rows_[neighbour] || static_cast<unsigned>(column) >= width_) return Float4{};
        Float4 const words = LoadFloat4(rows_[neighbour] + std::ptrdiff_t{4} * column);
        if constexpr (std::is_same_v<Record, Pixel>) return words / 65535.0F;
        else return words;
    }

private:
    using Stored = StoredWord<Record>;
    Stored const* rows_[kThirdRing];
    int columns_[kThirdRing];
    unsigned width_;
};

/// Integers truncate.
template <class Word> Word Mixed(float part, Word a, float b)
{
    return static_cast<Word>(part * b + (1.0F - part) * static_cast<float>(a));
}

/// Alpha as a part of 1.
float AlphaOf(Pixel const& p) { return static_cast<float>(p.alpha) / 65535.0F; }
float AlphaOf(FltPixel const& p) { return p.alpha; }

} // namespace

class KEffectMatteCleaner : public KEffectPixel {
public:
    static constexpr bool kOwnRow = true;

    static char const* Name(KProcessNameType kind) { return NameOf(kind, "MCl", "Matte Cleaner"); }
    static char const* Category() { return KEffectImage::Category(); }

    KEffectMatteCleaner()
    {
        // clang-format off
        parameters.AddChapter("Clean");
        parameters.AddCheckbox(&clean, true, "Clean Main Matte", "ClMa"_id, 0);
        parameters.AddSlider(&rough,  0.5F,  "Threshold Rough",  "Thr0"_id, 0, 0.0, 1.0);
        parameters.AddSlider(&normal, 0.75F, "Threshold Normal", "Thr1"_id, 0, 0.0, 1.0);
        parameters.AddSlider(&fine,   1.0F,  "Threshold Fine",   "Thr2"_id, 0, 0.0, 1.0);
        parameters.AddSliderInt(&size, 1,    "Size",             "Size"_id, 0, 1, 6);

        parameters.AddChapter("Combine");
        parameters.AddSlider(&edgeWidth, 2.0F, "Edge Width", "EdWi"_id, 0, 0.0, 15.0);
        parameters.AddRange(&edgeRange, {0.25F, 0.75F}, "Red Low", "Red High", "RanL"_id, "RanH"_id, 0, 0.0, 1.0);
        parameters.AddSlider(&softness, 0.25F, "Softness", "Soft"_id, 0, 0.0, 1.0);
        parameters.AddCheckbox(&postMultiply, false, "Post-Multiply Image", "PoMu"_id, 0);
        parameters.AddCheckbox(&overlay, false, "Visual Overlay Edge (Disable for final render)", "Over"_id, 0);
        parameters.AddColor(&overlayColor, {1.0F, 0.0F, 0.0F, 0.75F}, "Color", "OCol"_id, 0);
        parameters.AddImage(&softMatte, "Image With Soft Matte", 2, KF_MainInput);
        // clang-format on
    }

    bool Init(KImage* source) override
    {
        if (!KEffectPixel::Init(source)) return false;
        cleans = clean && !(rough == 1.0F && normal == 1.0F && fine == 1.0F);
        // Each is a sum of as many differences as there are neighbours.
        limits[0] = rough * 4.0F;
        limits[1] = normal * 8.0F;
        limits[2] = fine * 20.0F;
        soft = softMatte && softMatte->SameSize(source) ? softMatte : nullptr;
        usesEdge = soft || overlay;
        // Only the edge's alpha is read.
        edge.reset(usesEdge ? source->BlurOf(edgeWidth, -1.0, 4, 0x8, 1.0, 1.0) : nullptr);
        PixelFromColor(overlayPixel, overlayColor);
        PixelFromColor(overlayFlt, overlayColor);
        return !usesEdge || edge;
    }

    Pixel F(int x, int y, KImage* source) override
    {
        return Cleaned(x, y, *source, overlayPixel, PixelsAround<Pixel>(*source, y, size));
    }
    FltPixel FFlt(int x, int y, KImage* source) override
    {
        return Cleaned(x, y, *source, overlayFlt, PixelsAround<FltPixel>(*source, y, size));
    }
    void Row(KPixelRow const& row) override
    {
        if (row.data->depth == 2) CleanRow(row, overlayFlt);
        else CleanRow(row, overlayPixel);
    }

    void Done(KImage** destination) override
    {
        edge.reset();
        KEffectPixel::Done(destination);
    }

    bool clean;
    float rough, normal, fine;
    int size;         // pixels from one neighbour to the next
    float edgeWidth;  // 720ths of the width
    KRange edgeRange; // of the blurred alpha
    float softness;
    bool postMultiply, overlay;
    KColor overlayColor;
    KImage* softMatte;

private:
    template <class Record> void CleanRow(KPixelRow const& row, Record const& marked) const
    {
        if (row.source->FImage()->Layout() != kPlainLayout<Record>)
            return PixelRow<Record>(
                row, [&, around = PixelsAround<Record>(*row.source, row.y, size)](
                         int x, int y, KImage* source) { return Cleaned(x, y, *source, marked, around); });
        PixelRow<Record>(
            row, [&, around = RowsAround<Record>(*row.source, row.y, size)](int x, int y, KImage* source) {
                return Cleaned(x, y, *source, marked, around);
            });
    }

    /// @param around  gives the parts of a neighbour of a place in the row
    template <class Record, class Neighbours>
    Record Cleaned(int x, int y, KImage const& source, Record const& marked, Neighbours const& around) const
    {
        Record pixel;
        source.GetPixel(x, y, pixel);
        if (cleans) Clean(x, pixel, around);
        float isEdge = 0.0F;
        if (usesEdge) {
            Record blurred;
            edge->GetPixel(x, y, blurred);
            isEdge = edgeRange.IsIn(AlphaOf(blurred), softness);
        }
        if (soft) {
            Record other;
            soft->GetPixel(x, y, other);
            pixel.alpha = Mixed(isEdge, pixel.alpha, static_cast<float>(other.alpha));
        }
        if (postMultiply) PixelPostMultiply(pixel, pixel.alpha);
        if (overlay) {
            float const part = isEdge * AlphaOf(marked);
            for (int c : {kChannelBlue, kChannelGreen, kChannelRed})
                pixel.word[c] = Mixed(part, pixel.word[c], static_cast<float>(marked.word[c]));
        }
        return pixel;
    }

    template <class Record, class Neighbours> void Clean(int x, Record& pixel, Neighbours const& around) const
    {
        Float4 const centre = PartsOf(pixel);
        Float4 sum{}, difference{};
        int count = 0;
        auto const ring = [&](int end, float limit) {
            for (; count < end; ++count) {
                Float4 const near = around(x, count);
                difference += Larger(centre - near, near - centre);
                sum += near;
            }
            Replace(pixel, difference, limit, sum, count);
        };
        ring(kFirstRing, limits[0]);
        // The sums' limits are what is held against 1, so normal counts below 1 / 8 and fine below 1 / 20.
        if (limits[1] < 1.0F || limits[2] < 1.0F) ring(kSecondRing, limits[1]);
        if (limits[2] < 1.0F) ring(kThirdRing, limits[2]);
    }

    bool cleans = false, usesEdge = false;
    float limits[3] = {}; // sums of differences
    KImage* soft = nullptr;
    std::unique_ptr<KImage> edge;
    Pixel overlayPixel;
    FltPixel overlayFlt;
};

OMBRELUNE_TOOL(BF_MatteCleaner, BF_ThreadedOperator, KEffectMatteCleaner);

} // namespace ombrelune
