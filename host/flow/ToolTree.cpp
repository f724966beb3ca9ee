#include "host/flow/ToolTree.h"

#include <algorithm>
#include <set>

#include <fmt/format.h>

#include "host/value/NearestName.h"

namespace ombrelune {

namespace {

bool IsGroup(ScriptTable const& table)
{
    return table.constructor == "GroupOperator" || table.constructor == "MacroOperator";
}

Registry const* FindClass(std::string const& id)
{
    auto const all = Operator::AllOperators();
    auto const found =
        std::find_if(all.begin(), all.end(), [&](Registry const* r) { return r->Id().Text() == id; });
    return found == all.end() ? nullptr : *found;
}

template <class Items> std::vector<std::string> IdsOf(Items const& items)
{
    std::vector<std::string> ids;
    for (auto const& item : items) ids.push_back(item->Id().Text());
    return ids;
}

template <class Map> std::vector<std::string> KeysOf(Map const& map)
{
    std::vector<std::string> keys;
    for (auto const& [key, value] : map) keys.push_back(key);
    return keys;
}

std::string Describe(Operator const& op)
{
    Registry const& registry = *op.Registration();
    return fmt::format("{} ({})", op.Name(),
                       registry.ShortName().empty() ? registry.Id().Text() : registry.DisplayName());
}

template <class T>
std::variant<T*, std::string> FindIn(std::map<std::string, T*> const& map, std::string const& id,
                                     char const* kind, std::string const& group)
{
    auto const found = map.find(id);
    if (found == map.end())
        return fmt::format("no {} {} on {}{}", kind, Quoted(id), group, DidYouMean(id, KeysOf(map)));
    return found->second;
}

} // namespace

void ToolTree::Wrong(int line, std::string text)
{
    problems_.push_back({.file = document_.file, .line = line, .text = std::move(text)});
}

void ToolTree::Read(ScriptTable const& tools)
{
    Declare(tools, root_, 0);
    NameAll();
    for (Declared const& declared : declared_)
        if (!declared.group) MakeOperator(declared);
    // Backwards, so that groups come after the groups inside them.
    for (auto declared = declared_.rbegin(); declared != declared_.rend(); ++declared)
        if (declared->group) ReadGroup(*declared->group, *declared->entry->value.AsTable());
}

void ToolTree::Declare(ScriptTable const& tools, Scope& scope, int depth)
{
    for (auto const& entry : tools.entries) {
        std::string const* const name = entry.key.AsText();
        ScriptTable const* const table = entry.value.AsTable();
        if (!name || !table || table->constructor.empty()) {
            Wrong(entry.value.line, "a tool is written Name = Class { ... }");
            continue;
        }
        if (!scope.members.try_emplace(*name).second) {
            Wrong(entry.value.line, fmt::format("there are two tools of the name {}", Quoted(*name)));
            continue;
        }
        if (!IsGroup(*table)) {
            declared_.push_back({&entry, &scope, depth, nullptr});
            continue;
        }
        Group& group = groups_.emplace_back();
        group.name = *name;
        group.inside.outer = &scope;
        scope.members[*name].group = &group;
        declared_.push_back({&entry, &scope, depth, &group});
        ScriptVal const* const inner = table->Find("Tools");
        if (inner && inner->AsTable()) Declare(*inner->AsTable(), group.inside, depth + 1);
        else Wrong(entry.value.line, fmt::format("the group {} has no table Tools", Quoted(*name)));
    }
}

void ToolTree::NameAll()
{
    std::vector<Declared*> outerFirst;
    for (Declared& declared : declared_) outerFirst.push_back(&declared);
    std::stable_sort(outerFirst.begin(), outerFirst.end(),
                     [](Declared const* a, Declared const* b) { return a->depth < b->depth; });
    std::set<std::string> taken;
    for (Declared* declared : outerFirst) {
        if (declared->group) continue;
        std::string const& written = *declared->entry->key.AsText();
        declared->name = written;
        for (int n = 1; !taken.insert(declared->name).second; ++n)
            declared->name = fmt::format("{}_{}", written, n);
    }
}

void ToolTree::MakeOperator(Declared const& declared)
{
    ScriptVal const& given = declared.entry->value;
    ScriptTable const& table = *given.AsTable();
    std::string const& written = *declared.entry->key.AsText();
    Registry const* const found = FindClass(table.constructor);
    if (!found) {
        std::vector<std::string> known{"GroupOperator", "MacroOperator"};
        for (Registry const* registry : Operator::AllOperators()) known.push_back(registry->Id().Text());
        return Wrong(given.line, fmt::format("{}: there is no tool {}{}", written, Quoted(table.constructor),
                                             DidYouMean(table.constructor, known)));
    }
    Operator* const op = document_.AddOperator(*found, declared.name, given);
    op->line = given.line;
    declared.scope->members[written].op = op;
    byName_[declared.name] = {op, nullptr};
    tools_.push_back({op, &given, declared.scope});
}

void ToolTree::ReadGroup(Group& group, ScriptTable const& table)
{
    if (ScriptVal const* pass = table.Find("PassThrough"); pass && !(pass->AsBool() && !*pass->AsBool()))
        Wrong(pass->line, fmt::format("{}: a group cannot be passed through; its tools can", group.name));
    ReadInstances(group, table, "Inputs", "InstanceInput", group.inputs);
    ReadInstances(group, table, "Outputs", "InstanceOutput", group.outputs);
}

std::map<std::string, ShownByGroup, std::less<>> ToolTree::OutermostGroups() const
{
    std::map<std::string, ShownByGroup, std::less<>> shown;
    for (auto const& [name, member] : root_.members)
        if (member.group) shown[name] = {member.group->inputs, member.group->outputs};
    return shown;
}

template <class T>
void ToolTree::ReadInstances(Group& group, ScriptTable const& table, char const* field,
                             char const* constructor, std::map<std::string, T*>& found)
{
    ScriptVal const* const list = table.Find(field);
    if (!list) return;
    if (!list->AsTable()) return Wrong(list->line, fmt::format("{}: {} is a table", group.name, field));
    for (auto const& entry : list->AsTable()->entries) {
        std::string const* const name = entry.key.AsText();
        ScriptTable const* const instance = entry.value.AsTable();
        ScriptVal const* const op = instance ? instance->Find("SourceOp") : nullptr;
        ScriptVal const* const source = instance ? instance->Find("Source") : nullptr;
        if (!name || !instance || instance->constructor != constructor || !op || !op->AsText() || !source ||
            !source->AsText()) {
            Wrong(entry.value.line,
                  fmt::format("{}: what a group shows is written Name = {} {{ SourceOp = \"Tool\", "
                              "Source = \"{}\" }}",
                              group.name, constructor, std::is_same_v<T, Input> ? "Input" : "Output"));
            continue;
        }
        std::string const place = fmt::format("{}.{}", group.name, *name);
        auto const inner = group.inside.members.find(*op->AsText());
        if (inner == group.inside.members.end()) {
            Wrong(op->line,
                  fmt::format("{}: there is no tool {} in the group{}", place, Quoted(*op->AsText()),
                              DidYouMean(*op->AsText(), KeysOf(group.inside.members))));
            continue;
        }
        if (!inner->second.IsMade()) continue; // what is wrong with it is told already
        std::variant<T*, std::string> target;
        if constexpr (std::is_same_v<T, Input>) target = InputOf(inner->second, *source->AsText());
        else target = OutputOf(inner->second, *source->AsText());
        if (auto const* wrong = std::get_if<std::string>(&target)) {
            Wrong(source->line, fmt::format("{}: {}", place, *wrong));
            continue;
        }
        found[*name] = std::get<T*>(target);
        if constexpr (std::is_same_v<T, Input>)
            groupInputs_.push_back({found[*name], &entry.value, group.inside.outer});
    }
}

ToolTree::Member const* ToolTree::Find(Scope const& scope, std::string const& name) const
{
    for (Scope const* each = &scope; each; each = each->outer)
        if (auto const found = each->members.find(name); found != each->members.end()) return &found->second;
    auto const found = byName_.find(name);
    return found == byName_.end() ? nullptr : &found->second;
}

std::vector<std::string> ToolTree::NamesFrom(Scope const& scope) const
{
    std::vector<std::string> names;
    for (Scope const* each = &scope; each; each = each->outer)
        for (auto const& [name, member] : each->members) names.push_back(name);
    for (auto const& [name, op] : byName_) names.push_back(name);
    return names;
}

std::variant<Input*, std::string> ToolTree::InputOf(Member const& member, std::string const& id)
{
    if (member.group) return FindIn(member.group->inputs, id, "input", member.group->name);
    if (Input* const input = member.op->FindInput(id)) return input;
    return fmt::format("no input {} on {}{}", Quoted(id), Describe(*member.op),
                       DidYouMean(id, IdsOf(member.op->Inputs())));
}

std::variant<Output*, std::string> ToolTree::OutputOf(Member const& member,
                                                      std::optional<std::string> const& id)
{
    std::string const wanted = id.value_or("Output");
    if (member.group) {
        auto const& outputs = member.group->outputs;
        if (!id && !outputs.empty() && !outputs.contains(wanted)) return outputs.begin()->second;
        return FindIn(outputs, wanted, "output", member.group->name);
    }
    if (Output* const output = member.op->FindOutput(wanted)) return output;
    auto const& outputs = member.op->Outputs();
    if (!id && !outputs.empty()) return outputs.front().get();
    return fmt::format("no output {} on {}{}", Quoted(wanted), member.op->Name(),
                       DidYouMean(wanted, IdsOf(outputs)));
}

Readable ScopeNames::Member(std::string const& tool, std::string const& member) const
{
    ToolTree::Member const& found = *tree_.Find(scope_, tool);
    if (!found.IsMade()) return std::string();
    auto const input = ToolTree::InputOf(found, member);
    if (auto* const* target = std::get_if<Input*>(&input)) return *target;
    auto const output = ToolTree::OutputOf(found, member);
    if (auto* const* target = std::get_if<Output*>(&output)) return *target;
    std::vector<std::string> known;
    if (found.group) {
        known = KeysOf(found.group->inputs);
        for (auto const& [name, each] : found.group->outputs) known.push_back(name);
    } else {
        known = IdsOf(found.op->Inputs());
        for (auto const& each : found.op->Outputs()) known.push_back(each->Id().Text());
    }
    return fmt::format("no input or output {} on {}{}", Quoted(member), tool, DidYouMean(member, known));
}

} // namespace ombrelune
