#include "host/value/ScriptVal.h"

namespace ombrelune {

ScriptTable const* ScriptVal::AsTable() const
{
    auto const* table = std::get_if<std::shared_ptr<ScriptTable>>(&value_);
    return table ? table->get() : nullptr;
}

ScriptTable* ScriptVal::AsTable()
{
    auto* table = std::get_if<std::shared_ptr<ScriptTable>>(&value_);
    return table ? table->get() : nullptr;
}

ScriptVal const* ScriptVal::Find(std::string_view name) const
{
    auto const* table = AsTable();
    return table ? table->Find(name) : nullptr;
}

char const* ScriptVal::KindName() const
{
    static constexpr char const* names[] = {"nothing", "a truth value", "a number", "a text", "a table"};
    return names[value_.index()];
}

ScriptVal const* ScriptTable::Find(std::string_view name) const
{
    for (Entry const& entry : entries)
        if (auto const* text = entry.key.AsText(); text && *text == name) return &entry.value;
    return nullptr;
}

ScriptVal const* ScriptTable::At(std::size_t index) const
{
    for (Entry const& entry : entries)
        if (entry.key.IsNil() && index-- == 0) return &entry.value;
    return nullptr;
}

void ScriptTable::Set(std::string name, ScriptVal value)
{
    for (Entry& entry : entries) {
        if (auto const* text = entry.key.AsText(); text && *text == name) {
            entry.value = std::move(value);
            return;
        }
    }
    entries.push_back({.key = ScriptVal(std::move(name)), .value = std::move(value)});
}

} // namespace ombrelune
