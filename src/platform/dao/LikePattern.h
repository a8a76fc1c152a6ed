#pragma once

#include <QString>
#include <QStringView>
#include <vector>

namespace Dao {

// A pattern of the engine's LIKE, matched against a whole text without regard to case:
//   *        any run of characters, also none
//   ?        any one character
//   #        any one digit 0-9
//   [abc]    one of the characters listed; [a-z] a range; [!abc] one not listed
//   [*] [?] [#] [[]  the character itself
// An unmatched "[" stands for itself. Characters are compared after Unicode case folding, one
// character at a time, so "é" matches "É" (and "ß" matches only itself).
class LikePattern
{
public:
    explicit LikePattern(QStringView pattern);

    bool matches(QStringView text) const;
    // The same for UTF-8 text as SQLite hands it over, without making a QString of every
    // row's value: LIKE runs once per row of a query.
    bool matchesUtf8(const char* text, qsizetype size) const;

private:
    enum class Kind { Literal, AnyOne, Digit, Set, AnyRun, Nothing };
    struct Range
    {
        char32_t first;
        char32_t last;
    };
    struct Element
    {
        Kind kind = Kind::Literal;
        char32_t character = 0;
        bool negated = false;
        std::vector<Range> ranges;
    };

    bool matchesOne(const Element& element, char32_t character) const;
    bool matchesCharacters(const std::vector<char32_t>& characters) const;

    std::vector<Element> m_elements;
};

} // namespace Dao
