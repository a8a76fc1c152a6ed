// Any bytes as delimited text, in both dialects and with both separators: the reader must
// neither crash nor read out of bounds; the classic dialect gives one record per line, and
// whatever the quoted dialect reads, written back with every field quoted, reads the same.
#include "platform/profile/TextDecoding.h"
#include "platform/text/DelimitedText.h"

#include <QString>
#include <cstdint>
#include <cstdlib>

namespace {

qsizetype LineCount(QStringView text)
{
    if (text.isEmpty())
        return 0;
    return text.count(u'\n') + (text.endsWith(u'\n') ? 0 : 1);
}

QString Quoted(const QList<QStringList>& records, QChar separator)
{
    QString text;
    for (const QStringList& record : records) {
        for (qsizetype i = 0; i < record.size(); ++i) {
            if (i > 0)
                text += separator;
            text += u'"' + QString(record[i]).replace(u'"', QStringLiteral("\"\"")) + u'"';
        }
        text += u'\n';
    }
    return text;
}

void Check(QStringView text, QChar separator)
{
    const QList<QStringList> lines
        = Text::ReadDelimitedText(text, separator, Text::Dialect::Classic);
    if (lines.size() != LineCount(text))
        std::abort();
    for (const QStringList& fields : lines) {
        if (fields.isEmpty())
            std::abort();
        for (const QString& field : fields) {
            if (field.contains(u'\n'))
                std::abort();
        }
    }

    const QList<QStringList> records
        = Text::ReadDelimitedText(text, separator, Text::Dialect::Quoted);
    if (records.size() > lines.size())
        std::abort();
    if (Text::ReadDelimitedText(Quoted(records, separator), separator, Text::Dialect::Quoted)
        != records)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArrayView bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    const QString text = Profile::DecodeSystemText(bytes);
    Check(text, u',');
    Check(text, u'\t');
    return 0;
}
