#pragma once

#include "platform/emf/EmfTypes.h"

#include <QByteArrayView>
#include <QString>
#include <cstdint>
#include <optional>
#include <vector>

namespace Emf {

// Reads the fields of one record (or any byte block) by offset. Every read checks that the
// bytes lie inside the block; a read that does not fit sets the failed flag and gives 0, so a
// decoder reads all its fields and then asks ok() once. Counts taken from the data are checked
// against the bytes that remain before anything is allocated.
class RecordReader
{
public:
    explicit RecordReader(QByteArrayView bytes)
        : m_bytes(bytes)
    { }

    qsizetype size() const { return m_bytes.size(); }
    bool ok() const { return !m_failed; }
    // True when `length` bytes from `offset` lie inside the block (no flag is set).
    bool contains(std::uint64_t offset, std::uint64_t length) const;

    std::uint8_t u8(std::uint64_t offset);
    std::uint16_t u16(std::uint64_t offset);
    std::int16_t i16(std::uint64_t offset);
    std::uint32_t u32(std::uint64_t offset);
    std::int32_t i32(std::uint64_t offset);
    float f32(std::uint64_t offset);
    PointL point(std::uint64_t offset);
    PointL point16(std::uint64_t offset);
    RectL rect(std::uint64_t offset);
    SizeL size(std::uint64_t offset);
    XForm xform(std::uint64_t offset);

    // `count` points of 32-bit (or 16-bit) coordinates; empty optional when they do not fit.
    std::optional<std::vector<PointL>> points(std::uint64_t offset, std::uint64_t count);
    std::optional<std::vector<PointL>> points16(std::uint64_t offset, std::uint64_t count);
    std::optional<std::vector<std::uint32_t>> u32s(std::uint64_t offset, std::uint64_t count);
    // `count` UTF-16 code units.
    std::optional<QString> utf16(std::uint64_t offset, std::uint64_t count);
    // A sub-block; empty view (and the failed flag) when it does not fit.
    QByteArrayView bytes(std::uint64_t offset, std::uint64_t length);

private:
    bool take(std::uint64_t offset, std::uint64_t length);

    QByteArrayView m_bytes;
    bool m_failed = false;
};

} // namespace Emf
