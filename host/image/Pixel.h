#pragma once

#include <cstdint>
#include <cstring>

namespace ombrelune {

/// Host channel numbers equal the word index in a pixel record.
enum HostChannel {
    kChannelBlue = 0,
    kChannelGreen = 1,
    kChannelRed = 2,
    kChannelAlpha = 3,
    kChannelZ = 4,        ///< distance from the camera
    kChannelNormalX = 10, ///< of the surface, of length 1, z towards the camera
    kChannelNormalY = 11,
    kChannelNormalZ = 12,
    kChannelVelocityX = 21,
    kChannelVelocityY = 22,
    kChannelLast = 62,
};

/// One pixel as every depth presents it: 64 words of 32 bits. Words 0 to 3 are blue, green, red and alpha;
/// words 4 to 62 are auxiliary channels, always floats. Copying a record copies the auxiliary words only
/// while it holds any, so that a plain picture costs four words a pixel.
template <class Word> class PixelRecord {
public:
    union {
        struct {
            Word blue, green, red, alpha;
        };
        Word word[4];
    };

    PixelRecord()
        : held_(0) {} // NOLINT: colour and auxiliary words start undefined, records live in pixel loops
    PixelRecord(PixelRecord const& other) { *this = other; }
    PixelRecord& operator=(PixelRecord const& other)
    {
        for (int i = 0; i < 4; ++i) word[i] = other.word[i];
        held_ = other.held_;
        if (held_) std::memcpy(aux_, other.aux_, sizeof aux_);
        return *this;
    }

    void Clear()
    {
        for (Word& w : word) w = 0;
        std::memset(aux_, 0, sizeof aux_);
        held_ = 1;
    }

    /// Auxiliary channel 4 to 62; 0 when the record holds none.
    float Aux(int channel) const { return held_ ? aux_[channel - 4] : 0.0F; }
    void SetAux(int channel, float value)
    {
        if (!held_) {
            std::memset(aux_, 0, sizeof aux_);
            held_ = 1;
        }
        aux_[channel - 4] = value;
    }
    void DropAux() { held_ = 0; }
    /// Takes over the auxiliary words of a record of either kind.
    template <class Other> void CopyAux(PixelRecord<Other> const& other)
    {
        held_ = other.held_;
        if (held_) std::memcpy(aux_, other.aux_, sizeof aux_);
    }

private:
    template <class> friend class PixelRecord;

    float aux_[59];
    std::uint32_t held_; // 1 while the auxiliary words mean something
};

using Pixel = PixelRecord<std::uint32_t>; ///< 0 to 65535 at every integer depth
using FltPixel = PixelRecord<float>;      ///< nominally 0 to 1, never clamped

static_assert(sizeof(Pixel) == 256 && sizeof(FltPixel) == 256);

} // namespace ombrelune
