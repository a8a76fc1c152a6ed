#include "platform/dao/LikePattern.h"

#include <QChar>

namespace Dao {

namespace {

std::vector<char32_t> FoldedCharacters(QStringView text)
{
    std::vector<char32_t> characters;
    characters.reserve(static_cast<size_t>(text.size()));
    for (qsizetype i = 0; i < text.size(); ++i) {
        char32_t c = text[i].unicode();
        if (QChar::isHighSurrogate(c) && i + 1 < text.size()
            && QChar::isLowSurrogate(text[i + 1].unicode())) {
            c = QChar::surrogateToUcs4(text[i].unicode(), text[i + 1].unicode());
            ++i;
        }
        characters.push_back(QChar::toCaseFolded(c));
    }
    return characters;
}

} // namespace

LikePattern::LikePattern(QStringView pattern)
{
    const std::vector<char32_t> characters = FoldedCharacters(pattern);
    const size_t count = characters.size();
    for (size_t i = 0; i < count; ++i) {
        const char32_t c = characters[i];
        Element element;
        if (c == U'*') {
            // Runs of "*" are one run; keeping one makes the matcher's backtracking linear.
            if (!m_elements.empty() && m_elements.back().kind == Kind::AnyRun)
                continue;
            element.kind = Kind::AnyRun;
        } else if (c == U'?') {
            element.kind = Kind::AnyOne;
        } else if (c == U'#') {
            element.kind = Kind::Digit;
        } else if (c == U'[') {
            size_t close = i + 1;
            // A "]" right after "[" or "[!" closes nothing: "[]" is an empty list.
            while (close < count && characters[close] != U']')
                ++close;
            if (close >= count) {
                element.character = c; // an unmatched "[" is itself
            } else {
                size_t j = i + 1;
                if (j < close && characters[j] == U'!') {
                    element.negated = true;
                    ++j;
                }
                if (j == close && !element.negated) {
                    element.kind = Kind::Nothing;
                } else {
                    element.kind = Kind::Set;
                    for (; j < close; ++j) {
                        if (j + 2 < close && characters[j + 1] == U'-') {
                            element.ranges.push_back({ std::min(characters[j], characters[j + 2]),
                                std::max(characters[j], characters[j + 2]) });
                            j += 2;
                        } else {
                            element.ranges.push_back({ characters[j], characters[j] });
                        }
                    }
                }
                i = close;
            }
        } else {
            element.character = c;
        }
        m_elements.push_back(std::move(element));
    }
}

bool LikePattern::matchesOne(const Element& element, char32_t character) const
{
    switch (element.kind) {
    case Kind::Literal:
        return element.character == character;
    case Kind::AnyOne:
        return true;
    case Kind::Digit:
        return character >= U'0' && character <= U'9';
    case Kind::Set: {
        bool inList = false;
        for (const Range& range : element.ranges) {
            if (character >= range.first && character <= range.last) {
                inList = true;
                break;
            }
        }
        return inList != element.negated;
    }
    case Kind::AnyRun:
    case Kind::Nothing:
        return false;
    }
    return false;
}

namespace {

char32_t Folded(char32_t c)
{
    if (c < 0x80)
        return c >= U'A' && c <= U'Z' ? c + (U'a' - U'A') : c;
    return QChar::toCaseFolded(c);
}

// Decodes UTF-8 into folded characters; a malformed sequence reads as U+FFFD.
void FoldUtf8(const char* text, qsizetype size, std::vector<char32_t>& characters)
{
    characters.clear();
    const auto* bytes = reinterpret_cast<const unsigned char*>(text);
    qsizetype i = 0;
    while (i < size) {
        const unsigned char lead = bytes[i];
        if (lead < 0x80) {
            characters.push_back(Folded(lead));
            ++i;
            continue;
        }
        int extra = 0;
        char32_t c = 0;
        if ((lead & 0xe0) == 0xc0) {
            extra = 1;
            c = lead & 0x1f;
        } else if ((lead & 0xf0) == 0xe0) {
            extra = 2;
            c = lead & 0x0f;
        } else if ((lead & 0xf8) == 0xf0) {
            extra = 3;
            c = lead & 0x07;
        } else {
            characters.push_back(0xfffd);
            ++i;
            continue;
        }
        if (i + extra >= size) { // cut short at the end
            characters.push_back(0xfffd);
            break;
        }
        bool valid = true;
        for (int k = 1; k <= extra; ++k) {
            if ((bytes[i + k] & 0xc0) != 0x80) {
                valid = false;
                break;
            }
            c = (c << 6) | (bytes[i + k] & 0x3f);
        }
        if (!valid || c > 0x10ffff) {
            characters.push_back(0xfffd);
            ++i;
            continue;
        }
        characters.push_back(Folded(c));
        i += extra + 1;
    }
}

} // namespace

bool LikePattern::matches(QStringView text) const
{
    return matchesCharacters(FoldedCharacters(text));
}

bool LikePattern::matchesUtf8(const char* text, qsizetype size) const
{
    // One buffer per thread, grown once: a query calls this for every row.
    thread_local std::vector<char32_t> characters;
    FoldUtf8(text, size, characters);
    return matchesCharacters(characters);
}

bool LikePattern::matchesCharacters(const std::vector<char32_t>& characters) const
{
    const size_t textCount = characters.size();
    const size_t patternCount = m_elements.size();
    size_t t = 0;
    size_t p = 0;
    // Where to resume after the last "*": the element after it and the text position it has
    // swallowed up to. Greedy matching with one resume point is enough because a later "*"
    // can absorb anything an earlier one would have.
    bool haveRun = false;
    size_t resumePattern = 0;
    size_t resumeText = 0;
    while (t < textCount) {
        if (p < patternCount && m_elements[p].kind == Kind::AnyRun) {
            haveRun = true;
            resumePattern = ++p;
            resumeText = t;
        } else if (p < patternCount && m_elements[p].kind == Kind::Nothing) {
            ++p;
        } else if (p < patternCount && matchesOne(m_elements[p], characters[t])) {
            ++p;
            ++t;
        } else if (haveRun) {
            p = resumePattern;
            t = ++resumeText;
        } else {
            return false;
        }
    }
    while (p < patternCount
        && (m_elements[p].kind == Kind::AnyRun || m_elements[p].kind == Kind::Nothing))
        ++p;
    return p == patternCount;
}

} // namespace Dao
