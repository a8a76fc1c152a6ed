#include "platform/emf/DeviceIndependentBitmap.h"

#include "BitmapBytes.h"

#include <QColor>
#include <functional>
#include <gtest/gtest.h>
#include <vector>

using namespace BitmapBytes;

namespace {

struct PixelCheck
{
    int x;
    int y;
    QRgb colour;
};

struct DecodeRow
{
    const char* name;
    QByteArray info;
    QByteArray bits;
    bool paletteIndices;
    QSize size; // empty: refused
    std::vector<PixelCheck> pixels;
};

class DecodedBitmap : public testing::TestWithParam<DecodeRow>
{
};

TEST_P(DecodedBitmap, HasTheStoredPixelsTopDown)
{
    const DecodeRow& row = GetParam();
    const QImage image = Emf::DecodeDeviceIndependentBitmap(row.info, row.bits, row.paletteIndices);
    if (row.size.isEmpty()) {
        EXPECT_TRUE(image.isNull());
        return;
    }
    ASSERT_EQ(image.size(), row.size);
    for (const PixelCheck& check : row.pixels)
        EXPECT_EQ(image.pixel(check.x, check.y), check.colour)
            << "at " << check.x << "," << check.y << " got " << std::hex
            << image.pixel(check.x, check.y);
}

const QRgb red = qRgb(255, 0, 0);
const QRgb green = qRgb(0, 255, 0);
const QRgb blue = qRgb(0, 0, 255);
const QRgb white = qRgb(255, 255, 255);
const QRgb black = qRgb(0, 0, 0);

const DecodeRow decodeRows[] = {
    // Rows of 2 x 3 bytes padded to 8; stored bottom row first.
    { "bottomUp24Bits", info(2, 2, 24),
        rows({ 0, 0, 255, 0, 255, 0, 0, 0, /* bottom */ 255, 0, 0, 255, 255, 255, 0, 0 }), false,
        { 2, 2 }, { { 0, 1, red }, { 1, 1, green }, { 0, 0, blue }, { 1, 0, white } } },
    { "topDown24Bits", info(2, -2, 24),
        rows({ 0, 0, 255, 0, 255, 0, 0, 0, 255, 0, 0, 255, 255, 255, 0, 0 }), false, { 2, 2 },
        { { 0, 0, red }, { 1, 0, green }, { 0, 1, blue }, { 1, 1, white } } },
    { "eightBitsWithPalette", info(3, 1, 8, 0, 2, { 0x000000FF, 0x00FF0000 }), rows({ 1, 0, 1, 0 }),
        false, { 3, 1 }, { { 0, 0, red }, { 1, 0, blue }, { 2, 0, red } } },
    { "oneBitPicksFromTwoColours", info(10, 1, 1, 0, 0, { 0x00000000, 0x00FFFFFF }),
        rows({ 0b10100000, 0b01000000, 0, 0 }), false, { 10, 1 },
        { { 0, 0, white }, { 1, 0, black }, { 2, 0, white }, { 9, 0, white }, { 8, 0, black } } },
    { "fourBitsTakeHighNibbleFirst", info(3, 1, 4, 0, 3, { 0x0, 0x00FF0000, 0x0000FF00 }),
        rows({ 0x12, 0x00, 0, 0 }), false, { 3, 1 },
        { { 0, 0, red }, { 1, 0, green }, { 2, 0, black } } },
    { "sixteenBitsFiveFiveFive", info(2, 1, 16), rows({ 0x00, 0x7C, 0x1F, 0x00 }), false, { 2, 1 },
        { { 0, 0, red }, { 1, 0, blue } } },
    { "sixteenBitsFiveSixFiveMasks", info(1, 1, 16, 3, 0, { 0xF800, 0x07E0, 0x001F }),
        rows({ 0xE0, 0x07, 0, 0 }), false, { 1, 1 }, { { 0, 0, green } } },
    { "thirtyTwoBitsIgnoreTheTopByte", info(1, 1, 32), rows({ 0, 0, 255, 0 }), false, { 1, 1 },
        { { 0, 0, red } } },
    { "paletteIndicesShowAsGreys", info(1, 1, 8, 0, 1, { 0x00000040 }), rows({ 0, 0, 0, 0 }), true,
        { 1, 1 }, { { 0, 0, qRgb(0x40, 0x40, 0x40) } } },
    { "rowsShorterThanTheHeaderSays", info(2, 2, 24), rows({ 0, 0, 255, 0, 255, 0, 0, 0 }), false,
        {}, {} },
    { "zeroWidth", info(0, 2, 24), QByteArray(16, '\0'), false, {}, {} },
    { "heightBeyondTheLimit", info(1, 40000, 1), QByteArray(160000, '\0'), false, {}, {} },
    { "tooManyPixels", info(8192, -8192, 1), QByteArray(8192 * 1024, '\0'), false, {}, {} },
    { "unknownBitCount", info(1, 1, 7), QByteArray(4, '\0'), false, {}, {} },
    { "runLengthCompression", info(1, 1, 8, 1, 1, { 0 }), QByteArray(4, '\0'), false, {}, {} },
    { "colourTableBeyondTheInfo", info(1, 1, 8, 0, 200, { 0 }), QByteArray(4, '\0'), false, {},
        {} },
    { "headerTooShort", info(1, 1, 24).first(20), QByteArray(4, '\0'), false, {}, {} },
};

INSTANTIATE_TEST_SUITE_P(DeviceIndependentBitmapTest, DecodedBitmap, testing::ValuesIn(decodeRows),
    [](const testing::TestParamInfo<DecodeRow>& info) { return std::string(info.param.name); });

TEST(DeviceIndependentBitmapTest, PositiveHeightMeansBottomUp)
{
    EXPECT_TRUE(Emf::IsBottomUp(info(2, 2, 24)));
    EXPECT_FALSE(Emf::IsBottomUp(info(2, -2, 24)));
    EXPECT_FALSE(Emf::IsBottomUp(QByteArray(3, '\0')));
}

} // namespace
