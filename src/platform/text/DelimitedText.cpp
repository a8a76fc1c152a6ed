#include "platform/text/DelimitedText.h"

using namespace Qt::Literals::StringLiterals;

namespace Text {

DelimitedReader::DelimitedReader(QStringView text, QChar separator, Dialect dialect)
    : m_text(text)
    , m_separator(separator)
    , m_dialect(dialect)
{ }

bool DelimitedReader::next(QStringList& fields)
{
    fields.clear();
    return m_dialect == Dialect::Classic ? nextLine(fields) : nextQuoted(fields);
}

bool DelimitedReader::nextLine(QStringList& fields)
{
    if (m_position >= m_text.size())
        return false;
    qsizetype end = m_text.indexOf(u'\n', m_position);
    const qsizetype following = end < 0 ? m_text.size() : end + 1;
    if (end < 0)
        end = m_text.size();
    if (end > m_position && m_text[end - 1] == u'\r')
        --end;
    QStringView line = m_text.sliced(m_position, end - m_position);
    m_position = following;

    // Whole runs are sliced off, since most lines have no quotes at all.
    while (true) {
        if (line.startsWith(u'"')) {
            const qsizetype closing = line.indexOf(u'"', 1);
            if (closing < 0) {
                fields.append(line.sliced(1).toString());
                return true;
            }
            fields.append(line.sliced(1, closing - 1).toString());
            const qsizetype next = line.indexOf(m_separator, closing + 1);
            if (next < 0)
                return true;
            line = line.sliced(next + 1);
            continue;
        }
        const qsizetype next = line.indexOf(m_separator);
        if (next < 0) {
            fields.append(line.toString());
            return true;
        }
        fields.append(line.first(next).toString());
        line = line.sliced(next + 1);
    }
}

bool DelimitedReader::nextQuoted(QStringList& fields)
{
    while (m_position < m_text.size()) {
        QString field;
        bool quoted = false;
        bool hasText = false;
        qsizetype i = m_position;
        for (; i < m_text.size(); ++i) {
            const QChar character = m_text[i];
            if (quoted) {
                if (character != u'"') {
                    field += character;
                } else if (i + 1 < m_text.size() && m_text[i + 1] == u'"') {
                    field += u'"';
                    ++i;
                } else {
                    quoted = false;
                }
            } else if (character == u'"') {
                quoted = true;
                hasText = true;
            } else if (character == m_separator) {
                fields.append(field);
                field.clear();
            } else if (character == u'\n') {
                break;
            } else if (character != u'\r') {
                field += character;
                hasText = hasText || !character.isSpace();
            }
        }
        fields.append(field);
        m_position = i + 1;
        if (hasText)
            return true;
        fields.clear();
    }
    return false;
}

QList<QStringList> ReadDelimitedText(QStringView text, QChar separator, Dialect dialect)
{
    QList<QStringList> records;
    DelimitedReader reader(text, separator, dialect);
    QStringList fields;
    while (reader.next(fields))
        records.append(fields);
    return records;
}

QStringList SplitDelimitedLine(QStringView line, QStringView separator)
{
    if (separator.isEmpty())
        return { line.toString() };
    QStringList fields;
    DelimitedReader reader(line, separator.front(), Dialect::Classic);
    if (!reader.next(fields))
        fields.append(QString());
    return fields;
}

QString SeparatorForFile(const QString& path)
{
    return path.endsWith(u".txt"_s, Qt::CaseInsensitive) ? u"\t"_s : u","_s;
}

} // namespace Text
