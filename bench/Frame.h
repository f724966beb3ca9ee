#pragma once

#include <cstdlib>
#include <functional>
#include <memory>

#include "bench/Floor.h"
#include "tests/framework/ToolUnderTest.h"

namespace ombrelune::bench {

using MakeEffect = std::function<std::unique_ptr<KEffect>()>;
using Check = std::function<bool(KImage const& source, KImage const& result)>;

inline bool IsSame(KImage const& source, KImage const& result, int limit)
{
    for (int y = 0; y < source.Height(); y += 97) {
        for (int x = 0; x < source.Width(); x += 61) {
            Pixel a, b;
            source.GetPixel(x, y, a);
            result.GetPixel(x, y, b);
            for (int w = 0; w < 4; ++w)
                if (std::abs(static_cast<int>(a.word[w]) - static_cast<int>(b.word[w])) > limit) return false;
        }
    }
    return true;
}

inline Prepare Frame(MakeEffect const& make, Check const& check, KProcessImageData const& data = {})
{
    return [=](Case const& row) -> Work {
        auto source = std::make_shared<KImage>(Ref<Image>::Share(row.picture.Get()).Release(), true);
        std::shared_ptr<KEffect> const effect = make();
        auto* const image = dynamic_cast<KEffectImage*>(effect.get());
        KProcessImageData timed = data;
        timed.depth = source->IsFloat() ? 2 : 1;
        if (!check(*source, *test::Apply(*image, *source, timed))) return nullptr;
        return [image, source, timed, owner = effect] { test::Apply(*image, *source, timed); };
    };
}

template <class T> struct Setting {
    std::uint32_t id;
    T value;
};

/// A registered tool with some of its members set.
template <class... T> MakeEffect Tool(char const* name, Setting<T>... settings)
{
    return [=] {
        auto effect = FindEffectFactory(name)->makeRowForm();
        ((test::Target<T>(*effect, settings.id) = settings.value), ...);
        return effect;
    };
}

inline Check const same = [](KImage const& source, KImage const& result) {
    return IsSame(source, result, 0);
};
// A place goes to 0 to 1 and back in floats: at x = 3839 up to 4.6e-4 pixels off, 31 of 65535 between black
// and white, and as much for y; then it is truncated to 65536ths, 1 each.
inline Check const near = [](KImage const& source, KImage const& result) {
    return IsSame(source, result, 64);
};
inline Check const changed = [](KImage const& source, KImage const& result) {
    return !IsSame(source, result, 1);
};

} // namespace ombrelune::bench
