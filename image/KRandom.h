#pragma once

namespace ombrelune {

// Random numbers from the C library's one process-wide generator. The stream repeats only where a single
// thread seeds and draws.

void Ksrand(unsigned seed);
/// 0 to 2147483647.
long Krand();

/// Seeds, then throws away seed modulo 97 values (97, not 100); none for a seed of 2^31 or more, which counts
/// as negative.
void KRandomSeed(unsigned seed);
/// 0 to 1, the same for the same time and seed. Reseeds the generator.
float KRandomTimeSeed(float time, unsigned seed);

/// From 0 up to, not including, a.
float KRandom(float a);
/// From a towards b.
float KRandom(float a, float b);
/// From 0 to n - 1; 0 when n is 0.
int KRandomInt(int n);

} // namespace ombrelune
