#pragma once

#include <QByteArray>
#include <QString>

#include <variant>

namespace Runtime {

// The value of a card field, a sheet cell or a formatted quantity: what the classic BASIC
// runtime kept in a Variant. Storage only; conversions to and from text live in
// Conversions.h and Format.h so that they are written once.
enum class VariantType {
    Empty, // never assigned
    Null, // no value (an empty field)
    Boolean,
    Long, // whole numbers (byte, integer, long, counter)
    Double, // single and double
    Currency, // a real kept to four decimals
    Date, // day serial from 30 December 1899, time as the fraction
    Text,
    Binary, // long binary data (pictures)
};

class Variant {
public:
    Variant() = default;
    Variant(bool value)
        : m_type(VariantType::Boolean)
        , m_value(value)
    {
    }
    Variant(int value)
        : Variant(static_cast<qint64>(value))
    {
    }
    Variant(qint64 value)
        : m_type(VariantType::Long)
        , m_value(value)
    {
    }
    Variant(double value)
        : m_type(VariantType::Double)
        , m_value(value)
    {
    }
    Variant(const QString& value)
        : m_type(VariantType::Text)
        , m_value(value)
    {
    }
    Variant(const QByteArray& value)
        : m_type(VariantType::Binary)
        , m_value(value)
    {
    }

    static Variant null()
    {
        Variant v;
        v.m_type = VariantType::Null;
        return v;
    }
    static Variant currency(double value)
    {
        Variant v(value);
        v.m_type = VariantType::Currency;
        return v;
    }
    static Variant date(double serial)
    {
        Variant v(serial);
        v.m_type = VariantType::Date;
        return v;
    }

    VariantType type() const { return m_type; }
    bool isEmpty() const { return m_type == VariantType::Empty; }
    bool isNull() const { return m_type == VariantType::Null; }
    // Number-like: whole, real, currency, date and on/off values all have a numeric reading.
    bool isNumeric() const
    {
        return m_type == VariantType::Boolean || m_type == VariantType::Long
            || m_type == VariantType::Double || m_type == VariantType::Currency
            || m_type == VariantType::Date;
    }

    // Raw readings without conversion between kinds; a reading of the wrong kind gives the
    // kind's zero value. True reads as -1, as the classic runtime stored it.
    double number() const
    {
        if (const auto* d = std::get_if<double>(&m_value))
            return *d;
        if (const auto* l = std::get_if<qint64>(&m_value))
            return static_cast<double>(*l);
        if (const auto* b = std::get_if<bool>(&m_value))
            return *b ? -1.0 : 0.0;
        return 0.0;
    }
    qint64 whole() const
    {
        if (const auto* l = std::get_if<qint64>(&m_value))
            return *l;
        return 0;
    }
    bool boolean() const
    {
        if (const auto* b = std::get_if<bool>(&m_value))
            return *b;
        return number() != 0.0;
    }
    QString text() const
    {
        if (const auto* s = std::get_if<QString>(&m_value))
            return *s;
        return {};
    }
    QByteArray bytes() const
    {
        if (const auto* b = std::get_if<QByteArray>(&m_value))
            return *b;
        return {};
    }

    friend bool operator==(const Variant& a, const Variant& b)
    {
        return a.m_type == b.m_type && a.m_value == b.m_value;
    }

private:
    VariantType m_type = VariantType::Empty;
    std::variant<std::monostate, bool, qint64, double, QString, QByteArray> m_value;
};

} // namespace Runtime
