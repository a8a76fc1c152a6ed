#include "graph/MetaFile.h"

#include "frame/Colours.h"
#include "platform/emf/Player.h"
#include "platform/emf/RecordReader.h"
#include "platform/emf/RecordTrace.h"
#include "platform/emf/TextMetrics.h"
#include "platform/runtime/Error.h"

#include <QFile>
#include <QTemporaryDir>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <numbers>

using namespace Qt::Literals::StringLiterals;
using Ormsey::MetaFile;

namespace {


const QStringList openingRecords { u"SETMITERLIMIT 2"_s, u"SAVEDC"_s, u"SELECTOBJECT WHITE_BRUSH"_s,
    u"SELECTOBJECT NULL_PEN"_s, u"SELECTOBJECT SYSTEM_FONT"_s };

QStringList trace(const MetaFile& surface)
{
    return surface.hMF() ? Emf::TraceRecords(*surface.hMF()) : QStringList();
}

// What the drawing calls recorded: after the opening records, up to the closing restore.
QStringList drawnRecords(MetaFile& surface)
{
    surface.CloseMF();
    QStringList lines = trace(surface);
    const qsizetype restore = lines.lastIndexOf(u"RESTOREDC -1"_s);
    if (lines.size() < 6 || restore < 6)
        return { u"<unexpected picture>"_s };
    return lines.mid(6, restore - 6);
}

TEST(MetaFileTest, OpeningWritesTheSettingsAndSelectsTheStockObjects)
{
    MetaFile surface;
    surface.OpenMF();
    surface.CloseMF();
    const QStringList expected = QStringList { u"HEADER bounds 0 0 -1 -1 frame 0 0 10583 10583"_s }
        + openingRecords + QStringList { u"RESTOREDC -1"_s, u"EOF"_s };
    EXPECT_EQ(trace(surface), expected);
    const Emf::PictureHeader& header = surface.hMF()->header();
    EXPECT_EQ(header.description, u"Pellimore"_s + QChar(0));
    EXPECT_EQ(header.description.size(), 10);
}

TEST(MetaFileTest, FrameIsInHundredthsOfAMillimetreFromThePictureFields)
{
    MetaFile surface;
    surface.Left = 10;
    surface.Top = 20;
    surface.Width = 400;
    surface.Height = 300;
    surface.OpenMF();
    surface.CloseMF();
    EXPECT_EQ(surface.hMF()->header().frame, (Emf::RectL { 265, 529, 10848, 8467 }));
}

struct DrawingRow
{
    const char* name;
    std::function<void(MetaFile&)> draw;
    QStringList expected;
};

class RecordsOfDrawing : public testing::TestWithParam<DrawingRow>
{
};

TEST_P(RecordsOfDrawing, AreTheExpectedOnes)
{
    MetaFile surface;
    surface.OpenMF();
    GetParam().draw(surface);
    EXPECT_EQ(drawnRecords(surface), GetParam().expected);
}

const QString redPen = u"EXTCREATEPEN 1 style 0x12200 width 1 brush 0 colour 0x0000FF"_s;

const DrawingRow drawingRows[] = {
    { "colourWhileThePenIsNullCreatesNothing",
        [](MetaFile& m) {
            m.PenColour(255);
            m.PenWidth(3);
            m.PenEndCap(0);
            m.LineMF(0, 0, 10, 10);
        },
        { u"MOVETOEX 0,0"_s, u"LINETO 10,10"_s } },
    { "solidStyleAfterwardsCreatesAPenOfThatColour",
        [](MetaFile& m) {
            m.PenColour(255);
            m.PenStyle(0);
            m.LineMF(0, 0, 10, 10);
        },
        { u"SELECTOBJECT BLACK_PEN"_s, redPen, u"SELECTOBJECT 1"_s, u"MOVETOEX 0,0"_s,
            u"LINETO 10,10"_s } },
    { "penWidthAndEndCapGoIntoThePen",
        [](MetaFile& m) {
            m.PenStyle(0);
            m.PenWidth(4);
            m.PenEndCap(0x100);
            m.LineToMF(5, 5);
        },
        { u"SELECTOBJECT BLACK_PEN"_s,
            u"EXTCREATEPEN 1 style 0x12100 width 4 brush 0 colour 0x000000"_s, u"SELECTOBJECT 1"_s,
            u"LINETO 5,5"_s } },
    { "nullStyleAgainTakesTheStockNullPen",
        [](MetaFile& m) {
            m.PenStyle(0);
            m.PenColour(255);
            m.LineToMF(5, 5);
            m.PenStyle(5);
            m.LineToMF(6, 6);
        },
        { u"SELECTOBJECT BLACK_PEN"_s, redPen, u"SELECTOBJECT 1"_s, u"LINETO 5,5"_s,
            u"SELECTOBJECT BLACK_PEN"_s, u"DELETEOBJECT 1"_s, u"SELECTOBJECT NULL_PEN"_s,
            u"LINETO 6,6"_s } },
    { "hollowBrushIsTheStockNullBrush",
        [](MetaFile& m) {
            m.BrushStyle(1);
            m.CircleMF(50, 50, 10);
            m.BrushColour(255);
            m.CircleMF(50, 50, 20);
        },
        { u"SELECTOBJECT WHITE_BRUSH"_s, u"SELECTOBJECT NULL_BRUSH"_s, u"ELLIPSE 40 40 60 60"_s,
            u"ELLIPSE 30 30 70 70"_s } },
    { "otherBrushesAreCreated",
        [](MetaFile& m) {
            m.BrushColour(0x00FF00);
            m.CircleMF(50, 50, 10);
            m.BrushStyle(2);
            m.BrushHatch(4);
            m.CircleMF(50, 50, 10);
        },
        { u"SELECTOBJECT WHITE_BRUSH"_s, u"CREATEBRUSHINDIRECT 1 style 0 colour 0x00FF00 hatch 8"_s,
            u"SELECTOBJECT 1"_s, u"ELLIPSE 40 40 60 60"_s, u"SELECTOBJECT WHITE_BRUSH"_s,
            u"DELETEOBJECT 1"_s, u"CREATEBRUSHINDIRECT 1 style 2 colour 0x00FF00 hatch 4"_s,
            u"SELECTOBJECT 1"_s, u"ELLIPSE 40 40 60 60"_s } },
    { "fontSettersFillTheLogicalFont",
        [](MetaFile& m) {
            m.FontName(u"Times New Roman"_s);
            m.FontSize(10);
            m.FontBold(true);
            m.FontItalic(true);
            m.FontUnderline(true);
            m.FontOrientation(900);
            m.GetTextHeight(u"Sales"_s);
        },
        { u"SELECTOBJECT SYSTEM_FONT"_s,
            u"EXTCREATEFONTINDIRECTW 1 height -13 escapement 900 orientation 900 weight 700 "
            "italic 1 underline 1 charset 1 face Times New Roman"_s,
            u"SELECTOBJECT 1"_s } },
    { "pointTakesThePenColourWithoutMakingAPen",
        [](MetaFile& m) {
            m.PenColour(255);
            m.PlotPointMF(5, 6);
        },
        { u"SETPIXELV 5,6 colour 0x0000FF"_s } },
    { "rectangleIsAFourPointPolygonOutlinedAndFilled",
        [](MetaFile& m) { m.RectMF(10, 10, 50, 30); },
        { u"BEGINPATH"_s, u"POLYGON 10,10 10,30 50,30 50,10"_s, u"ENDPATH"_s,
            u"STROKEANDFILLPATH"_s } },
    { "parallelogramGetsItsFourthCorner",
        [](MetaFile& m) { m.ParallelogramMF(0, 0, 10, 5, 30, 5); },
        { u"BEGINPATH"_s, u"POLYGON 0,0 10,5 30,5 20,0"_s, u"ENDPATH"_s, u"STROKEANDFILLPATH"_s } },
    { "clearClipPathTakesTheFrameFieldsAsCorners",
        [](MetaFile& m) {
            m.Left = 5;
            m.Top = 6;
            m.Width = 300;
            m.Height = 200;
            m.ClearClipPath();
        },
        { u"EXTSELECTCLIPRGN 5 5 6 300 200"_s } },
    { "textInItsColourOnATransparentBackground",
        [](MetaFile& m) {
            m.FontColour(0x0000FF);
            m.PaintTextMF(u"Total"_s, 100, 50, 0, 0, 0);
        },
        { u"SETTEXTCOLOR 0x0000FF"_s, u"SETBKMODE 1"_s, u"EXTTEXTOUTW 100,50 \"Total\""_s } },
};

INSTANTIATE_TEST_SUITE_P(MetaFileTest, RecordsOfDrawing, testing::ValuesIn(drawingRows),
    [](const testing::TestParamInfo<DrawingRow>& info) { return std::string(info.param.name); });

TEST(MetaFileTest, ManySameColouredShapesMakeOnePenAndOneBrush)
{
    MetaFile surface;
    surface.OpenMF();
    surface.PenStyle(0);
    surface.PenWidth(2);
    surface.BrushColour(0x3366CC);
    for (int bar = 0; bar < 50; ++bar) {
        surface.BrushColour(0x3366CC);
        surface.RectMF(bar * 8, 100, bar * 8 + 6, 300);
    }
    surface.CloseMF();
    const QStringList lines = trace(surface);
    EXPECT_EQ(lines.filter(u"EXTCREATEPEN"_s).size(), 1);
    EXPECT_EQ(lines.filter(u"CREATEBRUSHINDIRECT"_s).size(), 1);
    EXPECT_EQ(lines.filter(u"POLYGON"_s).size(), 50);
}

TEST(MetaFileTest, DefaultFontHeightFollowsTheReferenceResolution)
{
    const Emf::ReferenceDevice printer { 2480, 3508, 210, 297, 300, 300 };
    MetaFile surface;
    surface.OpenMF(printer);
    surface.FontName(u"Arial"_s);
    surface.GetTextWidth(u"x"_s);
    surface.FontSize(7.5);
    surface.GetTextWidth(u"x"_s);
    surface.CloseMF();
    const QStringList fonts = trace(surface).filter(u"EXTCREATEFONTINDIRECTW"_s);
    ASSERT_EQ(fonts.size(), 2);
    EXPECT_TRUE(fonts[0].contains(u"height -50 "_s)) << fonts[0].toStdString();
    // 7.5 x 300 / 72 = 31.25
    EXPECT_TRUE(fonts[1].contains(u"height -31 "_s)) << fonts[1].toStdString();
}

struct FontNameRow
{
    const char* name;
    int length;
    bool refused;
};

class FontNameLength : public testing::TestWithParam<FontNameRow>
{
};

TEST_P(FontNameLength, OfThirtyTwoOrMoreIsRefusedWithErrorNine)
{
    MetaFile surface;
    surface.OpenMF();
    const QString name(GetParam().length, u'N');
    if (!GetParam().refused) {
        EXPECT_NO_THROW(surface.FontName(name));
        return;
    }
    try {
        surface.FontName(name);
        FAIL() << "accepted";
    } catch (const Runtime::Error& error) {
        EXPECT_EQ(error.number(), 9);
    }
}

const FontNameRow fontNameRows[] = {
    { "empty", 0, false },
    { "thirtyOne", 31, false },
    { "thirtyTwo", 32, true },
    { "forty", 40, true },
};

INSTANTIATE_TEST_SUITE_P(MetaFileTest, FontNameLength, testing::ValuesIn(fontNameRows),
    [](const testing::TestParamInfo<FontNameRow>& info) { return std::string(info.param.name); });

TEST(MetaFileTest, PolygonOfMoreThanNineteenPointsIsRefusedWithErrorNine)
{
    MetaFile surface;
    surface.OpenMF();
    const std::vector<std::int32_t> points(60, 1);
    EXPECT_NO_THROW(surface.PolygonMF(points, 19));
    for (int count : { 20, -1 }) {
        try {
            surface.PolygonMF(points, count);
            ADD_FAILURE() << "accepted " << count;
        } catch (const Runtime::Error& error) {
            EXPECT_EQ(error.number(), 9);
        }
    }
    try {
        surface.PolygonMF(std::span(points).first(5), 3);
        ADD_FAILURE() << "accepted too few numbers";
    } catch (const Runtime::Error& error) {
        EXPECT_EQ(error.number(), 9);
    }
}

TEST(MetaFileTest, PolygonKeepsTheCallersPath)
{
    MetaFile surface;
    surface.OpenMF();
    surface.BeginPathMF();
    surface.MoveToMF(0, 0);
    surface.LineToMF(100, 0);
    surface.PolyBezierToMF(120, 0, 120, 20, 100, 20);
    surface.CloseFigureMF();
    surface.MoveToMF(50, 50);
    surface.LineToMF(60, 60);
    const auto before = surface.hDC()->path();
    surface.RectMF(10, 10, 20, 20);
    EXPECT_EQ(surface.hDC()->path(), before);
    surface.StrokePathMF();
    EXPECT_EQ(drawnRecords(surface).mid(7),
        (QStringList { u"BEGINPATH"_s, u"POLYGON 10,10 10,20 20,20 20,10"_s, u"ENDPATH"_s,
            u"STROKEANDFILLPATH"_s, u"BEGINPATH"_s, u"MOVETOEX 0,0"_s, u"LINETO 100,0"_s,
            u"POLYBEZIERTO 120,0 120,20 100,20"_s, u"CLOSEFIGURE"_s, u"MOVETOEX 50,50"_s,
            u"LINETO 60,60"_s, u"ENDPATH"_s, u"STROKEPATH"_s }));
}

TEST(MetaFileTest, TextSizeIsThatOfTheAppliedFontInReferencePixels)
{
    MetaFile surface;
    surface.OpenMF();
    surface.FontName(u"Arial"_s);
    surface.FontSize(10);
    Emf::LogFont font;
    font.height = -13;
    font.faceName = u"Arial"_s;
    const Emf::SizeL expected = Emf::MeasureText(font, u"Population"_s);
    EXPECT_EQ(surface.GetTextWidth(u"Population"_s), expected.cx);
    EXPECT_EQ(surface.GetTextHeight(u"Population"_s), expected.cy);
    surface.FontSize(20);
    EXPECT_GT(surface.GetTextWidth(u"Population"_s), expected.cx * 3 / 2);
}

struct PlacementRow
{
    const char* name;
    std::int32_t align;
    double directionX;
    double directionY;
    bool vertical;
    // The start point from the text's width and height, before rounding.
    std::function<QPointF(double width, double height)> start;
};

class TextPlacement : public testing::TestWithParam<PlacementRow>
{
};

TEST_P(TextPlacement, StartsWhereTheAlignmentRuleSays)
{
    const PlacementRow& row = GetParam();
    MetaFile surface;
    surface.OpenMF();
    surface.FontName(u"Arial"_s);
    surface.FontSize(11);
    if (row.vertical)
        surface.FontOrientation(900);
    const double width = surface.GetTextWidth(u"Sample text"_s);
    const double height = surface.GetTextHeight(u"Sample text"_s);
    surface.PaintTextMF(u"Sample text"_s, 200, 100, row.align, row.directionX, row.directionY);
    const QPointF start = row.start(width, height);
    const QString expected = u"EXTTEXTOUTW %1,%2 \"Sample text\""_s.arg(std::lrint(start.x()))
                                 .arg(std::lrint(start.y()));
    EXPECT_EQ(drawnRecords(surface).filter(u"EXTTEXTOUTW"_s), QStringList { expected });
}

const PlacementRow placementRows[] = {
    { "alignZeroStartsAtThePoint", 0, 0, 0, false,
        [](double, double) { return QPointF(200, 100); } },
    { "alignOneCentresOnX", 1, 0, 0, false,
        [](double w, double) { return QPointF(200 - w / 2, 100); } },
    { "alignTwoEndsAtX", 2, 0, 0, false, [](double w, double) { return QPointF(200 - w, 100); } },
    { "directionNoneCentresOnThePoint", -1, 0, 0, false,
        [](double w, double h) { return QPointF(200 - w / 2, 100 - h / 2); } },
    { "directionRightPutsItRightOfThePoint", -1, 1, 0, false,
        [](double, double h) { return QPointF(200, 100 - h / 2); } },
    { "directionDownPutsItBelow", -1, 0, -1, false,
        [](double w, double) { return QPointF(200 - w / 2, 100); } },
    { "directionUpPutsItAbove", -1, 0, 1, false,
        [](double w, double h) { return QPointF(200 - w / 2, 100 - h); } },
    { "pieLabelDirection", -1, std::cos(std::numbers::pi / 3), std::sin(std::numbers::pi / 3),
        false,
        [](double w, double h) {
            return QPointF(200 + (std::cos(std::numbers::pi / 3) - 1) * w / 2,
                100 - (std::sin(std::numbers::pi / 3) + 1) * h / 2);
        } },
    { "verticalTextSwapsWidthAndHeight", -1, 0, 0, true,
        [](double w, double h) { return QPointF(200 - h / 2, 100 - w / 2); } },
    { "verticalTextToTheRight", -1, 1, 0, true,
        [](double w, double) { return QPointF(200, 100 - w / 2); } },
};

INSTANTIATE_TEST_SUITE_P(MetaFileTest, TextPlacement, testing::ValuesIn(placementRows),
    [](const testing::TestParamInfo<PlacementRow>& info) { return std::string(info.param.name); });

TEST(MetaFileTest, OpeningAgainDeletesTheEarlierPicture)
{
    MetaFile surface;
    surface.OpenMF();
    surface.RectMF(0, 0, 10, 10);
    surface.CloseMF();
    ASSERT_NE(surface.hMF(), nullptr);
    surface.OpenMF();
    EXPECT_EQ(surface.hMF(), nullptr);
    EXPECT_NE(surface.hDC(), nullptr);
    surface.CircleMF(50, 50, 5);
    surface.CloseMF();
    ASSERT_NE(surface.hMF(), nullptr);
    const QStringList lines = trace(surface);
    EXPECT_EQ(lines.filter(u"POLYGON"_s).size(), 0);
    EXPECT_EQ(lines.filter(u"ELLIPSE"_s).size(), 1);
}

TEST(MetaFileTest, ReleasedPictureOutlivesTheSurface)
{
    std::unique_ptr<Emf::Picture> released;
    QByteArray bytes;
    {
        MetaFile surface;
        surface.OpenMF();
        surface.RectMF(0, 0, 10, 10);
        surface.CloseMF();
        bytes = surface.hMF()->bytes();
        released = surface.ReleaseMetaFile();
        EXPECT_EQ(surface.hMF(), nullptr);
        EXPECT_FALSE(surface.GetBoundingBox().has_value());
    }
    ASSERT_NE(released, nullptr);
    EXPECT_EQ(released->bytes(), bytes);
    EXPECT_TRUE(released->isValid());
}

TEST(MetaFileTest, DrawingWhileClosedDoesNothing)
{
    MetaFile surface;
    surface.PenStyle(0);
    surface.RectMF(0, 0, 10, 10);
    surface.SectorMF(100, 100, 150, 100, 100, 50, 45);
    surface.PaintTextMF(u"x"_s, 0, 0, -1, 0, 0);
    surface.ClearClipPath();
    EXPECT_EQ(surface.GetTextWidth(u"x"_s), 0);
    surface.CloseMF();
    EXPECT_EQ(surface.hMF(), nullptr);
    EXPECT_EQ(surface.hDC(), nullptr);
}

TEST(MetaFileTest, PictureWithAFileNameIsAlsoWrittenThere)
{
    QTemporaryDir folder;
    ASSERT_TRUE(folder.isValid());
    const QString path = folder.filePath(u"Graph.emf"_s);
    MetaFile surface;
    surface.OpenMF(Emf::ReferenceDevice::Screen(), path);
    surface.RectMF(0, 0, 10, 10);
    surface.CloseMF();
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), surface.hMF()->bytes());
}

// Sectors -----------------------------------------------------------------------------------

struct Segment
{
    std::vector<QPointF> points; // the start and the three points of each cubic, in order
};

// The outline of every path in the picture as sampled points, one list per path.
std::vector<std::vector<QPointF>> sampledPaths(const Emf::Picture& picture)
{
    std::vector<std::vector<QPointF>> paths;
    QPointF current;
    for (const Emf::RecordSpan& record : picture.records()) {
        Emf::RecordReader reader(picture.recordBytes(record));
        switch (static_cast<Emf::RecordType>(record.type)) {
        case Emf::RecordType::BeginPath:
            paths.emplace_back();
            break;
        case Emf::RecordType::MoveToEx:
        case Emf::RecordType::LineTo: {
            const Emf::PointL point = reader.point(8);
            current = QPointF(point.x, point.y);
            if (!paths.empty())
                paths.back().push_back(current);
            break;
        }
        case Emf::RecordType::PolyBezierTo: {
            const auto points = reader.points(28, reader.u32(24));
            for (std::size_t index = 0; points && index + 2 < points->size(); index += 3) {
                const QPointF c1((*points)[index].x, (*points)[index].y);
                const QPointF c2((*points)[index + 1].x, (*points)[index + 1].y);
                const QPointF end((*points)[index + 2].x, (*points)[index + 2].y);
                for (int step = 1; step <= 20; ++step) {
                    const double t = step / 20.0;
                    const double u = 1 - t;
                    paths.back().push_back(u * u * u * current + 3 * u * u * t * c1
                        + 3 * u * t * t * c2 + t * t * t * end);
                }
                current = end;
            }
            break;
        }
        default:
            break;
        }
    }
    return paths;
}

QStringList sectorRecords(std::int32_t startX, std::int32_t startY, std::int32_t endX,
    std::int32_t endY, double elevation, MetaFile& surface)
{
    surface.OpenMF();
    surface.PenStyle(0);
    surface.BrushColour(0x2080E0);
    surface.SectorMF(200, 200, startX, startY, endX, endY, elevation);
    return drawnRecords(surface);
}

// Distance of a point from the ellipse of the flattened disc (120 wide radius).
double offEllipse(QPointF point, double flattening, double dropped)
{
    const double dx = (point.x() - 200) / 120;
    const double dy = (point.y() - 200 - dropped) / (120 * flattening);
    return std::abs(std::hypot(dx, dy) - 1) * 120 * flattening;
}

TEST(MetaFileTest, FlatSectorIsOnePathFromTheCentreAlongTheCircle)
{
    MetaFile surface;
    const QStringList records = sectorRecords(320, 200, 200, 80, 0, surface);
    EXPECT_EQ(records.filter(u"STROKEANDFILLPATH"_s).size(), 1);
    EXPECT_EQ(records.filter(u"CREATEBRUSHINDIRECT"_s).size(), 1);
    ASSERT_GE(records.size(), 3);
    EXPECT_EQ(records.filter(u"MOVETOEX"_s), QStringList { u"MOVETOEX 200,200"_s });
    EXPECT_EQ(records.filter(u"LINETO"_s), QStringList { u"LINETO 320,200"_s });
    const QStringList curves = records.filter(u"POLYBEZIERTO"_s);
    ASSERT_FALSE(curves.isEmpty());
    EXPECT_TRUE(curves.last().endsWith(u" 200,80"_s)) << curves.last().toStdString();

    const auto paths = sampledPaths(*surface.hMF());
    ASSERT_EQ(paths.size(), 1u);
    // The arc part of the outline (after the centre and the start point) stays on the circle.
    for (std::size_t index = 2; index < paths[0].size(); ++index)
        EXPECT_LT(offEllipse(paths[0][index], 1, 0), 1.0) << index;
}

TEST(MetaFileTest, TiltedSectorReachingTheLowerHalfGetsADarkerRimFirst)
{
    MetaFile surface;
    const QStringList records = sectorRecords(320, 200, 200, 320, 45, surface);
    const std::int32_t shaded = Frame::ShadeColour(0x2080E0, -40);
    const QStringList brushes = records.filter(u"CREATEBRUSHINDIRECT"_s);
    ASSERT_EQ(brushes.size(), 2);
    const QString shadedText = u"colour 0x"_s + u"%1"_s.arg(shaded, 6, 16, QChar(u'0')).toUpper();
    EXPECT_TRUE(brushes[0].contains(shadedText)) << brushes[0].toStdString();
    EXPECT_TRUE(brushes[1].contains(u"colour 0x2080E0"_s)) << brushes[1].toStdString();
    EXPECT_EQ(records.filter(u"STROKEANDFILLPATH"_s).size(), 2);

    const double flattening = std::cos(std::numbers::pi / 4);
    const auto paths = sampledPaths(*surface.hMF());
    ASSERT_EQ(paths.size(), 2u);
    // The rim: from nine o'clock round to six o'clock on the disc, down 42, and back.
    const std::vector<QPointF>& rim = paths[0];
    EXPECT_EQ(rim.front(), QPointF(80, 200));
    double lowest = 0;
    for (const QPointF& point : rim)
        lowest = std::max(lowest, point.y());
    EXPECT_NEAR(lowest, 200 + 120 * flattening + 42, 1.0);
    // The top face: centre, start, then the flattened arc to the moved end point.
    const std::vector<QPointF>& top = paths[1];
    EXPECT_EQ(top[0], QPointF(200, 200));
    EXPECT_EQ(top[1], QPointF(320, 200));
    EXPECT_EQ(top.back(), QPointF(200, std::lrint(200 + 120 * flattening)));
    for (std::size_t index = 2; index < top.size(); ++index)
        EXPECT_LT(offEllipse(top[index], flattening, 0), 1.0) << index;
}

TEST(MetaFileTest, TiltedSectorInTheUpperHalfHasNoRim)
{
    MetaFile surface;
    const QStringList records = sectorRecords(320, 200, 80, 200, 45, surface);
    EXPECT_EQ(records.filter(u"STROKEANDFILLPATH"_s).size(), 1);
    EXPECT_EQ(records.filter(u"CREATEBRUSHINDIRECT"_s).size(), 1);
}

TEST(MetaFileTest, SectorGoingRoundPastThreeOClockHasTwoRimParts)
{
    // From 200 degrees to 190 degrees: most of the pie, with the lower half on both sides of
    // three o'clock.
    const double from = 200 * std::numbers::pi / 180;
    const double to = 190 * std::numbers::pi / 180;
    MetaFile surface;
    const QStringList records = sectorRecords(std::lrint(200 + 120 * std::cos(from)),
        std::lrint(200 - 120 * std::sin(from)), std::lrint(200 + 120 * std::cos(to)),
        std::lrint(200 - 120 * std::sin(to)), 45, surface);
    const auto paths = sampledPaths(*surface.hMF());
    ASSERT_EQ(paths.size(), 2u);
    const qsizetype firstEnd = records.indexOf(u"STROKEANDFILLPATH"_s);
    EXPECT_EQ(records.mid(0, firstEnd).filter(u"MOVETOEX"_s).size(), 2);
}

TEST(MetaFileTest, SectorWhoseStartIsItsEndIsTheWholeEllipse)
{
    MetaFile surface;
    const QStringList records = sectorRecords(320, 200, 320, 200, 0, surface);
    EXPECT_EQ(records.filter(u"MOVETOEX"_s), QStringList { u"MOVETOEX 320,200"_s });
    EXPECT_TRUE(records.filter(u"LINETO"_s).isEmpty());
    const auto paths = sampledPaths(*surface.hMF());
    ASSERT_EQ(paths.size(), 1u);
    for (const QPointF& point : paths[0])
        EXPECT_LT(offEllipse(point, 1, 0), 1.0);
    // All the way round: the far side of the circle is on the outline.
    const auto leftmost = std::min_element(
        paths[0].begin(), paths[0].end(), [](QPointF a, QPointF b) { return a.x() < b.x(); });
    EXPECT_NEAR(leftmost->x(), 80, 1.0);
}

TEST(MetaFileTest, TiltedPiePlaysBackWithTopAndRimColours)
{
    MetaFile surface;
    surface.OpenMF();
    surface.PenStyle(5);
    surface.BrushColour(0x0000C0);
    surface.SectorMF(200, 200, 320, 200, 320, 200, 45);
    surface.CloseMF();
    const QImage image = Emf::RenderPicture(*surface.hMF(), QSize(400, 400));
    const QColor top = Frame::ColourFromValue(0x0000C0);
    const QColor rim = Frame::ColourFromValue(Frame::ShadeColour(0x0000C0, -40));
    EXPECT_EQ(QColor(image.pixel(200, 200)), top);
    EXPECT_EQ(QColor(image.pixel(200, 150)), top);
    // Below the disc's front edge (200 + 85) and above the rim's lower edge (+ 42).
    EXPECT_EQ(QColor(image.pixel(200, 305)), rim);
    EXPECT_EQ(QColor(image.pixel(200, 335)), QColor(Qt::white));
    // The disc is flattened: nothing above 200 - 85.
    EXPECT_EQ(QColor(image.pixel(200, 105)), QColor(Qt::white));
}

} // namespace
