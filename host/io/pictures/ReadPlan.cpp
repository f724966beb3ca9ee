#include "host/io/pictures/ReadPlan.h"

#include <OpenImageIO/strutil.h>
#include <fmt/format.h>

#include "host/image/StoredType.h"
#include "host/io/pictures/Layout.h"
#include "host/value/MachineMemory.h"
#include "host/value/Problem.h"

namespace ombrelune {

namespace {

using OIIO::TypeDesc;

int DepthOf(TypeDesc const& type)
{
    switch (type.basetype) {
    case TypeDesc::UINT8:
    case TypeDesc::INT8: return kDepthInt8;
    case TypeDesc::UINT16:
    case TypeDesc::INT16: return kDepthInt16;
    case TypeDesc::HALF: return kDepthHalf;
    default: return kDepthFloat;
    }
}

void PlanByName(OIIO::ImageSpec const& spec, ReadPlan& plan)
{
    int grey = -1;
    for (int c = 0; c < spec.nchannels; ++c) {
        std::string const& name = spec.channelnames[c];
        auto const is = [&](char const* other) { return OIIO::Strutil::iequals(name, other); };
        if (is("B")) plan.colour[kChannelBlue] = c;
        if (is("G")) plan.colour[kChannelGreen] = c;
        if (is("R")) plan.colour[kChannelRed] = c;
        if (is("A")) plan.colour[kChannelAlpha] = c;
        if (is("Y")) grey = c;
        for (AuxName const& aux : kAuxNames)
            if ((is(aux.name) || is(aux.otherName)) && !plan.HasAux(aux.channel))
                plan.aux.push_back({aux.channel, c});
    }
    if (grey >= 0 && *std::max_element(plan.colour.begin(), plan.colour.begin() + 3) < 0)
        std::fill_n(plan.colour.begin(), 3, grey);
}

void PlanByPosition(OIIO::ImageSpec const& spec, ReadPlan& plan)
{
    if (spec.nchannels >= 3) plan.colour = {2, 1, 0, -1};
    else plan.colour = {0, 0, 0, -1};
    if (spec.alpha_channel > 0 && spec.alpha_channel < spec.nchannels)
        plan.colour[kChannelAlpha] = spec.alpha_channel;
}

/// Distance from the frame to the data, limited to one at which they cannot meet.
int Shift(int data, int frame)
{
    constexpr std::int64_t limit = 2 * Image::kMaxSide;
    return static_cast<int>(std::clamp(std::int64_t{data} - frame, -limit, limit));
}

} // namespace

ReadPlan MakeReadPlan(OIIO::ImageSpec const& spec, PictureFormat format)
{
    ReadPlan plan;
    plan.width = spec.width;
    plan.height = spec.height;
    if (format == PictureFormat::kExr) {
        PlanByName(spec, plan);
        plan.width = spec.full_width;
        plan.height = spec.full_height;
        plan.columnShift = Shift(spec.x, spec.full_x);
        plan.rowShift = Shift(spec.y, spec.full_y);
    } else {
        PlanByPosition(spec, plan);
        plan.isStraight = plan.colour[kChannelAlpha] >= 0 &&
                          (format == PictureFormat::kPng || spec.get_int_attribute("oiio:UnassociatedAlpha"));
        // Orientations 2 to 8 of TIFF and Exif.
        int const turn = spec.get_int_attribute("Orientation", 1);
        plan.transpose = turn >= 5 && turn <= 8;
        plan.mirrorX = turn == 2 || turn == 3 || turn == 6 || turn == 7;
        plan.mirrorY = turn == 3 || turn == 4 || turn == 7 || turn == 8;
    }

    std::vector<int> wanted;
    int colourDepth = 0;
    for (int channel : plan.colour) {
        if (channel < 0) continue;
        wanted.push_back(channel);
        colourDepth = std::max(colourDepth, DepthOf(spec.channelformat(channel)));
    }
    for (ReadPlan::Aux const& aux : plan.aux) wanted.push_back(aux.fileChannel);
    if (wanted.empty()) return plan;
    plan.depth = colourDepth ? colourDepth : +kDepthFloat;
    auto const [low, high] = std::minmax_element(wanted.begin(), wanted.end());
    plan.firstChannel = *low;
    plan.endChannel = *high + 1;
    return plan;
}

std::string Refusal(OIIO::ImageSpec const& spec, ReadPlan const& plan, PictureFormat format)
{
    if (spec.deep) return "is a deep picture; flatten it first";
    int const dpxBits = format == PictureFormat::kDpx ? spec.get_int_attribute("oiio:BitsPerSample") : 8;
    // The library reads rows of no bytes, of which it has as many as anyone wants.
    if (dpxBits < 1 || dpxBits > 64)
        return fmt::format("has {} bits a sample; a DPX file has 1 to 64", dpxBits);
    // Three samples share a word; the library reads garbage where the last word of a row is not full.
    if (dpxBits == 10 && std::int64_t{spec.width} * spec.nchannels % 3 != 0)
        return fmt::format(
            "has 10 bits and rows of {} samples, which cannot be read right; save it with 16 bits",
            std::int64_t{spec.width} * spec.nchannels);
    if (plan.endChannel == 0)
        return fmt::format("has no channel R, G, B, A, Y or Z; it has {}",
                           Quoted(OIIO::Strutil::join(spec.channelnames, ", ")));
    int const widest = std::max({plan.width, plan.height, spec.width, spec.height});
    int const least = std::min({plan.width, plan.height, spec.width, spec.height});
    if (least < 1 || widest > Image::kMaxSide)
        return fmt::format("is {} x {} pixels; a side has 1 to {}", plan.width, plan.height, Image::kMaxSide);
    auto const pixelBytes =
        WithStoredType(plan.depth, []<class T>(std::type_identity<T>) { return 4 * sizeof(T); }) +
        plan.aux.size() * sizeof(float);
    double const bytes = static_cast<double>(plan.width) * plan.height * static_cast<double>(pixelBytes);
    constexpr double kGiB = 1 << 30;
    if (double const limit = static_cast<double>(MachineMemory()) / 2.0; bytes > limit)
        return fmt::format(
            "is {} x {} pixels and needs {:.1f} GiB, more than half of the memory ({:.1f} GiB)", plan.width,
            plan.height, bytes / kGiB, limit / kGiB);
    return {};
}

} // namespace ombrelune
