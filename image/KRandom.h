#pragma once

namespace ombrelune {

// Random numbers: the stream of the C library's random(), one for each thread, so that branches of a flow
// that run side by side cannot disturb each other. Seed and draw on one thread; rows of a picture run on
// several.

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
