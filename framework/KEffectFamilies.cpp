#include "framework/KEffectColor.h"
#include "framework/KEffectPixel.h"
#include "framework/KEffectPosition.h"
#include "framework/PixelConversion.h"
#include "framework/RowForms.h"

namespace ombrelune {

KColor32 KEffectColor::F(KColor32 const& color)
{
    KColor in;
    in = color;
    KColor32 out;
    out = F(in);
    return out;
}

Pixel KEffectPixel::F(int x, int y, KImage* source)
{
    FltPixel const made = FFlt(x, y, source);
    Pixel pixel;
    pixel.CopyAux(made);
    ColorWordsFrom(pixel, made);
    return pixel;
}

FltPixel KEffectPixel::FFlt(int x, int y, KImage* source)
{
    Pixel const made = F(x, y, source);
    FltPixel pixel;
    pixel.CopyAux(made);
    ColorWordsFrom(pixel, made);
    return pixel;
}

void KEffectPixel::Row(KPixelRow const& row)
{
    if (row.data->depth == 2)
        PixelRow<FltPixel>(row, [this](int x, int y, KImage* source) { return FFlt(x, y, source); });
    else PixelRow<Pixel>(row, [this](int x, int y, KImage* source) { return F(x, y, source); });
}

Pixel KEffectPosition::F(Pixel& source, KVector2& position)
{
    FltPixel in;
    in.CopyAux(source);
    ColorWordsFrom(in, source);
    FltPixel const made = F(in, position);
    Pixel pixel = source;
    ColorWordsFrom(pixel, made);
    return pixel;
}

FltPixel KEffectPosition::F(FltPixel& source, KVector2& position)
{
    Pixel in;
    in.CopyAux(source);
    ColorWordsFrom(in, source);
    Pixel const made = F(in, position);
    FltPixel pixel = source;
    ColorWordsFrom(pixel, made);
    return pixel;
}

void KEffectPosition::Row(KPositionRow const& row)
{
    auto const call = [this](auto& source, KVector2& position) { return F(source, position); };
    if (row.data->depth == 2) PositionRow<FltPixel>(row, call);
    else PositionRow<Pixel>(row, call);
}

} // namespace ombrelune
