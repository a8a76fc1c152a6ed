#include "platform/emf/DeviceIndependentBitmap.h"

#include "platform/emf/RecordReader.h"

#include <array>
#include <bit>
#include <cstdlib>

namespace Emf {

namespace {

constexpr std::uint32_t CompressionRgb = 0;
constexpr std::uint32_t CompressionBitFields = 3;
constexpr std::uint32_t CompressionJpeg = 4;
constexpr std::uint32_t CompressionPng = 5;
constexpr std::uint32_t CompressionAlphaBitFields = 6;
constexpr std::uint32_t CoreHeaderSize = 12;
constexpr std::uint32_t InfoHeaderSize = 40;

struct Layout
{
    std::int32_t width = 0;
    std::int32_t height = 0; // positive: bottom-up
    std::uint16_t bitCount = 0;
    std::uint32_t compression = CompressionRgb;
    std::uint32_t headerSize = 0;
    std::uint32_t coloursUsed = 0;
};

std::optional<Layout> readLayout(RecordReader& reader)
{
    Layout layout;
    layout.headerSize = reader.u32(0);
    if (layout.headerSize == CoreHeaderSize) {
        layout.width = reader.u16(4);
        layout.height = reader.i16(6);
        layout.bitCount = reader.u16(10);
    } else if (layout.headerSize >= InfoHeaderSize) {
        layout.width = reader.i32(4);
        layout.height = reader.i32(8);
        layout.bitCount = reader.u16(14);
        layout.compression = reader.u32(16);
        layout.coloursUsed = reader.u32(32);
    } else {
        return std::nullopt;
    }
    if (!reader.ok())
        return std::nullopt;
    return layout;
}

// One channel of a bit-field pixel scaled to 0..255.
struct Channel
{
    std::uint32_t mask = 0;
    int shift = 0;
    int bits = 0;

    explicit Channel(std::uint32_t value = 0)
        : mask(value)
        , shift(value == 0 ? 0 : std::countr_zero(value))
        , bits(value == 0 ? 0 : std::popcount(value))
    { }

    int extract(std::uint32_t pixel) const
    {
        if (bits == 0)
            return 0;
        const std::uint32_t raw = (pixel & mask) >> shift;
        const std::uint32_t maximum = bits >= 32 ? 0xFFFFFFFFu : (1u << bits) - 1;
        return static_cast<int>((static_cast<std::uint64_t>(raw) * 255 + maximum / 2) / maximum);
    }
};

} // namespace

bool IsBottomUp(QByteArrayView info)
{
    RecordReader reader(info);
    const std::optional<Layout> layout = readLayout(reader);
    return layout && layout->height > 0;
}

QImage DecodeDeviceIndependentBitmap(QByteArrayView info, QByteArrayView bits, bool paletteIndices)
{
    RecordReader reader(info);
    const std::optional<Layout> read = readLayout(reader);
    if (!read)
        return {};
    const Layout& layout = *read;
    if (layout.compression == CompressionJpeg || layout.compression == CompressionPng) {
        QImage image = QImage::fromData(bits, layout.compression == CompressionPng ? "PNG" : "JPG");
        if (std::int64_t(image.width()) * image.height() > MaximumBitmapPixels)
            return {};
        return image;
    }
    const std::int64_t width = layout.width;
    const std::int64_t height = std::abs(static_cast<std::int64_t>(layout.height));
    if (width <= 0 || height <= 0 || width > MaximumBitmapSide || height > MaximumBitmapSide
        || width * height > MaximumBitmapPixels)
        return {};
    const int bitCount = layout.bitCount;
    if (bitCount != 1 && bitCount != 4 && bitCount != 8 && bitCount != 16 && bitCount != 24
        && bitCount != 32)
        return {};
    const bool bitFields = layout.compression == CompressionBitFields
        || layout.compression == CompressionAlphaBitFields;
    if (layout.compression != CompressionRgb && !(bitFields && (bitCount == 16 || bitCount == 32)))
        return {};

    // Masks: inside a version 4 or 5 header, else just after the 40-byte header.
    Channel red(0x00FF0000), green(0x0000FF00), blue(0x000000FF), alpha(0);
    std::uint64_t tableOffset = layout.headerSize;
    if (bitCount == 16 && !bitFields) {
        red = Channel(0x7C00);
        green = Channel(0x03E0);
        blue = Channel(0x001F);
    }
    if (bitFields) {
        const std::uint64_t maskOffset = InfoHeaderSize;
        red = Channel(reader.u32(maskOffset));
        green = Channel(reader.u32(maskOffset + 4));
        blue = Channel(reader.u32(maskOffset + 8));
        if (layout.compression == CompressionAlphaBitFields || layout.headerSize > InfoHeaderSize)
            alpha = Channel(reader.contains(maskOffset + 12, 4) ? reader.u32(maskOffset + 12) : 0);
        if (layout.headerSize == InfoHeaderSize)
            tableOffset += layout.compression == CompressionAlphaBitFields ? 16 : 12;
        if (!reader.ok())
            return {};
    }

    std::array<QRgb, 256> palette {};
    if (bitCount <= 8) {
        const std::uint32_t maximum = 1u << bitCount;
        std::uint32_t count = layout.coloursUsed == 0 ? maximum : layout.coloursUsed;
        if (count > maximum)
            count = maximum;
        const std::uint32_t entrySize
            = paletteIndices ? 2 : (layout.headerSize == CoreHeaderSize ? 3 : 4);
        if (!reader.contains(tableOffset, std::uint64_t(count) * entrySize))
            return {};
        for (std::uint32_t index = 0; index < count; ++index) {
            const std::uint64_t at = tableOffset + std::uint64_t(index) * entrySize;
            if (paletteIndices) {
                const int grey = reader.u16(at) & 0xFF;
                palette[index] = qRgb(grey, grey, grey);
            } else {
                palette[index] = qRgb(reader.u8(at + 2), reader.u8(at + 1), reader.u8(at));
            }
        }
    }

    const std::int64_t stride = ((width * bitCount + 31) / 32) * 4;
    if (stride * height > bits.size())
        return {};
    QImage image(static_cast<int>(width), static_cast<int>(height),
        alpha.bits > 0 ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    if (image.isNull())
        return {};
    const auto* data = reinterpret_cast<const std::uint8_t*>(bits.data());
    for (std::int64_t row = 0; row < height; ++row) {
        const std::int64_t targetRow = layout.height > 0 ? height - 1 - row : row;
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(static_cast<int>(targetRow)));
        const std::uint8_t* source = data + row * stride;
        for (std::int64_t column = 0; column < width; ++column) {
            QRgb colour = 0;
            switch (bitCount) {
            case 1:
                colour = palette[(source[column / 8] >> (7 - column % 8)) & 1];
                break;
            case 4:
                colour = palette[(source[column / 2] >> (column % 2 == 0 ? 4 : 0)) & 0x0F];
                break;
            case 8:
                colour = palette[source[column]];
                break;
            case 24: {
                const std::uint8_t* pixel = source + column * 3;
                colour = qRgb(pixel[2], pixel[1], pixel[0]);
                break;
            }
            default: {
                const std::uint8_t* pixel = source + column * (bitCount / 8);
                const std::uint32_t value = bitCount == 16
                    ? std::uint32_t(pixel[0] | (pixel[1] << 8))
                    : std::uint32_t(pixel[0] | (pixel[1] << 8) | (pixel[2] << 16))
                        | (std::uint32_t(pixel[3]) << 24);
                colour = qRgba(red.extract(value), green.extract(value), blue.extract(value),
                    alpha.bits > 0 ? alpha.extract(value) : 255);
                break;
            }
            }
            line[column] = colour;
        }
    }
    return image;
}

} // namespace Emf
