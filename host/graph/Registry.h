#pragma once

#include <string>
#include <vector>

#include "host/graph/Attributes.h"
#include "host/value/ScriptVal.h"
#include "host/value/TagList.h"

namespace ombrelune {

class Operator;
class Registry;

using OperatorNewFunction = Operator*(Registry const*, ScriptVal const&, TagList const&);
using RegistryFunction = void(Registry const*);

/// All classes that are registered, in order of registration.
class RegistryList {
public:
    /// Null when there is none.
    Registry const* Find(FuID id) const;
    std::vector<Registry const*> const& All() const { return all_; }

private:
    friend class Registry;
    std::vector<Registry const*> all_;
};

RegistryList& ClassRegistry();

/// One registered class: an identifier and its attributes. Registers itself while it lives, so that loading a
/// bundle registers its classes and unloading takes them away.
class Registry {
public:
    Registry(RegistryList& list, FuID id, TagList tags);
    ~Registry();
    Registry(Registry const&) = delete;
    Registry& operator=(Registry const&) = delete;

    FuID Id() const { return id_; }
    TagList const& Tags() const { return tags_; }
    std::string Category() const { return tags_.GetText(Reg_Category); }
    std::string ShortName() const { return tags_.GetText(Reg_ShortName); }
    std::string DisplayName() const { return tags_.GetText(Reg_DisplayName); }
    std::string Description() const { return tags_.GetText(Reg_Description); }
    FuID ParentClass() const { return tags_.GetId(Reg_ParentClass); }
    /// Null for a class that others are built on.
    OperatorNewFunction* NewFunction() const
    {
        return tags_.GetFunction<OperatorNewFunction>(Reg_NewFunction);
    }

private:
    RegistryList& list_;
    FuID id_;
    TagList tags_;
};

} // namespace ombrelune
