// Write: the beginning of a text, as far as it is written, with a cursor behind it and a prefix before it.

#include <algorithm>

#include "framework/Registration.h"
#include "image/PixelMath.h"
#include "tools/text/Characters.h"

namespace ombrelune {

class KEffectTextWrite : public KEffectText {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(kind, "Wri", "Write", "Easy writing of text");
    }

    KEffectTextWrite()
    {
        // clang-format off
        parameters.AddChapter("Text Write");
        parameters.AddText    (&text,       "",    "Text",        "Text"_id, 0, 5);
        parameters.AddSlider  (&write,      1.0F,  "Write",       "TxWr"_id, 0, 0.0, 1.0);
        parameters.AddText    (&cursor,     "_",   "Cursor",      "CuTx"_id, 0, 2);
        parameters.AddCheckbox(&showCursor, true,  "Cursor show", "CuSh"_id, 0);
        parameters.AddText    (&prefix,     "//",  "Prefix",      "PrTx"_id, 0, 2);
        parameters.AddCheckbox(&showPrefix, false, "Prefix show", "PrSh"_id, 0);
        // clang-format on
    }

    void ProcessData() override
    {
        std::u32string const characters = CharactersOf(text);
        auto const length = static_cast<float>(characters.size());
        int const kept = std::max(TruncateToInt(write * (length + 0.5F)), 0);
        result = TextOfCharacters(std::u32string_view(characters).substr(0, static_cast<std::size_t>(kept)));
        if (showCursor) result += cursor;
        if (showPrefix) result.insert(0, prefix);
    }

    FuStringT<char> text;
    float write; // part of the text
    FuStringT<char> cursor;
    bool showCursor;
    FuStringT<char> prefix;
    bool showPrefix;
};

OMBRELUNE_TOOL(BF_TextWrite, BF_ThreadedOperator, KEffectTextWrite, .outputType = CLSID_DataType_Text);

} // namespace ombrelune
