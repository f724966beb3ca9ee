#pragma once

#include <deque>
#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "host/flow/ExpressionReads.h"
#include "host/graph/FusionDoc.h"
#include "host/value/Problem.h"
#include "host/value/ScriptVal.h"

namespace ombrelune {

/// The tools of a flow as they are written, groups within groups, and the flat document that they make.
///
/// A name means the tool or group of its own table, else of the tables around it, else a tool of that name
/// anywhere. Tools whose names clash once the groups are opened get "_1", "_2" and so on; the outer ones keep
/// theirs.
class ToolTree {
public:
    struct Group;
    /// A tool or a group; neither when it could not be made, which is told by then.
    struct Member {
        Operator* op = nullptr;
        Group const* group = nullptr;
        bool IsMade() const { return op || group; }
    };
    /// What a table of tools defines.
    struct Scope {
        Scope const* outer = nullptr;
        std::map<std::string, Member, std::less<>> members = {};
    };
    struct Group {
        std::string name = {};
        Scope inside = {};
        std::map<std::string, Input*> inputs = {};
        std::map<std::string, Output*> outputs = {};
    };
    /// A tool, or what a group says about an input of one, to be read now that every name is known.
    struct Tool {
        Operator* op;
        ScriptVal const* given; ///< Class { ... }
        Scope const* scope;
    };
    struct GroupInput {
        Input* input;
        ScriptVal const* given; ///< InstanceInput { ... }
        Scope const* scope;     ///< around the group
    };

    ToolTree(FusionDoc& document, std::vector<Problem>& problems) : document_(document), problems_(problems)
    {}

    /// Makes the operators of a table of tools, and finds what the inputs and outputs of groups stand for.
    void Read(ScriptTable const& tools);
    std::vector<Tool> const& Tools() const { return tools_; }
    std::map<std::string, ShownByGroup, std::less<>> OutermostGroups() const;
    /// Inner groups come first, so that an outer group has the last word.
    std::vector<GroupInput> const& GroupInputs() const { return groupInputs_; }

    /// Null when there is none.
    Member const* Find(Scope const& scope, std::string const& name) const;
    std::vector<std::string> NamesFrom(Scope const& scope) const;

    /// Input or output of a member, or why there is none. Without a name: the output "Output", else the
    /// first.
    static std::variant<Input*, std::string> InputOf(Member const& member, std::string const& id);
    static std::variant<Output*, std::string> OutputOf(Member const& member,
                                                       std::optional<std::string> const& id);

private:
    struct Declared {
        ScriptTable::Entry const* entry;
        Scope* scope;
        int depth;
        Group* group;          // null for a tool
        std::string name = {}; // in the document
    };
    void Wrong(int line, std::string text);
    void Declare(ScriptTable const& tools, Scope& scope, int depth);
    void NameAll();
    void MakeOperator(Declared const& declared);
    void ReadGroup(Group& group, ScriptTable const& table);
    template <class T>
    void ReadInstances(Group& group, ScriptTable const& table, char const* field, char const* constructor,
                       std::map<std::string, T*>& found);

    FusionDoc& document_;
    std::vector<Problem>& problems_;
    Scope root_;
    std::deque<Group> groups_;
    std::vector<Declared> declared_;       // in the order of the flow
    std::map<std::string, Member> byName_; // by the names in the document
    std::vector<Tool> tools_;
    std::vector<GroupInput> groupInputs_;
};

/// The tools that an expression within a scope can name.
class ScopeNames : public ToolNames {
public:
    ScopeNames(ToolTree const& tree, ToolTree::Scope const& scope) : tree_(tree), scope_(scope) {}
    std::vector<std::string> All() const override { return tree_.NamesFrom(scope_); }
    bool Has(std::string const& tool) const override { return tree_.Find(scope_, tool) != nullptr; }
    Readable Member(std::string const& tool, std::string const& member) const override;

private:
    ToolTree const& tree_;
    ToolTree::Scope const& scope_;
};

} // namespace ombrelune
