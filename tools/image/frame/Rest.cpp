// Rest: lets the content of each column come to rest on a floor line.

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "framework/Registration.h"
#include "host/value/Parallel.h"

namespace ombrelune {

class KEffectRest : public KEffectPixel {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "Rst", "Rest"); }

    KEffectRest()
    {
        unsigned const preview = KF_Preview;
        // clang-format off
        parameters.AddChapter("Rest");
        parameters.AddButtonsChannel(&channel, 4, "Channel", "Chan"_id, 0);
        parameters.AddSlider(&amount, 1.0F, "Amount", "Leng"_id, 0, 0.0, 1.0);
        parameters.AddPoint(&left,  {0.25F, 0.5F}, "Floor Left",  "FlrL"_id, preview, KPoint_Pixels);
        parameters.AddPoint(&right, {0.75F, 0.5F}, "Floor Right", "FlrR"_id, preview | KF_PreviewFollow, KPoint_Pixels);
        parameters.AddButtons(&position, 0, "Position", "Posi"_id, 0, {"Up", "Under"});
        // clang-format on
    }

    bool Init(KImage* source) override
    {
        if (!KEffectPixel::Init(source)) return false;
        if (source->IsFloat()) MeasureColumns<FltPixel>(*source);
        else MeasureColumns<Pixel>(*source);
        BridgeEmptyColumns();
        return true;
    }

    Pixel F(int x, int y, KImage* source) override { return At<Pixel>(x, y, *source); }
    FltPixel FFlt(int x, int y, KImage* source) override { return At<FltPixel>(x, y, *source); }

    int channel;
    float amount;
    KVector2 left, right; // ends of the floor, in pixels
    int position;         // 0 on top of the floor, 1 hanging under it

private:
    static constexpr float kEmpty = std::numeric_limits<float>::quiet_NaN();

    template <class Record> Record At(int x, int y, KImage const& source) const
    {
        Record pixel;
        source.GetSamplePixel(static_cast<float>(x),
                              static_cast<float>(y) + shifts[static_cast<std::size_t>(x)], pixel, 0);
        return pixel;
    }

    /// How far each column's content lies above the floor: where the channel's sum from its near end passes
    /// one half.
    template <class Record> void MeasureColumns(KImage const& source)
    {
        shifts.assign(static_cast<std::size_t>(width), kEmpty);
        bool const isUpwards = (data.bottomUp ? 1 - position : position) == 1;
        constexpr int kStrip = 64; // columns, so that rows are read in runs
        ParallelFor((width + kStrip - 1) / kStrip, [&](int strip) {
            int const first = strip * kStrip, last = std::min(first + kStrip, width);
            float sums[kStrip] = {};
            Record pixel;
            for (int row = 0; row < height; ++row) {
                int const y = isUpwards ? row : height - 1 - row;
                for (int x = first; x < last; ++x) {
                    float& sum = sums[x - first];
                    if (sum > 0.5F) continue;
                    source.GetPixel(x, y, pixel);
                    sum += PixelGetChannel(pixel, channel);
                    if (sum > 0.5F)
                        shifts[static_cast<std::size_t>(x)] =
                            amount * (static_cast<float>(y) + sum - FloorAt(static_cast<float>(x)));
                }
            }
        });
    }

    float FloorAt(float x) const
    {
        if (left.x == right.x) return 0.0F;
        return left.y + (x - left.x) / (right.x - left.x) * (right.y - left.y);
    }

    /// Columns without content move with their neighbours.
    void BridgeEmptyColumns()
    {
        auto const isFull = [](float shift) { return std::isfinite(shift); };
        auto last = shifts.end(); // the last column with content so far
        for (auto at = shifts.begin(); at != shifts.end(); ++at) {
            if (isFull(*at)) {
                last = at;
                continue;
            }
            auto const next = std::find_if(at, shifts.end(), isFull);
            if (last == shifts.end()) {
                std::fill(at, next, next == shifts.end() ? 0.0F : *next);
            } else if (next == shifts.end()) {
                std::fill(at, next, *last);
            } else {
                for (auto each = at; each != next; ++each) {
                    float const part = static_cast<float>(each - last) / static_cast<float>(next - last);
                    *each = *last * (1.0F - part) + *next * part;
                }
            }
            if (next == shifts.end()) return;
            last = at = next;
        }
    }

    std::vector<float> shifts; // by column, in pixels
};

OMBRELUNE_TOOL(BF_Rest, BF_ThreadedOperator, KEffectRest);

} // namespace ombrelune
