#pragma once

namespace Emf {

// The device a picture is recorded against: its size in pixels and millimetres and its
// logical resolution. One logical unit of a picture is one pixel of this device.
struct ReferenceDevice
{
    int pixelsWide = 1920;
    int pixelsHigh = 1440;
    int millimetresWide = 508;
    int millimetresHigh = 381;
    int dotsPerInchX = 96;
    int dotsPerInchY = 96;

    // The 96 dpi reference screen every graph is drawn for. Its size is a whole number of
    // millimetres in both directions, so one pixel is exactly 25.4 / 96 mm either way.
    static ReferenceDevice Screen() { return {}; }

    // One pixel in hundredths of a millimetre.
    double pixelWidthHundredths() const { return 100.0 * millimetresWide / pixelsWide; }
    double pixelHeightHundredths() const { return 100.0 * millimetresHigh / pixelsHigh; }
};

} // namespace Emf
