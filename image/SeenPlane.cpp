#include "image/SeenPlane.h"

#include <algorithm>
#include <cmath>

namespace ombrelune {

PictureFit PictureFit::ToWidth(KImage const& picture)
{
    double const w = picture.Width();
    return {w, w * picture.PixelAspect(), w / 2.0, picture.Height() / 2.0};
}

PictureFit PictureFit::ToSquare(KImage const& picture, bool upperHalf)
{
    double const w = picture.Width() / 2.0, h = picture.Height() / 2.0;
    if (upperHalf) return {w, h / 2.0, w, h * 1.5};
    return {w, h, w, h};
}

SeenPlane::SeenPlane(KImage& picture, PictureFit const& fit, PlaneMatrix const& toFrame,
                     SceneFrame const& frame, bool clipBehind)
    : picture_(&picture), fit_(fit), frame_(frame), clipBehind_(clipBehind)
{
    auto const& m = toFrame;
    PlaneMatrix const adjoint{
        m[4] * m[8] - m[5] * m[7], m[2] * m[7] - m[1] * m[8], m[1] * m[5] - m[2] * m[4],
        m[5] * m[6] - m[3] * m[8], m[0] * m[8] - m[2] * m[6], m[2] * m[3] - m[0] * m[5],
        m[3] * m[7] - m[4] * m[6], m[1] * m[6] - m[0] * m[7], m[0] * m[4] - m[1] * m[3]};
    double const determinant = m[0] * adjoint[0] + m[1] * adjoint[3] + m[2] * adjoint[6];
    isSeen_ = std::isfinite(determinant) && std::abs(determinant) > 1e-12;
    if (!isSeen_) return;
    for (std::size_t i = 0; i < 9; ++i) toPlane_[i] = adjoint[i] / determinant;
    isSeen_ = std::all_of(toPlane_.begin(), toPlane_.end(), [](double v) { return std::isfinite(v); });
    isSame_ = toPlane_ == PlaneMatrix{1, 0, 0, 0, 1, 0, 0, 0, 1} && picture.Width() == frame.width &&
              picture.Height() == frame.height &&
              picture.PixelAspect() == static_cast<float>(frame.pixelAspect);
    if (isSeen_ && !isSame_) picture.PrepareAreaSampling();
}

FltPixel SeenPlane::At(int x, int y, EdgeModes edges) const
{
    FltPixel pixel;
    for (float& word : pixel.word) word = 0.0F;
    if (isSame_) picture_->GetPixel(x, y, pixel);
    if (!isSeen_ || isSame_) return pixel;

    float px[4], py[4];
    int n = 0;
    for (double const cornerX : {x + 0.0, x + 1.0}) {
        for (double const cornerY : {y + 0.0, y + 1.0}) {
            double const s = cornerX / frame_.width - 0.5;
            double const t = (cornerY - frame_.height / 2.0) / (frame_.width * frame_.pixelAspect);
            auto const row = [&](std::size_t i) {
                return toPlane_[i] * s + toPlane_[i + 1] * t + toPlane_[i + 2];
            };
            // The reciprocal of the distance; pixels that reach over the horizon show nothing.
            double const nearness = row(6);
            if (!(clipBehind_ ? nearness > 0.0 : nearness != 0.0)) return pixel;
            px[n] = static_cast<float>(row(0) / nearness * fit_.scaleX + fit_.originX - 0.5);
            py[n++] = static_cast<float>(row(3) / nearness * fit_.scaleY + fit_.originY - 0.5);
        }
    }
    picture_->GetSampleArea(px[0], py[0], px[1], py[1], px[2], py[2], px[3], py[3], pixel, edges);
    return pixel;
}

} // namespace ombrelune
