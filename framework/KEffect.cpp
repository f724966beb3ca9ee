#include "framework/KEffect.h"

namespace ombrelune {

float KEffect::Default(KParameterStandard standard)
{
    switch (standard) {
    case KPS_UnderSample:
    case KPS_SuperSampleFilter:
    case KPS_SubPixel:
    case KPS_Filtering: return 1.0F;
    default: return 0.0F;
    }
}

bool KEffect::Init(KImage*) { return true; }

void KEffect::Done(KImage**) {}

KMessageList* KEffect::AffectInputs(std::uint32_t, KParameterValue&) { return new KMessageList; }

int KEffect::GetInputTimes(unsigned, float, float*) { return 1; }

KParameter* KEffect::FirstParameter() const { return static_cast<KParameter*>(parameters.First()); }

int KEffect::ParameterCount() const { return parameters.Count(); }

KOutput* KEffect::FirstOutput() const { return static_cast<KOutput*>(outputs.First()); }

int KEffect::OutputCount(KParameterType type) const
{
    int count = 0;
    for (KOutput const* output : outputs.Each<KOutput>())
        if (type == KPT_None || output->type == type) ++count;
    return count;
}

} // namespace ombrelune
