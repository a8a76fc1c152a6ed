#include "platform/profile/ProfileFile.h"

#include "platform/profile/TextDecoding.h"

#include <QFile>

namespace Profile {

namespace {

bool IsBlank(QChar character)
{
    return character == u' ' || character == u'\t';
}

QStringView TrimBlanks(QStringView text)
{
    qsizetype first = 0;
    qsizetype last = text.size();
    while (first < last && IsBlank(text[first]))
        ++first;
    while (last > first && IsBlank(text[last - 1]))
        --last;
    return text.sliced(first, last - first);
}

QStringView StripOuterQuotes(QStringView value)
{
    if (value.size() < 2)
        return value;
    const QChar first = value.front();
    if ((first == u'"' || first == u'\'') && value.back() == first)
        return value.sliced(1, value.size() - 2);
    return value;
}

// Cut by characters, never inside a surrogate pair.
QStringView CutToBuffer(QStringView value)
{
    if (value.size() <= MaximumValueLength)
        return value;
    qsizetype length = MaximumValueLength;
    if (value[length - 1].isHighSurrogate())
        --length;
    return value.first(length);
}

QString Fold(QStringView name)
{
    return name.toString().toCaseFolded();
}

} // namespace

ProfileFile ProfileFile::fromBytes(QByteArrayView bytes)
{
    ProfileFile profile;
    profile.parse(DecodeSystemText(bytes));
    return profile;
}

ProfileFile ProfileFile::load(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return fromBytes(file.readAll());
}

void ProfileFile::parse(QStringView text)
{
    Section* section = nullptr;
    while (!text.isEmpty()) {
        qsizetype end = 0;
        while (end < text.size() && text[end] != u'\n' && text[end] != u'\r')
            ++end;
        QStringView line = text.first(end);
        text = text.sliced(end < text.size() ? end + 1 : end);

        const qsizetype nul = line.indexOf(QChar(0));
        if (nul >= 0)
            line = line.first(nul);
        line = TrimBlanks(line);
        if (line.isEmpty() || line.front() == u';')
            continue;

        if (line.front() == u'[') {
            QStringView name = line.sliced(1);
            const qsizetype close = name.indexOf(u']');
            if (close >= 0)
                name = name.first(close);
            section = &m_sections[Fold(TrimBlanks(name))];
            continue;
        }

        const qsizetype equals = line.indexOf(u'=');
        if (section == nullptr || equals < 0)
            continue;
        const QString key = Fold(TrimBlanks(line.first(equals)));
        if (section->contains(key))
            continue;
        const QStringView value = StripOuterQuotes(TrimBlanks(line.sliced(equals + 1)));
        section->insert(key, CutToBuffer(value).toString());
    }
}

QString ProfileFile::value(QStringView section, QStringView key) const
{
    const auto found = m_sections.constFind(Fold(section));
    if (found == m_sections.constEnd())
        return {};
    return found->value(Fold(key));
}

bool ProfileFile::contains(QStringView section, QStringView key) const
{
    const auto found = m_sections.constFind(Fold(section));
    return found != m_sections.constEnd() && found->contains(Fold(key));
}

QString ReadIniString(const QString& path, QStringView section, QStringView key)
{
    return ProfileFile::load(path).value(section, key);
}

} // namespace Profile
