#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/value/Parameter.h"

namespace ombrelune {

/// Table of 16-bit values made of a curve. An empty one answers like the identity over 65536 entries.
class KLookUpTable {
public:
    KLookUpTable() = default;
    /// Samples the curve at 65536 places from 0 to 1; null gives an empty table.
    explicit KLookUpTable(LookUpTable const* curve);

    /// New table with the same entries, owned by the caller.
    KLookUpTable* CopyOf() const { return new KLookUpTable(*this); }

    /// Makes room for entries, which start as 0; below 1 empties the table.
    void SetCount(int count) { table_.assign(static_cast<std::size_t>(count > 0 ? count : 0), 0); }
    /// 0 for an empty table.
    int GetCount() const { return static_cast<int>(table_.size()); }
    /// The entries, null for an empty table.
    std::uint16_t* Entries() { return table_.empty() ? nullptr : table_.data(); }

    /// Entry i, 0 to 65535; i must be one of the table.
    float GetValue(int i) const
    {
        return table_.empty() ? static_cast<float>(i) : table_[static_cast<std::size_t>(i)];
    }
    /// Entry i over the number of entries.
    float GetValueNormalised(int i) const { return GetValue(i) / static_cast<float>(UsedCount()); }
    /// The normalised entry at a place of 0 to 1, limited to that; no interpolation.
    float GetValueFloat(float f) const;

private:
    int UsedCount() const { return table_.empty() ? kIdentityCount : GetCount(); }

    static constexpr int kIdentityCount = 65536;
    std::vector<std::uint16_t> table_;
};

} // namespace ombrelune
