#pragma once

namespace ombrelune {

class KImage;

/// What the bridge tells effect and engine about one render. A plain value, copied byte for byte.
struct KProcessImageData {
    float time = 0.0F; ///< of the request, in frames
    bool quick = false;
    int depth = 1; ///< 1 integer pixels, 2 float pixels
    int colorSpace = 0;
    bool channels[4] = {true, true, true, true}; ///< red, green, blue, alpha selected
    bool preDivide = false;
    int underSample = 1;
    int superSample = 1;            ///< samples per axis: 1, 2, 3, 4, 5, 8 or 16
    float superSampleFilter = 1.0F; ///< width of the sample grid in pixels
    int filtering = 1;              ///< 0 none, 1 pixel, 2 area
    int edges = 0;                  ///< 0 black, 1 wrap, 2 duplicate
    float blur = 0.0F;              ///< radius of a final blur, in 1 / 720 of the width
    bool multiThreading = true;
    bool trails = false;
    float fade = 0.9F; // the input stands at 0.95; this is for callers that fill the data themselves
    bool bottomUp = true;
    KImage* warpMask = nullptr; ///< owned by the bridge

    bool AllChannels() const { return channels[0] && channels[1] && channels[2] && channels[3]; }
    bool AnyChannel() const { return channels[0] || channels[1] || channels[2] || channels[3]; }
};

} // namespace ombrelune
