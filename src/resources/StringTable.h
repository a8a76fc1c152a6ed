#pragma once

#include <QByteArrayView>
#include <QHash>
#include <QList>
#include <QString>

// The text with that number from the program's string table, or "ERROR" when the table has
// no such number. Never throws; the table is read once, on first use.
QString GetResString(int id);

namespace Resources {

// One line of a string-table file that the loader could not accept.
struct StringTableProblem
{
    int line = 0; // counted from 1
    QString message;
};

// The string table: texts by number. The format of the file is described at the top of
// strings.txt; `parse` applies it to any bytes so that the rules can be tested on samples.
class StringTable
{
public:
    static StringTable parse(QByteArrayView utf8);

    // The table compiled into the program (":/resources/strings.txt"), read on first use.
    static const StringTable& builtIn();

    bool contains(int id) const { return m_texts.contains(id); }
    // The text, or "ERROR" when the table has no such number.
    QString text(int id) const;
    QList<int> ids() const; // ascending
    int size() const { return int(m_texts.size()); }

    // Lines that were not taken into the table: malformed lines, duplicate numbers (the
    // first definition wins), bytes that are not UTF-8, or a file that could not be read.
    const QList<StringTableProblem>& problems() const { return m_problems; }

private:
    QHash<int, QString> m_texts;
    QList<StringTableProblem> m_problems;
};

} // namespace Resources
