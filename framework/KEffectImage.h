#pragma once

#include <memory>
#include <vector>

#include "framework/KEffect.h"
#include "image/KImage.h"

namespace ombrelune {

/// An effect with an image output. Derived effects call Init first and Done last in their own.
class KEffectImage : public KEffect {
public:
    KEffectImage() { outputs.AddImage("Output", 1, 1); }

    /// How many frames the effect reads at most, each reached by its slot.
    void ImagesInitialise(int count) { images.resize(static_cast<std::size_t>(count > 0 ? count : 0)); }
    /// Takes ownership. A slot that ImagesInitialise did not make is refused and the image freed.
    void SetImage(int index, KImage* image);
    /// Frame of a slot, null when it has none.
    KImage* GetImage(int index) const;

    bool Init(KImage* source) override;
    void Done(KImage** destination) override;

    /// The trails buffer lives from render to render. Set takes ownership and frees the old one.
    void BufferTrailsSet(KImage* image) { trailsBuffer.reset(image); }
    KImage* BufferTrailsGet() const { return trailsBuffer.get(); }

    static char const* Category() { return "Ombrelune\\Image"; }

    std::vector<std::unique_ptr<KImage>> images;
    std::unique_ptr<KImage> trailsBuffer;
    float pixelAspect = 1.0F, frameAspect = 1.0F;
    int width = 0, height = 0;
};

} // namespace ombrelune
