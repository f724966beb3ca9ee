// Shuffle: cuts the picture into tiles and moves them about, as a sliding puzzle with a hole or by swaps.

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>
#include <vector>

#include "framework/Registration.h"
#include "image/KRandom.h"

namespace ombrelune {

class KEffectShuffle : public KEffectWarp {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "Shf", "Shuffle"); }

    KEffectShuffle()
    {
        // clang-format off
        parameters.AddChapter("Shuffle");
        parameters.AddSliderSeed(&seed, "Random Seed", "SEED"_id, 0);
        parameters.AddButtons   (&type, 0, "Type", "Type"_id, 0, {"Slide", "Swap"});
        parameters.AddSliderInt (&columns, 5, "Horizontal subdivisions", "SuHo"_id, KF_SoftMax, 1, 24);
        parameters.AddSliderInt (&rows,    5, "Vertical subdivisions",   "SuVe"_id, KF_SoftMax, 1, 24);
        parameters.AddScrew     (&amount, 5.0F, "Amount", "Amnt"_id, KF_SoftMax, 0.0, 100.0);
        // clang-format on
    }

    bool Init(KImage* source) override
    {
        countX = std::clamp(columns, 1, kMostTiles);
        countY = std::clamp(rows, 1, kMostTiles);
        cell = {1.0F / static_cast<float>(countX), 1.0F / static_cast<float>(countY)};
        table.resize(static_cast<std::size_t>(countX) * static_cast<std::size_t>(countY));
        std::iota(table.begin(), table.end(), 0);
        KRandomSeed(static_cast<unsigned>(seed) + 1234U);
        type == 1 ? Swap() : Slide();
        return KEffectWarp::Init(source);
    }

    bool F(KVector2& source, KVector2 const& destination) override
    {
        KVector2 const p(destination.x, destination.y * frameAspect);
        int const column = Index(p.x, countX), row = Index(p.y, countY);
        int const from = table[At(column, row)];
        if (from == hole) return false;
        float const localX = p.x - static_cast<float>(column) * cell.x;
        float const localY = p.y - static_cast<float>(row) * cell.y;
        int const fromColumn = from % countX, fromRow = from / countX;
        source.x = static_cast<float>(fromColumn) * cell.x + localX;
        source.y = (static_cast<float>(fromRow) * cell.y + localY) / frameAspect;
        return true;
    }

    void Done(KImage** destination) override
    {
        table = {};
        KEffectWarp::Done(destination);
    }

    int seed;
    int type; // 0 slide, 1 swap
    int columns, rows;
    float amount;

private:
    static constexpr int kMostTiles = 4096;         // to a side
    static constexpr float kMostMoves = 1048576.0F; // a bound for what would seem to hang

    int Moves() const
    {
        return amount > 0.0F ? static_cast<int>(std::ceil(std::min(amount, kMostMoves))) : 0;
    }

    /// Column or row of a place. The last pixel lies at exactly 1, and maps and cell edges reach beyond.
    static int Index(float place, int count)
    {
        auto const last = static_cast<float>(count - 1);
        return static_cast<int>(std::min(std::max(0.0F, place * static_cast<float>(count)), last));
    }

    void Slide()
    {
        int const count = countX * countY;
        hole = KRandomInt(count);
        int x = hole % countX, y = hole / countX;
        int blocked = -1; // a move is not undone by the next
        for (int i = 0; i < Moves(); ++i) {
            int direction;
            do direction = KRandomInt(4);
            while (direction == blocked);
            blocked = (direction + 2) % 4;
            static constexpr int steps[] = {1, 0, -1, 0}; // right, up, left, down; up is a quarter later
            int const nextX = (x + steps[direction] + countX) % countX;
            int const nextY = (y + steps[(direction + 3) % 4] + countY) % countY;
            std::swap(table[At(x, y)], table[At(nextX, nextY)]);
            x = nextX;
            y = nextY;
        }
    }

    void Swap()
    {
        hole = -1;
        int const count = countX * countY;
        for (int i = 0; i < Moves(); ++i) {
            auto const a = static_cast<std::size_t>(KRandomInt(count));
            auto const b = static_cast<std::size_t>(KRandomInt(count));
            std::swap(table[a], table[b]);
        }
    }

    std::size_t At(int x, int y) const
    {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(countX) + static_cast<std::size_t>(x);
    }

    std::vector<int> table; // source tile of each tile, row after row
    int countX = 1, countY = 1;
    KVector2 cell{1.0F, 1.0F}; // size of a tile in parts of the picture
    int hole = -1;             // the tile that is not shown
};

OMBRELUNE_TOOL(BF_Shuffle, BF_ThreadedOperator, KEffectShuffle);

} // namespace ombrelune
