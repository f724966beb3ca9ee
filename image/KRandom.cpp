#include "image/KRandom.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "image/KRandomStream.h"

namespace ombrelune {

namespace {

/// The C library's generator with its usual 128 bytes of state.
class Stream {
public:
    Stream() { initstate_r(1, state_, sizeof state_, &data_); }
    Stream(Stream const&) = delete;
    Stream& operator=(Stream const&) = delete;

    void Seed(unsigned seed) { srandom_r(seed, &data_); }
    long Next()
    {
        std::int32_t value = 0;
        random_r(&data_, &value);
        return value;
    }

private:
    alignas(std::int32_t) char state_[128];
    random_data data_{};
};

thread_local Stream stream;

} // namespace

void Ksrand(unsigned seed) { stream.Seed(seed); }

long Krand() { return stream.Next(); }

void KRandomSeed(unsigned seed)
{
    Ksrand(seed);
    int const discard = static_cast<int>(seed) % 97;
    for (int i = 0; i < discard; ++i) Krand();
}

float KRandomTimeSeed(float time, unsigned seed)
{
    // A time before 0 may lead below 0, which wraps as an unsigned seed does.
    double const mixed = std::clamp(seed + time * 10.0, -9.0e18, 9.0e18);
    KRandomSeed(static_cast<unsigned>(static_cast<long long>(mixed)));
    return static_cast<float>(static_cast<double>(Krand()) / 2147483648.0);
}

float KRandom(float a) { return a * RandomPart(Krand()); }

float KRandom(float a, float b) { return a + KRandom(b - a); }

int KRandomInt(int n)
{
    long const value = Krand();
    return n == 0 ? 0 : static_cast<int>(value % n);
}

} // namespace ombrelune
