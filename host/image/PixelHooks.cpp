#include "host/image/PixelHooks.h"

#include "host/image/PixelCodec.h"

namespace ombrelune {

namespace {

template <class Word, bool HasAux>
void ReadAux(PixelRecord<Word>& record, float const* aux, Image const& image)
{
    if constexpr (HasAux) {
        for (int channel : image.AuxChannels()) record.SetAux(channel, *aux++);
    } else {
        record.DropAux();
    }
}

template <class Word, bool HasAux>
void WriteAux(PixelRecord<Word> const& record, float* aux, Image const& image)
{
    if constexpr (HasAux)
        for (int channel : image.AuxChannels()) *aux++ = record.Aux(channel);
}

template <class Stored, bool HasAux>
constexpr PixelHooks kHooks = {
    [](Pixel& record, std::byte const* main, float const* aux, Image const& image) {
        auto const* stored = reinterpret_cast<Stored const*>(main);
        for (int i = 0; i < 4; ++i) record.word[i] = PixelCodec<Stored>::ToInt(stored[i]);
        ReadAux<std::uint32_t, HasAux>(record, aux, image);
    },
    [](Pixel const& record, std::byte* main, float* aux, Image const& image) {
        auto* stored = reinterpret_cast<Stored*>(main);
        for (int i = 0; i < 4; ++i) stored[i] = PixelCodec<Stored>::FromInt(record.word[i]);
        WriteAux<std::uint32_t, HasAux>(record, aux, image);
    },
    [](FltPixel& record, std::byte const* main, float const* aux, Image const& image) {
        auto const* stored = reinterpret_cast<Stored const*>(main);
        for (int i = 0; i < 4; ++i) record.word[i] = PixelCodec<Stored>::ToFloat(stored[i]);
        ReadAux<float, HasAux>(record, aux, image);
    },
    [](FltPixel const& record, std::byte* main, float* aux, Image const& image) {
        auto* stored = reinterpret_cast<Stored*>(main);
        for (int i = 0; i < 4; ++i) stored[i] = PixelCodec<Stored>::FromFloat(record.word[i]);
        WriteAux<float, HasAux>(record, aux, image);
    },
};

} // namespace

PixelHooks const& HooksFor(int depth, bool hasAux)
{
    switch (depth) {
    case kDepthInt8: return hasAux ? kHooks<std::uint8_t, true> : kHooks<std::uint8_t, false>;
    case kDepthInt16: return hasAux ? kHooks<std::uint16_t, true> : kHooks<std::uint16_t, false>;
    case kDepthHalf: return hasAux ? kHooks<Imath::half, true> : kHooks<Imath::half, false>;
    default: return hasAux ? kHooks<float, true> : kHooks<float, false>;
    }
}

} // namespace ombrelune
