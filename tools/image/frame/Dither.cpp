// Dither: fewer bits for each channel, and a grain that keeps the mean.

#include <algorithm>
#include <cstdint>
#include <memory>
#include <vector>

#include "framework/Registration.h"
#include "framework/RowForms.h"
#include "host/value/Parallel.h"
#include "image/RowLoop.h"

namespace ombrelune {

namespace {

// Thresholds of ordered dithering, by row and column.
constexpr int kMatrix3[] = {3, 7, 5, 6, 1, 2, 9, 4, 8};
constexpr int kMatrix4[] = {1, 9, 3, 11, 13, 5, 15, 7, 4, 12, 2, 10, 16, 8, 14, 6};
constexpr int kMatrix5[] = {22, 11, 18, 15, 24, 16, 3,  7,  5,  10, 21, 6, 1,
                            2,  19, 13, 9,  4,  8,  14, 25, 17, 20, 12, 23};

int To16(std::uint32_t word) { return static_cast<int>(word); }
int To16(float word) { return word > 0.0F ? static_cast<int>(std::min(word, 1.0F) * 65535.0F + 0.5F) : 0; }
void From16(int value, std::uint32_t& word) { word = LimitTo16(value); }
void From16(int value, float& word) { word = static_cast<float>(std::clamp(value, 0, 65535)) / 65535.0F; }

} // namespace

class KEffectDither : public KEffectThreads {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(
            kind, "Dtr", "Dither",
            "Reduces the number of bits for each color channel and creates a 'logical noise' doing it");
    }

    KEffectDither()
    {
        // clang-format off
        parameters.AddChapter("Dither");
        parameters.AddSliderInt(&bits, 8, "Output bits for each channel", "sBit"_id, 0, 1, 16);
        parameters.AddList(&method, kFloydSteinberg, "Dither method", "cMet"_id, KF_AffectInputs,
                           {"None", "Ordered", "Simple error distribution", "Floyd & Steinberg"});
        parameters.AddSliderInt(&matrixSize, 4, "Matrix size", "sMet"_id, 0, 3, 5);
        parameters.AddSlider(&multiplier, 1.0F, "Multiplier", "sFac"_id, KF_SoftMax, 0.0, 5.0);
        parameters.AddStandard(&space, 0, KPS_ColorSpace, 0);
        parameters.AddStandard(&channels, 1, KPS_ChannelsRGBA, 0);
        // clang-format on
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        if (id == "cMet"_id) {
            messages->Show("sMet"_id, value.intValue == kOrdered);
            messages->Show("sFac"_id, value.intValue > kOrdered);
        }
        return messages;
    }

    bool Init(KImage* source) override
    {
        if (!KEffectThreads::Init(source)) return false;
        shift = 16 - bits;
        converted.reset();
        if (space == 0) return true;
        converted.reset(source->CopyOf());
        if (!converted) return false;
        converted->ConvertSpace(0, space);
        return true;
    }

    int ThreadCount(int) override { return method == kFloydSteinberg ? 1 : height; }
    void F(int, int chunk, KImage* source, KImage* destination) override
    {
        Image* const from = (converted ? converted.get() : source)->FImage();
        if (data.depth == 2) Rows<FltPixel>(chunk, from, destination->FImage());
        else Rows<Pixel>(chunk, from, destination->FImage());
    }

    void Done(KImage** destination) override
    {
        if (converted) (*destination)->ConvertSpace(space, 0);
        converted.reset();
        KEffectThreads::Done(destination);
    }

    int bits;
    int method;
    int matrixSize;
    float multiplier; // of the error that is handed on
    int space;
    int channels; // the sum of 1 red, 2 green, 4 blue, 8 alpha

private:
    enum Method { kNone, kOrdered, kSimple, kFloydSteinberg };

    template <class Record> void Rows(int chunk, Image* from, Image* to) const
    {
        if (method == kFloydSteinberg) {
            std::vector<int> below(4 * static_cast<std::size_t>(width)); // what the next row is handed
            for (int y = 0; y < height; ++y) {
                ThrowIfStopped();
                FloydSteinbergRow<Record>(y, from, to, below.data());
            }
        } else if (method == kSimple) {
            SimpleRow<Record>(chunk, from, to);
        } else if (method == kOrdered) {
            OrderedRow<Record>(chunk, from, to);
        } else {
            Row<Record>(chunk, from, to, [this](int, int, int v) { return ReduceBits(v, 0); });
        }
    }

    /// @param rule  callable as rule(x, channel, value), returning the new value; both nominally 0 to 65535
    template <class Record, class Rule> void Row(int y, Image* from, Image* to, Rule&& rule) const
    {
        int chosen[4], count = 0;
        for (int c = 0; c < 4; ++c)
            if (channels & 1 << c) chosen[count++] = WordOf(c);
        VisitRow<Record>(
            y,
            [&](int columns, auto in, auto out) {
                Record pixel;
                for (int x = 0; x < columns; ++x) {
                    pixel >>= in;
                    for (int i = 0; i < count; ++i) {
                        auto& word = pixel.word[chosen[i]];
                        From16(rule(x, i, To16(word)), word);
                    }
                    out >>= pixel;
                }
            },
            from, to);
    }

    template <class Record> void OrderedRow(int y, Image* from, Image* to) const
    {
        int const side = matrixSize;
        int const* const matrix = side == 3 ? kMatrix3 : side == 4 ? kMatrix4 : kMatrix5;
        int const* const thresholds = matrix + y % side * side;
        Row<Record>(y, from, to, [=, this](int x, int, int v) {
            int const q = ReduceBits(v, 0);
            int const low = v < q ? ReduceBits(v, -1) : q, high = v < q ? q : ReduceBits(v, 1);
            return thresholds[x % side] * (high - low) > (v - low) * side * side ? low : high;
        });
    }

    template <class Record> void SimpleRow(int y, Image* from, Image* to) const
    {
        int carry[4] = {};
        Row<Record>(y, from, to, [&](int, int c, int v) {
            int const wanted = v + carry[c], q = ReduceBits(wanted, 0);
            carry[c] = Error(wanted - q);
            return q;
        });
    }

    // Method: R. Floyd, L. Steinberg, An Adaptive Algorithm for Spatial Grey Scale, 1976, with 3/8 to the
    // next pixel, 3/8 to the one in the next row and 1/4 to the one after that.
    template <class Record> void FloydSteinbergRow(int y, Image* from, Image* to, int* below) const
    {
        int carry[4] = {}, diagonal[4] = {};
        Row<Record>(y, from, to, [&](int x, int c, int v) {
            int& down = below[4 * x + c];
            int const wanted = v + carry[c] + down, q = ReduceBits(wanted, 0), error = Error(wanted - q);
            carry[c] = 3 * error / 8;
            down = carry[c] + diagonal[c];
            diagonal[c] = error / 4;
            return q;
        });
    }

    /// Bounded, since a multiplier above 1 makes it grow from pixel to pixel.
    int Error(int difference) const
    {
        constexpr float kMost = 1 << 28;
        float const error = multiplier * static_cast<float>(difference);
        return static_cast<int>(std::min(std::max(-kMost, error), kMost)); // also of what is no number
    }

    /// The upper bits, repeated into the lower ones, `step` levels up.
    int ReduceBits(int value, int step) const
    {
        int result = ((value >> shift) + step) * (1 << shift), part = result;
        for (int k = 0; k < shift; k += bits) {
            part >>= bits;
            result += part;
        }
        return result;
    }

    int shift = 0;
    std::unique_ptr<KImage> converted; // the source in another colour space
};

OMBRELUNE_TOOL(BF_Dither, BF_ThreadedOperator, KEffectDither);

} // namespace ombrelune
