#include <cmath>
#include <string>

#include <gtest/gtest.h>

#include "host/value/FrameFormat.h"
#include "shapes/svg/SvgReader.h"
#include "shapes/svg/SvgWriter.h"
#include "tests/shapes/shape_helpers.h"

namespace ombrelune::test {

namespace {

/// A document of 200 x 100, so that a pixel is 0.005.
std::string Document(std::string const& body)
{
    return R"(<svg xmlns="http://www.w3.org/2000/svg" width="200" height="100">)" + body + "</svg>";
}

std::unique_ptr<KShapeGroup> Read(std::string const& text)
{
    SvgShapes shapes = ReadSvg(text);
    EXPECT_FALSE(shapes.problem) << shapes.problem->Format();
    return std::move(shapes.group);
}

/// The one shape of a document with one list.
KShape const& Only(KShapeGroup const& group, int list = 0)
{
    return *static_cast<KShape const*>(group.Get(list)->First());
}

std::string Written(KShapeGroup const& group)
{
    std::string text;
    auto const problem = WriteSvg(group, {.width = 640, .height = 480}, text);
    EXPECT_FALSE(problem) << problem->text;
    return text;
}

} // namespace

TEST(Svg, PathsLieAroundTheOriginWithYUp)
{
    // A closed path goes back to its start without a point there, and straight curves are sides.
    auto const group =
        Read(Document(R"(<path d="M0 0H200V100Z"/>)"
                      "<path transform='translate(100 50) scale(2)' d='M0 0C0 0 10 0 20 10'/>"
                      R"(<path fill="none" stroke="red" d="M100 50Q110 50 110 60 M0 0L1 1"/>)"));
    ASSERT_EQ(group->GetCount(), 3);
    EXPECT_EQ(TextOf(Only(*group, 0)), "M-0.5,0.25 L0.5,0.25 L0.5,-0.25 Z");
    EXPECT_EQ(TextOf(Only(*group, 1)), "M0,0 C0,0 C0.1,0 C0.2,-0.1 Z");
    // A quadratic curve has its handles at two thirds of the way to its control point.
    EXPECT_EQ(TextOf(Only(*group, 2)), "M0,0 C0.0333,0 C0.05,-0.0167 C0.05,-0.05 M-0.5,0.25 L-0.495,0.245");
}

TEST(Svg, SubpathsKeepTheirOrder)
{
    auto const group = Read(Document(R"(<path fill-rule="evenodd" d="M0 0H100V100Z M10 10H20V20Z"/>)"));
    EXPECT_EQ(TextOf(Only(*group)), "M-0.5,0.25 L0,0.25 L0,-0.25 Z M-0.45,0.2 L-0.4,0.2 L-0.4,0.15 Z");
    EXPECT_EQ(group->Get(0)->styles[0].fill.type, 1);
}

TEST(Svg, APathWithoutLengthHidesNothing)
{
    auto const group = Read(Document(R"(<path d="M20 20H40V40Z M10 10h0z M10 10 M100 50H110V60Z"/>)"));
    ASSERT_EQ(group->GetCount(), 1);
    EXPECT_EQ(AreasOf(Only(*group)).size(), 2U);
}

TEST(Svg, StylesCountInWidths)
{
    auto const group = Read(Document(
        R"(<g opacity="0.5"><path fill="#ff8000" fill-opacity="0.5" stroke="#00f" stroke-width="4" )"
        R"(stroke-linejoin="bevel" stroke-linecap="square" stroke-miterlimit="3" stroke-dasharray="8 4 2" )"
        R"(d="M0 0H10V10Z"/></g>)"));
    KStyle const& style = group->Get(0)->styles[0];
    EXPECT_EQ(style.fill.color, KColor(1.0F, 128.0F / 255.0F, 0.0F, 1.0F));
    EXPECT_NEAR(style.brush.opacity, 0.25, 0.004);
    EXPECT_NEAR(style.penChannel.opacity, 0.5, 0.004);
    EXPECT_FLOAT_EQ(style.pen.thickness, 2.0F); // 4 of 200, in hundredths
    EXPECT_EQ(style.pen.joinType, kJoinBevel);
    EXPECT_EQ(style.pen.endType, 1);
    EXPECT_EQ(style.pen.endRoundness, 0.0F);
    EXPECT_EQ(style.pen.miterLimit, 1.5F);
    // 8 4 2 | 8 4 2 is three dashes with three gaps, in thicknesses.
    ASSERT_EQ(style.pen.dash.dashCount, 3);
    float const dashes[] = {2.0F, 0.5F, 1.0F}, gaps[] = {1.0F, 2.0F, 0.5F};
    for (int i = 0; i < 3; ++i) {
        EXPECT_FLOAT_EQ(style.pen.dash.dashLengths[i], dashes[i]);
        EXPECT_FLOAT_EQ(style.pen.dash.spaceLengths[i], gaps[i]);
    }
}

TEST(Svg, AFillClosesOpenPathsAndAPenDoesNot)
{
    auto const group =
        Read(Document(R"(<path stroke="red" d="M0 0H100V100"/><path fill="none" d="M0 0H1"/>)"));
    ASSERT_EQ(group->GetCount(), 3);
    EXPECT_TRUE(Only(*group, 0).IsClosed(false));
    EXPECT_FALSE(group->Get(0)->styles[0].penChannel.enabled);
    EXPECT_FALSE(Only(*group, 1).IsClosed(false));
    EXPECT_FALSE(group->Get(1)->styles[0].brush.enabled);
    EXPECT_FALSE(group->Get(2)->styles[0].brush.enabled);
}

TEST(Svg, WhatIsWrittenIsReadAgain)
{
    KShapeGroup group;
    auto* list = new KShapeList;
    list->AddLast(
        Path("M-0.5,-0.31 L0.123456,0.3 Q0.2,0.4 0.3,0.1 Z M0,0 C0.1,0.2 0.3,0.4 0.45,-0.25 Z").release());
    KStyle style;
    style.fill.color = {0.2F, 0.4F, 0.6F, 1.0F};
    style.brush.opacity = 0.5F;
    style.pen.color = {1.0F, 0.0F, 0.0F, 1.0F};
    style.pen.thickness = 1.5F;
    style.pen.joinType = kJoinRound;
    style.pen.endType = 0;
    style.pen.dash.lineType = 1;
    list->SetStyle(style);
    group.Add(list, false);

    auto const once = Read(Written(group));
    ASSERT_EQ(once->GetCount(), 1);
    KStyle const& read = once->Get(0)->styles[0];
    EXPECT_EQ(read.fill.color, style.fill.color); // 51, 102 and 153 of 255
    EXPECT_NEAR(read.brush.opacity, 0.5, 0.004);
    EXPECT_NEAR(read.pen.thickness, 1.5, 1e-4);
    EXPECT_EQ(read.pen.joinType, kJoinRound);
    EXPECT_EQ(read.pen.endType, 0);
    EXPECT_NEAR(read.pen.dash.dashLengths[0], 2.0, 1e-4);
    EXPECT_NEAR(read.pen.dash.spaceLengths[0], 2.0, 1e-4);
    EXPECT_EQ(TextOf(Only(*once)).substr(0, 34), "M-0.5,-0.31 L0.1235,0.3 C0.1745,0.");

    auto const twice = Read(Written(*once));
    KShapePoint const* b = Only(*twice).GetFirstPoint();
    for (KShapePoint const* a = Only(*once).GetFirstPoint(); a; a = a->next, b = b->next) {
        ASSERT_TRUE(b);
        EXPECT_EQ(a->type, b->type);
        EXPECT_EQ(a->closed, b->closed);
        EXPECT_NEAR(a->position.x, b->position.x, 1e-5);
        EXPECT_NEAR(a->position.y, b->position.y, 1e-5);
    }
    EXPECT_FALSE(b);
}

TEST(Svg, PensThatSvgCannotDrawBecomeTheirArea)
{
    KShapeGroup group;
    auto* list = new KShapeList;
    list->AddLast(Path("M-0.25,0 L0.25,0").release());
    KStyle style;
    style.pen.thickness = 10.0F;
    style.pen.bias = 1.0F; // all of it on the right: below a path to the right
    style.pen.endType = 0;
    list->SetStyle(style);
    group.Add(list, false);
    auto const read = Read(Written(group));
    ASSERT_EQ(read->GetCount(), 1);
    KVector2 low, high;
    Only(*read).Boundary(low, high);
    EXPECT_NEAR(low.y, -0.1, 1e-4);
    EXPECT_NEAR(high.y, 0.0, 1e-4);
    EXPECT_FALSE(read->Get(0)->styles[0].penChannel.enabled);
}

TEST(Svg, MistakesNameTheirLine)
{
    std::string deep;
    for (int i = 0; i < 200; ++i) deep += "<g>\n";
    struct Case {
        std::string text, problem;
        int line;
    } const cases[] = {
        {"", "not well-formed: no element found", 1},
        {"<svg>\n<path d='M0 0'>\n</svg>", "not well-formed: mismatched tag", 3},
        {"\n<html/>", "the document is 'html' and not svg", 2},
        {"<svg>\n" + deep, "elements are nested deeper than 100", 101},
        {"<!DOCTYPE svg [\n<!ENTITY a 'b'>]>\n<svg/>",
         "entity 'a' is declared: SVG is read without entities, write what it stands for", 2},
        {"<svg/>", "the document has no size: give svg a width and height, or a viewBox", 0},
        {Document("<path d='M0 0L1e30 1e30'/>"), "a shape lies further than 1e9 pixels away, or nowhere", 0},
    };
    for (Case const& c : cases) {
        SvgShapes const shapes = ReadSvg(c.text);
        ASSERT_TRUE(shapes.problem) << c.problem;
        EXPECT_EQ(shapes.problem->text, c.problem);
        EXPECT_EQ(shapes.problem->line, c.line) << c.problem;
        EXPECT_FALSE(shapes.group);
    }
}

// Found by fuzzing: reads past the end, a class that names itself, an arc without an angle.
TEST(Svg, HostileStylesAndArcsEnd)
{
    for (char const* body :
         {"<path fill='url(#end' d='M0 0H9V9Z'/>", "<path d='M0 0A1 1 0 1 0 1e39 2H3'/>",
          "<style>.a {class:a} .b, .c </style><path class='a' d='M0 0H9'/><path class='b' d='M0 0H9'/>"}) {
        SvgShapes const shapes = ReadSvg(Document(body));
        EXPECT_NE(shapes.problem.has_value(), shapes.group != nullptr) << body;
    }
}

TEST(Svg, APointThatIsNowhereIsNotWritten)
{
    for (float far : {std::nanf(""), 1e7F, -INFINITY}) {
        KShapeGroup group;
        auto* list = new KShapeList;
        auto shape = std::make_unique<KShape>();
        shape->MoveTo({0.0F, far});
        list->AddLast(shape.release());
        group.Add(list, false);
        std::string text;
        EXPECT_TRUE(WriteSvg(group, {}, text));
        EXPECT_EQ(text, "");
    }
}

} // namespace ombrelune::test
