#pragma once

#include <QString>
#include <cstdint>

// Value types and constants of the enhanced metafile format (MS-EMF), shared by the recorder,
// the player and the record trace. Numbers are the format's own, so records can be written
// and read without translation tables.
namespace Emf {

// 0x00BBGGRR, as the format stores colours; the top byte is ignored.
using Colour = std::uint32_t;

struct PointL
{
    std::int32_t x = 0;
    std::int32_t y = 0;
    friend bool operator==(const PointL&, const PointL&) = default;
};

// Both corners inclusive, as the format's bounds and frame rectangles are.
struct RectL
{
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;
    std::int32_t bottom = 0;
    friend bool operator==(const RectL&, const RectL&) = default;
};

struct SizeL
{
    std::int32_t cx = 0;
    std::int32_t cy = 0;
    friend bool operator==(const SizeL&, const SizeL&) = default;
};

// x' = m11 x + m21 y + dx, y' = m12 x + m22 y + dy.
struct XForm
{
    float m11 = 1;
    float m12 = 0;
    float m21 = 0;
    float m22 = 1;
    float dx = 0;
    float dy = 0;
    friend bool operator==(const XForm&, const XForm&) = default;
};

struct LogBrush
{
    std::uint32_t style = 0;
    Colour colour = 0;
    std::uint32_t hatch = 0;
};

// An extended pen without a user style or pattern bitmap (the only kind the program makes).
struct ExtendedPen
{
    std::uint32_t style = 0; // type, line style, end cap and join bits together
    std::uint32_t width = 1;
    std::uint32_t brushStyle = 0;
    Colour colour = 0;
    std::uint32_t hatch = 0;
};

struct LogFont
{
    std::int32_t height = 0; // below 0: character height; above 0: cell height
    std::int32_t width = 0;
    std::int32_t escapement = 0; // tenths of a degree, counterclockwise
    std::int32_t orientation = 0;
    std::int32_t weight = 0;
    bool italic = false;
    bool underline = false;
    bool strikeOut = false;
    std::uint8_t charSet = 1;
    std::uint8_t outPrecision = 0;
    std::uint8_t clipPrecision = 0;
    std::uint8_t quality = 0;
    std::uint8_t pitchAndFamily = 0;
    QString faceName; // at most 31 characters are stored
};

// An object handle as the records carry it: an index into the picture's object table, or a
// stock object with the top bit set.
using ObjectHandle = std::uint32_t;
inline constexpr ObjectHandle StockFlag = 0x80000000u;

namespace Stock {
inline constexpr ObjectHandle WhiteBrush = StockFlag | 0;
inline constexpr ObjectHandle LightGreyBrush = StockFlag | 1;
inline constexpr ObjectHandle GreyBrush = StockFlag | 2;
inline constexpr ObjectHandle DarkGreyBrush = StockFlag | 3;
inline constexpr ObjectHandle BlackBrush = StockFlag | 4;
inline constexpr ObjectHandle NullBrush = StockFlag | 5;
inline constexpr ObjectHandle WhitePen = StockFlag | 6;
inline constexpr ObjectHandle BlackPen = StockFlag | 7;
inline constexpr ObjectHandle NullPen = StockFlag | 8;
inline constexpr ObjectHandle OemFixedFont = StockFlag | 10;
inline constexpr ObjectHandle AnsiFixedFont = StockFlag | 11;
inline constexpr ObjectHandle AnsiVariableFont = StockFlag | 12;
inline constexpr ObjectHandle SystemFont = StockFlag | 13;
inline constexpr ObjectHandle DeviceDefaultFont = StockFlag | 14;
inline constexpr ObjectHandle DefaultPalette = StockFlag | 15;
inline constexpr ObjectHandle SystemFixedFont = StockFlag | 16;
inline constexpr ObjectHandle DefaultGuiFont = StockFlag | 17;
inline constexpr ObjectHandle DcBrush = StockFlag | 18;
inline constexpr ObjectHandle DcPen = StockFlag | 19;
} // namespace Stock

namespace PenStyle {
inline constexpr std::uint32_t Solid = 0;
inline constexpr std::uint32_t Dash = 1;
inline constexpr std::uint32_t Dot = 2;
inline constexpr std::uint32_t DashDot = 3;
inline constexpr std::uint32_t DashDotDot = 4;
inline constexpr std::uint32_t Null = 5;
inline constexpr std::uint32_t InsideFrame = 6;
inline constexpr std::uint32_t UserStyle = 7;
inline constexpr std::uint32_t Alternate = 8;
inline constexpr std::uint32_t StyleMask = 0x0000000F;
inline constexpr std::uint32_t EndCapRound = 0x00000000;
inline constexpr std::uint32_t EndCapSquare = 0x00000100;
inline constexpr std::uint32_t EndCapFlat = 0x00000200;
inline constexpr std::uint32_t EndCapMask = 0x00000F00;
inline constexpr std::uint32_t JoinRound = 0x00000000;
inline constexpr std::uint32_t JoinBevel = 0x00001000;
inline constexpr std::uint32_t JoinMiter = 0x00002000;
inline constexpr std::uint32_t JoinMask = 0x0000F000;
inline constexpr std::uint32_t Cosmetic = 0x00000000;
inline constexpr std::uint32_t Geometric = 0x00010000;
inline constexpr std::uint32_t TypeMask = 0x000F0000;
} // namespace PenStyle

namespace BrushStyle {
inline constexpr std::uint32_t Solid = 0;
inline constexpr std::uint32_t Null = 1;
inline constexpr std::uint32_t Hatched = 2;
inline constexpr std::uint32_t Pattern = 3;
inline constexpr std::uint32_t DibPattern = 5;
inline constexpr std::uint32_t DibPatternPointer = 6;
} // namespace BrushStyle

namespace Hatch {
inline constexpr std::uint32_t Horizontal = 0;
inline constexpr std::uint32_t Vertical = 1;
inline constexpr std::uint32_t ForwardDiagonal = 2;
inline constexpr std::uint32_t BackwardDiagonal = 3;
inline constexpr std::uint32_t Cross = 4;
inline constexpr std::uint32_t DiagonalCross = 5;
} // namespace Hatch

namespace TextAlign {
inline constexpr std::uint32_t UpdateCurrentPosition = 1;
inline constexpr std::uint32_t Left = 0;
inline constexpr std::uint32_t Right = 2;
inline constexpr std::uint32_t Centre = 6;
inline constexpr std::uint32_t HorizontalMask = 6;
inline constexpr std::uint32_t Top = 0;
inline constexpr std::uint32_t Bottom = 8;
inline constexpr std::uint32_t Baseline = 24;
inline constexpr std::uint32_t VerticalMask = 24;
} // namespace TextAlign

namespace TextOption {
inline constexpr std::uint32_t Opaque = 0x0002;
inline constexpr std::uint32_t Clipped = 0x0004;
inline constexpr std::uint32_t GlyphIndex = 0x0010;
inline constexpr std::uint32_t NoRectangle = 0x0100;
inline constexpr std::uint32_t PairedDx = 0x2000;
} // namespace TextOption

namespace BackgroundMode {
inline constexpr std::uint32_t Transparent = 1;
inline constexpr std::uint32_t Opaque = 2;
} // namespace BackgroundMode

namespace MapMode {
inline constexpr std::uint32_t Text = 1;
inline constexpr std::uint32_t LowMetric = 2;
inline constexpr std::uint32_t HighMetric = 3;
inline constexpr std::uint32_t LowEnglish = 4;
inline constexpr std::uint32_t HighEnglish = 5;
inline constexpr std::uint32_t Twips = 6;
inline constexpr std::uint32_t Isotropic = 7;
inline constexpr std::uint32_t Anisotropic = 8;
} // namespace MapMode

// How a new clip region combines with the old one.
namespace RegionMode {
inline constexpr std::uint32_t And = 1;
inline constexpr std::uint32_t Or = 2;
inline constexpr std::uint32_t Xor = 3;
inline constexpr std::uint32_t Difference = 4;
inline constexpr std::uint32_t Copy = 5;
} // namespace RegionMode

namespace PolyFillMode {
inline constexpr std::uint32_t Alternate = 1;
inline constexpr std::uint32_t Winding = 2;
} // namespace PolyFillMode

namespace WorldTransformMode {
inline constexpr std::uint32_t Identity = 1;
inline constexpr std::uint32_t LeftMultiply = 2;
inline constexpr std::uint32_t RightMultiply = 3;
inline constexpr std::uint32_t Set = 4;
} // namespace WorldTransformMode

// Point types of a path, as GetPath reports them and POLYDRAW records carry them.
namespace PathPointType {
inline constexpr std::uint8_t CloseFigure = 0x01;
inline constexpr std::uint8_t LineTo = 0x02;
inline constexpr std::uint8_t BezierTo = 0x04;
inline constexpr std::uint8_t MoveTo = 0x06;
inline constexpr std::uint8_t TypeMask = 0x06;
} // namespace PathPointType

} // namespace Emf
