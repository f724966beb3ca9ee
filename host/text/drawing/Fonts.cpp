#include "host/text/drawing/Fonts.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <vector>

namespace ombrelune {

namespace {

constexpr char const* kUsualFamily = "DejaVu Sans";

std::string Lower(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

bool IsSameName(std::string const& a, std::string const& b) { return Lower(a) == Lower(b); }

/// Words of a style in the one spelling that is compared: "Book" is "", "Bold Italic" is "bold oblique".
std::string StyleKey(std::string const& style)
{
    std::string key, word;
    for (char c : Lower(style) + " ") {
        if (c != ' ') {
            word += c;
            continue;
        }
        if (word == "italic") word = "oblique";
        if (word != "regular" && word != "normal" && word != "book" && word != "roman" && !word.empty())
            key += (key.empty() ? "" : " ") + word;
        word.clear();
    }
    return key;
}

PangoFontFamily* FindFamily(std::vector<PangoFontFamily*> const& families, std::string const& name)
{
    auto const found = std::find_if(families.begin(), families.end(), [&](PangoFontFamily* each) {
        return IsSameName(pango_font_family_get_name(each), name);
    });
    return found == families.end() ? nullptr : *found;
}

std::vector<PangoFontFamily*> FamiliesOf(PangoFontMap* fonts)
{
    PangoFontFamily** list = nullptr;
    int count = 0;
    pango_font_map_list_families(fonts, &list, &count);
    std::vector<PangoFontFamily*> families(list, list + count);
    g_free(list);
    std::sort(families.begin(), families.end(), [](PangoFontFamily* a, PangoFontFamily* b) {
        return std::string(pango_font_family_get_name(a)) < pango_font_family_get_name(b);
    });
    return families;
}

std::vector<PangoFontFace*> FacesOf(PangoFontFamily* family)
{
    PangoFontFace** list = nullptr;
    int count = 0;
    pango_font_family_list_faces(family, &list, &count);
    std::vector<PangoFontFace*> faces(list, list + count);
    g_free(list);
    return faces;
}

PangoFontFace* FindFace(std::vector<PangoFontFace*> const& faces, std::string const& key)
{
    auto const found = std::find_if(faces.begin(), faces.end(), [&](PangoFontFace* each) {
        return StyleKey(pango_font_face_get_face_name(each)) == key;
    });
    return found == faces.end() ? nullptr : *found;
}

} // namespace

ChosenFont ChooseFont(PangoFontMap* fonts, std::string const& family, std::string const& style)
{
    ChosenFont chosen;
    std::vector<PangoFontFamily*> const families = FamiliesOf(fonts);
    PangoFontFamily* used = FindFamily(families, family);
    if (!used) used = FindFamily(families, kUsualFamily);
    if (!used && !families.empty()) used = families.front();
    if (!used) return chosen;
    std::string const name = pango_font_family_get_name(used);
    if (!IsSameName(name, family)) chosen.otherFamily = name;

    std::vector<PangoFontFace*> const faces = FacesOf(used);
    PangoFontFace* face = FindFace(faces, StyleKey(style));
    if (!face) {
        face = FindFace(faces, "");
        if (!face && !faces.empty()) face = faces.front();
        if (face) chosen.otherStyle = pango_font_face_get_face_name(face);
    }
    chosen.description = face ? pango_font_face_describe(face) : pango_font_description_new();
    if (!face) pango_font_description_set_family(chosen.description, name.c_str());
    return chosen;
}

} // namespace ombrelune
