#include "host/value/Parameter.h"

#include <algorithm>
#include <cmath>

namespace ombrelune {

std::vector<std::uint16_t> LookUpTable::MakeTable(TagList const& tags) const
{
    double const low = tags.GetFloat(Lut_Low, 0.0), high = tags.GetFloat(Lut_High, 1.0);
    std::vector<std::uint16_t> table(
        static_cast<std::size_t>(std::max<std::int64_t>(tags.GetInt(Lut_Count), 0)));
    double const step = table.size() > 1 ? (high - low) / static_cast<double>(table.size() - 1) : 0.0;
    for (std::size_t i = 0; i < table.size(); ++i) {
        double const value = curve.Evaluate(low + step * static_cast<double>(i));
        table[i] = static_cast<std::uint16_t>(std::lround(std::clamp(value, 0.0, 1.0) * 65535.0));
    }
    return table;
}

} // namespace ombrelune
