#include "platform/emf/Player.h"

#include "BitmapBytes.h"
#include "GoldenFile.h"
#include "platform/emf/RecordTrace.h"
#include "platform/emf/RecordType.h"
#include "platform/emf/RecordingContext.h"

#include <QPainter>
#include <cstring>
#include <functional>
#include <gtest/gtest.h>
#include <initializer_list>
#include <vector>

using namespace Qt::Literals::StringLiterals;
using Emf::PointL;
using Emf::RecordingContext;
using Emf::RecordType;
using Emf::RectL;

namespace {

// 400 by 400 reference pixels, rendered at 400 by 400: one picture pixel per image pixel.
const RectL squareFrame { 0, 0, 10583, 10583 };
constexpr Emf::Colour Red = 0x0000FF;
constexpr Emf::Colour Blue = 0xFF0000;
const QRgb white = qRgb(255, 255, 255);
const QRgb red = qRgb(255, 0, 0);
const QRgb blue = qRgb(0, 0, 255);
const QRgb green = qRgb(0, 255, 0);
const QRgb black = qRgb(0, 0, 0);

RecordingContext newContext(const RectL& frame = squareFrame)
{
    return RecordingContext(Emf::ReferenceDevice::Screen(), frame, u"Test"_s);
}

// A record built field by field, as another program might have written it.
QByteArray rawRecord(RecordType type, std::initializer_list<std::uint32_t> fields,
    const QByteArray& tail = QByteArray())
{
    QByteArray bytes;
    BitmapBytes::appendU32(bytes, std::uint32_t(type));
    BitmapBytes::appendU32(bytes, std::uint32_t(8 + fields.size() * 4 + tail.size()));
    for (std::uint32_t field : fields)
        BitmapBytes::appendU32(bytes, field);
    return bytes + tail;
}

std::uint32_t floatBits(float value)
{
    std::uint32_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

void fillWith(RecordingContext& context, Emf::Colour colour)
{
    context.selectObject(Emf::Stock::NullPen);
    context.selectObject(context.createBrush({ Emf::BrushStyle::Solid, colour, 0 }));
}

Emf::ExtendedPen widePen(std::uint32_t width, Emf::Colour colour)
{
    return { Emf::PenStyle::Geometric | Emf::PenStyle::EndCapFlat | Emf::PenStyle::JoinMiter, width,
        Emf::BrushStyle::Solid, colour, 0 };
}

struct Probe
{
    int x;
    int y;
    QRgb colour;
};

struct PlaybackRow
{
    const char* name;
    std::function<void(RecordingContext&)> draw;
    std::vector<Probe> probes;
};

class PlayedPixels : public testing::TestWithParam<PlaybackRow>
{
};

TEST_P(PlayedPixels, AreThoseOfTheRecordedDrawing)
{
    RecordingContext context = newContext();
    GetParam().draw(context);
    const Emf::Picture picture = context.finish();
    ASSERT_EQ(picture.errorText(), QString());
    const QImage image = Emf::RenderPicture(picture, QSize(400, 400));
    for (const Probe& probe : GetParam().probes) {
        EXPECT_EQ(image.pixel(probe.x, probe.y), probe.colour)
            << "at " << probe.x << "," << probe.y << " got " << std::hex
            << image.pixel(probe.x, probe.y);
    }
}

// On the platform no line is thinner than a device pixel: a graph shown at a tenth of its size
// keeps dark outlines instead of a faint tenth of a pixel.
TEST(PlayedPixels, OutlinesShrunkBelowAPixelStayOnePixelWide)
{
    RecordingContext context = newContext();
    context.selectObject(context.createPen(widePen(1, 0)));
    context.selectObject(Emf::Stock::NullBrush);
    context.rectangle({ 100, 100, 300, 300 });
    const QImage image = Emf::RenderPicture(context.finish(), QSize(40, 40));
    for (const QPoint edge : { QPoint(10, 20), QPoint(20, 10) })
        EXPECT_LT(qGray(image.pixel(edge)), 128) << edge.x() << "," << edge.y();
    EXPECT_EQ(image.pixel(20, 20), white);
}

// A solid fill of a rectangle is in the clip, state and transform rows.
const PlaybackRow playbackRows[] = {
    { "hollowRectangleShowsItsOutline",
        [](RecordingContext& c) {
            c.selectObject(c.createPen(widePen(4, Blue)));
            c.selectObject(Emf::Stock::NullBrush);
            c.rectangle({ 100, 100, 200, 200 });
        },
        { { 100, 150, blue }, { 150, 199, blue }, { 150, 150, white } } },
    { "ellipse",
        [](RecordingContext& c) {
            fillWith(c, Red);
            c.ellipse({ 100, 100, 300, 200 });
        },
        { { 200, 150, red }, { 105, 105, white }, { 290, 150, red }, { 200, 195, red } } },
    { "polygon",
        [](RecordingContext& c) {
            fillWith(c, Blue);
            const PointL triangle[] = { { 0, 0 }, { 100, 0 }, { 0, 100 } };
            c.polygon(triangle);
        },
        { { 20, 20, blue }, { 80, 80, white } } },
    { "pieRunsCounterclockwise",
        [](RecordingContext& c) {
            fillWith(c, Red);
            c.pie({ 100, 100, 300, 300 }, { 300, 200 }, { 200, 100 });
        },
        { { 250, 150, red }, { 250, 250, white }, { 150, 150, white } } },
    { "pixel",
        [](RecordingContext& c) {
            c.setPixel({ 10, 12 }, Red);
        },
        { { 10, 12, red }, { 11, 12, white }, { 10, 13, white } } },
    { "widePenLine",
        [](RecordingContext& c) {
            c.selectObject(c.createPen(widePen(6, Red)));
            c.moveTo({ 50, 300 });
            c.lineTo({ 350, 300 });
        },
        { { 200, 300, red }, { 200, 302, red }, { 200, 306, white }, { 40, 300, white } } },
    { "stockBlackPenIsOnePixel",
        [](RecordingContext& c) {
            c.moveTo({ 50, 300 });
            c.lineTo({ 350, 300 });
        },
        { { 200, 300, black }, { 200, 303, white } } },
    { "strokedAndFilledPath",
        [](RecordingContext& c) {
            c.selectObject(c.createPen(widePen(4, Blue)));
            c.selectObject(c.createBrush({ Emf::BrushStyle::Solid, Red, 0 }));
            c.beginPath();
            c.moveTo({ 100, 100 });
            c.lineTo({ 300, 100 });
            c.lineTo({ 300, 300 });
            c.closeFigure();
            c.endPath();
            c.strokeAndFillPath();
        },
        { { 250, 150, red }, { 200, 100, blue }, { 150, 250, white } } },
    { "clipRectangle",
        [](RecordingContext& c) {
            c.selectClipRectangle({ 0, 0, 200, 400 });
            fillWith(c, Red);
            c.rectangle({ 0, 0, 400, 400 });
        },
        { { 100, 100, red }, { 300, 100, white } } },
    { "clipPathThenNoClip",
        [](RecordingContext& c) {
            c.beginPath();
            c.ellipse({ 0, 0, 400, 400 });
            c.endPath();
            c.selectClipPath(Emf::RegionMode::Copy);
            fillWith(c, Red);
            c.rectangle({ 0, 0, 400, 400 });
            c.removeClipping();
            c.selectObject(c.createBrush({ Emf::BrushStyle::Solid, Blue, 0 }));
            c.rectangle({ 390, 0, 400, 10 });
        },
        { { 200, 200, red }, { 5, 5, white }, { 395, 5, blue } } },
    { "savedStateComesBack",
        [](RecordingContext& c) {
            fillWith(c, Red);
            const int level = c.saveState();
            c.selectObject(c.createBrush({ Emf::BrushStyle::Solid, Blue, 0 }));
            c.selectClipRectangle({ 0, 0, 10, 10 });
            c.restoreState(level);
            c.rectangle({ 100, 100, 200, 200 });
        },
        { { 150, 150, red } } },
    { "worldTransform",
        [](RecordingContext& c) {
            fillWith(c, Red);
            c.setWorldTransform({ 2, 0, 0, 2, 100, 0 });
            c.rectangle({ 0, 0, 50, 50 });
        },
        { { 150, 50, red }, { 50, 50, white }, { 150, 150, white } } },
    { "windowAndViewportScale",
        [](RecordingContext& c) {
            fillWith(c, Red);
            c.setMapMode(Emf::MapMode::Anisotropic);
            c.appendRecord(rawRecord(RecordType::SetWindowExtEx, { 100, 100 }));
            c.appendRecord(rawRecord(RecordType::SetViewportExtEx, { 400, 200 }));
            c.rectangle({ 50, 50, 100, 100 });
        },
        { { 300, 150, red }, { 100, 150, white }, { 300, 50, white } } },
    { "lowMetricGrowsUpward",
        [](RecordingContext& c) {
            fillWith(c, Red);
            c.setMapMode(Emf::MapMode::LowMetric);
            // 0.1 mm units, y upward from the top: 10 mm down is y = -100.
            c.appendRecord(rawRecord(
                RecordType::Rectangle, { 0, std::uint32_t(-100), 100, std::uint32_t(-200) }));
        },
        { { 20, 56, red }, { 20, 30, white }, { 50, 56, white } } },
    { "polyPolygonSixteenBits",
        [](RecordingContext& c) {
            fillWith(c, Blue);
            QByteArray points;
            for (int value : { 10, 10, 50, 10, 50, 50, 10, 50, 100, 100, 140, 100, 140, 140 })
                BitmapBytes::appendU16(points, std::uint16_t(value));
            c.appendRecord(
                rawRecord(RecordType::PolyPolygon16, { 0, 0, 140, 140, 2, 7, 4, 3 }, points));
        },
        { { 30, 30, blue }, { 130, 105, blue }, { 75, 75, white } } },
    { "stretchedBitmap",
        [](RecordingContext& c) {
            const QByteArray info = BitmapBytes::info(2, 2, 24);
            const QByteArray bits = BitmapBytes::rows({ 0, 0, 255, 0, 255, 0, 0, 0, //
                255, 0, 0, 255, 255, 255, 0, 0 });
            const std::uint32_t headerSize = 80;
            c.appendRecord(rawRecord(RecordType::StretchDIBits,
                { 100, 100, 299, 299, 100, 100, 0, 0, 2, 2, headerSize, std::uint32_t(info.size()),
                    headerSize + std::uint32_t(info.size()), std::uint32_t(bits.size()), 0,
                    0x00CC0020, 200, 200 },
                info + bits));
        },
        { { 150, 250, red }, { 250, 250, green }, { 150, 150, blue }, { 250, 150, white },
            { 50, 50, white } } },
    { "patternFillWithoutBitmap",
        [](RecordingContext& c) {
            c.selectObject(c.createBrush({ Emf::BrushStyle::Solid, Blue, 0 }));
            c.appendRecord(rawRecord(RecordType::BitBlt,
                { 10, 10, 60, 60, 10, 10, 50, 50, 0x00F00021, 0, 0, floatBits(1), 0, 0,
                    floatBits(1), 0, 0, 0, 0, 0, 0, 0, 0 }));
        },
        { { 30, 30, blue }, { 70, 70, white } } },
    { "roundedRectangleLeavesItsCorners",
        [](RecordingContext& c) {
            fillWith(c, Red);
            c.appendRecord(rawRecord(RecordType::RoundRect, { 100, 100, 300, 200, 80, 80 }));
        },
        { { 200, 150, red }, { 102, 102, white }, { 200, 102, red }, { 102, 150, red } } },
    { "chordIsClosedByItsChord",
        [](RecordingContext& c) {
            fillWith(c, Blue);
            // From three o'clock to nine o'clock counterclockwise: the upper half disc.
            c.appendRecord(
                rawRecord(RecordType::Chord, { 100, 100, 300, 300, 300, 200, 100, 200 }));
        },
        { { 200, 150, blue }, { 200, 250, white } } },
    { "arcIsOnlyAnOutline",
        [](RecordingContext& c) {
            c.selectObject(c.createPen(widePen(4, Blue)));
            fillWith(c, Red);
            c.selectObject(c.createPen(widePen(4, Blue)));
            c.appendRecord(rawRecord(RecordType::Arc, { 100, 100, 300, 300, 300, 200, 100, 200 }));
        },
        { { 200, 100, blue }, { 200, 150, white }, { 200, 300, white } } },
    { "clockwiseArcDirectionTakesTheOtherHalf",
        [](RecordingContext& c) {
            fillWith(c, Blue);
            c.appendRecord(rawRecord(RecordType::SetArcDirection, { 2 }));
            c.appendRecord(rawRecord(RecordType::Pie, { 100, 100, 300, 300, 300, 200, 100, 200 }));
        },
        { { 200, 250, blue }, { 200, 150, white } } },
    { "objectBeyondTheHeadersHandleCount",
        [](RecordingContext& c) {
            // Written without taking a slot, so the header counts no objects at all.
            c.appendRecord(rawRecord(RecordType::CreateBrushIndirect, { 5, 0, Red, 0 }));
            c.appendRecord(rawRecord(RecordType::SelectObject, { 5 }));
            c.selectObject(Emf::Stock::NullPen);
            c.rectangle({ 10, 10, 50, 50 });
        },
        { { 30, 30, red } } },
};

INSTANTIATE_TEST_SUITE_P(PlayerTest, PlayedPixels, testing::ValuesIn(playbackRows),
    [](const testing::TestParamInfo<PlaybackRow>& info) { return std::string(info.param.name); });

int countPixels(const QImage& image, const QRect& area, const std::function<bool(QRgb)>& wanted)
{
    int count = 0;
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x)
            count += wanted(image.pixel(x, y)) ? 1 : 0;
    return count;
}

bool isDark(QRgb colour)
{
    return qGray(colour) < 100;
}

// Selects Arial at a character height of `pixels`, turned by `escapement` tenths of a degree.
void selectArial(RecordingContext& context, std::int32_t pixels, std::int32_t escapement = 0)
{
    Emf::LogFont font;
    font.height = -pixels;
    font.escapement = escapement;
    font.orientation = escapement;
    font.faceName = u"Arial"_s;
    context.selectObject(context.createFont(font));
}

TEST(PlayerTest, HatchedBrushDrawsLinesWithGapsBetween)
{
    RecordingContext context = newContext();
    context.selectObject(Emf::Stock::NullPen);
    context.setBackgroundMode(Emf::BackgroundMode::Transparent);
    context.selectObject(context.createBrush({ Emf::BrushStyle::Hatched, Red, Emf::Hatch::Cross }));
    context.rectangle({ 0, 0, 400, 400 });
    const QImage image = Emf::RenderPicture(context.finish(), QSize(400, 400));
    const QRect area(100, 100, 40, 40);
    const int reddish
        = countPixels(image, area, [](QRgb c) { return qRed(c) > 200 && qGreen(c) < 100; });
    const int whiteish = countPixels(image, area, [](QRgb c) { return c == qRgb(255, 255, 255); });
    EXPECT_GT(reddish, 100);
    EXPECT_GT(whiteish, 400);
}

TEST(PlayerTest, TextIsDrawnInItsColourFromTheReferencePoint)
{
    RecordingContext context = newContext();
    selectArial(context, 40);
    context.setTextColour(0x000000);
    context.setBackgroundMode(Emf::BackgroundMode::Transparent);
    const Emf::SizeL extent = context.textExtent(u"HHHH"_s);
    context.textOut({ 100, 100 }, u"HHHH"_s);
    const QImage image = Emf::RenderPicture(context.finish(), QSize(400, 400));
    const QRect box(100, 100, extent.cx, extent.cy);
    EXPECT_GT(countPixels(image, box, isDark), 200);
    // Nothing left of, above or well below the text's cell.
    EXPECT_EQ(countPixels(image, QRect(0, 0, 99, 400), isDark), 0);
    EXPECT_EQ(countPixels(image, QRect(0, 0, 400, 99), isDark), 0);
    EXPECT_EQ(countPixels(image, QRect(0, 102 + extent.cy, 400, 200), isDark), 0);
}

TEST(PlayerTest, TurnedTextRunsUpward)
{
    RecordingContext context = newContext();
    selectArial(context, 40, 900);
    context.setBackgroundMode(Emf::BackgroundMode::Transparent);
    const Emf::SizeL extent = context.textExtent(u"HHHH"_s);
    context.textOut({ 200, 300 }, u"HHHH"_s);
    const QImage image = Emf::RenderPicture(context.finish(), QSize(400, 400));
    EXPECT_GT(countPixels(image, QRect(200, 300 - extent.cx, extent.cy, extent.cx), isDark), 200);
    EXPECT_EQ(countPixels(image, QRect(0, 305, 400, 95), isDark), 0);
    EXPECT_EQ(countPixels(image, QRect(0, 0, 195, 400), isDark), 0);
}

// Warnings from the font engine while a picture plays; a glyph it failed to render is where
// it reads a null buffer.
QStringList& fontWarnings()
{
    static QStringList warnings;
    return warnings;
}

void keepFontWarnings(QtMsgType, const QMessageLogContext&, const QString& message)
{
    if (message.contains(u"glyph"_s))
        fontWarnings().append(message);
}

TEST(PlayerTest, TextUnderAFarStretchingTransformIsFilledAsOutlines)
{
    struct Row
    {
        const char* name;
        Emf::XForm world;
    };
    const Row rows[] = {
        { "shear", { 1, 0, 1e4f, 1, 0, 0 } },
        { "long and thin", { 1e5f, 0, 0, 1e-5f, 0, 0 } },
        { "turned shear", { 0, 1e3f, 1, 0, 0, 0 } },
    };
    for (const Row& row : rows) {
        RecordingContext context = newContext();
        selectArial(context, 40);
        context.setWorldTransform(row.world);
        context.textOut({ 0, 100 }, u"HHHH"_s);
        fontWarnings().clear();
        const QtMessageHandler previous = qInstallMessageHandler(keepFontWarnings);
        const QImage image = Emf::RenderPicture(context.finish(), QSize(48, 32));
        qInstallMessageHandler(previous);
        EXPECT_EQ(fontWarnings(), QStringList()) << row.name;
        EXPECT_EQ(image.size(), QSize(48, 32)) << row.name;
    }
}

TEST(PlayerTest, TextTooLargeForGlyphBitmapsIsDrawnInPlace)
{
    // An "H" 800 pixels high: its left stem crosses the middle of a 400 by 400 picture.
    RecordingContext context = newContext();
    selectArial(context, 800);
    context.setTextColour(Red);
    context.setBackgroundMode(Emf::BackgroundMode::Transparent);
    context.textOut({ 0, 0 }, u"H"_s);
    const QImage image = Emf::RenderPicture(context.finish(), QSize(400, 400));
    EXPECT_EQ(image.pixel(110, 300), red);
    EXPECT_EQ(image.pixel(20, 300), white);
    EXPECT_EQ(image.pixel(110, 60), white);
}

Emf::Picture halfHighRedPicture()
{
    // 400 wide, 200 high, filled red.
    RecordingContext context = newContext({ 0, 0, 10583, 5292 });
    fillWith(context, Red);
    context.rectangle({ 0, 0, 400, 200 });
    return context.finish();
}

TEST(PlayerTest, KeepingProportionsCentresTheFrame)
{
    const QImage kept = Emf::RenderPicture(
        halfHighRedPicture(), QSize(400, 400), Qt::white, Emf::Scaling::KeepProportions);
    EXPECT_EQ(kept.pixel(200, 50), white);
    EXPECT_EQ(kept.pixel(200, 110), red);
    EXPECT_EQ(kept.pixel(200, 290), red);
    EXPECT_EQ(kept.pixel(200, 350), white);
    const QImage stretched = Emf::RenderPicture(halfHighRedPicture(), QSize(400, 400));
    EXPECT_EQ(stretched.pixel(200, 50), red);
    EXPECT_EQ(stretched.pixel(200, 350), red);
}

TEST(PlayerTest, DrawingIsClippedToTheTarget)
{
    RecordingContext context = newContext();
    fillWith(context, Red);
    context.rectangle({ -100, -100, 500, 500 });
    const Emf::Picture picture = context.finish();
    QImage image(400, 400, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.translate(10, 20);
    const QTransform before = painter.transform();
    Emf::PlayPicture(picture, painter, QRectF(100, 100, 100, 100));
    EXPECT_EQ(painter.transform(), before);
    EXPECT_FALSE(painter.hasClipping());
    painter.end();
    EXPECT_EQ(image.pixel(160, 170), red);
    EXPECT_EQ(image.pixel(105, 115), white);
    EXPECT_EQ(image.pixel(215, 225), white);
}

TEST(PlayerTest, DamagedPictureShowsTheRecordsBeforeTheDamage)
{
    RecordingContext context = newContext();
    fillWith(context, Red);
    context.rectangle({ 0, 0, 100, 100 });
    context.rectangle({ 200, 200, 300, 300 });
    QByteArray bytes = context.finish().bytes();
    // Cut inside the second rectangle.
    bytes.truncate(bytes.size() - 20 - 12);
    const Emf::Picture picture = Emf::Picture::fromBytes(bytes);
    ASSERT_FALSE(picture.errorText().isEmpty());
    const QImage image = Emf::RenderPicture(picture, QSize(400, 400));
    EXPECT_EQ(image.pixel(50, 50), red);
    EXPECT_EQ(image.pixel(250, 250), white);
}

TEST(PlayerTest, InvalidPictureDrawsNothing)
{
    const QImage image
        = Emf::RenderPicture(Emf::Picture::fromBytes("not a picture"), QSize(50, 50), Qt::green);
    EXPECT_EQ(countPixels(image, image.rect(), [](QRgb c) { return c != qRgb(0, 255, 0); }), 0);
}

TEST(PlayerTest, PlayedIntoAnotherRecordingLooksTheSame)
{
    RecordingContext inner = newContext();
    inner.selectObject(inner.createPen(widePen(10, Blue)));
    inner.selectObject(inner.createBrush({ Emf::BrushStyle::Solid, Red, 0 }));
    inner.rectangle({ 100, 100, 300, 300 });
    inner.setMapMode(Emf::MapMode::Anisotropic);
    inner.appendRecord(rawRecord(RecordType::SetWindowExtEx, { 100, 100 }));
    inner.appendRecord(rawRecord(RecordType::SetViewportExtEx, { 200, 200 }));
    inner.selectObject(Emf::Stock::BlackBrush);
    inner.ellipse({ 90, 90, 110, 110 });
    inner.saveState(); // left open on purpose
    const Emf::Picture picture = inner.finish();

    RecordingContext outer = newContext();
    fillWith(outer, 0x00FF00);
    outer.rectangle({ 0, 0, 400, 50 });
    ASSERT_TRUE(Emf::PlayPicture(picture, outer, RectL { 0, 100, 200, 300 }));
    // The outer recording's own brush is selected again afterwards.
    outer.rectangle({ 0, 350, 400, 400 });
    const Emf::Picture combined = outer.finish();
    EXPECT_EQ(combined.errorText(), QString());

    const QImage direct = Emf::RenderPicture(picture, QSize(200, 200));
    const QImage played = Emf::RenderPicture(combined, QSize(400, 400));
    for (const QPoint& at : { QPoint(100, 100), QPoint(50, 50), QPoint(10, 10), QPoint(150, 150),
             QPoint(25, 100), QPoint(190, 190) })
        EXPECT_EQ(played.pixel(at + QPoint(0, 100)), direct.pixel(at)) << at.x() << "," << at.y();
    EXPECT_EQ(played.pixel(100, 20), green);
    EXPECT_EQ(played.pixel(100, 370), green);
    EXPECT_EQ(played.pixel(300, 200), white);

    // The whole recording: the played picture inside a saved state, in the target's place,
    // every object it made deleted again, and the outer brush selected again.
    EXPECT_TRUE(Golden::Matches(u"platform/emf/playedIntoAnotherRecording.trace"_s,
        Golden::Lines(Emf::TraceRecords(combined))));
}

TEST(PlayerTest, NothingIsPlayedIntoAFinishedRecording)
{
    RecordingContext outer = newContext();
    outer.finish();
    EXPECT_FALSE(Emf::PlayPicture(halfHighRedPicture(), outer, RectL { 0, 0, 100, 100 }));
}

} // namespace
