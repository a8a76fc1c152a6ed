#pragma once

#include <QByteArray>
#include <cstdint>
#include <cstring>
#include <initializer_list>

// Builds the BITMAPINFO and pixel rows of small test bitmaps byte by byte.
namespace BitmapBytes {

inline void appendU16(QByteArray& bytes, std::uint16_t value)
{
    bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
}

inline void appendU32(QByteArray& bytes, std::uint32_t value)
{
    bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
}

// A 40-byte info header followed by `extra` (masks or colour table entries, each 32 bits).
inline QByteArray info(std::int32_t width, std::int32_t height, std::uint16_t bitCount,
    std::uint32_t compression = 0, std::uint32_t coloursUsed = 0,
    std::initializer_list<std::uint32_t> extra = {})
{
    QByteArray bytes;
    appendU32(bytes, 40);
    appendU32(bytes, static_cast<std::uint32_t>(width));
    appendU32(bytes, static_cast<std::uint32_t>(height));
    appendU16(bytes, 1);
    appendU16(bytes, bitCount);
    appendU32(bytes, compression);
    for (int field = 0; field < 3; ++field) // image size, pixels per metre x and y
        appendU32(bytes, 0);
    appendU32(bytes, coloursUsed);
    appendU32(bytes, 0);
    for (std::uint32_t value : extra)
        appendU32(bytes, value);
    return bytes;
}

inline QByteArray rows(std::initializer_list<std::uint8_t> values)
{
    QByteArray bytes;
    for (std::uint8_t value : values)
        bytes.append(static_cast<char>(value));
    return bytes;
}

} // namespace BitmapBytes
