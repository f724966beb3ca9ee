// Push: slides the frame over a checkerboard of two pictures, so that one pushes the other out.

#include <cmath>

#include "framework/Registration.h"
#include "image/Saturate.h"

namespace ombrelune {

class KEffectPush : public KEffectPixel {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "Psh", "Push"); }

    KEffectPush()
    {
        unsigned const free = KF_SoftMin | KF_SoftMax;
        // clang-format off
        parameters.AddChapter("Push");
        parameters.AddScrew(&pushX, 0.0F, "Push X", "PusX"_id, free, 0.0, 1.0);
        parameters.AddScrew(&pushY, 0.0F, "Push Y", "PusY"_id, free, 0.0, 1.0);
        parameters.AddImage(&map, "Deformation map", 2, KF_MainInput);
        // clang-format on
    }

    bool Init(KImage* source) override
    {
        if (!KEffectPixel::Init(source)) return false;
        stepX = pushX * static_cast<float>(width);
        stepY = pushY * static_cast<float>(height);
        return true;
    }

    Pixel F(int x, int y, KImage* source) override { return At<Pixel>(x, y, source); }
    FltPixel FFlt(int x, int y, KImage* source) override { return At<FltPixel>(x, y, source); }

    float pushX, pushY; // frames
    KImage* map = nullptr;

private:
    template <class Record> Record At(int x, int y, KImage const* source) const
    {
        float const fx = static_cast<float>(x) + stepX, fy = static_cast<float>(y) + stepY;
        bool const isOdd = IsOddFrame(fx, width) != IsOddFrame(fy, height);
        Record pixel;
        if (KImage const* image = isOdd ? map : source)
            image->SamplePixelW(Within(fx, image->Width()), Within(fy, image->Height()), pixel);
        else pixel.Clear();
        return pixel;
    }

    static bool IsOddFrame(float place, int size)
    {
        int const frame = SaturatedInt(place / static_cast<float>(size));
        return (frame % 2 != 0) != (place < 0.0F);
    }

    /// The same place in the first repetition: places in 16.16 end at 32767.
    static float Within(float place, int size)
    {
        double const frame = size;
        return static_cast<float>(place - std::floor(place / frame) * frame);
    }

    float stepX = 0.0F, stepY = 0.0F; // pixels
};

OMBRELUNE_TOOL(BF_Push, BF_ThreadedOperator, KEffectPush);

} // namespace ombrelune
