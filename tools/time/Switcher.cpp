// Switcher: hands on one of its pictures, chosen by a number: the main one for 0, or one of 32 others.

#include <algorithm>
#include <string>

#include "framework/Registration.h"

namespace ombrelune {

namespace {

constexpr int kInputs = 32;

} // namespace

class KEffectSwitcher : public KEffectThreads {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "Swi", "Switcher"); }

    KEffectSwitcher()
    {
        parameters.AddChapter("Switcher");
        parameters.AddSliderInt(&index, 0, "Index", "Indx"_id, 0, 0, kInputs);
        for (int i = 0; i < kInputs; ++i) {
            std::string const label = "Image " + std::to_string(i + 1);
            parameters.AddImage(&pictures[i], label.c_str(), IdOf(i),
                                KF_AffectInputs | KF_Preview | (i > 0 ? KF_Hidden : 0U));
        }
    }

    /// One empty input is shown behind the last one that is connected.
    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        if (id < IdOf(0) || id >= IdOf(kInputs)) return messages;
        int const n = static_cast<int>(id - IdOf(0));
        if (value.image) highest = std::max(highest, n);
        else if (highest == n) --highest;
        if (highest == highestShown) return messages;
        highestShown = highest;
        for (int i = 0; i < kInputs; ++i) messages->Show(IdOf(i), i <= highest + 1);
        return messages;
    }

    void F(int, int, KImage* source, KImage* destination) override
    {
        if (index == 0) destination->CopyFrom(source);
    }

    void Done(KImage** destination) override
    {
        if (index > 0) {
            KImage const* const chosen = index <= kInputs ? pictures[index - 1] : nullptr;
            KImage::ImageReplace(destination, chosen ? chosen->CopyOf() : nullptr);
        }
        KEffectThreads::Done(destination);
    }

    int index; // 0 the main picture, else the picture of that number
    KImage* pictures[kInputs];

private:
    static std::uint32_t IdOf(int input) { return "Ima0"_id + static_cast<std::uint32_t>(input); }

    int highest = 0, highestShown = -1; // inputs, from 0
};

OMBRELUNE_TOOL(BF_Switcher, BF_ThreadedOperator, KEffectSwitcher);

} // namespace ombrelune
