#include "platform/emf/RecordReader.h"

#include <cstring>
#include <limits>

namespace Emf {

namespace {

template <typename Value> Value load(const char* data)
{
    Value value;
    std::memcpy(&value, data, sizeof value);
    return value;
}

} // namespace

bool RecordReader::contains(std::uint64_t offset, std::uint64_t length) const
{
    const auto total = static_cast<std::uint64_t>(m_bytes.size());
    return offset <= total && length <= total - offset;
}

bool RecordReader::take(std::uint64_t offset, std::uint64_t length)
{
    if (contains(offset, length))
        return true;
    m_failed = true;
    return false;
}

std::uint8_t RecordReader::u8(std::uint64_t offset)
{
    return take(offset, 1) ? static_cast<std::uint8_t>(m_bytes[offset]) : 0;
}

std::uint16_t RecordReader::u16(std::uint64_t offset)
{
    return take(offset, 2) ? load<std::uint16_t>(m_bytes.data() + offset) : 0;
}

std::int16_t RecordReader::i16(std::uint64_t offset)
{
    return take(offset, 2) ? load<std::int16_t>(m_bytes.data() + offset) : 0;
}

std::uint32_t RecordReader::u32(std::uint64_t offset)
{
    return take(offset, 4) ? load<std::uint32_t>(m_bytes.data() + offset) : 0;
}

std::int32_t RecordReader::i32(std::uint64_t offset)
{
    return take(offset, 4) ? load<std::int32_t>(m_bytes.data() + offset) : 0;
}

float RecordReader::f32(std::uint64_t offset)
{
    return take(offset, 4) ? load<float>(m_bytes.data() + offset) : 0.0f;
}

PointL RecordReader::point(std::uint64_t offset)
{
    return { i32(offset), i32(offset + 4) };
}

PointL RecordReader::point16(std::uint64_t offset)
{
    return { i16(offset), i16(offset + 2) };
}

RectL RecordReader::rect(std::uint64_t offset)
{
    return { i32(offset), i32(offset + 4), i32(offset + 8), i32(offset + 12) };
}

SizeL RecordReader::size(std::uint64_t offset)
{
    return { i32(offset), i32(offset + 4) };
}

XForm RecordReader::xform(std::uint64_t offset)
{
    return { f32(offset), f32(offset + 4), f32(offset + 8), f32(offset + 12), f32(offset + 16),
        f32(offset + 20) };
}

std::optional<std::vector<PointL>> RecordReader::points(std::uint64_t offset, std::uint64_t count)
{
    if (count > std::numeric_limits<std::uint64_t>::max() / 8 || !take(offset, count * 8))
        return std::nullopt;
    std::vector<PointL> result(count);
    for (std::uint64_t index = 0; index < count; ++index)
        result[index] = point(offset + index * 8);
    return result;
}

std::optional<std::vector<PointL>> RecordReader::points16(std::uint64_t offset, std::uint64_t count)
{
    if (count > std::numeric_limits<std::uint64_t>::max() / 4 || !take(offset, count * 4))
        return std::nullopt;
    std::vector<PointL> result(count);
    for (std::uint64_t index = 0; index < count; ++index)
        result[index] = point16(offset + index * 4);
    return result;
}

std::optional<std::vector<std::uint32_t>> RecordReader::u32s(
    std::uint64_t offset, std::uint64_t count)
{
    if (count > std::numeric_limits<std::uint64_t>::max() / 4 || !take(offset, count * 4))
        return std::nullopt;
    std::vector<std::uint32_t> result(count);
    for (std::uint64_t index = 0; index < count; ++index)
        result[index] = u32(offset + index * 4);
    return result;
}

std::optional<QString> RecordReader::utf16(std::uint64_t offset, std::uint64_t count)
{
    if (count > std::numeric_limits<std::uint64_t>::max() / 2 || !take(offset, count * 2))
        return std::nullopt;
    QString text(static_cast<qsizetype>(count), Qt::Uninitialized);
    for (std::uint64_t index = 0; index < count; ++index)
        text[static_cast<qsizetype>(index)] = QChar(u16(offset + index * 2));
    return text;
}

QByteArrayView RecordReader::bytes(std::uint64_t offset, std::uint64_t length)
{
    if (!take(offset, length))
        return {};
    return m_bytes.sliced(static_cast<qsizetype>(offset), static_cast<qsizetype>(length));
}

} // namespace Emf
