// Formula: puts numbers, points and other texts into a text, wherever it says n1, p1x, p1y or t1.

#include <algorithm>
#include <cmath>

#include <fmt/format.h>

#include "framework/Registration.h"

namespace ombrelune {

namespace {

constexpr int kCount = 9;        // of each kind
constexpr int kMostDigits = 100; // a wild setting fills no memory

void ReplaceAll(FuStringT<char>& text, std::string const& token, std::string const& by)
{
    for (std::size_t at = text.find(token); at != std::string::npos; at = text.find(token, at + by.size()))
        text.replace(at, token.size(), by);
}

} // namespace

class KEffectTextFormula : public KEffectText {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(kind, "Frm", "Formula",
                      "Text formula allows numeric values to be used within text fields");
    }

    struct NumberFormat {
        int precision, digits;
        bool leadingZeros, spaceIfPositive;
    };

    KEffectTextFormula()
    {
        for (int i = 0; i < kCount; ++i) {
            auto const n = static_cast<std::uint32_t>(i);
            std::string const number = std::to_string(i + 1);
            parameters.AddChapter("Number In");
            parameters.AddScrew(&numbers[i], 0.0F, ("n" + number).c_str(), "NuIn"_id + n,
                                KF_SoftMin | KF_SoftMax, 0.0, 1.0);
            parameters.AddChapter("Point In");
            parameters.AddPoint(&points[i], {0.0F, 0.0F}, ("p" + number).c_str(), "PoIn"_id + n, KF_Preview,
                                KPoint_Normal);
            parameters.AddChapter("Text In");
            parameters.AddText(&texts[i], "", ("t" + number).c_str(), "TeIn"_id + n, 0, 2);
        }
        // clang-format off
        parameters.AddChapter("Text Out");
        parameters.AddText(&text, "", "Text", "Text"_id, 0, 10);
        parameters.AddSliderInt(&numberFormat.precision,       2, "Precision number values",                  "TePN"_id, KF_SoftMax, 0, 6);
        parameters.AddSliderInt(&numberFormat.digits,          1, "Minimum number value digits before dot",   "TeDN"_id, KF_SoftMax, 1, 6);
        parameters.AddCheckbox (&numberFormat.leadingZeros, true, "Leading zero's (number values)",           "TeZN"_id, 0);
        parameters.AddCheckbox (&numberFormat.spaceIfPositive, true, "Add space if not negative (number values)", "TeNM"_id, 0);
        parameters.AddSliderInt(&pointFormat.precision,        2, "Precision point values",                   "TePP"_id, KF_SoftMax, 0, 6);
        parameters.AddSliderInt(&pointFormat.digits,           1, "Minimum point value digits before dot",    "TeDP"_id, KF_SoftMax, 1, 6);
        parameters.AddCheckbox (&pointFormat.leadingZeros,  true, "Leading zero's (point values)",            "TeZP"_id, 0);
        parameters.AddCheckbox (&pointFormat.spaceIfPositive, true, "Add space if not negative (point values)", "TePM"_id, 0);
        // clang-format on
    }

    /// With leading zeros the sign stands before them; without, a minus stands behind the pad.
    static std::string FormatNumber(float value, int precision, int digits, bool leadingZeros,
                                    bool spaceIfPositive)
    {
        precision = std::clamp(precision, 0, kMostDigits);
        bool const isNegative = value < 0.0F;
        if (leadingZeros) value = std::abs(value);
        std::string result = fmt::format("{:.{}f}", value, precision);
        // The value as printed. Without decimals a printed half goes to the even neighbour, and this one up.
        double const unit = std::pow(10.0, precision);
        auto const printed = static_cast<float>(std::floor(value * unit + 0.5) / unit);
        for (int i = 2; i <= std::min(digits, kMostDigits); ++i)
            if (std::abs(printed) < std::pow(10.0, i - 1)) result.insert(0, leadingZeros ? "0" : " ");
        if (leadingZeros && isNegative) result.insert(0, "-");
        if (!isNegative && spaceIfPositive) result.insert(0, " ");
        return result;
    }

    void ProcessData() override
    {
        result = text;
        for (int i = 0; i < kCount; ++i)
            ReplaceAll(result, "n" + std::to_string(i + 1), Formatted(numbers[i], numberFormat));
        for (int i = 0; i < kCount; ++i) {
            std::string const point = "p" + std::to_string(i + 1);
            ReplaceAll(result, point + "x", Formatted(points[i].x, pointFormat));
            ReplaceAll(result, point + "y", Formatted(points[i].y, pointFormat));
        }
        InsertTexts();
    }

    float numbers[kCount];
    KVector2 points[kCount];
    FuStringT<char> texts[kCount];
    FuStringT<char> text;
    NumberFormat numberFormat, pointFormat;

private:
    static std::string Formatted(float value, NumberFormat const& format)
    {
        return FormatNumber(value, format.precision, format.digits, format.leadingZeros,
                            format.spaceIfPositive);
    }
    /// All in one pass: what a text brings in stays as it is.
    void InsertTexts()
    {
        std::string made;
        for (std::size_t i = 0; i < result.size(); ++i) {
            bool const isToken =
                result[i] == 't' && i + 1 < result.size() && result[i + 1] >= '1' && result[i + 1] <= '9';
            if (isToken) made += texts[result[++i] - '1'];
            else made += result[i];
        }
        result = std::move(made);
    }
};

OMBRELUNE_TOOL(BF_TextFormula, BF_ThreadedOperator, KEffectTextFormula, .outputType = CLSID_DataType_Text);

} // namespace ombrelune
