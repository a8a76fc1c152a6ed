#pragma once

#include "platform/emf/EmfTypes.h"
#include "platform/emf/RecordType.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <cstdint>
#include <vector>

namespace Emf {

struct PictureHeader
{
    RectL bounds; // device pixels, inclusive; (0, 0, -1, -1) when nothing was drawn
    RectL frame; // hundredths of a millimetre, inclusive
    std::uint32_t version = 0;
    std::uint32_t byteCount = 0;
    std::uint32_t recordCount = 0;
    std::uint16_t handleCount = 0;
    QString description; // as stored, embedded nulls included
    SizeL devicePixels;
    SizeL deviceMillimetres;
};

struct RecordSpan
{
    std::uint32_t type = 0; // a RecordType value, or any number a foreign file used
    qsizetype offset = 0;
    qsizetype size = 0;
};

// A finished enhanced metafile: its bytes exactly as written or read, the header, and where
// each record lies. Reading treats the bytes as untrusted: a picture whose header is not an
// enhanced metafile header is invalid; a record that runs past the end, or whose size is not
// a whole number of 32-bit words, ends the reading there (the records before it are kept); a
// record whose inner counts and offsets do not fit inside it is left out. errorText() then
// says what was wrong.
class Picture
{
public:
    Picture() = default;
    static Picture fromBytes(const QByteArray& bytes);
    // Reads at most MaximumFileSize bytes; a larger or unreadable file gives an invalid picture.
    static Picture fromFile(const QString& path);

    // The bytes and record list of a picture, handed back for a later recording to fill again:
    // a graph redrawn many times then writes into memory it already has.
    struct Storage
    {
        QByteArray bytes;
        std::vector<RecordSpan> records;
    };
    // A picture just recorded by this program: `records` already lists where each record
    // lies, so the bytes are not checked record by record as a file's are.
    static Picture fromRecording(Storage storage);
    Storage takeStorage() &&;

    static constexpr qsizetype MaximumFileSize = 256 * 1024 * 1024;
    static constexpr std::uint32_t Signature = 0x464D4520; // " EMF"

    bool isValid() const { return m_valid; }
    // Empty when every byte was read as a sound record.
    const QString& errorText() const { return m_errorText; }
    const QByteArray& bytes() const { return m_bytes; }
    const PictureHeader& header() const { return m_header; }
    // The records after the header, the end-of-file record included when there is one.
    const std::vector<RecordSpan>& records() const { return m_records; }
    QByteArrayView recordBytes(const RecordSpan& record) const;

    // Writes the bytes through a temporary file that replaces `path` only when complete.
    // Returns the empty string on success, else the reason.
    QString save(const QString& path) const;

private:
    void read();
    bool readHeader();

    QByteArray m_bytes;
    PictureHeader m_header;
    std::vector<RecordSpan> m_records;
    QString m_errorText;
    bool m_valid = false;
};

} // namespace Emf
