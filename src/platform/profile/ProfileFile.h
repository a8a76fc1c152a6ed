#pragma once

#include <QByteArrayView>
#include <QHash>
#include <QString>
#include <QStringView>

namespace Profile {

// The classic reader copies into a 255-character buffer with its terminating NUL, so a value
// comes back cut to this many characters.
inline constexpr qsizetype MaximumValueLength = 254;

// A private profile (".ini") file, parsed once so that a reader with many keys to look up
// (the colour table, a graph file with hundreds of rows) pays for the file only once.
// Lookups follow the classic platform reader:
// - section and key names compare without regard to case;
// - blanks (spaces and tabs) around names and values are dropped;
// - one pair of matching outer quotes, single or double, is dropped from a value;
// - values are cut to MaximumValueLength characters;
// - a line whose first non-blank character is ';' is a comment; a ';' later in a line is part
//   of the value;
// - the first occurrence of a key wins, also when its section appears again further down;
// - lines before the first section and lines without '=' carry no key;
// - anything missing reads as empty text.
// The file is untrusted: NUL bytes end their line, lines may be of any length, the last line
// needs no line end, and bytes that are not UTF-8 are read as Windows-1252.
class ProfileFile
{
public:
    ProfileFile() = default;

    static ProfileFile fromBytes(QByteArrayView bytes);
    // A file that is missing or cannot be read gives an empty profile.
    static ProfileFile load(const QString& path);

    QString value(QStringView section, QStringView key) const;
    bool contains(QStringView section, QStringView key) const;
    bool isEmpty() const { return m_sections.isEmpty(); }

private:
    using Section = QHash<QString, QString>;

    void parse(QStringView text);

    // Keyed by case-folded names.
    QHash<QString, Section> m_sections;
};

// One lookup in one file: the classic call, for callers with a single key to read.
QString ReadIniString(const QString& path, QStringView section, QStringView key);

} // namespace Profile
