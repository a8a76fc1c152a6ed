#include "frame/Helpers.h"

#include "platform/emf/FitPicture.h"
#include "platform/profile/ProfileFile.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Error.h"

#include <QFontMetrics>
#include <algorithm>
#include <cmath>

namespace Frame {

double MinOf(double a, double b)
{
    return a >= b ? b : a;
}

double MaxOf(double a, double b)
{
    return a > b ? a : b;
}

double Log10Of(double x)
{
    if (!(x > 0))
        throw Runtime::Error(Runtime::Error::InvalidCall);
    return std::log(x) / std::log(10.0);
}

int NumericKeyFilter(int keyAscii, QStringView mode)
{
    constexpr int enter = 13;
    constexpr int backspace = 8;
    if (keyAscii == enter || keyAscii == backspace)
        return keyAscii;
    if (keyAscii >= '0' && keyAscii <= '9')
        return keyAscii;
    if (keyAscii == '-')
        return mode == u"N" ? 0 : keyAscii;
    if (keyAscii == '.')
        return (mode == u"I" || mode == u"N") ? 0 : keyAscii;
    return 0;
}

QRect FitPictureRect(
    int pictureWidth, int pictureHeight, int boxWidth, int boxHeight, int centreX, int centreY)
{
    const QRectF box(0, 0, boxWidth, boxHeight);
    const QSizeF fitted
        = Emf::FitPicture(QSizeF(pictureWidth, pictureHeight), box, Qt::AlignCenter, false).size();
    const int width = Runtime::CLng(fitted.width());
    const int height = Runtime::CLng(fitted.height());
    const int left = Runtime::CLng(centreX - width / 2.0);
    const int top = Runtime::CLng(centreY - height / 2.0);
    return QRect(left, top, width, height);
}

int TextWidthPixels(const QFont& font, const QString& text, const QPaintDevice* device)
{
    // A null device measures for the screen.
    return QFontMetrics(font, device).horizontalAdvance(text);
}

QString FileTitleOf(QStringView path)
{
    if (path.size() < 2)
        return {};
    const qsizetype start = std::max(path.lastIndexOf(u'/'), path.lastIndexOf(u'\\')) + 1;
    const qsizetype length = path.size() - 4 - start;
    if (length <= 0)
        return {};
    return path.sliced(start, length).toString();
}

int TwipsToPixels(double twips, double logicalDotsPerInch)
{
    constexpr double twipsPerInch = 1440.0;
    return Runtime::CLng(twips * logicalDotsPerInch / twipsPerInch);
}

QString ReadIniString(const QString& filePath, QStringView section, QStringView key)
{
    return Profile::ReadIniString(filePath, section, key);
}

} // namespace Frame
