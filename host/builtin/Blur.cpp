// Blur: softens or sharpens a picture, along x and y apart if wanted.

#include "host/builtin/PictureOperator.h"

namespace ombrelune {

namespace {

class Blur : public PictureOperator {
public:
    Blur(Registry const* registry, ScriptVal const& settings, TagList const& tags)
        : PictureOperator(registry, settings, tags)
    {
        AddControlPageTagList("Blur", {});
        filter = AddChoice("Filter", "Filter", CLSID_InputControl_Combo, kBlurGaussian,
                           {"Box", "Soften", "Bartlett", "Sharpen", "Gaussian"});
        for (int i = 0; i < 4; ++i) channels[i] = AddCheckbox(kChannels[i], kChannels[i], true);
        lock = AddCheckbox("Lock X/Y", "LockXY", true);
        TagList const range{{Attr_MinHard, 0.0}, {Attr_MaxSoft, 100.0}};
        xSize = AddNumber("X Blur Size", "XBlurSize", CLSID_InputControl_Slider, 1.0, range);
        ySize = AddNumber("Y Blur Size", "YBlurSize", CLSID_InputControl_Slider, 1.0, range);
        AddPicture("Input", 1, true);
    }
    unsigned SizeOf() const override { return sizeof(Blur); }

    void Process(Request* request) override
    {
        Ref<Image> const image = MainPicture(request);
        if (!image) return;
        constexpr std::uint32_t switches[] = {Blur_Red, Blur_Green, Blur_Blue, Blur_Alpha};
        constexpr double kUnitsOfWidth = 720.0; // as the tools of the bundle count
        double const x = request->Number(*xSize);
        double const y = FlagOf(lock, request) ? x : request->Number(*ySize);
        TagList tags{{Blur_Type, ChoiceOf(filter, request)},
                     {Blur_XSize, x / kUnitsOfWidth},
                     {Blur_YSize, y / kUnitsOfWidth}};
        for (int i = 0; i < 4; ++i) tags.Add({switches[i], FlagOf(channels[i], request)});
        Give(request, x > 0.0 || y > 0.0 ? image->BlurOfImageTagList(tags) : image);
    }

private:
    static constexpr char const* kChannels[] = {"Red", "Green", "Blue", "Alpha"};

    Input *filter, *channels[4], *lock, *xSize, *ySize;
};

Registry const blurRegistry(ClassRegistry(), "Blur",
                            BuiltinTags<Blur>("Blur", "Softens or sharpens a picture"));

} // namespace

} // namespace ombrelune
