#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "framework/RowForm.h"
#include "framework/Shells.h"

namespace ombrelune {

/// What a tool says of itself beyond its effect, for the few tools that need it.
struct KToolTraits {
    char const* id = nullptr; ///< class part of the identifier, where it isn't the name of the class
    FuID outputType = {};     ///< of a tool without an image output
    bool isTimeVariant = false;
};

/// What users read of a tool.
struct KToolNames {
    char const *category, *shortName, *displayName, *description;
};

/// The attributes of a shell, and all of a tool, in the order in which hosts are given them.
TagList ShellTags(char const* parentClass);
TagList ToolTags(char const* parentClass, int classType, OperatorNewFunction* make, KToolTraits const& traits,
                 KToolNames const& names);

/// A registered tool's bare effect, for tests and benches: the form with its row operation instantiated, and
/// the one whose row operation calls the virtual F.
struct KEffectFactory {
    std::string tool; ///< name of the tool's class: "BF_Invert"
    std::unique_ptr<KEffect> (*makeRowForm)();
    std::unique_ptr<KEffect> (*makePlainForm)();
};
std::vector<KEffectFactory>& EffectFactories();
/// Null when no tool of that name is registered.
KEffectFactory const* FindEffectFactory(std::string_view tool);

template <class Shell> constexpr int kClassTypeOf = std::is_base_of_v<BF_SourceOperator, Shell> ? 11 : 3;

/// A tool: its shell with the effect as a member.
template <class Tool, class Shell, class Effect> class KToolClass : public Shell {
public:
    KToolClass(Registry const* registry, ScriptVal const& settings, TagList const& tags)
        : Shell(registry, settings, tags)
    {
        this->Initialise(&effect);
    }
    unsigned SizeOf() const override { return sizeof(Tool); }

private:
    KRowForm<Effect> effect;
};

/// Registers the tool's class with the host, and its effect with the factories above.
template <class Tool, class Shell, class Effect> class KToolRegistration {
public:
    KToolRegistration(char const* name, char const* shell, KToolTraits const& traits)
        : registry_(ClassRegistry(), std::string("Brassfennel.") + (traits.id ? traits.id : name),
                    Tags(shell, traits))
    {
        EffectFactories().push_back({name, Make<KRowForm<Effect>>, Make<KPlainForm<Effect>>});
    }

private:
    static Operator* New(Registry const* registry, ScriptVal const& settings, TagList const& tags)
    {
        return new Tool(registry, settings, tags);
    }
    template <class Form> static std::unique_ptr<KEffect> Make() { return std::make_unique<Form>(); }

    static TagList Tags(char const* shell, KToolTraits const& traits)
    {
        constexpr bool isValue =
            std::is_base_of_v<KEffectNumber, Effect> || std::is_base_of_v<KEffectText, Effect>;
        return ToolTags(shell, isValue ? 5 : kClassTypeOf<Shell>, New, traits,
                        {Effect::Category(), Effect::Name(KName_Short), Effect::Name(KName_Display),
                         Effect::Name(KName_Description)});
    }

    Registry const registry_;
};

} // namespace ombrelune

/// The statement that ends a tool's file: class, shell, effect, and where needed the exceptions of
/// KToolTraits as designated initialisers.
#define OMBRELUNE_TOOL(Class, Shell, Effect, ...)                                                            \
    class Class : public ::ombrelune::KToolClass<Class, ::ombrelune::Shell, Effect> {                        \
        using KToolClass::KToolClass;                                                                        \
        template <class, class, class> friend class ::ombrelune::KToolRegistration;                          \
    };                                                                                                       \
    static ::ombrelune::KToolRegistration<Class, ::ombrelune::Shell, Effect> const Class##_Reg(              \
        #Class, "Brassfennel." #Shell, ::ombrelune::KToolTraits{__VA_ARGS__})
