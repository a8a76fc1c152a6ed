#include "platform/text/DelimitedFile.h"

#include "platform/io/StandardStreams.h"
#include "platform/profile/TextDecoding.h"
#include "platform/text/DelimitedText.h"

#include <QStringDecoder>

namespace Text {

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
    QByteArray bytes = m_file->readLine();
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
    QString reason;
    m_file = Io::OpenForReading(path, reason);
    if (!m_file)
        return false;
    // Counted by line ends, so that a long line costs no memory; a last line without its
    // line end counts too.
    char previous = '\n';
    char buffer[65536];
    qint64 read = 0;
    while ((read = m_file->read(buffer, sizeof buffer)) > 0) {
        for (qint64 i = 0; i < read; ++i) {
            if (buffer[i] == '\n')
                ++m_lineCount;
        }
        previous = buffer[read - 1];
    }
    if (read < 0 || !m_file->seek(0)) {
        CloseFile();
        return false;
    }
    if (previous != '\n')
        ++m_lineCount;
    QString first;
    if (readLine(first))
        m_labels = SplitDelimitedLine(first, m_separator);
    m_file->seek(0);
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
    m_file.reset();
    m_lineCount = 0;
    m_linesRead = 0;
    m_labels.clear();
}

} // namespace Text
