#include "shapes/KStyle.h"

#include "image/PixelMath.h"

namespace ombrelune {

namespace {

void SetColor(ChannelStyle& channel, KColor const& c)
{
    auto const word = [](float v) { return static_cast<std::uint16_t>(Truncate16(v)); };
    channel.color = {word(c.blue), word(c.green), word(c.red), word(c.alpha)};
    channel.floatColor = {c.blue, c.green, c.red, c.alpha};
}

} // namespace

void KStyle::Init()
{
    SetColor(brush, fill.color);
    SetColor(penChannel, pen.color);
}

} // namespace ombrelune
