// Juggle: exchanges characters of a text at random, in another order for each frame. Lines stay lines.

#include <algorithm>
#include <string_view>
#include <utility>

#include "framework/Registration.h"
#include "image/KRandom.h"
#include "image/PixelMath.h"
#include "tools/text/Characters.h"

namespace ombrelune {

class KEffectTextJuggle : public KEffectText {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(kind, "Jgl", "Juggle", "Juggle text (characters, words, lines) around");
    }

    KEffectTextJuggle()
    {
        // clang-format off
        parameters.AddChapter("Text Juggle");
        parameters.AddText    (&text,           "",   "Text",                          "Text"_id, 0, 10);
        parameters.AddSlider  (&characters,     0.0F, "Juggle characters",             "JuCh"_id, 0,         0.0, 1.0);
        // These five have no effect.
        parameters.AddSlider  (&withinWords,    0.0F, "Juggle characters within word", "JuCW"_id, KF_Hidden, 0.0, 1.0);
        parameters.AddSlider  (&withinLines,    0.0F, "Juggle characters within line", "JuCL"_id, KF_Hidden, 0.0, 1.0);
        parameters.AddSlider  (&words,          0.0F, "Juggle words",                  "JuWo"_id, KF_Hidden, 0.0, 1.0);
        parameters.AddSlider  (&wordsInLines,   0.0F, "Juggle words within line",      "JuWL"_id, KF_Hidden, 0.0, 1.0);
        parameters.AddSlider  (&lines,          0.0F, "Juggle lines",                  "JuLi"_id, KF_Hidden, 0.0, 1.0);
        parameters.AddCheckbox(&keepSpaces,     false, "Keep spaces in place",         "JuKS"_id, 0);
        // clang-format on
    }

    void ProcessData() override
    {
        std::u32string copy = CharactersOf(text);
        auto const length = static_cast<float>(copy.size());
        int const passes = TruncateToInt(2.0F * characters * length);
        for (int r = 0; r < passes; ++r) {
            std::size_t const i = PlaceOf(copy, r * 7), j = PlaceOf(copy, 101 + r * 7);
            if (IsMovable(copy[i]) && IsMovable(copy[j])) SwapCharacters(copy, i, j);
        }
        result = TextOfCharacters(copy);
    }

    FuStringT<char> text;
    float characters; // amount
    float withinWords, withinLines, words, wordsInLines, lines;
    bool keepSpaces;

private:
    std::size_t PlaceOf(std::u32string const& copy, int seed) const
    {
        float const random = KRandomTimeSeed(data.time, static_cast<unsigned>(seed));
        auto const place = static_cast<std::size_t>(random * static_cast<float>(copy.size()));
        return std::min(place, copy.size() - 1);
    }
    bool IsMovable(char32_t c) const
    {
        return c != U'\n' && c != U'\r' && c != U'\t' && !(keepSpaces && c == U' ');
    }
    static void SwapCharacters(std::u32string& copy, std::size_t i, std::size_t j)
    {
        std::swap(copy[i], copy[j]);
    }
};

OMBRELUNE_TOOL(BF_TextJuggle, BF_ThreadedOperator, KEffectTextJuggle, .outputType = CLSID_DataType_Text,
               .isTimeVariant = true);

} // namespace ombrelune
