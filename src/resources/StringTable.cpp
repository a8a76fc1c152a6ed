#include "resources/StringTable.h"

#include <QFile>
#include <QStringDecoder>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace Resources {

namespace {

// Turns the escapes of the file format back into characters. Returns an empty string when
// the text is acceptable, else why it is not.
QString decodeText(QStringView raw, QString& text)
{
    if (raw.isEmpty())
        return u"the text is empty"_s;
    text.clear();
    text.reserve(raw.size());
    for (qsizetype i = 0; i < raw.size(); ++i) {
        const QChar c = raw[i];
        if (c.unicode() < 0x20) {
            return u"a control character (TAB, CR, ...) must be written as an escape"_s;
        }
        if (c != u'\\') {
            text.append(c);
            continue;
        }
        if (++i == raw.size())
            return u"the line ends in a lone backslash"_s;
        switch (raw[i].unicode()) {
        case u'n':
            text.append(u'\n');
            break;
        case u'r':
            text.append(u'\r');
            break;
        case u't':
            text.append(u'\t');
            break;
        case u's':
            text.append(u' ');
            break;
        case u'\\':
            text.append(u'\\');
            break;
        default:
            return u"unknown escape \\%1"_s.arg(raw[i]);
        }
    }
    // Checked after the control characters so that a trailing TAB gets that message.
    if (raw.endsWith(u' '))
        return u"a blank at the end of a text must be written \\s"_s;
    return {};
}

// The number before the TAB: decimal digits only, so that " 12" or "+12" are caught.
bool parseId(QStringView digits, int& id)
{
    const auto isDecimalDigit = [](QChar c) { return c >= u'0' && c <= u'9'; };
    if (digits.isEmpty() || !std::all_of(digits.begin(), digits.end(), isDecimalDigit))
        return false;
    bool ok = false;
    id = digits.toInt(&ok);
    return ok;
}

} // namespace

StringTable StringTable::parse(QByteArrayView utf8)
{
    StringTable table;
    QHash<int, int> lineOfId;
    int lineNumber = 0;
    qsizetype start = 0;
    while (start < utf8.size()) {
        qsizetype end = utf8.indexOf('\n', start);
        if (end < 0)
            end = utf8.size();
        QByteArrayView bytes = utf8.sliced(start, end - start);
        start = end + 1;
        ++lineNumber;
        if (bytes.endsWith('\r'))
            bytes.chop(1);

        const auto problem = [&](const QString& message) {
            table.m_problems.append({ lineNumber, message });
        };
        QStringDecoder decoder(QStringDecoder::Utf8);
        const QString line = decoder.decode(bytes);
        if (decoder.hasError()) {
            problem(u"the line is not valid UTF-8"_s);
            continue;
        }
        if (line.isEmpty() || line.startsWith(u'#'))
            continue;

        const qsizetype tab = line.indexOf(u'\t');
        if (tab < 0) {
            problem(u"no TAB between the number and the text"_s);
            continue;
        }
        int id = 0;
        if (!parseId(QStringView(line).first(tab), id)) {
            problem(u"\"%1\" is not a number"_s.arg(line.first(tab)));
            continue;
        }
        QString text;
        const QString error = decodeText(QStringView(line).sliced(tab + 1), text);
        if (!error.isEmpty()) {
            problem(error);
            continue;
        }
        if (const auto previous = lineOfId.constFind(id); previous != lineOfId.cend()) {
            problem(u"number %1 is already given on line %2"_s.arg(id).arg(*previous));
            continue;
        }
        lineOfId.insert(id, lineNumber);
        table.m_texts.insert(id, text);
    }
    return table;
}

const StringTable& StringTable::builtIn()
{
    static const StringTable table = [] {
        QFile file(u":/resources/strings.txt"_s);
        if (!file.open(QIODevice::ReadOnly)) {
            StringTable missing;
            missing.m_problems.append({ 0, u"cannot read %1"_s.arg(file.fileName()) });
            return missing;
        }
        return parse(file.readAll());
    }();
    return table;
}

QString StringTable::text(int id) const
{
    return m_texts.value(id, u"ERROR"_s);
}

QList<int> StringTable::ids() const
{
    QList<int> result = m_texts.keys();
    std::sort(result.begin(), result.end());
    return result;
}

} // namespace Resources

QString GetResString(int id)
{
    return Resources::StringTable::builtIn().text(id);
}
