#pragma once

#include "RowFile.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Variant.h"

#include <gtest/gtest.h>
#include <type_traits>

// Row fields for the runtime's values and outcomes.
namespace RuntimeRows {

// A value as rows write it: a plain number is a real (Double); Empty, Null, True and False are
// those values; `long:`, `currency:`, `date:`, `text:` and `bytes:` before a field give the
// kind, as in date:45351 or text:abc.
inline Runtime::Variant Value(const RowFile::Row& row, const char* column)
{
    using Runtime::Variant;
    const QString field = row.text(column);
    if (field == u"Empty")
        return Variant();
    if (field == u"Null")
        return Variant::null();
    if (field == u"True" || field == u"False")
        return Variant(field == u"True");
    const qsizetype colon = field.indexOf(u':');
    const QStringView kind = QStringView(field).first(std::max<qsizetype>(colon, 0));
    const QString rest = field.sliced(colon + 1);
    if (kind == u"text")
        return Variant(rest);
    if (kind == u"bytes")
        return Variant(row.bytes(column).sliced(colon + 1));
    bool ok = true;
    Variant value;
    if (kind == u"long")
        value = Variant(rest.toLongLong(&ok));
    else if (kind == u"currency")
        value = Variant::currency(rest.toDouble(&ok));
    else if (kind == u"date")
        value = Variant::date(rest.toDouble(&ok));
    else
        value = Variant(row.number(column));
    if (!ok)
        ADD_FAILURE() << row.where() << ": column " << column << " is no value";
    return value;
}

// Checks what `call` gives against the expected field: `error N` expects the runtime error N,
// `-` expects nothing (the row does not ask it); otherwise a text is compared as it is, yes and
// no with a truth value, and a number as EXPECT_DOUBLE_EQ compares (within four units in the
// last place).
template <typename Call>
void ExpectOutcome(const RowFile::Row& row, const char* column, const Call& call)
{
    SCOPED_TRACE(row.where() + ", column " + column);
    const QString expected = row.text(column);
    if (expected == u"-")
        return;
    if (expected.startsWith(u"error ")) {
        try {
            call();
            ADD_FAILURE() << "no error; expected " << expected.toStdString();
        } catch (const Runtime::Error& error) {
            EXPECT_EQ("error " + std::to_string(error.number()), expected.toStdString());
        }
        return;
    }
    using Result = std::decay_t<decltype(call())>;
    try {
        if constexpr (std::is_same_v<Result, QString>)
            EXPECT_EQ(call().toStdString(), expected.toStdString());
        else if constexpr (std::is_same_v<Result, bool>)
            EXPECT_EQ(call(), row.flag(column));
        else
            EXPECT_DOUBLE_EQ(double(call()), row.number(column));
    } catch (const Runtime::Error& error) {
        ADD_FAILURE() << "error " << error.number() << "; expected " << expected.toStdString();
    }
}

} // namespace RuntimeRows
