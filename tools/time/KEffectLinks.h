#pragma once

#include "framework/KEffectThreads.h"

namespace ombrelune {

/// Hands on the first of its links that holds a picture; there is no output without any.
class KEffectLinks : public KEffectThreads {
public:
    KEffectLinks()
    {
        parameters.AddChapter("Wireless Link");
        for (int i = 0; i < kLinks; ++i) {
            KString label;
            label.Numbered("Link", i + 1, true);
            parameters.AddImage(&links[i], label.Text(), "Imag"_id + static_cast<std::uint32_t>(i),
                                KF_Preview);
        }
    }

    void F(int, int, KImage*, KImage*) override {}
    void Done(KImage** destination) override
    {
        KImage* chosen = nullptr;
        for (KImage const* link : links)
            if (link && !chosen) chosen = link->CopyOf();
        KImage::ImageReplace(destination, chosen);
        KEffectThreads::Done(destination);
    }

    static constexpr int kLinks = 24;
    KImage* links[kLinks];
};

} // namespace ombrelune
