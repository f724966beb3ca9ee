#pragma once

#include "framework/KParameter.h"

namespace ombrelune {

class Output;

/// One declared output; the target is the effect's member that holds the result, null for the image.
class KOutput : public KListItem {
public:
    KString label{"None"};
    std::uint32_t id = 0;
    KParameterType type = KPT_None;
    void* target = nullptr;
    unsigned flags = 0;
    Output* output = nullptr; ///< the host's, filled by the bridge
};

class KOutputList : public KList {
public:
    /// The picture that the engine makes; it goes out without a target.
    void AddImage(char const* label, std::uint32_t id, unsigned flags)
    {
        Append(KPT_Image, nullptr, label, id, flags);
    }
    void AddFloat(float* target, char const* label, std::uint32_t id, unsigned flags)
    {
        Append(KPT_Float, target, label, id, flags);
    }
    void AddRegion3D(void** target, char const* label, std::uint32_t id, unsigned flags)
    {
        Append(KPT_Region3D, static_cast<void*>(target), label, id, flags);
    }
    void AddShape(void** target, char const* label, std::uint32_t id, unsigned flags)
    {
        Append(KPT_Shape, static_cast<void*>(target), label, id, flags);
    }
    void AddText(FuStringT<char>* target, char const* label, std::uint32_t id, unsigned flags)
    {
        Append(KPT_Text, target, label, id, flags);
    }

private:
    void Append(KParameterType type, void* target, char const* label, std::uint32_t id, unsigned flags)
    {
        auto* output = new KOutput;
        output->type = type;
        output->target = target;
        output->label.Set(label);
        output->id = id;
        output->flags = flags;
        AddLast(output);
    }
};

} // namespace ombrelune
