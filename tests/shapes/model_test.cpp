#include <gtest/gtest.h>

#include "framework/Registration.h"
#include "host/graph/FusionDoc.h"
#include "host/render/Renderer.h"
#include "shapes/KShapeParameter.h"
#include "tests/shapes/shape_helpers.h"

namespace ombrelune::test {
namespace {

TEST(Shape, CountsItsPoints)
{
    Shape const shape = Path("M0,0 L1,0 Q2,0 2,1 C2,2 1,2 0,2 Z");
    EXPECT_EQ(shape->GetCount(), 7);
    EXPECT_FALSE(shape->IsFlat());
    EXPECT_EQ(TextOf(*shape), "M0,0 L1,0 Q2,0 Q2,1 C2,2 C1,2 C0,2 Z");
    Shape const flat = Path(kSquare);
    EXPECT_TRUE(flat->IsFlat());
    flat->TakePoints(*shape);
    EXPECT_EQ(flat->GetCount(), 11);
    EXPECT_FALSE(flat->IsFlat());
    EXPECT_EQ(shape->GetCount(), 0);
    EXPECT_TRUE(shape->IsFlat());
    KShape empty;
    empty.Close();
    EXPECT_EQ(empty.GetCount(), 0);
}

TEST(Shape, IsClosedWhenAllSubpathsAre)
{
    struct {
        char const* path;
        bool last, all;
    } const cases[] = {
        {"", false, false},
        {kSquare, true, true},
        {kCorner, false, false},
        {"M0,0 L1,0 M2,0 L3,0 L3,1 Z", true, false},
        {"M2,0 L3,0 L3,1 Z M0,0 L1,0", false, false},
        {"M2,0 L3,0 L3,1 Z M0,0 L1,0 L1,1 Z", true, true},
    };
    for (auto const& c : cases) {
        EXPECT_EQ(Path(c.path)->IsClosed(true), c.last) << c.path;
        EXPECT_EQ(Path(c.path)->IsClosed(false), c.all) << c.path;
    }
}

TEST(Shape, ReversedClosedSubpathsStartAtTheirOldEnds)
{
    KShape shape;
    Shape const two = Path("M0,0 L1,0 L1,1 Z M5,5 L6,5 L6,6 Z");
    for (KShapePoint* p = two->GetFirstPoint(); p; p = p->next) p->winding = 3;
    shape.AddShape(two.get(), true, kWindingKeep);
    EXPECT_EQ(TextOf(shape), "M6,6 L6,5 L5,5 Z M1,1 L1,0 L0,0 Z");
    EXPECT_EQ(shape.GetFirstPoint()->winding, 3);

    KShape curve;
    curve.AddShape(Path("M0,0 C0,1 1,1 1,0 Z").get(), true, 1);
    EXPECT_EQ(TextOf(curve.FlattenOf(2)), "M1,0 L0.5,0.75 L0,0 Z");
    EXPECT_EQ(curve.GetFirstPoint()->winding, 1);

    curve.AddShape(&curve, false, kWindingKeep);
    EXPECT_EQ(curve.GetCount(), 8) << "a shape can be appended to itself";
    curve.AddShape(nullptr, true, kWindingKeep);
    EXPECT_EQ(curve.GetCount(), 8);
}

TEST(Shape, BoundsAndCentre)
{
    Shape const shape = Path("M0,0 C0,4 1,1 2,0");
    KVector2 min(9, 9), max(9, 9);
    KShape().Boundary(min, max);
    EXPECT_EQ(min, KVector2(9, 9));
    shape->Boundary(min, max);
    EXPECT_EQ(min, KVector2(0, 0));
    EXPECT_EQ(max, KVector2(2, 4)) << "control points count";
    shape->Center({0.0F, 0.0F});
    EXPECT_EQ(TextOf(*shape), "M-1,-2 C-1,2 C0,-1 C1,-2");
}

TEST(Shape, LengthsCountTheClosingSideOnlyInArrays)
{
    Shape const square = Path(kSquare);
    EXPECT_EQ(square->Length(), 3.0F);
    EXPECT_EQ(First(*ArraysOf(*square))->Length(), 4.0F);
    EXPECT_EQ(Path("M0,0 C0,1 1,1 1,0 L3,0")->Length(), 2.0F) << "curves do not count";
}

TEST(Shape, Presets)
{
    struct {
        ShapePresetType type;
        int steps;
        float angle;
        char const* path;
    } const cases[] = {
        {kPresetRectangle, 0, 0, "M-2,-0.5 L2,-0.5 L2,0.5 L-2,0.5 Z"},
        {kPresetPolygon, 4, 0, "M2,0 L0,0.5 L-2,0 L0,-0.5 Z"},
        {kPresetPolygonToo, 2, 0, "M2,0 L-2,0"},
        {kPresetPolygon, -5, 0, ""},
        {kPresetStar, 2, 0, "M2,0 L0,0.5 L-2,0 L0,-0.5 Z"},
        {kPresetCross, 0, 0,
         "M0.5,2 L-0.5,2 L-0.5,0.5 L-2,0.5 L-2,-0.5 L-0.5,-0.5 L-0.5,-2 L0.5,-2 L0.5,-0.5 L2,-0.5 L2,0.5 "
         "L0.5,0.5 Z"},
    };
    for (auto const& c : cases) {
        KShape shape;
        shape.AddShape(c.type, {4, 1}, c.steps, c.angle);
        EXPECT_EQ(TextOf(shape), c.path);
    }
}

// Flat subpaths.

TEST(ShapeArray, SubpathsWithoutRepeatedPoints)
{
    auto const arrays = ArraysOf(*Path("M0,0 L0,0 L1,0 L1,0 L1,1 L0,0 Z M5,5 L6,5"));
    ASSERT_EQ(arrays->Count(), 2);
    KShapeArray const* closed = First(*arrays);
    EXPECT_TRUE(closed->IsClosed());
    EXPECT_EQ(closed->points, (std::vector<KVector2>{{0, 0}, {1, 0}, {1, 1}}));
    auto const* open = static_cast<KShapeArray const*>(arrays->Last());
    EXPECT_FALSE(open->IsClosed());
    EXPECT_EQ(open->GetSegmentCount(), 1);

    EXPECT_EQ(ArraysOf(*Path("M0,0 L1,0 M3,3 L3,3 Z M5,5 L6,5"))->Count(), 1)
        << "a collapsed subpath ends it";
    EXPECT_EQ(ArraysOf(*Path("L1,1 L2,2 M3,3 L4,4"))->Count(), 2)
        << "the first point starts, whatever its type";
    EXPECT_EQ(ArraysOf(*Path(""))->Count(), 0);
    EXPECT_EQ(KShapeArrayList(nullptr).Count(), 0);
}

TEST(ShapeArray, OpenEndsAreMirrored)
{
    auto const open = ArraysOf(*Path("M0,0 L1,0 L1,2"));
    EXPECT_EQ(First(*open)->GetVectorNext(2), KVector2(1, 4));
    EXPECT_EQ(First(*open)->GetVectorPrev(0), KVector2(-1, 0));
    EXPECT_EQ(First(*open)->GetVectorNext(0), KVector2(1, 0));
    EXPECT_EQ(First(*open)->IndexNext(2), 0) << "indices wrap all the same";
    auto const closed = ArraysOf(*Path("M0,0 L1,0 L1,2 Z"));
    EXPECT_EQ(First(*closed)->GetVectorNext(2), KVector2(0, 0));
    EXPECT_EQ(First(*closed)->GetVectorPrev(0), KVector2(1, 2));
    KShapeArray one(1);
    EXPECT_EQ(one.GetVectorNext(0), KVector2(0, 0));
}

TEST(ShapeArray, InsideIsAnOddNumberOfCrossings)
{
    Shape const shape = Path("M0,0 L4,0 L4,4 L2,1 L0,4 Z"); // notched from above
    auto const inside = [&](float x, float y) { return shape->Inside({x, y}); };
    EXPECT_TRUE(inside(2, 0.5F));
    EXPECT_FALSE(inside(2, 2)) << "in the notch, below no side";
    EXPECT_TRUE(inside(0.5F, 3));
    EXPECT_FALSE(inside(2, -1)) << "below: two crossings, one at a corner where two sides meet";
    EXPECT_TRUE(inside(0, 1)) << "left ends belong to a side";
    EXPECT_FALSE(inside(4, 1)) << "right ends do not";
    EXPECT_TRUE(Path("M0,0 C0,2 2,2 2,0 Z")->Inside({1.01F, 1.4F})) << "the curve reaches 1.5";
    EXPECT_FALSE(Path("M0,0 C0,2 2,2 2,0 Z")->Inside({1.01F, 1.6F}));
    EXPECT_TRUE(Path("M0,0 L9,0 L9,9 L0,9 Z M3,3 L6,3 L6,6 L3,6 Z")->Inside({4, 4})) << "holes count";
}

TEST(ShapeArray, NormalsLieToTheRightAndCanBeDrawnTogether)
{
    auto const arrays = ArraysOf(*Path(kCorner));
    KShapeArray& a = *First(*arrays);
    auto const near = [&](int i, bool second, float x, float y) {
        EXPECT_NEAR(a.GetNormal(i, second).x, x, 1e-6) << i << second;
        EXPECT_NEAR(a.GetNormal(i, second).y, y, 1e-6) << i << second;
    };
    float const h = std::sqrt(0.5F);
    for (auto [smooth, angle] : {std::pair{0.0F, 180.0F}, {1.0F, 80.0F}}) { // off, and above the limit
        a.SetNormals(smooth, angle);
        near(0, false, 0, -1);
        near(0, true, 0, -1);
        near(1, false, 0, -1);
        near(1, true, 1, 0);
        near(2, true, 1, 0);
    }
    EXPECT_EQ(a.GetNormalNext(2, false), a.GetNormal(0, false));
    a.SetNormals(1.0F, 100.0F);
    near(1, false, h, -h);
    near(1, true, h, -h);
    a.SetNormals(0.5F, 100.0F); // half of (h, -h) and half of (0, -1), at 22.5 degrees
    near(1, false, 0.3826834F, -0.9238795F);
    near(1, true, 0.9238795F, -0.3826834F);
}

// Containers.

TEST(ShapeList, MovesTheTextureAlong)
{
    KShapeList list;
    list.AddLast(Path(kSquare).release());
    list.mapping.Move(0.25F, 0.0F, 0.0F);
    KVector2 const before = list.mapping * KVector2(1, 1);
    list.Transform(KMatrix4().Move(5.0F, 1.0F, 0.0F).RotZ(0.5F).Scale(2.0F, 3.0F, 1.0F));
    KVector2 const corner = PointsOf(*static_cast<KShape*>(list.First()))[2], after = list.mapping * corner;
    EXPECT_NEAR(after.x, before.x, 1e-5);
    EXPECT_NEAR(after.y, before.y, 1e-5);
    list.Transform(KMatrix4().Scale(0.0F, 1.0F, 1.0F));
    EXPECT_TRUE(std::isfinite(list.mapping[0])) << "a matrix without an inverse leaves it";
}

TEST(ShapeGroup, CopiesAreDeepAndKeepStyles)
{
    auto* list = new KShapeList;
    list->AddLast(Path(kSquare).release());
    list->AddLast(Path(kCorner).release());
    KStyle style;
    style.pen.thickness = 3.0F;
    list->SetStyle(style);
    list->mapping.Move(1.0F, 0.0F, 0.0F);
    KShapeGroup group(list, false);
    group.Add(list, true);
    group.Add(static_cast<KShapeList*>(nullptr), false);
    group.Add(group);
    ASSERT_EQ(group.GetCount(), 4);
    EXPECT_EQ(group.LengthTotal(), 4 * 5.0F);
    EXPECT_TRUE(group.Inside({0.5F, 0.5F}));

    std::unique_ptr<KShapeGroup> const copy(group.CopyOf());
    group.Transform(KMatrix4().Move(9.0F, 0.0F, 0.0F));
    EXPECT_FALSE(group.Inside({0.5F, 0.5F}));
    EXPECT_TRUE(copy->Inside({0.5F, 0.5F}));

    std::unique_ptr<KShapeGroup> const lifted(copy->CloseOpenOf(1));
    ASSERT_EQ(lifted->GetCount(), 4);
    EXPECT_EQ(lifted->Get(3)->Count(), 2);
    EXPECT_EQ(lifted->Get(3)->styles[7].pen.thickness, 3.0F);
    EXPECT_EQ(lifted->Get(3)->mapping[3], 1.0F);
    EXPECT_TRUE(static_cast<KShape*>(lifted->Get(3)->Last())->IsClosed(true));
    EXPECT_FALSE(static_cast<KShape*>(copy->Get(3)->Last())->IsClosed(true)) << "the source stays";

    KShapeList merged(list);
    EXPECT_EQ(merged.Count(), 0) << "styles alone";
    merged.Merge(list);
    merged.Merge(&merged);
    merged.Merge(nullptr);
    EXPECT_EQ(merged.Count(), 4);
}

TEST(Style, ColoursReachThePixelForms)
{
    KStyle style;
    style.fill.color = KColor(1.0F, 0.5F, 0.25F, 2.0F);
    style.pen.color = KColor(0.0F, 0.0F, 1.0F, 1.0F);
    style.Init();
    EXPECT_EQ(style.brush.color, (Pixel64{16383, 32767, 65535, 65535}));
    EXPECT_EQ(style.brush.floatColor.alpha, 2.0F);
    EXPECT_EQ(style.brush.floatColor.blue, 0.25F);
    EXPECT_EQ(style.penChannel.color, (Pixel64{65535, 0, 0, 65535}));
}

// The host value.

TEST(ShapeParameter, HoldsACopyOrTheGroupAndSavesNoGeometry)
{
    auto* group = new KShapeGroup(new KShapeList, false);
    auto const copied = MakeRef<KShapeParameter>(group, true), held = MakeRef<KShapeParameter>(group, false);
    EXPECT_NE(copied->Group(), group);
    EXPECT_EQ(held->Group(), group);
    Ref<KShapeParameter> const again = Ref<KShapeParameter>::Adopt(held->Copy());
    EXPECT_NE(again->Group(), group);
    EXPECT_EQ(again->Group()->GetCount(), 1);
    EXPECT_EQ(MakeRef<KShapeParameter>(nullptr, true)->Group(), nullptr);
    EXPECT_EQ(held->InterpolateWith(copied.Get(), 0.5), nullptr);

    ScriptVal saved;
    held->Save(saved, {});
    ASSERT_TRUE(saved.AsTable());
    EXPECT_EQ(saved.AsTable()->entries.size(), 2U);
    EXPECT_EQ(*saved.Find("Version")->AsNumber(), 1.0);
    EXPECT_EQ(*saved.Find("Type")->AsText(), "Shape");

    Registry const* const registry = ClassRegistry().Find("Brassfennel.BF_ShapeParameter");
    ASSERT_TRUE(registry);
    EXPECT_EQ(registry->NewFunction(), nullptr) << "it is no tool";
    auto* const make =
        registry->Tags().GetFunction<Parameter*(Registry const*, ScriptVal const&, TagList const&)>(
            Reg_NewParameterFunction);
    Ref<Parameter> const read = Ref<Parameter>::Adopt(make(registry, saved, {}));
    EXPECT_EQ(read->DataType(), FuID("Brassfennel.BF_ShapeParameter"));
    EXPECT_EQ(dynamic_cast<KShapeParameter&>(*read).Group()->GetCount(), 0);
}

/// Moves its input by 1 and adds a square.
struct KEffectTestShapes : KEffect {
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "TSh", "Test Shapes"); }
    KEffectTestShapes()
    {
        parameters.AddShape(&in, "Shape", 1, KF_MainInput);
        outputs.AddShape(&out, "Output", "PTxt"_id, 1);
    }
    ~KEffectTestShapes() override { delete static_cast<KShapeGroup*>(out); }
    int ProcessType() override { return KProc_Shapes; }
    void ProcessData() override
    {
        delete static_cast<KShapeGroup*>(out);
        auto* group = static_cast<KShapeGroup*>(in);
        group->Transform(KMatrix4().Move(1.0F, 0.0F, 0.0F));
        auto* list = new KShapeList;
        list->AddLast(Path(kSquare).release());
        group->Add(list, false);
        out = group;
        in = nullptr;
    }
    void* in = nullptr;
    void* out = nullptr;
};

OMBRELUNE_TOOL(BF_TestShapes, BF_ThreadedOperator, KEffectTestShapes,
               .outputType = KShapeParameter::kClassId);

TEST(ShapeParameter, ToolsGetCopiesAndHandOnTheirOwn)
{
    FusionDoc document;
    Registry const& registry = *ClassRegistry().Find("Brassfennel.BF_TestShapes");
    Operator* const first = document.AddOperator(registry, "First");
    Operator* const second = document.AddOperator(registry, "Second");
    second->MainInput(1)->ConnectTo(first->FindOutput("Output"));
    Renderer renderer(document, {});
    RenderResult const last = renderer.Evaluate(*second->FindOutput("Output"), 0.0);
    ASSERT_FALSE(last.problem);
    KShapeGroup const& result = *dynamic_cast<KShapeParameter const&>(*last.value).Group();
    ASSERT_EQ(result.GetCount(), 2);
    EXPECT_EQ(TextOf(*static_cast<KShape*>(result.Get(0)->First())), "M1,0 L2,0 L2,1 L1,1 Z");
    RenderResult const between = renderer.Evaluate(*first->FindOutput("Output"), 0.0);
    KShapeGroup const& fed = *dynamic_cast<KShapeParameter const&>(*between.value).Group();
    ASSERT_EQ(fed.GetCount(), 1) << "an input that nothing feeds is an empty group";
    EXPECT_EQ(TextOf(*static_cast<KShape*>(fed.Get(0)->First())), kSquare) << "what was fed stays";
}

} // namespace
} // namespace ombrelune::test
