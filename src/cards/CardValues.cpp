#include "cards/CardValues.h"

#include "cards/CardFields.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Format.h"

using Runtime::Variant;

namespace Bramlet {

QString ShownText(const Variant& value, const QString& format)
{
    if (value.isNull() || value.isEmpty())
        return {};
    return Runtime::Format(value, format);
}

std::optional<Variant> TypedFieldValue(
    int fieldType, const QString& text, const Variant& stored, const QString& format)
{
    const QString trimmed = text.trimmed();
    if (trimmed.compare(ShownText(stored, format), Qt::CaseInsensitive) == 0)
        return std::nullopt;
    switch (fieldType) {
    case WholeNumberField:
    case DecimalNumberField: {
        // Thousands separators and the locale's point count when the whole text is a number;
        // otherwise the number it starts with.
        const bool whole = Runtime::IsNumeric(trimmed);
        const double number = whole ? Runtime::CDbl(trimmed) : Runtime::Val(trimmed);
        if (trimmed.startsWith(u'0') || number != 0.0 || whole)
            return Variant(number);
        return Variant::null();
    }
    case CurrencyField:
        // An emptied box clears the amount rather than failing as a conversion of "".
        if (trimmed.isEmpty())
            return Variant::null();
        return Variant::currency(Runtime::CCur(trimmed));
    default:
        return Variant(text);
    }
}

std::optional<Variant> PickedDateValue(bool null, double serial, const Variant& stored)
{
    if (null)
        return stored.isNull() || stored.isEmpty() ? std::nullopt : std::optional(Variant::null());
    if (stored.isNumeric() && stored.number() == serial)
        return std::nullopt;
    return Variant::date(serial);
}

} // namespace Bramlet
