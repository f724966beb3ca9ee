#pragma once

#include "framework/KMessage.h"
#include "framework/KOutput.h"
#include "framework/KParameter.h"
#include "framework/KProcessImageData.h"

namespace ombrelune {

class KImage;

/// Selects the driver of an effect.
enum KProcessType {
    KProc_Color = 0,
    KProc_Warp = 2,
    KProc_Pixel = 4,
    KProc_Position = 5,
    KProc_Shape = 6,
    KProc_Threads = 7,
    KProc_Number = 8,
    KProc_Shapes = 10,
    KProc_Text = 11,
    KProc_3D = 12,
    KProc_Create3D = 13,
    KProc_Duplicate3D = 15,
    KProc_Region3D = 16,
};

enum KProcessFlag {
    KPF_Source = 0,        ///< makes its image from nothing
    KPF_Resize = 1,        ///< the output size comes from GetResize
    KPF_Velocity = 2,      ///< the output image carries velocity channels
    KPF_OptionalImage = 4, ///< the main image may be missing
};

enum KProcessNameType { KName_Short = 0, KName_Display = 1, KName_Description = 2 };

/// One of a tool's names, for its static Name. Any other kind gives the display name, and so does a
/// description that is not given.
inline char const* NameOf(KProcessNameType kind, char const* shortName, char const* displayName,
                          char const* description = nullptr)
{
    if (kind == KName_Short) return shortName;
    return kind == KName_Description && description ? description : displayName;
}

/// Frame time that asks for no frame, see KEffect::GetInputTimes.
inline constexpr float kNoFrame = 1e10F;

/// The algorithm of a tool. Declares its parameters in its constructor, each with a public member as target,
/// and knows nothing of the host: something fills the members and the data, calls Init, the operations of its
/// family through an engine, then Done and ProcessData. Concrete effects also have a static
/// Name(KProcessNameType).
class KEffect {
public:
    KEffect() = default;
    virtual ~KEffect() = default;
    KEffect(KEffect const&) = delete;
    KEffect& operator=(KEffect const&) = delete;

    virtual bool GetFlag(KProcessFlag) { return false; }
    /// Size of the output of a resizing effect: changes the source's values in place.
    virtual bool GetResize(int /*scale*/, int& /*width*/, int& /*height*/, float& /*xAspect*/,
                           float& /*yAspect*/)
    {
        return false;
    }
    virtual int ProcessType() = 0;
    /// Default of a standard input that is declared without one.
    virtual float Default(KParameterStandard standard);
    /// Prepares a frame; false declines it, and the source goes through unchanged.
    virtual bool Init(KImage* source);
    /// Work beside the image: numbers, texts and other results.
    virtual void ProcessData() {}
    /// Ends a frame, after a failed Init too; may replace the destination.
    virtual void Done(KImage** destination);
    /// An input with KF_AffectInputs has changed. The caller frees the list. Comes outside the render, so it
    /// may touch only its own bookkeeping members.
    virtual KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value);
    /// How many frames of an input the effect reads at `time`; fills their times unless `times` is null. The
    /// time kNoFrame leaves a slot empty.
    virtual int GetInputTimes(unsigned input, float time, float* times);

    void SetData(KProcessImageData const& newData) { data = newData; }
    KParameter* FirstParameter() const;
    int ParameterCount() const;
    KOutput* FirstOutput() const;
    /// Outputs of one type, or all of them for KPT_None.
    int OutputCount(KParameterType type) const;

    static char const* Category() { return "Ombrelune"; }

    KProcessImageData data;
    KParameterList parameters;
    KOutputList outputs;
};

/// An effect whose result is a number, written by ProcessData.
class KEffectNumber : public KEffect {
public:
    KEffectNumber() { outputs.AddFloat(&result, "Number", "PFlt"_id, 1); }
    int ProcessType() override { return KProc_Number; }

    float result = 0.0F;
};

/// An effect whose result is a text, written by ProcessData.
class KEffectText : public KEffect {
public:
    KEffectText() { outputs.AddText(&result, "Output", "PTxt"_id, 1); }
    int ProcessType() override { return KProc_Text; }

    FuStringT<char> result;
};

} // namespace ombrelune
