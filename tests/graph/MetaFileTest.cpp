#include "graph/MetaFile.h"

#include "GoldenFile.h"
#include "RowFile.h"
#include "TableRows.h"
#include "platform/emf/RecordReader.h"
#include "platform/emf/RecordTrace.h"
#include "platform/runtime/Error.h"

#include <QPointF>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <numbers>

using namespace Qt::Literals::StringLiterals;
using Ormsey::MetaFile;

namespace {

using TestRows::PrintTo;

QStringList trace(const MetaFile& surface)
{
    return surface.hMF() ? Emf::TraceRecords(*surface.hMF()) : QStringList();
}

// Whole pictures, compared with tests/data/graph/metafile/<row name>.trace: the opening
// records, what the calls recorded, and the closing restore and deletions.
struct DrawingRow
{
    const char* name;
    std::function<void(MetaFile&)> draw;
    std::function<void(MetaFile&)> beforeOpening = [](MetaFile&) {};
    Emf::ReferenceDevice reference = Emf::ReferenceDevice::Screen();
};

class RecordsOfDrawing : public testing::TestWithParam<DrawingRow>
{
};

TEST_P(RecordsOfDrawing, AreThoseOfTheGoldenTrace)
{
    MetaFile surface;
    GetParam().beforeOpening(surface);
    surface.OpenMF(GetParam().reference);
    GetParam().draw(surface);
    surface.CloseMF();
    EXPECT_TRUE(
        Golden::Matches(u"graph/metafile/%1.trace"_s.arg(QString::fromLatin1(GetParam().name)),
            Golden::Lines(trace(surface))));
}

const DrawingRow drawingRows[] = {
    // Miter limit 2, the state saved, the stock white brush, null pen and system font.
    { "openingSelectsTheStockObjects", [](MetaFile&) {} },
    // No pen is made: the line is drawn with the null pen.
    { "colourWhileThePenIsNullCreatesNothing",
        [](MetaFile& m) {
            m.PenColour(255);
            m.PenWidth(3);
            m.PenEndCap(0);
            m.LineMF(0, 0, 10, 10);
        } },
    // A geometric pen 1 wide in 0x0000FF with flat ends (style 0x12200).
    { "solidStyleAfterwardsCreatesAPenOfThatColour",
        [](MetaFile& m) {
            m.PenColour(255);
            m.PenStyle(0);
            m.LineMF(0, 0, 10, 10);
        } },
    // Style 0x12100: square ends; width 4.
    { "penWidthAndEndCapGoIntoThePen",
        [](MetaFile& m) {
            m.PenStyle(0);
            m.PenWidth(4);
            m.PenEndCap(0x100);
            m.LineToMF(5, 5);
        } },
    // The made pen is deleted and the stock null pen selected.
    { "nullStyleAgainTakesTheStockNullPen",
        [](MetaFile& m) {
            m.PenStyle(0);
            m.PenColour(255);
            m.LineToMF(5, 5);
            m.PenStyle(5);
            m.LineToMF(6, 6);
        } },
    // Both circles with the stock null brush; the colour makes no brush while hollow.
    { "hollowBrushIsTheStockNullBrush",
        [](MetaFile& m) {
            m.BrushStyle(1);
            m.CircleMF(50, 50, 10);
            m.BrushColour(255);
            m.CircleMF(50, 50, 20);
        } },
    // A solid green brush with hatch 8, then a hatched one (style 2, hatch 4).
    { "otherBrushesAreCreated",
        [](MetaFile& m) {
            m.BrushColour(0x00FF00);
            m.CircleMF(50, 50, 10);
            m.BrushStyle(2);
            m.BrushHatch(4);
            m.CircleMF(50, 50, 10);
        } },
    // Height -13 (10 points at 96 dots an inch), escapement and orientation 900, weight 700,
    // italic, underline, character set 1, the face name.
    { "fontSettersFillTheLogicalFont",
        [](MetaFile& m) {
            m.FontName(u"Times New Roman"_s);
            m.FontSize(10);
            m.FontBold(true);
            m.FontItalic(true);
            m.FontUnderline(true);
            m.FontOrientation(900);
            m.GetTextHeight(u"Sales"_s);
        } },
    { "pointTakesThePenColourWithoutMakingAPen",
        [](MetaFile& m) {
            m.PenColour(255);
            m.PlotPointMF(5, 6);
        } },
    // A four-point polygon 10,10 10,30 50,30 50,10 in a path, outlined and filled.
    { "rectangleIsAFourPointPolygonOutlinedAndFilled",
        [](MetaFile& m) { m.RectMF(10, 10, 50, 30); } },
    // The fourth corner 20,0.
    { "parallelogramGetsItsFourthCorner",
        [](MetaFile& m) { m.ParallelogramMF(0, 0, 10, 5, 30, 5); } },
    // The region 5 6 300 200, taken as left, top, right and bottom.
    { "clearClipPathTakesTheFrameFieldsAsCorners",
        [](MetaFile& m) {
            m.Left = 5;
            m.Top = 6;
            m.Width = 300;
            m.Height = 200;
            m.ClearClipPath();
        } },
    { "textInItsColourOnATransparentBackground",
        [](MetaFile& m) {
            m.FontColour(0x0000FF);
            m.PaintTextMF(u"Total"_s, 100, 50, 0, 0, 0);
        } },
    // The frame 265 529 10848 8467: the fields' pixels in hundredths of a millimetre.
    { "frameIsInHundredthsOfAMillimetreFromThePictureFields", [](MetaFile&) {},
        [](MetaFile& m) {
            m.Left = 10;
            m.Top = 20;
            m.Width = 400;
            m.Height = 300;
        } },
    // One pen and one brush for fifty bars.
    { "manySameColouredShapesMakeOnePenAndOneBrush",
        [](MetaFile& m) {
            m.PenStyle(0);
            m.PenWidth(2);
            for (int bar = 0; bar < 50; ++bar) {
                m.BrushColour(0x3366CC);
                m.RectMF(bar * 8, 100, bar * 8 + 6, 300);
            }
        } },
    // At 300 dots an inch the opening 12 points are height -50, and 7.5 points -31 (31.25).
    { "fontHeightFollowsTheReferenceResolution",
        [](MetaFile& m) {
            m.FontName(u"Arial"_s);
            m.GetTextWidth(u"x"_s);
            m.FontSize(7.5);
            m.GetTextWidth(u"x"_s);
        },
        [](MetaFile&) {}, Emf::ReferenceDevice { 2480, 3508, 210, 297, 300, 300 } },
};

INSTANTIATE_TEST_SUITE_P(
    MetaFileTest, RecordsOfDrawing, testing::ValuesIn(drawingRows), TestRows::Named());

TEST(MetaFileTest, DescriptionIsTheMakersNameAndANull)
{
    MetaFile surface;
    surface.OpenMF();
    surface.CloseMF();
    EXPECT_EQ(surface.hMF()->header().description, u"Pellimore"_s + QChar(0));
}

// Font names of 32 characters or more and polygons of more than 19 points (or fewer numbers
// than points) are refused with error 9, which the caller turns into its message.
struct LimitRow
{
    const char* name;
    std::function<void(MetaFile&)> call;
    bool refused;
};

class Limits : public testing::TestWithParam<LimitRow>
{
};

TEST_P(Limits, AreRefusedWithErrorNine)
{
    MetaFile surface;
    surface.OpenMF();
    try {
        GetParam().call(surface);
        EXPECT_FALSE(GetParam().refused) << "accepted";
    } catch (const Runtime::Error& error) {
        EXPECT_TRUE(GetParam().refused);
        EXPECT_EQ(error.number(), 9);
    }
}

const std::vector<std::int32_t> sixtyNumbers(60, 1);

const LimitRow limitRows[] = {
    { "emptyFontName", [](MetaFile& m) { m.FontName(QString()); }, false },
    { "fontNameOf31", [](MetaFile& m) { m.FontName(QString(31, u'N')); }, false },
    { "fontNameOf32", [](MetaFile& m) { m.FontName(QString(32, u'N')); }, true },
    { "fontNameOf40", [](MetaFile& m) { m.FontName(QString(40, u'N')); }, true },
    { "polygonOf19", [](MetaFile& m) { m.PolygonMF(sixtyNumbers, 19); }, false },
    { "polygonOf20", [](MetaFile& m) { m.PolygonMF(sixtyNumbers, 20); }, true },
    { "polygonOfMinusOne", [](MetaFile& m) { m.PolygonMF(sixtyNumbers, -1); }, true },
    { "polygonOfTooFewNumbers",
        [](MetaFile& m) { m.PolygonMF(std::span(sixtyNumbers).first(5), 3); }, true },
};

INSTANTIATE_TEST_SUITE_P(MetaFileTest, Limits, testing::ValuesIn(limitRows), TestRows::Named());

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
    surface.CloseMF();
    // The polygon in a path of its own, then the caller's path redrawn and stroked.
    EXPECT_TRUE(Golden::Matches(
        u"graph/metafile/polygonKeepsTheCallersPath.trace"_s, Golden::Lines(trace(surface))));
}

class TextPlacement : public RowFile::RowTest<>
{
};

TEST_P(TextPlacement, StartsWhereTheAlignmentRuleSays)
{
    MetaFile surface;
    surface.OpenMF();
    surface.FontName(u"Arial"_s);
    surface.FontSize(11);
    if (row().flag("vertical"))
        surface.FontOrientation(900);
    const double width = surface.GetTextWidth(u"Sample text"_s);
    const double height = surface.GetTextHeight(u"Sample text"_s);
    surface.PaintTextMF(u"Sample text"_s, 200, 100, std::int32_t(row().whole("align")),
        row().number("directionX"), row().number("directionY"));
    const double x = 200 + row().number("xw") * width + row().number("xh") * height;
    const double y = 100 + row().number("yw") * width + row().number("yh") * height;
    surface.CloseMF();
    EXPECT_EQ(trace(surface).filter(u"EXTTEXTOUTW"_s),
        QStringList {
            u"EXTTEXTOUTW %1,%2 \"Sample text\""_s.arg(std::lrint(x)).arg(std::lrint(y)) });
}

INSTANTIATE_TEST_SUITE_P(MetaFileTest, TextPlacement,
    RowFile::In("graph/metafile/textPlacement.rows"), RowFile::Named());

TEST(MetaFileTest, OpeningAgainDeletesTheEarlierPicture)
{
    MetaFile surface;
    surface.OpenMF();
    surface.RectMF(0, 0, 10, 10);
    surface.CloseMF();
    surface.OpenMF();
    surface.CircleMF(50, 50, 5);
    surface.CloseMF();
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

// Sectors -----------------------------------------------------------------------------------

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

// Distance of a point from the rim of the disc of radius 120 about (200, 200), flattened and
// moved down by `dropped`.
double offEllipse(QPointF point, double flattening, double dropped)
{
    const double dx = (point.x() - 200) / 120;
    const double dy = (point.y() - 200 - dropped) / (120 * flattening);
    return std::abs(std::hypot(dx, dy) - 1) * 120 * flattening;
}

class Sectors : public RowFile::RowTest<>
{
protected:
    const Emf::Picture& draw()
    {
        const auto at = [&](const char* column) { return std::int32_t(row().whole(column)); };
        m_surface.OpenMF();
        m_surface.PenStyle(0);
        m_surface.BrushColour(0x2080E0);
        m_surface.SectorMF(200, 200, at("startX"), at("startY"), at("endX"), at("endY"),
            row().number("elevation"));
        m_surface.CloseMF();
        return *m_surface.hMF();
    }

    MetaFile m_surface;
};

TEST_P(Sectors, AreThoseOfTheGoldenTrace)
{
    draw();
    EXPECT_TRUE(
        Golden::Matches(u"graph/metafile/%1.trace"_s.arg(QString::fromStdString(row().name)),
            Golden::Lines(trace(m_surface))));
}

// Every point of every outline but the centre lies on the rim of the flattened disc or, for
// the wall, on that rim moved down by the wall's height.
TEST_P(Sectors, OutlinesLieOnTheFlattenedDisc)
{
    const double elevation = row().number("elevation") * std::numbers::pi / 180;
    const double flattening = std::cos(elevation);
    const double wall = std::lrint(60 * std::sin(elevation));
    const auto paths = sampledPaths(draw());
    ASSERT_EQ(paths.size(), std::size_t(row().whole("paths")));
    for (const std::vector<QPointF>& path : paths) {
        for (std::size_t index = 0; index < path.size(); ++index) {
            if (path[index] == QPointF(200, 200))
                continue;
            EXPECT_LT(std::min(offEllipse(path[index], flattening, 0),
                          offEllipse(path[index], flattening, wall)),
                1.0)
                << index << " at " << path[index].x() << "," << path[index].y();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    MetaFileTest, Sectors, RowFile::In("graph/metafile/sectors.rows"), RowFile::Named());

} // namespace
