// What tools show, hide, rename and set when an artist changes one of their inputs.

#include <gtest/gtest.h>

#include "tests/framework/ToolUnderTest.h"

namespace ombrelune::test {
namespace {

TEST(EveryChoice, ShowsAndNamesWhatItNeeds)
{
    struct Case {
        char const* tool; // changes of one tool follow each other on the same effect
        std::uint32_t id;
        int value;
        std::map<std::uint32_t, std::string> told; // "" for what is not spoken of
    };
    std::string const shown = "shown", hidden = "hidden";
    Case const cases[] = {
        {"BF_Threshold", "ReLo"_id, 1, {{"RePB"_id, hidden}}},
        {"BF_Threshold", "ThLo"_id, 0, {{"ThAl"_id, shown}}},
        {"BF_MatchColor", "CoNu"_id, 1, {{"CSR1"_id, hidden}, {"CDR2"_id, shown}}},
        {"BF_ReplaceColor", "SeTy"_id, 1, {{"SeGH"_id, shown}, {"SeLR"_id, hidden}}},
        {"BF_ReplaceColor", "SeTy"_id, 0, {{"SeWi"_id, hidden}}},
        {"BF_ReplaceColor", "SeLS"_id, 0, {{"SeSo"_id, hidden}}},
        {"BF_Noise", "Coun"_id, 2, {}},
        {"BF_Noise",
         "Type"_id,
         1,
         {{"Coun"_id, shown}, {"ColR"_id, shown}, {"ColA"_id + 0x100, shown}, {"ColR"_id + 0x200, hidden}}},
        {"BF_Noise", "Type"_id, 0, {{"ColG"_id, hidden}}},
        {"BF_PixelRegion", "CoT0"_id + 1, 1, {{"RC00"_id + 0x100, hidden}}}, // not counted yet
        {"BF_PixelRegion",
         "Coun"_id,
         2,
         {{"RC00"_id + 0x100, shown}, {"ReX0"_id + 1, shown}, {"RC00"_id, hidden}, {"ReX0"_id + 2, hidden}}},
        {"BF_Grow",
         "SeNu"_id,
         2,
         {{"See1"_id, shown}, {"Off1"_id, shown}, {"See2"_id, hidden}, {"Off2"_id, hidden}}},
        {"BF_CleanEdges", "Lock"_id, 0, {{"PixL"_id, "Pixels"}, {"PixT"_id, hidden}, {"PixR"_id, hidden}}},
        {"BF_CleanEdges", "Lock"_id, 1, {{"PixL"_id, "Pixels Left/Right"}, {"PixB"_id, hidden}}},
        {"BF_CleanEdges", "Lock"_id, 1, {{"PixT"_id, "shown, Pixels Top/Bottom"}}},
        {"BF_CleanEdges",
         "Lock"_id,
         2,
         {{"PixR"_id, "shown, Pixels Right"}, {"PixB"_id, "shown, Pixels Bottom"}}},
        {"BF_Flur", "Shap"_id, 2, {{"Expo"_id, shown}}},
        {"BF_Microwaves", "Shap"_id, 1, {{"Expo"_id, hidden}}},
        {"BF_Beams", "ExCT"_id, 1, {{"ExCR"_id, hidden}, {"ExCA"_id, hidden}}},
        {"BF_Beams", "ExPe"_id, 0, {{"ExAn"_id, shown}, {"ExCe"_id, hidden}, {"ExQu"_id, hidden}}},
        {"BF_Painterly", "Type"_id, 2, {{"Radi"_id, hidden}, {"Aspe"_id, hidden}}},
        {"BF_Bevel", "BeLo"_id, 0, {{"BeSY"_id, shown}}},
        {"BF_Plastic", "PlLo"_id, 1, {{"PlSY"_id, hidden}}},
        {"BF_Contour", "CoTL"_id, 0, {{"CoTR"_id, "Threshold Red"}, {"CoTA"_id, shown}}},
        {"BF_Contour", "CoLL"_id, 1, {{"CoLR"_id, "Levels"}, {"CoLG"_id, hidden}}},
        {"BF_Rasterize", "cAnS"_id, 0, {{"cAnW"_id, shown}, {"cAnB"_id, "Angle black"}}},
        {"BF_Rasterize", "cSHo"_id, 1, {{"cAnS"_id, hidden}, {"cAnW"_id, hidden}}},
        {"BF_Bend",
         "BeTy"_id,
         1,
         {{"BeMi"_id, hidden}, {"BeEn"_id, hidden}, {"BeAS"_id, shown}, {"BeAE"_id, shown}}},
        {"BF_Kaleidoscope", "Type"_id, 0, {{"AngE"_id, hidden}, {"AnPP"_id, hidden}, {"RaPP"_id, hidden}}},
        {"BF_LensDistortion", "PinC"_id, 0, {{"Scal"_id, shown}}},
        {"BF_Transform", "SizT"_id, 1, {{"SizX"_id, "Size"}, {"SizY"_id, "Aspect"}}},
        {"BF_Transform", "SizX"_id, 1, {{"SizX"_id, ""}, {"SizY"_id, ""}}},
        {"BF_RelativeTransform", "SizT"_id, 0, {{"SizX"_id, "Size X"}, {"SizY"_id, "Size Y"}}},
        {"BF_SegmentTransform", "SSiL"_id, 1, {{"SSiY"_id, hidden}}},
        {"BF_SegmentTransform", "ScaL"_id, 0, {{"ScaY"_id, shown}}},
        {"BF_Spherize", "SpLo"_id, 1, {{"SpDV"_id, hidden}, {"SpDH"_id, "Deformation"}}},
        {"BF_Spherize", "SpLo"_id, 0, {{"SpDV"_id, shown}, {"SpDH"_id, "Deformation horizontal"}}},
        {"BF_Remap", "Outp"_id, 0, {{"RotO"_id, hidden}, {"AngX"_id, hidden}, {"AngZ"_id, hidden}}},
        {"BF_SeamlessLoop", "TiLL"_id, 8, {{"TiDL"_id, ""}}}, // only one of them is known
        {"BF_SeamlessLoop", "TiDL"_id, 20, {{"TiDL"_id, "= 8"}}},
        {"BF_SeamlessLoop", "TiLL"_id, 9, {{"TiDL"_id, ""}}},
        {"BF_SeamlessLoop", "TiLL"_id, 5, {{"TiDL"_id, "= 5"}}},
        {"BF_Deflicker",
         "Refe"_id,
         1,
         {{"ReTi"_id, shown}, {"TiSt"_id, shown}, {"FrBe"_id, hidden}, {"FrAf"_id, hidden}}},
        {"BF_Deflicker", "Type"_id, 0, {{"RReC"_id, hidden}}},
        {"BF_Deflicker", "Base"_id, 1, {{"RReC"_id, shown}}},
        {"BF_Deflicker", "Type"_id, 0, {{"RCoC"_id, hidden}}}, // locked
        {"BF_Deflicker", "BasL"_id, 0, {{"RCoC"_id, shown}}},
        {"BF_Deflicker", "Type"_id, 1, {{"RCoC"_id, hidden}}}, // zones have no rectangle
        {"BF_Connect", "NumP"_id, 5, {{"Pos4"_id, shown}, {"Pos0"_id + 5, hidden}}},
        {"BF_Connect", "Type"_id, 1, {{"Subd"_id, shown}}},
        {"BF_ShapeShading", "PeET"_id, 1, {{"PeER"_id, shown}}},
        {"BF_ShapeShading", "PeET"_id, 0, {{"PeER"_id, hidden}}},
        {"BF_ShapeShading", "PeLT"_id, 0, {{"PeLC"_id, hidden}, {"PeLS"_id, hidden}, {"PeD0"_id, hidden}}},
        {"BF_ShapeShading", "PeLT"_id, 1, {{"PeLS"_id, shown}, {"PeD0"_id, shown}, {"PeD2"_id, hidden}}},
        {"BF_ShapeShading", "PeLT"_id, 2, {{"PeD0"_id, hidden}, {"PeS0"_id, shown}, {"PeLC"_id, hidden}}},
        {"BF_ShapeShading", "PeLT"_id, 3, {{"PeLC"_id, shown}, {"PeD2"_id, shown}, {"PeS3"_id, hidden}}},
        {"BF_ShapeShading", "PeLC"_id, 16, {{"PeS0"_id + 15, shown}, {"PeLC"_id, ""}}}, // of the line type
        {"BF_ShapePrimitiveCreate", "Type"_id, 1, {{"Step"_id, shown}, {"Angl"_id, shown}}},
        {"BF_ShapePrimitiveCreate", "Type"_id, 2, {{"Step"_id, hidden}, {"Angl"_id, hidden}}},
        {"BF_ShapePrimitiveCreate", "PeET"_id, 1, {{"PeER"_id, shown}}}, // the shading is still asked
    };
    std::optional<ToolUnderTest> tool;
    std::string_view last;
    for (Case const& each : cases) {
        if (last != each.tool) tool.emplace(each.tool);
        last = each.tool;
        auto const told = tool->Change(each.id, each.value);
        for (auto const& [id, text] : each.told) {
            auto const found = told.find(id);
            EXPECT_EQ(found == told.end() ? "" : found->second, text)
                << each.tool << ", input " << id << " after " << each.id << " = " << each.value;
        }
    }
}

} // namespace
} // namespace ombrelune::test
