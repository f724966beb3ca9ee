#include "framework/Registration.h"

#include <algorithm>

namespace ombrelune {

namespace {

constexpr char const* kCompany = "Brass Fennel";
constexpr char const* kWebAddress = "https://brassfennel.example";

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

TagList ToolTags(char const* parentClass, int classType, KToolTraits const& traits)
{
    TagList tags = ClassTags(parentClass, classType);
    if (!traits.outputType.IsEmpty()) tags.Add({Reg_OutputType, traits.outputType});
    if (traits.isTimeVariant) tags.Add({Reg_TimeVariant, 1});
    if (classType == kClassTypeOf<BF_SourceOperator>)
        for (std::uint32_t flag : Reg_SourceFlags) tags.Add({flag, 1});
    return tags.Add({Reg_Company, kCompany}).Add({Reg_WebAddress, kWebAddress});
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
