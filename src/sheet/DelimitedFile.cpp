#include "sheet/DelimitedFile.h"

#include "platform/profile/TextDecoding.h"

#include <QStringDecoder>

using namespace Qt::Literals::StringLiterals;

namespace Tillane {

namespace {

QString decodeLine(QByteArrayView bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString line = utf8.decode(bytes);
    if (utf8.hasError())
        return Profile::DecodeWindows1252(bytes);
    return line;
}

} // namespace

QStringList SplitDelimitedLine(QStringView line, QStringView separator)
{
    QStringList fields;
    if (separator.isEmpty()) {
        fields.append(line.toString());
        return fields;
    }
    const QChar mark = separator.front();
    qsizetype start = 0;
    while (true) {
        if (start < line.size() && line[start] == u'"') {
            const qsizetype closing = line.indexOf(u'"', start + 1);
            if (closing < 0) {
                fields.append(line.mid(start + 1).toString());
                return fields;
            }
            fields.append(line.mid(start + 1, closing - start - 1).toString());
            const qsizetype next = line.indexOf(mark, closing + 1);
            if (next < 0)
                return fields;
            start = next + 1;
            continue;
        }
        const qsizetype next = line.indexOf(mark, start);
        if (next < 0) {
            fields.append(line.mid(start).toString());
            return fields;
        }
        fields.append(line.mid(start, next - start).toString());
        start = next + 1;
    }
}

QString SeparatorForFile(const QString& path)
{
    return path.endsWith(u".txt"_s, Qt::CaseInsensitive) ? u"\t"_s : u","_s;
}

int DelimitedFile::NumberOfRecords() const
{
    return std::max(0, m_lineCount - (m_firstRowIsLabels ? 1 : 0));
}

QString DelimitedFile::FieldLabel(int index) const
{
    return index >= 0 && index < m_labels.size() ? m_labels[index] : QString();
}

bool DelimitedFile::readLine(QString& line)
{
    if (m_linesRead >= m_lineCount)
        return false;
    QByteArray bytes = m_file.readLine();
    if (m_linesRead == 0 && bytes.startsWith("\xEF\xBB\xBF"))
        bytes.remove(0, 3);
    if (bytes.endsWith('\n'))
        bytes.chop(1);
    if (bytes.endsWith('\r'))
        bytes.chop(1);
    line = decodeLine(bytes);
    ++m_linesRead;
    return true;
}

bool DelimitedFile::OpenFile(const QString& path)
{
    CloseFile();
    m_file.setFileName(path);
    if (!m_file.open(QIODevice::ReadOnly))
        return false;
    // Counted by line ends, so that a long line costs no memory; a last line without its
    // line end counts too.
    char previous = '\n';
    char buffer[65536];
    qint64 read = 0;
    while ((read = m_file.read(buffer, sizeof buffer)) > 0) {
        for (qint64 i = 0; i < read; ++i) {
            if (buffer[i] == '\n')
                ++m_lineCount;
        }
        previous = buffer[read - 1];
    }
    if (read < 0 || !m_file.seek(0)) {
        CloseFile();
        return false;
    }
    if (previous != '\n')
        ++m_lineCount;
    QString first;
    if (readLine(first))
        m_labels = SplitDelimitedLine(first, m_separator);
    m_file.seek(0);
    m_linesRead = 0;
    return true;
}

bool DelimitedFile::GetRecords(QStringList& fields)
{
    QString line;
    if (m_firstRowIsLabels && m_linesRead == 0 && !readLine(line))
        return false;
    if (!readLine(line))
        return false;
    fields = SplitDelimitedLine(line, m_separator);
    return true;
}

void DelimitedFile::CloseFile()
{
    if (m_file.isOpen())
        m_file.close();
    m_lineCount = 0;
    m_linesRead = 0;
    m_labels.clear();
}

} // namespace Tillane
