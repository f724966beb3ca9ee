#include "image/KRandom.h"

#include <algorithm>
#include <cstdlib>

#include "image/KRandomStream.h"

namespace ombrelune {

void Ksrand(unsigned seed) { srandom(seed); }

long Krand() { return random(); }

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
