#pragma once

#include <QByteArrayView>
#include <QImage>
#include <cstdint>

namespace Emf {

// Largest bitmap a picture may carry, in pixels; a damaged header cannot ask for more memory.
inline constexpr std::int64_t MaximumBitmapPixels = 16 * 1024 * 1024;
inline constexpr std::int32_t MaximumBitmapSide = 32768;

// Decodes a device-independent bitmap as the bitmap records carry it: `info` is the
// BITMAPINFO (a core or info header of any later version, with masks and colour table) and
// `bits` the pixel rows. Uncompressed 1, 4, 8, 16, 24 and 32 bits per pixel, bit-field masks,
// and embedded JPEG or PNG are read; `paletteIndices` (usage DIB_PAL_COLORS) reads the colour
// table as palette indices, shown as greys. Gives a null image when the bitmap is damaged,
// too large, or of a kind not read. The result is top-down, whichever way the rows were stored.
QImage DecodeDeviceIndependentBitmap(
    QByteArrayView info, QByteArrayView bits, bool paletteIndices = false);

// Whether the stored rows run bottom-up (a positive height), which turns source rectangles.
bool IsBottomUp(QByteArrayView info);

} // namespace Emf
