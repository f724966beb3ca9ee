#include "image/KRandomStream.h"

#include <memory>

namespace ombrelune {

namespace {

constexpr int kLag = 31, kNear = 3, kWarmUp = 310;
constexpr std::int64_t kModulus = 2147483647;
constexpr std::uint32_t kMultiplier = 16807;
constexpr int kDiscards = 97; // seeds throw away up to one draw less
constexpr int kDraws = 4;
constexpr int kVectors = (kLag + 3) / 4;

/// Remainder of a product of two numbers below 2^31.
std::uint32_t ProductModulus(std::uint32_t a, std::uint32_t b)
{
    return static_cast<std::uint32_t>(static_cast<std::uint64_t>(a) * b %
                                      static_cast<std::uint64_t>(kModulus));
}

int Discards(unsigned seed) { return std::max(static_cast<int>(seed) % kDiscards, 0); }

/// The numbers that a seed gives, before the warm-up; lane 31 is unused.
struct Start {
    alignas(16) std::int32_t r[4 * kVectors];

    explicit Start(unsigned seed) : r{}
    {
        auto const first = static_cast<std::int32_t>(seed == 0 ? 1 : seed);
        std::int64_t const rest = first % kModulus;
        auto value = static_cast<std::uint32_t>(rest < 0 ? rest + kModulus : rest);
        r[0] = first; // as it is, also beyond the modulus
        for (int i = 1; i < kLag; ++i) {
            value = ProductModulus(value, kMultiplier);
            r[i] = static_cast<std::int32_t>(value);
        }
    }
};

/// What turns starts into draws.
struct Weights {
    /// Draw k, doubled and more, is the sum over i of draw[k][i] r[i].
    std::uint32_t draw[kDiscards + kDraws][4 * kVectors] = {};
    /// What the numbers of a start grow by, less the modulus, when the seed grows by 1 and by 97; the first
    /// number grows as the seed does.
    alignas(16) std::int32_t byOne[4 * kVectors] = {}, byAll[4 * kVectors] = {};
    /// What the four draws after d discards grow by when the seed grows by 97, by which numbers of each
    /// vector did not pass the modulus.
    UInt4 step[kDiscards][kVectors][16] = {};

    Weights()
    {
        // The numbers as combinations of the start, the last 31 of them.
        std::uint32_t rows[kLag][kLag] = {};
        for (int i = 0; i < kLag; ++i) rows[i][i] = 1;
        for (int n = kLag + kNear; n < kLag + kNear + kWarmUp + kDiscards + kDraws; ++n) {
            for (int i = 0; i < kLag; ++i) rows[n % kLag][i] += rows[(n - kNear) % kLag][i];
            int const k = n - kLag - kNear - kWarmUp;
            if (k >= 0) std::copy_n(rows[n % kLag], kLag, draw[k]);
        }
        std::uint32_t power = 1;
        byOne[0] = 1;
        byAll[0] = kDiscards;
        for (int i = 1; i < kLag; ++i) {
            power = ProductModulus(power, kMultiplier);
            byOne[i] = static_cast<std::int32_t>(power - kModulus);
            byAll[i] = static_cast<std::int32_t>(ProductModulus(power, kDiscards) - kModulus);
        }
        for (int d = 0; d < kDiscards; ++d)
            for (int v = 0; v < kVectors; ++v)
                for (unsigned kept = 0; kept < 16; ++kept)
                    for (int k = 0; k < kDraws; ++k)
                        for (int i = 4 * v; i < 4 * v + 4; ++i) {
                            auto const growth =
                                static_cast<std::uint32_t>(byAll[i] + (kept >> (i % 4) & 1 ? kModulus : 0));
                            step[d][v][kept][k] += draw[d + k][i] * growth;
                        }
    }

    static Weights const& Get()
    {
        static std::unique_ptr<Weights const> const weights = std::make_unique<Weights>();
        return *weights;
    }

    UInt4 Draws(std::int32_t const* r, int discards) const
    {
        UInt4 sums{};
        for (int k = 0; k < kDraws; ++k) {
            std::uint32_t sum = 0;
            for (int i = 0; i < 4 * kVectors; ++i)
                sum += draw[discards + k][i] * static_cast<std::uint32_t>(r[i]);
            sums[k] = sum;
        }
        return sums;
    }
};

unsigned NegativeLanes(Int4 v)
{
#ifdef __SSE4_1__
    return static_cast<unsigned>(_mm_movemask_ps(reinterpret_cast<__m128>(v)));
#else
    return (v[0] < 0 ? 1U : 0U) | (v[1] < 0 ? 2U : 0U) | (v[2] < 0 ? 4U : 0U) | (v[3] < 0 ? 8U : 0U);
#endif
}

/// Adds the growth to a vector of a start and brings back below the modulus; gives the lanes that had not
/// passed it.
unsigned Grow(Int4& r, Int4 const& growth)
{
    Int4 const grown = r + growth;
    r = grown + ((grown < 0) & static_cast<std::int32_t>(kModulus));
    return NegativeLanes(grown);
}

} // namespace

KRandomStream::KRandomStream(unsigned seed)
{
    Start const start(seed);
    for (int i = 0; i < kLag; ++i) state_[i] = static_cast<std::uint32_t>(start.r[i]);
    next_ = kNear;
    for (int i = kWarmUp + Discards(seed); i > 0; --i) Next();
}

long KRandomStream::Next()
{
    std::uint32_t const sum = state_[next_] += state_[(next_ + kLag - kNear) % kLag];
    next_ = (next_ + 1) % kLag;
    return static_cast<long>(sum >> 1);
}

void FirstDraws(unsigned seed, int count, UInt4* draws)
{
    Weights const& weights = Weights::Get();
    // Seed 0 counts as 1, and from 2^31 on nothing is thrown away: those do not follow from their neighbours.
    while (count > 0 &&
           (seed == 0 || seed > static_cast<unsigned>(kModulus) - static_cast<unsigned>(count))) {
        *draws++ = weights.Draws(Start(seed).r, Discards(seed)) >> 1;
        ++seed;
        --count;
    }
    Start const start(seed);
    Int4 first[kVectors], byOne[kVectors], byAll[kVectors];
    std::memcpy(first, start.r, sizeof first);
    std::memcpy(byOne, weights.byOne, sizeof byOne);
    std::memcpy(byAll, weights.byAll, sizeof byAll);
    // Seeds that are 97 apart throw away equally many, so the same weights serve them all.
    for (int offset = 0; offset < std::min(count, kDiscards); ++offset) {
        int const discards = Discards(seed + static_cast<unsigned>(offset));
        alignas(16) std::int32_t words[4 * kVectors];
        std::memcpy(words, first, sizeof words);
        UInt4 sums = weights.Draws(words, discards);
        draws[offset] = sums >> 1;
        Int4 r[kVectors];
        std::copy_n(first, kVectors, r);
        auto const& steps = weights.step[discards];
        for (int i = offset + kDiscards; i < count; i += kDiscards) {
            UInt4 growth[2] = {};
            for (int v = 0; v < kVectors; ++v) growth[v % 2] += steps[v][Grow(r[v], byAll[v])];
            sums += growth[0] + growth[1];
            draws[i] = sums >> 1;
        }
        for (int v = 0; v < kVectors; ++v) Grow(first[v], byOne[v]);
    }
}

} // namespace ombrelune
