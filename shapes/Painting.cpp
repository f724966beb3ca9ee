#include <memory>

#include "shapes/KImageChannel.h"
#include "shapes/KShapeGroup.h"

// Shapes to pixels.

namespace ombrelune {

void KShapeGroup::Render(KImage* image, KShapeRenderData const& data)
{
    for (auto const& list : lists_) list->Render(image, data);
}

void KShapeList::Render(KImage* image, KShapeRenderData const& data)
{
    KStyle& style = styles.front();
    style.Init();
    KShapeEffectOutlineData stroke;
    stroke.pen = style.pen;
    stroke.pen.thickness *= 0.01F;
    // A channel for each layer: what overlaps is drawn in order and does not merge.
    for (KShape const* shape : Each<KShape>()) {
        if (style.brush.enabled && (data.forceFill || shape->IsClosed(false))) {
            KImageChannel channel(image, data.subsampling, nullptr, true);
            channel.SetStyleFill(&style.fill);
            channel.ShapeFill(shape, data.winding);
            channel.PutToImage(kCombineMerge, style.brush);
        }
        if (style.penChannel.enabled) {
            KImageChannel channel(image, data.subsampling, nullptr, true);
            channel.SetStyleFill(&style.pen);
            std::unique_ptr<KShape> const outline(shape->OutlineOf(stroke));
            channel.ShapeFill(outline.get(), -1);
            channel.PutToImage(kCombineMerge, style.penChannel);
        }
    }
}

} // namespace ombrelune
