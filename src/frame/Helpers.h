#pragma once

#include <QFont>
#include <QPaintDevice>
#include <QRect>
#include <QString>
#include <QStringView>

// Small helpers every subsystem calls. None keeps state.
namespace Frame {

// B when A >= B, else A; A when A > B, else B. With equal values both give B (the order
// matters only for -0.0 and 0.0).
double MinOf(double a, double b);
double MaxOf(double a, double b);

// Base-10 logarithm; Runtime::Error 5 for x <= 0, as the classic Log raised.
double Log10Of(double x);

// The key-press filter of number boxes: returns the key to keep, 0 to swallow it. Enter,
// Backspace and digits always pass; "-" unless mode is "N"; "." unless mode is "I" or "N".
// So "N" admits whole numbers without sign, "I" whole numbers with sign, and any other mode
// (callers pass "" or "D") decimals. Modes compare with case.
int NumericKeyFilter(int keyAscii, QStringView mode);

// The rectangle that shows a picture in a box: proportions kept, never enlarged, centred on
// (centreX, centreY), sizes rounded halves to even. A picture with no width or height, or a
// box of no size, gives an empty rectangle at the centre. The classic RECT's Right and
// Bottom are left() + width() and top() + height() of the result.
QRect FitPictureRect(
    int pictureWidth, int pictureHeight, int boxWidth, int boxHeight, int centreX, int centreY);

// The width of the text in the font, in pixels of the device (a printer, a 96 dpi picture);
// without a device, of the screen.
int TextWidthPixels(const QFont& font, const QString& text, const QPaintDevice* device = nullptr);

// The file's name without folder and without its last four characters (the point and a
// three-letter extension): "C:\Class\Pets.qnd" and "/home/class/Pets.qnd" give "Pets".
// Both '/' and '\' separate folders. Paths shorter than 2 characters, and names of four
// characters or fewer, give the empty string.
QString FileTitleOf(QStringView path);

// Layout values are twips, 1440 to the inch; pixels at the widget's (or printer's) logical
// dots per inch, rounded halves to even. This is the one conversion for all windows.
int TwipsToPixels(double twips, double logicalDotsPerInch);

// One value of a private profile file; empty for a missing file, section or key.
QString ReadIniString(const QString& filePath, QStringView section, QStringView key);

} // namespace Frame
