#pragma once

#include <functional>
#include <memory>
#include <stdexcept>

#include "framework/KProcessImage.h"
#include "host/value/Parallel.h"
#include "image/KColor32.h"

namespace ombrelune::test {

using Picture = std::unique_ptr<KImage>;

/// Picture whose pixels are made by place; a 16-bit one takes 65535 times the value, rounded.
inline Picture MakePicture(int depth, int width, int height, std::function<KColor(int x, int y)> const& color)
{
    Ref<Image> image = NewImageTagList({{Img_Width, width}, {Img_Height, height}, {Img_Depth, depth}});
    Picture picture(KImage::ImageFromHost(image.Release(), true));
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            KColor const c = color(x, y);
            FltPixel pixel;
            pixel.red = c.red;
            pixel.green = c.green;
            pixel.blue = c.blue;
            pixel.alpha = c.alpha;
            picture->SetPixel(x, y, pixel);
        }
    }
    return picture;
}

/// Uneven colours for comparisons: every pixel differs from its neighbours, alpha includes 0 and 1.
inline Picture MakeBusyPicture(int depth, int width, int height)
{
    return MakePicture(depth, width, height, [](int x, int y) {
        auto const wave = [&](int a, int b) { return static_cast<float>((x * a + y * b) % 17) / 16.0F; };
        float const alpha = wave(3, 5);
        return KColor(wave(1, 7) * alpha, wave(5, 2) * alpha, wave(11, 13) * alpha, alpha);
    });
}

inline KProcessImageData DataFor(KImage const& image)
{
    KProcessImageData data;
    data.depth = image.IsFloat() ? 2 : 1;
    return data;
}

/// Runs an effect over a picture through its engine, on the worker threads, as the bridge would.
inline Picture Apply(KEffectImage& effect, KImage& source, KProcessImageData const& data)
{
    KImage* destination = source.LikeOf(-1, -1, -1.0F, -1.0F);
    effect.SetData(data);
    {
        auto const engine = MakeEngine(&source, &destination, &effect, data);
        for (int step = 0; step < engine->GetStepCount(); ++step) {
            engine->Init(step);
            ParallelFor(engine->GetThreadCount(step), [&](int chunk) { engine->DoThread(chunk, step); });
            engine->Done(step);
        }
    }
    return Picture(destination);
}

inline Picture Apply(KEffectImage& effect, KImage& source) { return Apply(effect, source, DataFor(source)); }

inline KColor ColorAt(KImage const& image, int x, int y)
{
    FltPixel pixel;
    image.GetPixel(x, y, pixel);
    return KColor(pixel);
}

/// The four colour words as integers.
inline KColor32 WordsAt(KImage const& image, int x, int y)
{
    Pixel pixel;
    image.GetPixel(x, y, pixel);
    return KColor32(pixel);
}

inline bool SameBytes(KImage const& a, KImage const& b)
{
    if (!a.SameSize(&b) || a.Depth() != b.Depth()) return false;
    std::size_t const bytes = static_cast<std::size_t>(a.Width() * a.FImage()->PixelBytes());
    for (int y = 0; y < a.Height(); ++y)
        if (std::memcmp(a.FImage()->MainRow(y), b.FImage()->MainRow(y), bytes) != 0) return false;
    return true;
}

/// Parameter of an effect by identifier; the test fails where there is none.
inline KParameter& ParameterOf(KEffect& effect, std::uint32_t id)
{
    for (KParameter* parameter : effect.parameters.Each<KParameter>())
        for (std::uint32_t each : parameter->id)
            if (each == id) return *parameter;
    throw std::logic_error("no such parameter");
}

/// The member that a parameter targets.
template <class T> T& Target(KEffect& effect, std::uint32_t id)
{
    return *static_cast<T*>(ParameterOf(effect, id).target);
}

} // namespace ombrelune::test
