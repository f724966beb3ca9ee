#include "host/flow/KeyFrames.h"

#include <algorithm>
#include <optional>

#include <fmt/format.h>

namespace ombrelune {

namespace {

struct Handle {
    double x, y;
};

/// A key as it was written, before missing handles are filled in.
struct Written {
    BezierCurve::Key key = {};
    std::optional<Handle> left = {}, right = {};
};

class Reader {
public:
    Reader(KeyFrames& read, std::string const& place, std::string const& file)
        : read_(read), place_(place), file_(file)
    {}

    void Read(ScriptVal const& table)
    {
        ScriptVal const* const frames = table.Find("KeyFrames");
        if (!frames || !frames->AsTable() || frames->AsTable()->entries.empty())
            return Wrong(frames ? frames->line : table.line, "KeyFrames = { [0] = { 1 } } gives a curve");
        for (auto const& entry : frames->AsTable()->entries) ReadKey(entry);
        if (!read_.problems.empty()) return;
        std::sort(written_.begin(), written_.end(), [](auto& a, auto& b) { return a.key.x < b.key.x; });
        FillHandles();
        for (Written const& each : written_) read_.curve.keys.push_back(each.key);
    }

private:
    void Wrong(int line, std::string const& text)
    {
        read_.problems.push_back({.file = file_, .line = line, .text = place_ + ": " + text});
    }

    void ReadKey(ScriptTable::Entry const& entry)
    {
        double const* const time = entry.key.AsNumber();
        if (!time) return Wrong(entry.value.line, "a key is written [time] = { value }");
        Written written;
        written.key.x = *time;
        ScriptTable const* const table = entry.value.AsTable();
        ScriptVal const* const value = table ? table->At(0) : &entry.value;
        if (!value || !value->AsNumber())
            return Wrong(entry.value.line, fmt::format("the key at {} has no number", *time));
        written.key.y = *value->AsNumber();
        if (table) {
            ReadHandle(*table, "LH", written.left);
            ReadHandle(*table, "RH", written.right);
            if (ScriptVal const* flags = table->Find("Flags")) ReadFlags(*flags, written.key);
        }
        written_.push_back(written);
    }

    void ReadHandle(ScriptTable const& table, char const* name, std::optional<Handle>& handle)
    {
        ScriptVal const* const given = table.Find(name);
        if (!given) return;
        ScriptTable const* const pair = given->AsTable();
        ScriptVal const* const x = pair ? pair->At(0) : nullptr;
        ScriptVal const* const y = pair ? pair->At(1) : nullptr;
        if (!x || !y || !x->AsNumber() || !y->AsNumber())
            return Wrong(given->line, fmt::format("{} is a table of a time and a value", name));
        handle = {*x->AsNumber(), *y->AsNumber()};
    }

    void ReadFlags(ScriptVal const& flags, BezierCurve::Key& key)
    {
        if (!flags.AsTable()) return Wrong(flags.line, "Flags is a table such as { Linear = true }");
        for (auto const& entry : flags.AsTable()->entries) {
            std::string const* const name = entry.key.AsText();
            bool const isSet = !entry.value.AsBool() || *entry.value.AsBool();
            if (name && *name == "Linear") key.linear = isSet;
            else if (name && isSet)
                read_.warnings.push_back({.file = file_,
                                          .line = entry.value.line,
                                          .text = fmt::format("{}: the flag {} of the key at {} is not known "
                                                              "and changes nothing; there is 'Linear'",
                                                              place_, Quoted(*name), key.x)});
        }
    }

    void FillHandles()
    {
        for (std::size_t i = 0; i < written_.size(); ++i) {
            Written& written = written_[i];
            BezierCurve::Key& key = written.key;
            auto const towards = [&](std::size_t other) -> Handle {
                if (other >= written_.size()) return {key.x, key.y};
                BezierCurve::Key const& to = written_[other].key;
                return {key.x + (to.x - key.x) / 3.0, key.y + (to.y - key.y) / 3.0};
            };
            Handle const before = written.left.value_or(towards(i - 1));
            Handle const after = written.right.value_or(towards(i + 1));
            key.leftX = before.x, key.leftY = before.y;
            key.rightX = after.x, key.rightY = after.y;
        }
    }

    KeyFrames& read_;
    std::string const& place_;
    std::string const& file_;
    std::vector<Written> written_;
};

} // namespace

KeyFrames ReadKeyFrames(ScriptVal const& table, std::string const& place, std::string const& file)
{
    KeyFrames read;
    Reader(read, place, file).Read(table);
    return read;
}

} // namespace ombrelune
