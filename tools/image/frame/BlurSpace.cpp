// Blur in Space: blurs some of the components of a colour space.

#include "framework/Registration.h"

namespace ombrelune {

class KEffectBlurSpace : public KEffectThreads {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(kind, "BSp", "Blur in Space",
                      "A mere re-packaging of two basic Fusion tools: color space swapping and blur");
    }

    KEffectBlurSpace()
    {
        // clang-format off
        parameters.AddChapter("Blur In Space");
        parameters.AddButtons(&filter, 1, "Blur Filter", "cBlF"_id, 0, {"Box", "Soften", "Bartlett", "Gaussian", "Sharpen"});
        parameters.AddCheckbox(&lock, true, "Lock X/Y", "cBlL"_id, KF_AffectInputs);
        parameters.AddSlider(&sizeX, 1.0F, "Blur Size",   "sBSX"_id, KF_SoftMax, 0.0, 100.0);
        parameters.AddSlider(&sizeY, 1.0F, "Blur Size Y", "sBSY"_id, KF_SoftMax | KF_Hidden, 0.0, 100.0);
        parameters.AddStandard(&space, 0, KPS_ColorSpace, 0);
        parameters.AddStandard(&channels, 15, KPS_ChannelsRGBA, 0);
        // clang-format on
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        if (id == "cBlL"_id) {
            messages->SetName("sBSX"_id, value.intValue > 0 ? "Blur Size" : "Blur Size X");
            messages->Show("sBSY"_id, value.intValue == 0);
        }
        return messages;
    }

    bool Init(KImage* source) override
    {
        constexpr float kLeast = 1.1920929e-07F;
        if (lock) sizeY = sizeX;
        isActive = KEffectThreads::Init(source) && channels != 0 && (sizeX >= kLeast || sizeY >= kLeast);
        return isActive;
    }

    void F(int, int, KImage* source, KImage* destination) override
    {
        destination->CopyFrom(source);
        destination->ConvertSpace(0, space);
    }

    void Done(KImage** destination) override
    {
        if (isActive) {
            static constexpr int filters[] = {kBlurBox, kBlurSoften, kBlurBartlett, kBlurGaussian,
                                              kBlurSharpen};
            int const type = data.quick ? int{kBlurBox} : filters[filter];
            if (KImage* blurred = (*destination)->BlurOf(sizeX, sizeY, type, channels, 1.0, 1.0))
                KImage::ImageReplace(destination, blurred);
            (*destination)->ConvertSpace(space, 0);
        }
        isActive = false;
        KEffectThreads::Done(destination);
    }

    int filter;
    bool lock;
    float sizeX, sizeY; // 720ths of the width
    int space;
    int channels; // the sum of 1 red, 2 green, 4 blue, 8 alpha

private:
    bool isActive = false;
};

OMBRELUNE_TOOL(BF_BlurSpace, BF_ThreadedOperator, KEffectBlurSpace);

} // namespace ombrelune
