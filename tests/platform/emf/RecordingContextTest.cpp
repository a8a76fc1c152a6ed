#include "platform/emf/RecordingContext.h"

#include "GoldenFile.h"
#include "TableRows.h"
#include "platform/emf/RecordReader.h"
#include "platform/emf/RecordTrace.h"
#include "platform/emf/RecordType.h"
#include "platform/emf/TextMetrics.h"

#include <QStringList>
#include <algorithm>
#include <functional>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using Emf::PointL;
using Emf::RecordingContext;
using Emf::RectL;

namespace {

using TestRows::PrintTo;

const RectL frame { 0, 0, 10583, 10583 };

RecordingContext newContext()
{
    return RecordingContext(Emf::ReferenceDevice::Screen(), frame, u"Pellimore"_s + QChar(0));
}

// The trace without the header line and the end record: the records the calls wrote.
QStringList drawnRecords(Emf::Picture picture)
{
    QStringList lines = Emf::TraceRecords(picture);
    if (!lines.isEmpty())
        lines.removeFirst();
    if (!lines.isEmpty() && lines.last() == u"EOF"_s)
        lines.removeLast();
    return lines;
}

Emf::ExtendedPen solidPen(std::uint32_t width, Emf::Colour colour)
{
    return { Emf::PenStyle::Geometric | Emf::PenStyle::JoinMiter | Emf::PenStyle::EndCapFlat, width,
        Emf::BrushStyle::Solid, colour, 0 };
}

// Whole pictures as bytes, compared with tests/data/platform/emf/recording/<row name>.emf.
struct PictureRow
{
    const char* name;
    std::function<void(RecordingContext&)> draw;
};

class PictureBytes : public testing::TestWithParam<PictureRow>
{
};

TEST_P(PictureBytes, AreThoseOfTheGoldenFile)
{
    RecordingContext context = newContext();
    GetParam().draw(context);
    const Emf::Picture picture = context.finish();
    ASSERT_TRUE(picture.isValid());
    EXPECT_EQ(picture.errorText(), QString());
    EXPECT_TRUE(Golden::Matches(
        u"platform/emf/recording/%1.emf"_s.arg(QString::fromLatin1(GetParam().name)),
        picture.bytes()));
}

const PictureRow pictureRows[] = {
    // The 128-byte header record: bounds 0 0 -1 -1, the frame, " EMF", version 0x10000, two
    // records, one handle slot (the unused slot 0), the screen of 1920 by 1440 pixels and
    // 508 by 381 millimetres, "Pellimore" and a null in UTF-16 at offset 108; then the
    // 20-byte end record.
    { "empty", [](RecordingContext&) {} },
    // Six records (header, rectangle, two creations, a selection, end) and three handle
    // slots; bounds 10 20 30 40.
    { "headerCarriesTheCounts",
        [](RecordingContext& c) {
            c.rectangle({ 10, 20, 30, 40 });
            const Emf::ObjectHandle pen = c.createPen(solidPen(1, 0));
            c.createBrush({ 0, 0xFF, 0 });
            c.selectObject(pen);
        } },
};

INSTANTIATE_TEST_SUITE_P(
    RecordingContextTest, PictureBytes, testing::ValuesIn(pictureRows), TestRows::Named());

TEST(RecordingContextTest, CallsAfterFinishingAreIgnored)
{
    RecordingContext context = newContext();
    const Emf::Picture first = context.finish();
    context.rectangle({ 0, 0, 5, 5 });
    EXPECT_EQ(context.createPen(solidPen(2, 0)), 0u);
    EXPECT_FALSE(context.isRecording());
    EXPECT_FALSE(context.finish().isValid());
    EXPECT_TRUE(first.isValid());
}

// The whole picture of each row, header and end record included, compared with
// tests/data/platform/emf/recording/<row name>.trace.
struct RecordRow
{
    const char* name;
    std::function<void(RecordingContext&)> draw;
};

class RecordsWritten : public testing::TestWithParam<RecordRow>
{
};

TEST_P(RecordsWritten, ReadBackAsInTheGoldenTrace)
{
    RecordingContext context = newContext();
    GetParam().draw(context);
    EXPECT_TRUE(Golden::Matches(
        u"platform/emf/recording/%1.trace"_s.arg(QString::fromLatin1(GetParam().name)),
        Golden::Lines(Emf::TraceRecords(context.finish()))));
}

const RecordRow recordRows[] = {
    { "moveAndLine",
        [](RecordingContext& c) {
            c.moveTo({ 1, 2 });
            c.lineTo({ 30, 40 });
        } },
    { "polygon",
        [](RecordingContext& c) {
            const PointL points[] = { { 10, 10 }, { 10, 30 }, { 50, 30 }, { 50, 10 } };
            c.polygon(points);
        } },
    { "bezier",
        [](RecordingContext& c) {
            const PointL points[] = { { 1, 1 }, { 2, 2 }, { 3, 3 } };
            c.polyBezierTo(points);
        } },
    { "bezierWithIncompleteSegmentIsRefused",
        [](RecordingContext& c) {
            const PointL points[] = { { 1, 1 }, { 2, 2 } };
            c.polyBezierTo(points);
        } },
    { "ellipseAndPie",
        [](RecordingContext& c) {
            c.ellipse({ 0, 0, 20, 10 });
            c.pie({ 0, 0, 20, 20 }, { 20, 10 }, { 10, 0 });
        } },
    { "pixel",
        [](RecordingContext& c) {
            c.setPixel({ 5, 6 }, 0x0000FF);
        } },
    { "stateSettings",
        [](RecordingContext& c) {
            c.setMapMode(Emf::MapMode::Text);
            c.setMiterLimit(2);
            c.setTextAlign(Emf::TextAlign::Baseline);
            c.setTextColour(0x123456);
            c.setBackgroundMode(Emf::BackgroundMode::Transparent);
        } },
    { "pathBracket",
        [](RecordingContext& c) {
            c.beginPath();
            c.moveTo({ 0, 0 });
            c.lineTo({ 5, 0 });
            c.closeFigure();
            c.endPath();
            c.strokeAndFillPath();
            c.beginPath();
            c.endPath();
            c.selectClipPath(Emf::RegionMode::Copy);
        } },
    { "clipRectangleAndNoClip",
        [](RecordingContext& c) {
            c.selectClipRectangle({ 50, 60, 10, 20 });
            c.removeClipping();
        } },
    { "objects",
        [](RecordingContext& c) {
            const Emf::ObjectHandle pen = c.createPen(solidPen(3, 0x0000FF));
            c.createBrush({ Emf::BrushStyle::Hatched, 0x00FF00, Emf::Hatch::Cross });
            Emf::LogFont font;
            font.height = -16;
            font.escapement = 900;
            font.orientation = 900;
            font.weight = 700;
            font.italic = true;
            font.faceName = u"Arial"_s;
            c.createFont(font);
            c.selectObject(pen);
            c.selectObject(Emf::Stock::NullPen);
            c.deleteObject(pen);
        } },
    { "saveAndRestoreByLevel",
        [](RecordingContext& c) {
            const int first = c.saveState();
            c.saveState();
            c.restoreState(first);
        } },
    { "restoreOfUnsavedLevelIsRefused",
        [](RecordingContext& c) {
            c.saveState();
            c.restoreState(2);
            c.restoreState(-2);
            c.restoreState(0);
        } },
    { "text",
        [](RecordingContext& c) {
            c.textOut({ 10, 20 }, u"Total"_s);
        } },
};

INSTANTIATE_TEST_SUITE_P(
    RecordingContextTest, RecordsWritten, testing::ValuesIn(recordRows), TestRows::Named());

TEST(RecordingContextTest, SelectedObjectCannotBeDeleted)
{
    RecordingContext context = newContext();
    const Emf::ObjectHandle pen = context.createPen(solidPen(2, 0));
    context.selectObject(pen);
    EXPECT_FALSE(context.deleteObject(pen));
    EXPECT_FALSE(context.deleteObject(Emf::Stock::BlackPen));
    context.selectObject(Emf::Stock::BlackPen);
    EXPECT_TRUE(context.deleteObject(pen));
    EXPECT_FALSE(context.deleteObject(pen));
}

struct BoundsRow
{
    const char* name;
    std::uint32_t penWidth; // 0: the null pen
    std::function<void(RecordingContext&)> draw;
    RectL expected;
};

class BoundsOfDrawing : public testing::TestWithParam<BoundsRow>
{
};

TEST_P(BoundsOfDrawing, CoverWhatWasDrawnAndHalfThePen)
{
    RecordingContext context = newContext();
    if (GetParam().penWidth == 0)
        context.selectObject(Emf::Stock::NullPen);
    else
        context.selectObject(context.createPen(solidPen(GetParam().penWidth, 0)));
    GetParam().draw(context);
    EXPECT_EQ(context.finish().header().bounds, GetParam().expected);
}

const BoundsRow boundsRows[] = {
    { "rectangleWithoutPen", 0,
        [](RecordingContext& c) {
            c.rectangle({ 10, 20, 50, 60 });
        },
        { 10, 20, 50, 60 } },
    { "rectangleWithWidePen", 6,
        [](RecordingContext& c) {
            c.rectangle({ 10, 20, 50, 60 });
        },
        { 7, 17, 53, 63 } },
    { "twoShapes", 1,
        [](RecordingContext& c) {
            c.ellipse({ 10, 10, 20, 20 });
            c.moveTo({ 100, 5 });
            c.lineTo({ 90, 40 });
        },
        { 10, 5, 100, 40 } },
    { "pixelIgnoresPen", 10,
        [](RecordingContext& c) {
            c.setPixel({ 3, 4 }, 0);
        },
        { 3, 4, 3, 4 } },
    { "filledPath", 0,
        [](RecordingContext& c) {
            c.beginPath();
            c.moveTo({ 5, 5 });
            c.lineTo({ 25, 15 });
            c.endPath();
            c.fillPath();
        },
        { 5, 5, 25, 15 } },
    { "clipPathDrawsNothing", 4,
        [](RecordingContext& c) {
            c.beginPath();
            c.rectangle({ 0, 0, 100, 100 });
            c.endPath();
            c.selectClipPath(Emf::RegionMode::Copy);
            c.setPixel({ 50, 50 }, 0);
        },
        { 50, 50, 50, 50 } },
    { "worldTransformMovesThem", 0,
        [](RecordingContext& c) {
            c.setWorldTransform({ 2, 0, 0, 2, 100, 50 });
            c.rectangle({ 0, 0, 10, 20 });
        },
        { 100, 50, 120, 90 } },
};

INSTANTIATE_TEST_SUITE_P(
    RecordingContextTest, BoundsOfDrawing, testing::ValuesIn(boundsRows), TestRows::Named());

TEST(RecordingContextTest, TextRecordCarriesAdvancesThatAddUpToTheExtent)
{
    RecordingContext context = newContext();
    Emf::LogFont font;
    font.height = -16;
    font.faceName = u"Arial"_s;
    context.selectObject(context.createFont(font));
    const QString text = u"Population 1991"_s;
    const Emf::SizeL extent = context.textExtent(text);
    context.textOut({ 40, 50 }, text);
    const Emf::Picture picture = context.finish();

    const Emf::RecordSpan& record = picture.records()[2];
    ASSERT_EQ(record.type, std::uint32_t(Emf::RecordType::ExtTextOutW));
    Emf::RecordReader reader(picture.recordBytes(record));
    const std::uint32_t count = reader.u32(44);
    const std::uint32_t options = reader.u32(52);
    const std::uint32_t advancesOffset = reader.u32(72);
    ASSERT_EQ(count, std::uint32_t(text.size()));
    EXPECT_EQ(options & Emf::TextOption::NoRectangle, 0u);
    const auto advances = reader.u32s(advancesOffset, count);
    ASSERT_TRUE(advances.has_value());
    std::int64_t sum = 0;
    for (std::uint32_t advance : *advances)
        sum += advance;
    EXPECT_EQ(sum, extent.cx);
    // The record's bounds: the text's box at the top-left alignment.
    EXPECT_EQ(reader.rect(8), (RectL { 40, 50, 40 + extent.cx, 50 + extent.cy }));
    EXPECT_EQ(picture.header().bounds, (RectL { 40, 50, 40 + extent.cx, 50 + extent.cy }));
}

TEST(RecordingContextTest, TurnedTextHasTurnedBounds)
{
    RecordingContext context = newContext();
    Emf::LogFont font;
    font.height = -16;
    font.escapement = 900;
    font.faceName = u"Arial"_s;
    context.selectObject(context.createFont(font));
    const Emf::SizeL extent = context.textExtent(u"Up"_s);
    context.textOut({ 100, 100 }, u"Up"_s);
    // Running upward from the reference point, the cell to its right.
    EXPECT_EQ(
        context.finish().header().bounds, (RectL { 100, 100 - extent.cx, 100 + extent.cy, 100 }));
}

TEST(RecordingContextTest, CopiedRecordMustDeclareItsOwnSize)
{
    RecordingContext context = newContext();
    QByteArray record(12, '\0');
    record[0] = char(Emf::RecordType::SaveDC);
    record[4] = 12;
    EXPECT_TRUE(context.appendRecord(record));
    record[4] = 16;
    EXPECT_FALSE(context.appendRecord(record));
    EXPECT_FALSE(context.appendRecord(record.first(6)));
    EXPECT_EQ(drawnRecords(context.finish()), (QStringList { u"SAVEDC"_s }));
}

bool sameRecords(const std::vector<Emf::RecordSpan>& a, const std::vector<Emf::RecordSpan>& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const auto& x, const auto& y) {
        return x.type == y.type && x.offset == y.offset && x.size == y.size;
    });
}

void drawSomething(RecordingContext& context, int shift)
{
    context.selectObject(context.createPen(solidPen(3, 0x0000FF)));
    context.rectangle({ shift, 20, 30 + shift, 40 });
    context.beginPath();
    context.moveTo({ 1, 1 });
    context.lineTo({ 50 + shift, 9 });
    context.endPath();
    context.strokePath();
    context.textOut({ 5, 5 }, u"Apples"_s);
}

TEST(RecordingContextTest, RecordingIntoASparePictureGivesTheSameBytesAndSparesItsCopies)
{
    RecordingContext first = newContext();
    drawSomething(first, 200);
    first.textOut({ 9, 9 }, u"A longer first picture than the second"_s);
    Emf::Picture old = first.finish();
    const Emf::Picture kept = old; // shares the bytes
    const QByteArray keptBytes = kept.bytes();

    RecordingContext fresh = newContext();
    drawSomething(fresh, 7);
    const Emf::Picture expected = fresh.finish();

    RecordingContext reused(Emf::ReferenceDevice::Screen(), frame, u"Pellimore"_s + QChar(0),
        std::move(old).takeStorage());
    drawSomething(reused, 7);
    const Emf::Picture picture = reused.finish();

    EXPECT_FALSE(old.isValid());
    EXPECT_EQ(picture.bytes(), expected.bytes());
    EXPECT_TRUE(sameRecords(picture.records(), expected.records()));
    EXPECT_EQ(kept.bytes(), keptBytes);
    EXPECT_TRUE(sameRecords(kept.records(), Emf::Picture::fromBytes(keptBytes).records()));
}

} // namespace
