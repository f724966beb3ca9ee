#include <climits>
#include <memory>
#include <type_traits>
#include <vector>

#include <potracelib.h>

#include "image/KImage.h"
#include "image/RowLoop.h"
#include "shapes/KShapeList.h"

namespace ombrelune {

namespace {

constexpr int kWordBits = CHAR_BIT * sizeof(potrace_word);

/// Bitmap of the pixels above the threshold, row 0 at the bottom as in the image.
class Bitmap {
public:
    Bitmap(KImage const& image, int channel, float threshold)
        : wordsPerLine_((image.Width() + kWordBits - 1) / kWordBits),
          words_(static_cast<std::size_t>(wordsPerLine_) * static_cast<std::size_t>(image.Height())),
          bitmap_{image.Width(), image.Height(), wordsPerLine_, words_.data()}
    {
        if (image.IsFloat()) Fill<FltPixel>(image, channel, threshold);
        else Fill<Pixel>(image, channel, threshold);
    }
    potrace_bitmap_t const* Get() const { return &bitmap_; }

private:
    /// With one loop for each channel, or the choice among them would be made for each pixel.
    template <class Record> void Fill(KImage const& image, int channel, float threshold)
    {
        auto const fill = [&](auto fixed) {
            ParallelFor(image.Height(), [&](int y) {
                potrace_word* const line = Line(y);
                auto const row = [&](int width, auto in) {
                    potrace_word word = 0; // leftmost pixel highest
                    for (int x = 0; x < width; ++x) {
                        Record pixel;
                        pixel >>= in;
                        word = word << 1 | (PixelGetChannel(pixel, fixed) > threshold ? 1U : 0U);
                        if ((x + 1) % kWordBits == 0) line[x / kWordBits] = word;
                    }
                    if (int const rest = width % kWordBits)
                        line[width / kWordBits] = word << (kWordBits - rest);
                };
                Image* const picture = image.FImage();
                if (picture->IsPlain() && picture->Depth() == kDepthInt8)
                    row(picture->Width(), PlainPixPtr<std::uint8_t>(picture, 0, y));
                else VisitRow<Record>(y, row, picture);
            });
        };
        switch (channel) {
        case 0: return fill(std::integral_constant<int, 0>());
        case 1: return fill(std::integral_constant<int, 1>());
        case 2: return fill(std::integral_constant<int, 2>());
        case 3: return fill(std::integral_constant<int, 3>());
        default: return fill(std::integral_constant<int, 4>());
        }
    }
    potrace_word* Line(int y)
    {
        return words_.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(wordsPerLine_);
    }

    int wordsPerLine_;
    std::vector<potrace_word> words_;
    potrace_bitmap_t bitmap_;
};

void AddCurve(KShape& shape, potrace_curve_t const& curve, double width)
{
    auto const place = [&](potrace_dpoint_t const& p) {
        return KVector2(static_cast<float>(p.x / width), static_cast<float>(p.y / width));
    };
    if (curve.n < 1) return;
    shape.MoveTo(place(curve.c[curve.n - 1][2]));
    for (int i = 0; i < curve.n; ++i) {
        auto const& c = curve.c[i];
        if (curve.tag[i] == POTRACE_CURVETO) {
            shape.BezierTo(place(c[0]), place(c[1]), place(c[2]), false);
        } else {
            shape.LineTo(place(c[1]));
            shape.LineTo(place(c[2]));
        }
    }
    shape.Close();
}

} // namespace

void KShapeList::Trace(KImage const* image, int channel, float threshold, bool flatten, int steps)
{
    if (!image) return;
    std::unique_ptr<potrace_param_t, decltype(&potrace_param_free)> const settings(potrace_param_default(),
                                                                                   potrace_param_free);
    if (!settings) return;
    settings->turdsize = 0; // single pixels are traced too
    Bitmap const bitmap(*image, channel, threshold);
    std::unique_ptr<potrace_state_t, decltype(&potrace_state_free)> const traced(
        potrace_trace(settings.get(), bitmap.Get()), potrace_state_free);
    if (!traced || traced->status != POTRACE_STATUS_OK) return;

    auto* shape = new KShape;
    for (potrace_path_t const* path = traced->plist; path; path = path->next)
        AddCurve(*shape, path->curve, image->Width());
    AddLast(shape);
    if (!flatten) return;
    std::unique_ptr<KShapeList> const flat(FlattenOf(steps));
    Clear();
    while (KListItem* item = flat->RemoveFirst()) AddLast(item);
}

} // namespace ombrelune
