// Sort: puts the pixels into the order of their channels, or gives each the pixel of the same rank of another
// picture.

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <memory>
#include <vector>

#include "framework/Registration.h"
#include "host/value/Parallel.h"
#include "image/RowLoop.h"

namespace ombrelune {

namespace {

/// Unsigned number in the order of the floats; what is no number comes last.
std::uint64_t KeyOf(float value)
{
    if (value != value) return 0xffffffffU;
    auto const bits = std::bit_cast<std::uint32_t>(value + 0.0F); // -0 is 0
    return bits & 0x80000000U ? ~bits : bits | 0x80000000U;
}

/// Five keys and the number of the pixel, so that no two are equal.
using Entry = std::array<std::uint64_t, 3>;

/// Sorts `count` entries; `spare` holds as many.
void SortEntries(Entry* entries, Entry* spare, std::size_t count)
{
    constexpr int kBlocks = 8;
    auto const start = [count](int block) { return count * static_cast<std::size_t>(block) / kBlocks; };
    ParallelFor(kBlocks, [&](int b) { std::sort(entries + start(b), entries + start(b + 1)); });
    Entry *from = entries, *to = spare;
    for (int blocks = 1; blocks < kBlocks; blocks *= 2, std::swap(from, to))
        ParallelFor(kBlocks / blocks / 2, [&](int pair) {
            std::size_t const first = start(2 * pair * blocks), middle = start((2 * pair + 1) * blocks),
                              last = start((2 * pair + 2) * blocks);
            std::merge(from + first, from + middle, from + middle, from + last, to + first);
        });
    if (from != entries) std::copy(from, from + count, entries);
}

} // namespace

class KEffectSort : public KEffectPixel {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "Srt", "Sort"); }

    KEffectSort()
    {
        // clang-format off
        parameters.AddChapter("Sort");
        parameters.AddButtonsChannel(&channels[0], 4, "Sort Channel 1", "Cha1"_id, 0);
        parameters.AddButtonsChannel(&channels[1], 0, "Sort Channel 2", "Cha2"_id, 0);
        parameters.AddButtonsChannel(&channels[2], 1, "Sort Channel 3", "Cha3"_id, 0);
        parameters.AddButtonsChannel(&channels[3], 2, "Sort Channel 4", "Cha4"_id, 0);
        parameters.AddButtonsChannel(&channels[4], 3, "Sort Channel 5", "Cha5"_id, 0);
        parameters.AddImage(&map, "Order map", 2, KF_MainInput);
        // clang-format on
    }

    bool Init(KImage* source) override
    {
        if (!KEffectPixel::Init(source)) return false;
        from = OrderOf(*source);
        if (!map) return true;
        resized.reset(map->ResizeOf(width, height));
        if (!resized) return false;
        std::vector<std::uint32_t> const ranks = std::move(from), mapOrder = OrderOf(*resized);
        from.resize(ranks.size());
        for (std::size_t k = 0; k < ranks.size(); ++k) from[ranks[k]] = mapOrder[k];
        return true;
    }

    Pixel F(int x, int y, KImage* source) override { return At<Pixel>(x, y, source); }
    FltPixel FFlt(int x, int y, KImage* source) override { return At<FltPixel>(x, y, source); }

    void Done(KImage** destination) override
    {
        from = {};
        resized.reset();
        KEffectPixel::Done(destination);
    }

    int channels[5];
    KImage* map = nullptr;

private:
    template <class Record> Record At(int x, int y, KImage* source) const
    {
        KImage const* const picture = resized ? resized.get() : source;
        std::uint32_t const pixelNumber = from[NumberOf(x, y)], columns = static_cast<std::uint32_t>(width);
        Record pixel;
        picture->GetPixel(static_cast<int>(pixelNumber % columns), static_cast<int>(pixelNumber / columns),
                          pixel);
        return pixel;
    }

    std::size_t NumberOf(int x, int y) const
    {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x);
    }

    /// The numbers of the pixels in the order of their keys.
    std::vector<std::uint32_t> OrderOf(KImage const& picture) const
    {
        std::size_t const count = NumberOf(0, height);
        auto const entries = std::make_unique_for_overwrite<Entry[]>(count);
        if (data.depth == 2) Fill<FltPixel>(picture, entries.get());
        else Fill<Pixel>(picture, entries.get());
        auto spare = std::make_unique_for_overwrite<Entry[]>(count);
        SortEntries(entries.get(), spare.get(), count);
        spare.reset();
        std::vector<std::uint32_t> order(count);
        for (std::size_t k = 0; k < count; ++k) order[k] = static_cast<std::uint32_t>(entries[k][2]);
        return order;
    }

    template <class Record> void Fill(KImage const& picture, Entry* entries) const
    {
        ParallelFor(height, [&](int y) {
            VisitRow<Record>(
                y,
                [&](int count, auto in) {
                    Record pixel;
                    for (int x = 0; x < count; ++x) {
                        pixel >>= in;
                        auto const key = [&](int i) { return KeyOf(PixelGetChannel(pixel, channels[i])); };
                        std::size_t const number = NumberOf(x, y);
                        entries[number] = {key(0) << 32 | key(1), key(2) << 32 | key(3),
                                           key(4) << 32 | number};
                    }
                },
                picture.FImage());
        });
    }

    std::vector<std::uint32_t> from; // by pixel, the number of the one that it shows
    std::unique_ptr<KImage> resized; // the map, at the source's size
};

OMBRELUNE_TOOL(BF_Sort, BF_ThreadedOperator, KEffectSort);

} // namespace ombrelune
