#include "platform/profile/TextDecoding.h"

#include <QStringDecoder>
#include <array>

namespace Profile {

namespace {

// 0x80..0x9F of Windows-1252; everything else equals Latin-1.
constexpr std::array<char16_t, 32> windows1252High = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, //
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F, //
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, //
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178, //
};

// Qt's decoder rejects overlong forms, surrogates and truncated sequences, which is the
// test of "valid UTF-8" we want.
bool TryDecodeUtf8(QByteArrayView bytes, QString& text)
{
    QStringDecoder decoder(QStringConverter::Utf8,
        QStringConverter::Flag::Stateless | QStringConverter::Flag::ConvertInitialBom);
    text = decoder.decode(bytes);
    return !decoder.hasError();
}

QString DecodeLine(QByteArrayView line)
{
    QString text;
    if (TryDecodeUtf8(line, text))
        return text;
    return DecodeWindows1252(line);
}

} // namespace

QString DecodeWindows1252(QByteArrayView bytes)
{
    QString text(bytes.size(), Qt::Uninitialized);
    char16_t* out = reinterpret_cast<char16_t*>(text.data());
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        *out++ = (value >= 0x80 && value <= 0x9F) ? windows1252High[value - 0x80]
                                                  : static_cast<char16_t>(value);
    }
    return text;
}

QString DecodeSystemText(QByteArrayView bytes)
{
    if (bytes.startsWith("\xEF\xBB\xBF"))
        bytes = bytes.sliced(3);

    // Nearly every file is plain UTF-8 throughout: one pass decides that.
    QString text;
    if (TryDecodeUtf8(bytes, text))
        return text;

    text.clear();
    text.reserve(bytes.size());
    while (!bytes.isEmpty()) {
        const qsizetype end = bytes.indexOf('\n');
        const qsizetype length = end < 0 ? bytes.size() : end + 1;
        text += DecodeLine(bytes.first(length));
        bytes = bytes.sliced(length);
    }
    return text;
}

} // namespace Profile
