#pragma once

#include <QColor>
#include <QList>
#include <QString>
#include <QStringView>
#include <array>
#include <cstdint>

// Colours are 32-bit values in the Windows order 0x00BBGGRR throughout the program: in the
// colour settings file, in graph files and in every colour the user picks.
namespace Frame {

struct ColourEntry
{
    QString Name;
    std::int32_t Value = 0;
};

// More entries than any colour file needs; a damaged "Number" must not allocate the machine
// away. Larger counts are cut to this.
inline constexpr int MaximumColourCount = 4096;

// The colour table of a colour settings file (section "Quorbin Colours": Number, ColourName1..,
// ColourValue1..). A missing file, or a Number below 1 or not numeric, gives the single
// nameless black entry. Missing names read empty, missing or unreadable values read 0.
QList<ColourEntry> ReadColourTable(const QString& path);

// By name: an exact match (case counts) wins at once, else the last entry whose name contains
// the text without regard to case, else -1. The first overload searches Settings().ColourTable.
std::int32_t ColourValueByName(QStringView name);
std::int32_t ColourValueByName(QStringView name, const QList<ColourEntry>& table);

// The name of the first entry with that value; empty when none has it.
QString ColourNameByValue(std::int32_t value);
QString ColourNameByValue(std::int32_t value, const QList<ColourEntry>& table);

// Blue, green, red, 0: the byte order of a bitmap palette entry.
std::array<std::uint8_t, 4> ColourToRgbQuad(std::int32_t colour);

// Darkens towards black (percent below 0) or lightens towards white (above 0), each channel
// rounded halves to even. Percent is meant to lie in -100..100; values beyond are held to it
// so that channels stay within 0..255.
std::int32_t ShadeColour(std::int32_t colour, double percent);

// Between the program's colour values and Qt's; the top byte of a value is ignored.
QColor ColourFromValue(std::int32_t value);
std::int32_t ValueFromColour(const QColor& colour);

} // namespace Frame
