#include "platform/dao/ValueConversion.h"

#include "platform/dao/DaoError.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Dates.h"
#include "platform/runtime/Error.h"

#include <cmath>
#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace Dao {

namespace {

using Runtime::Variant;
using Runtime::VariantType;

// Whether a text says on or off; empty when it says neither.
std::optional<bool> OnOffWord(const QString& text)
{
    const QString word = text.trimmed();
    for (const QString& on : { u"True"_s, u"Yes"_s, u"On"_s }) {
        if (word.compare(on, Qt::CaseInsensitive) == 0)
            return true;
    }
    for (const QString& off : { u"False"_s, u"No"_s, u"Off"_s }) {
        if (word.compare(off, Qt::CaseInsensitive) == 0)
            return false;
    }
    return std::nullopt;
}

// The number a value stands for, or empty when it is none.
std::optional<double> NumberOf(const Variant& value)
{
    switch (value.type()) {
    case VariantType::Boolean:
    case VariantType::Long:
    case VariantType::Double:
    case VariantType::Currency:
    case VariantType::Date:
        return value.number();
    case VariantType::Text: {
        const QString text = value.text();
        try {
            if (Runtime::IsNumeric(text))
                return Runtime::CDbl(text);
            if (const auto word = OnOffWord(text))
                return *word ? -1.0 : 0.0;
        } catch (const Runtime::Error&) { }
        return std::nullopt;
    }
    default:
        return std::nullopt;
    }
}

[[noreturn]] void Overflow()
{
    throw DaoError::make(DaoError::NumericOverflow);
}

Variant Whole(double number, double low, double high, ConversionMode mode)
{
    const double rounded = std::isfinite(number) ? Runtime::Round(number) : number;
    if (!std::isfinite(rounded) || rounded < low || rounded > high) {
        if (mode == ConversionMode::Assignment)
            Overflow();
        return Variant::null();
    }
    return Variant(static_cast<qint64>(rounded));
}

Variant ToText(const Variant& value, const ColumnType& column, ConversionMode mode)
{
    QString text;
    if (value.type() == VariantType::Binary) {
        const QByteArray bytes = value.bytes();
        text = QString(reinterpret_cast<const QChar*>(bytes.constData()), bytes.size() / 2);
    } else {
        text = Runtime::CStr(value);
    }
    if (column.type == DataType::Text && column.size > 0 && text.size() > column.size) {
        if (mode == ConversionMode::Assignment)
            throw DaoError::make(DaoError::FieldTooSmall);
        return Variant::null();
    }
    return Variant(text);
}

} // namespace

Variant ConvertForColumn(const Variant& value, const ColumnType& column, ConversionMode mode)
{
    if (value.isNull() || value.isEmpty())
        return Variant::null();
    const DataType type = column.type;
    if (type == DataType::Text || type == DataType::Memo)
        return ToText(value, column, mode);
    if (type == DataType::Binary || type == DataType::LongBinary) {
        if (value.type() == VariantType::Binary)
            return value;
        if (value.type() == VariantType::Text) {
            const QString text = value.text();
            return Variant(QByteArray(reinterpret_cast<const char*>(text.utf16()),
                text.size() * static_cast<qsizetype>(sizeof(char16_t))));
        }
        return Variant::null();
    }
    if (value.type() == VariantType::Binary)
        return Variant::null();
    if (type == DataType::Boolean) {
        const auto number = NumberOf(value);
        return number ? Variant(*number != 0.0) : Variant::null();
    }
    if (type == DataType::Date) {
        try {
            if (value.type() == VariantType::Text) {
                const QString text = value.text();
                if (Runtime::IsDate(text))
                    return Variant::date(Runtime::CDate(text));
            }
            const auto number = NumberOf(value);
            if (!number)
                return Variant::null();
            if (!Runtime::IsValidDateSerial(*number)) {
                if (mode == ConversionMode::Assignment)
                    Overflow();
                return Variant::null();
            }
            return Variant::date(*number);
        } catch (const Runtime::Error&) {
            return Variant::null();
        }
    }
    const auto number = NumberOf(value);
    if (!number)
        return Variant::null();
    switch (type) {
    case DataType::Byte:
        return Whole(*number, 0, 255, mode);
    case DataType::Integer:
        return Whole(*number, -32768, 32767, mode);
    case DataType::Long:
        return Whole(
            *number, std::numeric_limits<qint32>::min(), std::numeric_limits<qint32>::max(), mode);
    case DataType::Currency:
        try {
            return Variant::currency(Runtime::CCur(*number));
        } catch (const Runtime::Error&) {
            if (mode == ConversionMode::Assignment)
                Overflow();
            return Variant::null();
        }
    case DataType::Single: {
        if (std::isfinite(*number) && std::abs(*number) <= std::numeric_limits<float>::max())
            return Variant(static_cast<double>(static_cast<float>(*number)));
        if (mode == ConversionMode::Assignment)
            Overflow();
        return Variant::null();
    }
    default:
        if (std::isfinite(*number))
            return Variant(*number);
        if (mode == ConversionMode::Assignment)
            Overflow();
        return Variant::null();
    }
}

Variant FromStorage(const Variant& stored, DataType type)
{
    const bool number = stored.type() == VariantType::Long || stored.type() == VariantType::Double;
    switch (type) {
    case DataType::Boolean:
        return number ? Variant(stored.number() != 0.0) : stored;
    case DataType::Currency:
        return number ? Variant::currency(stored.number()) : stored;
    case DataType::Date:
        return number ? Variant::date(stored.number()) : stored;
    case DataType::Single:
    case DataType::Double:
        return stored.type() == VariantType::Long ? Variant(stored.number()) : stored;
    default:
        return stored;
    }
}

} // namespace Dao
