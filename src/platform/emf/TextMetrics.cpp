#include "platform/emf/TextMetrics.h"

#include <QFontMetricsF>
#include <array>
#include <cmath>
#include <memory>

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

namespace {

QFont ResolveFont(const LogFont& font)
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

// The fields that decide the font; width, angles and the rest do not change the measures.
bool SameFont(const LogFont& a, const LogFont& b)
{
    return a.height == b.height && a.weight == b.weight && a.italic == b.italic
        && a.underline == b.underline && a.strikeOut == b.strikeOut && a.faceName == b.faceName;
}

struct ResolvedFont
{
    LogFont key;
    QFont font;
    QFontMetricsF metrics;
};

// A graph measures every label in one of a handful of fonts, and resolving a font (a probe at
// a large size, then the real size) costs far more than measuring with it: the last few are
// kept. One user-interface thread measures. The cache is never freed, so that no font
// outlives the application object in a destructor at exit.
const ResolvedFont& Resolve(const LogFont& font)
{
    constexpr std::size_t cacheSize = 8;
    static auto* cache = new std::array<std::unique_ptr<ResolvedFont>, cacheSize>();
    static std::size_t next = 0;
    for (const auto& entry : *cache) {
        if (entry && SameFont(entry->key, font))
            return *entry;
    }
    const QFont resolved = ResolveFont(font);
    auto& slot = (*cache)[next];
    next = (next + 1) % cacheSize;
    slot = std::make_unique<ResolvedFont>(ResolvedFont { font, resolved, QFontMetricsF(resolved) });
    return *slot;
}

} // namespace

QFont FontFromLogFont(const LogFont& font)
{
    return Resolve(font).font;
}

SizeL MeasureText(const LogFont& font, QStringView text)
{
    const QFontMetricsF& metrics = Resolve(font).metrics;
    std::int64_t width = 0;
    for (std::uint32_t advance : CharacterAdvances(font, text))
        width += advance;
    return { static_cast<std::int32_t>(width),
        static_cast<std::int32_t>(std::lround(metrics.ascent() + metrics.descent())) };
}

std::vector<std::uint32_t> CharacterAdvances(const LogFont& font, QStringView text)
{
    const QFontMetricsF& metrics = Resolve(font).metrics;
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
        if (text[index].isHighSurrogate() && index + 1 < text.size())
            exact += metrics.horizontalAdvance(text.sliced(index, 2).toString());
        else
            exact += metrics.horizontalAdvance(text[index]);
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
