// Merge: a foreground over a background, moved, scaled and turned, by the operators of Porter and Duff.

#include <algorithm>
#include <cstring>

#include "host/builtin/PictureOperator.h"
#include "host/image/Place.h"
#include "host/image/StoredPixel.h"
#include "host/image/StoredType.h"
#include "host/value/Parallel.h"

namespace ombrelune {

namespace {

/// Result = foreground * (ofFore + ofForeByBack * alpha of the background)
///        + background * (ofBack + ofBackByFore * alpha of the foreground). (T. Porter, T. Duff: "Compositing
/// Digital Images", SIGGRAPH 1984; their factors are all of this form.)
struct Factors {
    float ofFore, ofForeByBack, ofBack, ofBackByFore;

    /// Part of the way from the background to the result.
    Factors Blended(float part) const
    {
        return {ofFore * part, ofForeByBack * part, 1.0F - part + ofBack * part, ofBackByFore * part};
    }
};

constexpr Factors kOperators[] = {
    {1.0F, 0.0F, 1.0F, -1.0F},  // over
    {0.0F, 1.0F, 0.0F, 0.0F},   // in
    {1.0F, -1.0F, 0.0F, 0.0F},  // held out
    {0.0F, 1.0F, 1.0F, -1.0F},  // atop
    {1.0F, -1.0F, 1.0F, -1.0F}, // exclusive or
};

template <class Back> class RowMerger {
public:
    explicit RowMerger(Factors const& factors)
        : ofFore_(Float4{} + factors.ofFore), ofBack_(Float4{} + factors.ofBack),
          byBack_(Float4{} + factors.ofForeByBack / kUnit<Back>),
          byFore_(Float4{} + factors.ofBackByFore / kUnit<Back>), keepsBack_(factors.ofBack == 1.0F)
    {}

    template <class Fore> void Merge(Back const* back, Fore const* fore, Back* out, int count) const
    {
        for (int x = 0; x < count; ++x, back += 4, fore += 4, out += 4) {
            Float4 const b = LoadPixel(back), f = LoadPixelIn<Back>(fore);
            Float4 const backFactor = ofBack_ + byFore_ * f[3];
            Float4 hidden = b * backFactor;
            // What is covered is gone, even where it is not a number.
            if constexpr (!std::is_integral_v<Back>) hidden = backFactor == 0.0F ? Float4{} : hidden;
            StorePixel(f * (ofFore_ + byBack_ * b[3]) + hidden, out);
        }
    }

    /// Where there is no foreground.
    void Outside(Back const* back, Back* out, int count) const
    {
        if (keepsBack_) {
            std::memcpy(out, back, sizeof(Back) * 4 * static_cast<std::size_t>(count));
            return;
        }
        for (int x = 0; x < count; ++x, back += 4, out += 4) StorePixel(LoadPixel(back) * ofBack_, out);
    }

private:
    Float4 ofFore_, ofBack_, byBack_, byFore_;
    bool keepsBack_;
};

template <class Back, class Fore>
void MergeRows(Image const& background, Placed const& foreground, Factors const& factors, Image& result)
{
    RowMerger<Back> const merger(factors);
    int const width = background.Width();
    int const from = foreground.image ? std::clamp(foreground.x, 0, width) : 0;
    int const to = foreground.image ? std::clamp(foreground.x + foreground.image->Width(), from, width) : 0;
    ParallelFor(background.Height(), [&](int y) {
        auto const* back = reinterpret_cast<Back const*>(background.MainRow(y));
        auto* out = reinterpret_cast<Back*>(result.MainRow(y));
        int const row = y - foreground.y;
        if (!foreground.image || row < 0 || row >= foreground.image->Height())
            return merger.Outside(back, out, width);
        auto const* fore = reinterpret_cast<Fore const*>(foreground.image->MainRow(row)) +
                           std::ptrdiff_t{4} * (from - foreground.x);
        merger.Outside(back, out, from);
        merger.Merge(back + 4 * from, fore, out + 4 * from, to - from);
        merger.Outside(back + 4 * to, out + 4 * to, width - to);
    });
}

class Merge : public PictureOperator {
public:
    Merge(Registry const* registry, ScriptVal const& settings, TagList const& tags)
        : PictureOperator(registry, settings, tags)
    {
        AddControlPageTagList("Merge", {});
        center = AddPoint("Center", "Center");
        size = AddNumber("Size", "Size", CLSID_InputControl_Slider, 1.0,
                         {{Attr_MinHard, 0.0}, {Attr_MaxSoft, 5.0}});
        angle = AddNumber("Angle", "Angle", CLSID_InputControl_Screw, 0.0,
                          {{Attr_MinSoft, -180.0}, {Attr_MaxSoft, 180.0}});
        operation = AddChoice("Operator", "Operator", CLSID_InputControl_Combo, 0,
                              {"Over", "In", "Held Out", "Atop", "XOr"});
        blend = AddNumber("Blend", "Blend", CLSID_InputControl_Slider, 1.0,
                          {{Attr_MinHard, 0.0}, {Attr_MaxHard, 1.0}});
        AddPicture("Background", 1, true);
        foreground = AddPicture("Foreground", 2, false);
    }
    unsigned SizeOf() const override { return sizeof(Merge); }

    void Process(Request* request) override
    {
        Ref<Image> const back = MainPicture(request);
        if (!back) return;
        Ref<Image> const fore = PictureOf(foreground, request);
        auto const part = static_cast<float>(request->Number(*blend));
        if (!fore || part == 0.0F) return Give(request, back);

        Point const& place = PointOf(center, request);
        auto const placed =
            PlaceImage(fore, {place.x, place.y, request->Number(*size), request->Number(*angle)},
                       back->Width(), back->Height());
        Ref<Image> result = back->CopyOfImage(true);
        if (!result || !placed) return Give(request, nullptr);
        Factors const factors = kOperators[ChoiceOf(operation, request)].Blended(part);
        WithStoredType(back->Depth(), [&]<class Back>(std::type_identity<Back>) {
            WithStoredType(fore->Depth(), [&]<class Fore>(std::type_identity<Fore>) {
                MergeRows<Back, Fore>(*back, *placed, factors, *result);
            });
        });
        CopyAux(*back, *result);
        Give(request, std::move(result));
    }

private:
    Input *center, *size, *angle, *operation, *blend, *foreground;
};

Registry const mergeRegistry(ClassRegistry(), "Merge",
                             BuiltinTags<Merge>("Merge", "Lays a foreground over a background"));

} // namespace

} // namespace ombrelune
