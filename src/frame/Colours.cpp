#include "frame/Colours.h"

#include "frame/FrameSettings.h"
#include "platform/profile/ProfileFile.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Error.h"

#include <QFileInfo>
#include <algorithm>
#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace Frame {

namespace {

const QString colourSection = u"Quorbin Colours"_s;

// The program's ordinary reading of a number, rounded to a 32-bit whole number; a value
// that does not fit reads as `fallback`.
std::int32_t WholeNumber(QStringView text, std::int32_t fallback)
{
    try {
        return Runtime::CLng(Runtime::Val(text));
    } catch (const Runtime::Error&) {
        return fallback;
    }
}

int Channel(double value)
{
    return std::clamp(Runtime::CLng(value), 0, 255);
}

} // namespace

QList<ColourEntry> ReadColourTable(const QString& path)
{
    const QList<ColourEntry> noColours { ColourEntry {} };
    if (!QFileInfo(path).isFile())
        return noColours;
    const Profile::ProfileFile profile = Profile::ProfileFile::load(path);
    const int count = WholeNumber(profile.value(colourSection, u"Number"), 0);
    if (count < 1)
        return noColours;

    QList<ColourEntry> table(std::min(count, MaximumColourCount));
    for (qsizetype index = 0; index < table.size(); ++index) {
        const QString number = QString::number(index + 1);
        table[index].Name = profile.value(colourSection, u"ColourName"_s + number);
        table[index].Value
            = WholeNumber(profile.value(colourSection, u"ColourValue"_s + number), 0);
    }
    return table;
}

std::int32_t ColourValueByName(QStringView name)
{
    return ColourValueByName(name, Settings().ColourTable);
}

std::int32_t ColourValueByName(QStringView name, const QList<ColourEntry>& table)
{
    std::int32_t result = -1;
    for (const ColourEntry& entry : table) {
        if (entry.Name == name)
            return entry.Value;
        if (entry.Name.contains(name, Qt::CaseInsensitive))
            result = entry.Value;
    }
    return result;
}

QString ColourNameByValue(std::int32_t value)
{
    return ColourNameByValue(value, Settings().ColourTable);
}

QString ColourNameByValue(std::int32_t value, const QList<ColourEntry>& table)
{
    for (const ColourEntry& entry : table) {
        if (entry.Value == value)
            return entry.Name;
    }
    return {};
}

std::array<std::uint8_t, 4> ColourToRgbQuad(std::int32_t colour)
{
    const auto bits = static_cast<std::uint32_t>(colour);
    return { static_cast<std::uint8_t>((bits & 0xFF0000) >> 16),
        static_cast<std::uint8_t>((bits & 0xFF00) >> 8), static_cast<std::uint8_t>(bits & 0xFF),
        0 };
}

std::int32_t ShadeColour(std::int32_t colour, double percent)
{
    const double fraction = std::isnan(percent) ? 0.0 : std::clamp(percent, -100.0, 100.0) / 100.0;
    const auto quad = ColourToRgbQuad(colour);
    const auto shade = [fraction](int channel) {
        if (fraction < 0)
            return Channel(channel * (1 + fraction));
        return Channel(channel + (255 - channel) * fraction);
    };
    const int blue = shade(quad[0]);
    const int green = shade(quad[1]);
    const int red = shade(quad[2]);
    return red + green * 256 + blue * 65536;
}

QColor ColourFromValue(std::int32_t value)
{
    const auto quad = ColourToRgbQuad(value);
    return QColor(quad[2], quad[1], quad[0]);
}

std::int32_t ValueFromColour(const QColor& colour)
{
    const QColor rgb = colour.toRgb();
    return rgb.red() + rgb.green() * 256 + rgb.blue() * 65536;
}

} // namespace Frame
