#pragma once

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include <OpenImageIO/imageio.h>

#include "host/image/Image.h"
#include "host/io/PictureFormat.h"

namespace ombrelune {

/// What becomes of a file's channels and rows.
struct ReadPlan {
    std::array<int, 4> colour = {-1, -1, -1, -1}; // file channels of blue, green, red, alpha; -1 for none
    struct Aux {
        int hostChannel, fileChannel;
    };
    std::vector<Aux> aux; // each host channel once
    bool HasAux(int hostChannel) const
    {
        return std::any_of(aux.begin(), aux.end(),
                           [=](Aux const& a) { return a.hostChannel == hostChannel; });
    }
    int firstChannel = 0, endChannel = 0; // the part of the file's channels that is read
    int depth = kDepthInt16;
    bool isStraight = false;
    // A camera's turn: exchange of columns and rows, then mirrors of the result.
    bool transpose = false, mirrorX = false, mirrorY = false;
    int width = 0, height = 0;         // of the file's full frame
    int columnShift = 0, rowShift = 0; // from the file's pixels to its full frame, from top left
};

ReadPlan MakeReadPlan(OIIO::ImageSpec const& spec, PictureFormat format);

/// Why a file cannot become a picture; empty when it can.
std::string Refusal(OIIO::ImageSpec const& spec, ReadPlan const& plan, PictureFormat format);

} // namespace ombrelune
