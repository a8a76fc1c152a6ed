#include "platform/emf/TextMetrics.h"

#include <QFontMetricsF>
#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace Emf {

namespace {

constexpr int DefaultCellHeight = 16;

QFont baseFont(const LogFont& font)
{
    QFont result(font.faceName.isEmpty() ? u"Arial"_s : font.faceName);
    result.setWeight(
        static_cast<QFont::Weight>(std::clamp(font.weight == 0 ? 400 : font.weight, 1, 1000)));
    result.setItalic(font.italic);
    result.setUnderline(font.underline);
    result.setStrikeOut(font.strikeOut);
    result.setKerning(false);
    result.setHintingPreference(QFont::PreferNoHinting);
    return result;
}

} // namespace

QFont FontFromLogFont(const LogFont& font)
{
    QFont result = baseFont(font);
    // Heights beyond any real text are held so that a foreign file cannot ask for a glyph
    // cache the size of a house.
    const int height = std::clamp(font.height, -20000, 20000);
    if (height < 0) {
        result.setPixelSize(-height);
        return result;
    }
    const int cellHeight = height == 0 ? DefaultCellHeight : height;
    // The character height that gives this cell height, found from a large probe size.
    constexpr int probe = 1000;
    result.setPixelSize(probe);
    const QFontMetricsF metrics(result);
    const double cell = metrics.ascent() + metrics.descent();
    result.setPixelSize(std::max(1, static_cast<int>(std::lround(cellHeight * probe / cell))));
    return result;
}

SizeL MeasureText(const LogFont& font, QStringView text)
{
    const QFontMetricsF metrics(FontFromLogFont(font));
    std::int64_t width = 0;
    for (std::uint32_t advance : CharacterAdvances(font, text))
        width += advance;
    return { static_cast<std::int32_t>(width),
        static_cast<std::int32_t>(std::lround(metrics.ascent() + metrics.descent())) };
}

std::vector<std::uint32_t> CharacterAdvances(const LogFont& font, QStringView text)
{
    const QFontMetricsF metrics(FontFromLogFont(font));
    std::vector<std::uint32_t> advances;
    advances.reserve(static_cast<std::size_t>(text.size()));
    double exact = 0;
    long placed = 0;
    for (qsizetype index = 0; index < text.size(); ++index) {
        // A surrogate pair is measured as one character; its second half advances nothing.
        if (text[index].isLowSurrogate() && index > 0 && text[index - 1].isHighSurrogate()) {
            advances.push_back(0);
            continue;
        }
        const qsizetype length = text[index].isHighSurrogate() && index + 1 < text.size() ? 2 : 1;
        exact += metrics.horizontalAdvance(text.sliced(index, length).toString());
        const long next = std::lround(exact);
        advances.push_back(static_cast<std::uint32_t>(std::max(0L, next - placed)));
        placed = std::max(placed, next);
    }
    return advances;
}

LogFont SystemFont()
{
    LogFont font;
    font.height = DefaultCellHeight;
    font.weight = 700;
    font.faceName = u"Arial"_s;
    return font;
}

} // namespace Emf
