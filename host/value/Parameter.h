#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/value/BezierCurve.h"
#include "host/value/FuID.h"
#include "host/value/RefCounted.h"
#include "host/value/TagList.h"

namespace ombrelune {

inline FuID const CLSID_DataType_Number{"Number"};
inline FuID const CLSID_DataType_Point{"Point"};
inline FuID const CLSID_DataType_Text{"Text"};
inline FuID const CLSID_DataType_Image{"Image"};
inline FuID const CLSID_DataType_Mask{"Mask"};
inline FuID const CLSID_DataType_LookUpTable{"LookUpTable"};
inline FuID const CLSID_DataType_FuID{"FuID"};

template <class Char> using FuStringT = std::basic_string<Char>;

/// A value that travels from an output to an input. Shared between requests, so it never changes once set.
class Parameter : public RefCounted {
public:
    virtual FuID DataType() const = 0;
    /// Bytes that are the same for equal values of a type. Unless overridden they are those of a number that
    /// no other value of the process has, so that such a value equals only itself.
    virtual std::string Identity() const;
    /// Bytes of memory that it keeps, where that is more than small change.
    virtual std::size_t MemoryBytes() const { return 0; }

private:
    static std::uint64_t NextSerial();
    std::uint64_t const serial_ = NextSerial();
};

class Number : public Parameter {
public:
    explicit Number(double number) : value(number) {}
    FuID DataType() const override { return CLSID_DataType_Number; }
    std::string Identity() const override;

    double const value;
};

class Point : public Parameter {
public:
    Point(double px, double py, double pz = 0.0) : x(px), y(py), z(pz) {}
    FuID DataType() const override { return CLSID_DataType_Point; }
    std::string Identity() const override;

    double const x, y, z;
};

class Text : public Parameter {
public:
    explicit Text(FuStringT<char> string) : value(std::move(string)) {}
    FuID DataType() const override { return CLSID_DataType_Text; }
    std::string Identity() const override;

    FuStringT<char> const value;
};

class IdParameter : public Parameter {
public:
    explicit IdParameter(FuID id) : value(id) {}
    FuID DataType() const override { return CLSID_DataType_FuID; }
    std::string Identity() const override;

    FuID const value;
};

/// Attributes of LookUpTable::MakeTable.
inline constexpr std::uint32_t Lut_EntryBytes = 0x10020003; ///< size of an entry; 2 is the only one
inline constexpr std::uint32_t Lut_Low = 0x20020001;        ///< x of the first entry
inline constexpr std::uint32_t Lut_High = 0x20020002;       ///< x of the last entry
inline constexpr std::uint32_t Lut_Count = 0x10020000;

/// A curve that can be asked for a table of 16-bit values.
class LookUpTable : public Parameter {
public:
    explicit LookUpTable(BezierCurve bezier) : curve(std::move(bezier)) {}
    FuID DataType() const override { return CLSID_DataType_LookUpTable; }
    std::string Identity() const override;

    /// Samples the curve at Lut_Count even places from Lut_Low to Lut_High; values 0 to 1 become 0 to 65535,
    /// rounded, and are limited to that.
    std::vector<std::uint16_t> MakeTable(TagList const& tags) const;

    BezierCurve const curve;
};

} // namespace ombrelune
