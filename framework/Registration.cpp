#include "framework/Registration.h"

#include <algorithm>

#include "host/graph/ResColor.h"

namespace ombrelune {

namespace {

constexpr char const* kCompany = "Brass Fennel";
constexpr char const* kWebAddress = "https://brassfennel.example";

constexpr ResColor colorTileShape{{187, 11, 139, 255}, {0, 0, 0, 255}};
constexpr ResColor colorTileRegion3D{{11, 187, 139, 255}, {0, 0, 0, 255}};

/// Tile of a tool by what it gives; null for the host's own.
ResColor const* TileOf(FuID const& outputType)
{
    if (outputType == FuID("Brassfennel.BF_ShapeParameter")) return &colorTileShape;
    if (outputType == FuID("Brassfennel.BF_Region3DParameter")) return &colorTileRegion3D;
    return nullptr;
}

TagList ClassTags(char const* parentClass, int classType)
{
    return {{Reg_InitFunction, Operator::RegInit},
            {Reg_CleanupFunction, Operator::RegCleanup},
            {Reg_ClassType, classType},
            {Reg_BuildText, "Built: Mar 11 2018"},
            {Reg_ParentClass, FuID(parentClass)}};
}

} // namespace

TagList ShellTags(char const* parentClass) { return ClassTags(parentClass, 0); }

TagList ToolTags(char const* parentClass, int classType, OperatorNewFunction* make, KToolTraits const& traits,
                 KToolNames const& names)
{
    TagList tags = ClassTags(parentClass, classType);
    tags.Add({Reg_NewFunction, make});
    if (!traits.outputType.IsEmpty()) tags.Add({Reg_OutputType, traits.outputType});
    if (traits.isTimeVariant) tags.Add({Reg_TimeVariant, 1});
    if (classType == kClassTypeOf<BF_SourceOperator>)
        for (std::uint32_t flag : Reg_SourceFlags) tags.Add({flag, 1});
    ResColor const* const tile = TileOf(traits.outputType);
    if (tile) tags.Add({Reg_TileColor, tile}).Add({Reg_TileFlag, 0});
    tags.Add({Reg_Category, names.category}).Add({Reg_Company, kCompany}).Add({Reg_WebAddress, kWebAddress});
    tags.Add({Reg_ShortName, names.shortName}).Add({Reg_DisplayName, names.displayName});
    tags.Add({Reg_Description, names.description});
    if (tile)
        for (std::uint32_t flag : Reg_Flags3D) tags.Add({flag, 1});
    return tags;
}

std::vector<KEffectFactory>& EffectFactories()
{
    static std::vector<KEffectFactory> factories;
    return factories;
}

KEffectFactory const* FindEffectFactory(std::string_view tool)
{
    auto const& all = EffectFactories();
    auto found =
        std::find_if(all.begin(), all.end(), [&](auto const& factory) { return factory.tool == tool; });
    return found == all.end() ? nullptr : &*found;
}

} // namespace ombrelune
