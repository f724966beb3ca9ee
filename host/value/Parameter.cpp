#include "host/value/Parameter.h"

#include <algorithm>
#include <atomic>
#include <cmath>

namespace ombrelune {

namespace {

template <class... Numbers> std::string BytesOf(Numbers... numbers)
{
    std::string bytes;
    (bytes.append(reinterpret_cast<char const*>(&numbers), sizeof numbers), ...);
    return bytes;
}

} // namespace

std::uint64_t Parameter::NextSerial()
{
    static std::atomic<std::uint64_t> next{1};
    return next.fetch_add(1, std::memory_order_relaxed);
}

std::string Parameter::Identity() const { return BytesOf(serial_); }
std::string Number::Identity() const { return BytesOf(value); }
std::string Point::Identity() const { return BytesOf(x, y, z); }
std::string Text::Identity() const { return value; }
std::string IdParameter::Identity() const { return value.Text(); }

std::string LookUpTable::Identity() const
{
    std::string bytes;
    for (BezierCurve::Key const& key : curve.keys)
        bytes += BytesOf(key.x, key.y, key.leftX, key.leftY, key.rightX, key.rightY, key.linear);
    return bytes;
}

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
