#include "platform/emf/Picture.h"

#include "platform/emf/RecordReader.h"
#include "platform/io/SafeFileWriter.h"

#include <QFile>
#include <QIODevice>
#include <uemf_safe.h>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace Emf {

namespace {

// iType, nSize, bounds, frame, signature, version, bytes, records, handles, reserved,
// description length and offset, palette entries, device pixels and millimetres.
constexpr qsizetype MinimumHeaderSize = 88;
constexpr qsizetype RecordPrefixSize = 8;

// libuemf checks every record type it can build; for the others (escapes, OpenGL records,
// text records we never play, unused numbers) it would only print a warning.
bool typeKnownToChecker(std::uint32_t type)
{
    switch (type) {
    case 69:
    case 96:
    case 97:
    case 102:
    case 103:
    case 105:
    case 106:
    case 107:
    case 109:
    case 110:
    case 111:
    case 112:
    case 113:
    case 117:
    case 119:
    case 120:
    case 121:
        return false;
    default:
        return type >= static_cast<std::uint32_t>(RecordType::Header)
            && type <= static_cast<std::uint32_t>(RecordType::CreateColorSpaceW);
    }
}

} // namespace

Picture Picture::fromBytes(const QByteArray& bytes)
{
    Picture picture;
    picture.m_bytes = bytes;
    // The record checker reads 32-bit fields in place; a detached copy is suitably aligned.
    if (reinterpret_cast<quintptr>(picture.m_bytes.constData()) % alignof(std::uint32_t) != 0)
        picture.m_bytes = QByteArray(bytes.constData(), bytes.size());
    picture.read();
    return picture;
}

Picture Picture::fromRecording(Storage storage)
{
    Picture picture;
    picture.m_bytes = std::move(storage.bytes);
    picture.m_records = std::move(storage.records);
    picture.m_valid = picture.readHeader();
    if (!picture.m_valid)
        picture.m_records.clear();
    return picture;
}

Picture::Storage Picture::takeStorage() &&
{
    m_valid = false;
    return { std::exchange(m_bytes, {}), std::exchange(m_records, {}) };
}

Picture Picture::fromFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        Picture picture;
        picture.m_errorText = u"The picture file could not be opened: %1"_s.arg(file.errorString());
        return picture;
    }
    if (file.size() > MaximumFileSize) {
        Picture picture;
        picture.m_errorText = u"The picture file is too large."_s;
        return picture;
    }
    return fromBytes(file.readAll());
}

QByteArrayView Picture::recordBytes(const RecordSpan& record) const
{
    return QByteArrayView(m_bytes).sliced(record.offset, record.size);
}

QString Picture::save(const QString& path) const
{
    return Io::SafeFileWriter::writeFile(
        path, [this](QIODevice& device) { return device.write(m_bytes) == m_bytes.size(); });
}

bool Picture::readHeader()
{
    RecordReader reader(m_bytes);
    const std::uint32_t type = reader.u32(0);
    const std::uint32_t size = reader.u32(4);
    const std::uint32_t signature = reader.u32(40);
    if (!reader.ok() || m_bytes.size() < MinimumHeaderSize || type != 1 || signature != Signature) {
        m_errorText = u"The file is not an enhanced metafile."_s;
        return false;
    }
    if (size < MinimumHeaderSize || size % 4 != 0 || size > static_cast<quint64>(m_bytes.size())) {
        m_errorText = u"The picture is damaged: its header has a wrong size."_s;
        return false;
    }
    m_header.bounds = reader.rect(8);
    m_header.frame = reader.rect(24);
    m_header.version = reader.u32(44);
    m_header.byteCount = reader.u32(48);
    m_header.recordCount = reader.u32(52);
    m_header.handleCount = reader.u16(56);
    const std::uint32_t descriptionLength = reader.u32(60);
    const std::uint32_t descriptionOffset = reader.u32(64);
    m_header.devicePixels = reader.size(72);
    m_header.deviceMillimetres = reader.size(80);
    // A description that does not fit inside the header is left out, not fatal.
    RecordReader headerOnly(QByteArrayView(m_bytes).first(size));
    if (descriptionLength > 0 && descriptionOffset >= MinimumHeaderSize) {
        if (auto text = headerOnly.utf16(descriptionOffset, descriptionLength))
            m_header.description = *text;
    }
    return true;
}

void Picture::read()
{
    m_valid = readHeader();
    if (!m_valid)
        return;
    RecordReader reader(m_bytes);
    qsizetype end = m_bytes.size();
    // A header byte count shorter than the data marks where the picture ends (trailing
    // bytes are ignored); a longer one means the file was cut short.
    if (m_header.byteCount >= MinimumHeaderSize && m_header.byteCount < quint64(end))
        end = m_header.byteCount;
    qsizetype offset = reader.u32(4);
    int skipped = 0;
    bool endOfFile = false;
    while (offset < end && !endOfFile) {
        if (end - offset < RecordPrefixSize) {
            m_errorText = u"The picture is damaged: it ends inside a record."_s;
            break;
        }
        const std::uint32_t type = reader.u32(offset);
        const std::uint32_t size = reader.u32(offset + 4);
        if (size < RecordPrefixSize || size % 4 != 0 || size > quint64(end - offset)) {
            m_errorText = u"The picture is damaged: record %1 has a wrong size."_s.arg(
                m_records.size() + 1);
            break;
        }
        const char* record = m_bytes.constData() + offset;
        if (typeKnownToChecker(type) && U_emf_record_safe(record) == 0) {
            ++skipped;
        } else {
            m_records.push_back({ type, offset, size });
        }
        endOfFile = type == static_cast<std::uint32_t>(RecordType::EndOfFile);
        offset += size;
    }
    if (m_errorText.isEmpty() && !endOfFile)
        m_errorText = u"The picture is damaged: it has no end record."_s;
    if (skipped > 0) {
        const QString skippedText
            = u"The picture is damaged: unreadable records were left out (%1)."_s.arg(skipped);
        m_errorText = m_errorText.isEmpty() ? skippedText : m_errorText + u' ' + skippedText;
    }
}

} // namespace Emf
