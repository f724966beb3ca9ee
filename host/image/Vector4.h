#pragma once

#include <cstdint>
#include <cstring>

#ifdef __SSE4_1__
#include <smmintrin.h>
#endif

namespace ombrelune {

/// The four colour channels of a pixel in one vector of the compiler: arithmetic goes by lanes, and what it
/// computes is the same as in single numbers.
using Float4 [[gnu::vector_size(16)]] = float;
using Int4 [[gnu::vector_size(16)]] = std::int32_t;
using UInt4 [[gnu::vector_size(16)]] = std::uint32_t;
using Double2 [[gnu::vector_size(16)]] = double;

inline UInt4 LoadUInt4(std::uint16_t const* words)
{
#ifdef __SSE4_1__ // the general form takes GCC twice the instructions
    __m128i const packed = _mm_loadl_epi64(reinterpret_cast<__m128i const*>(words));
    return reinterpret_cast<UInt4>(_mm_unpacklo_epi16(packed, _mm_setzero_si128()));
#else
    return UInt4{words[0], words[1], words[2], words[3]};
#endif
}

inline UInt4 LoadUInt4(std::uint32_t const* words)
{
    UInt4 vector;
    std::memcpy(&vector, words, sizeof vector);
    return vector;
}

inline Float4 LoadFloat4(float const* words)
{
    Float4 vector;
    std::memcpy(&vector, words, sizeof vector);
    return vector;
}

inline Float4 LoadFloat4(std::uint16_t const* words)
{
    return __builtin_convertvector(reinterpret_cast<Int4>(LoadUInt4(words)), Float4);
}

inline void Store(Float4 vector, float* words) { std::memcpy(words, &vector, sizeof vector); }
inline void Store(UInt4 vector, std::uint32_t* words) { std::memcpy(words, &vector, sizeof vector); }

/// Values of 0 and above, rounded to the nearest.
inline void Store(Float4 vector, std::uint32_t* words)
{
    Int4 const rounded = __builtin_convertvector(vector + 0.5F, Int4);
    std::memcpy(words, &rounded, sizeof rounded);
}

/// Values limited to 65535.
inline void Store(UInt4 vector, std::uint16_t* words)
{
#ifdef __SSE4_1__
    __m128i const limited = _mm_min_epu32(reinterpret_cast<__m128i>(vector), _mm_set1_epi32(65535));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(words), _mm_packus_epi32(limited, limited));
#else
    UInt4 const limited = vector | reinterpret_cast<UInt4>(reinterpret_cast<Int4>(vector >> 16) > 0);
    for (int i = 0; i < 4; ++i) words[i] = static_cast<std::uint16_t>(limited[i]);
#endif
}

/// Truncated toward zero.
inline Float4 WholePart(Float4 v)
{
#ifdef __SSE4_1__
    return _mm_round_ps(v, _MM_FROUND_TO_ZERO | _MM_FROUND_NO_EXC);
#else
    return Float4{__builtin_truncf(v[0]), __builtin_truncf(v[1]), __builtin_truncf(v[2]),
                  __builtin_truncf(v[3])};
#endif
}

inline Float4 Absolute(Float4 v)
{
    Float4 const negative = -v;
    return v < 0.0F ? negative : v;
}

inline bool IsZero(UInt4 v)
{
#ifdef __SSE4_1__
    return _mm_testz_si128(reinterpret_cast<__m128i>(v), reinterpret_cast<__m128i>(v)) != 0;
#else
    return (v[0] | v[1] | v[2] | v[3]) == 0;
#endif
}

/// Blue, green, red, alpha from red, green, blue, alpha, and the other way round.
template <class Vector> Vector RedBlueSwapped(Vector v) { return __builtin_shufflevector(v, v, 2, 1, 0, 3); }

/// Four channels in doubles, for sums over many pixels.
struct Sum4 {
    Double2 low{}, high{};

    double operator[](int i) const { return i < 2 ? low[i] : high[i - 2]; }

    friend Sum4 operator+(Sum4 a, Sum4 b) { return {a.low + b.low, a.high + b.high}; }
    friend Sum4 operator-(Sum4 a, Sum4 b) { return {a.low - b.low, a.high - b.high}; }
    friend Sum4 operator*(double factor, Sum4 a) { return {factor * a.low, factor * a.high}; }
};

inline Sum4 ToSum4(Float4 v)
{
#ifdef __SSE4_1__
    return {_mm_cvtps_pd(v), _mm_cvtps_pd(_mm_movehl_ps(v, v))};
#else
    return {{v[0], v[1]}, {v[2], v[3]}};
#endif
}

inline Float4 ToFloat4(Sum4 sum)
{
#ifdef __SSE4_1__
    return _mm_movelh_ps(_mm_cvtpd_ps(sum.low), _mm_cvtpd_ps(sum.high));
#else
    return Float4{static_cast<float>(sum[0]), static_cast<float>(sum[1]), static_cast<float>(sum[2]),
                  static_cast<float>(sum[3])};
#endif
}

} // namespace ombrelune
