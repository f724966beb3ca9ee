#include "host/image/BoxFilter.h"

#include <cmath>

namespace ombrelune {

BoxFilter::BoxFilter(BlurFilter filter, double radius, double passes)
{
    if (!(radius > 0.0)) return;
    auto const add = [this](int whole, double end, int times) {
        boxes_.insert(boxes_.end(), static_cast<std::size_t>(times), Box{whole, end});
    };
    if (filter == kBlurBox || filter == kBlurBartlett) {
        // Two boxes of half the support make a triangle.
        int const boxes = filter == kBlurBox ? 1 : 2;
        double const half = radius / boxes, whole = std::floor(half);
        add(static_cast<int>(whole), half - whole, boxes * static_cast<int>(std::lround(passes)));
    } else {
        // Three boxes, each with a third of the variance.
        double const variance = radius * radius / 4.0 * passes / 3.0;
        double const whole = std::floor((std::sqrt(12.0 * variance + 1.0) - 1.0) / 2.0);
        double const end = (2.0 * whole + 1.0) * (whole * (whole + 1.0) - 3.0 * variance) /
                           (6.0 * (variance - (whole + 1.0) * (whole + 1.0)));
        add(static_cast<int>(whole), end, 3);
    }
}

int BoxFilter::Reach() const
{
    int reach = 0;
    for (Box const& box : boxes_) reach += box.radius + 1;
    return reach;
}

double BoxFilter::Scale() const
{
    double sum = 1.0;
    for (Box const& box : boxes_) sum *= 2 * box.radius + 1 + 2.0 * box.end;
    return 1.0 / sum;
}

void BoxFilter::Run(Sum4* line, int count) const
{
    int left = count + 2 * Reach();
    for (Box const& box : boxes_) Run(box, line, left -= 2 * (box.radius + 1));
}

void BoxFilter::Run(Box const& box, Sum4* line, int count)
{
    // A running sum. In doubles what has entered it leaves it again without a trace that a float could show,
    // also after a highlight of thousands; and nothing needs converting, which is faster than floats.
    int const span = 2 * box.radius + 2;
    double const end = box.end;
    Sum4 sum;
    for (int i = 1; i < span; ++i) sum = sum + line[i];
    for (int i = 0; i < count; ++i) {
        Sum4 const last = line[i + span];
        line[i] = sum + end * (line[i] + last);
        sum = sum + (last - line[i + 1]);
    }
}

} // namespace ombrelune
