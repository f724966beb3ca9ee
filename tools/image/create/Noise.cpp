// Noise: cells of random colours, or of a random choice of colours, that depend on the seed and the cell
// alone.

#include <algorithm>
#include <cstring>
#include <vector>

#include "framework/PixelConversion.h"
#include "framework/Registration.h"
#include "framework/RowForms.h"
#include "image/KRandomStream.h"

namespace ombrelune {

class KEffectNoise : public KEffectPixel {
public:
    static constexpr bool kOwnRow = true;

    static char const* Name(KProcessNameType kind) { return NameOf(kind, "Nse", "Noise"); }

    KEffectNoise()
    {
        // clang-format off
        parameters.AddChapter("Type");
        parameters.AddSliderSeed(&seed, "Random Seed", "SEED"_id, 0);
        parameters.AddButtons(&cells, kPixel, "Size", "Size"_id, 0, {"Pixel", "Grid"});
        parameters.AddSliderInt(&sizeX, 1, "Size X", "SizX"_id, KF_SoftMax, 1, 32);
        parameters.AddSliderInt(&sizeY, 1, "Size Y", "SizY"_id, KF_SoftMax, 1, 32);
        parameters.AddButtons(&combine, kReplace, "How to combine", "Comb"_id, 0, {"Replace", "Add", "Substract"});
        parameters.AddButtons(&type, kRandomColors, "Colors", "Type"_id, KF_AffectInputs, {"Random", "Selected"});
        parameters.AddSliderInt(&count, 3, "Number of colors", "Coun"_id, KF_AffectInputs, 1, kColors - 1);
        for (int i = 0; i < kColors; ++i) {
            KString label;
            parameters.AddColor(&colors[i], {1.0F, 1.0F, 1.0F, 1.0F}, label.Numbered("Color", i + 1, true), ColorId(static_cast<std::uint32_t>(i)), 0);
        }
        // clang-format on
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        if (id == "Coun"_id) shownCount = value.intValue;
        else if (id == "Type"_id) shownType = value.intValue;
        else return messages;
        bool const isSelected = shownType == kSelected;
        messages->Show("Coun"_id, isSelected);
        for (std::uint32_t i = 0; i < kColors; ++i)
            for (std::uint32_t below : {0U, 11U, 16U, 17U})
                messages->Show(ColorId(i) - below, isSelected && static_cast<int>(i) < shownCount);
        return messages;
    }

    using KEffectPixel::F; // integers go through the float form
    FltPixel FFlt(int x, int y, KImage* source) override
    {
        UInt4 draws;
        FirstDraws(Seed(CellX(x), y), 1, &draws);
        return Combined(x, y, source, ColorOf(draws));
    }

    /// The colours of a row's cells are drawn together.
    void Row(KPixelRow const& row) override
    {
        int const first = CellX(0), cellCount = CellX(width - 1) - first + 1;
        if (cellCount > width) return KEffectPixel::Row(row); // a grid finer than pixels
        std::vector<UInt4> draws(static_cast<std::size_t>(cellCount));
        FirstDraws(Seed(first, row.y), cellCount, draws.data());
        auto const pixel = [&](int x, int y, KImage* source) {
            return Combined(x, y, source, ColorOf(draws[static_cast<std::size_t>(CellX(x) - first)]));
        };
        if (row.data->depth == 2) return PixelRow<FltPixel>(row, pixel);
        PixelRow<Pixel>(row, [&](int x, int y, KImage* source) {
            FltPixel const made = pixel(x, y, source);
            Pixel integers;
            integers.CopyAux(made);
            ColorWordsFrom(integers, made);
            return integers;
        });
    }

    static constexpr int kColors = 64;

    int seed;
    int cells;
    int sizeX, sizeY; // pixels of a cell, or cells of the picture
    int combine;
    int type;
    int count;
    KColor colors[kColors];

private:
    enum Cells { kPixel, kGrid };
    enum Combine { kReplace, kAdd, kSubtract };
    enum Type { kRandomColors, kSelected };

    static constexpr std::uint32_t ColorId(std::uint32_t i) { return "ColR"_id + i * 0x100; }

    int CellX(int x) const { return Cell(x, sizeX, width); }
    int CellY(int y) const { return Cell(y, sizeY, height); }
    int Cell(int i, int cellSize, int pictureSize) const
    {
        if (cells == kGrid) return static_cast<int>(std::int64_t{i} * cellSize / pictureSize);
        return cellSize == 1 ? i : i / cellSize; // the division would cost more than the rest
    }
    unsigned Seed(int cellX, int y) const
    {
        return static_cast<unsigned>(seed) + static_cast<unsigned>(cellX) +
               static_cast<unsigned>(CellY(y)) * static_cast<unsigned>(width);
    }

    /// By word.
    Float4 ColorOf(UInt4 draws) const
    {
        Float4 color;
        if (type == kSelected)
            std::memcpy(&color, &colors[static_cast<int>(draws[0]) % std::max(count, 1)], sizeof color);
        else color = RandomParts(draws);
        return RedBlueSwapped(color);
    }

    FltPixel Combined(int x, int y, KImage* source, Float4 const& color) const
    {
        FltPixel result;
        source->GetPixel(x, y, result);
        Float4 const old = LoadFloat4(result.word);
        Store(combine == kReplace ? color : combine == kAdd ? old + color : old - color, result.word);
        return result;
    }

    int shownCount = 3, shownType = kRandomColors; // as the panel was told last
};

OMBRELUNE_TOOL(BF_Noise, BF_ThreadedOperator, KEffectNoise);

} // namespace ombrelune
