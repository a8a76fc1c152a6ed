#include "platform/dao/SqlFunctions.h"

#include "platform/dao/DaoError.h"
#include "platform/dao/LikePattern.h"
#include "platform/dao/ValueConversion.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Dates.h"
#include "platform/runtime/Error.h"

#include <QDateTime>
#include <cmath>
#include <optional>
#include <sqlite3.h>

using namespace Qt::Literals::StringLiterals;

namespace Dao {

namespace {

using Runtime::Variant;
using Runtime::VariantType;

Variant ValueOf(sqlite3_value* value)
{
    switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER:
        return Variant(static_cast<qint64>(sqlite3_value_int64(value)));
    case SQLITE_FLOAT:
        return Variant(sqlite3_value_double(value));
    case SQLITE_TEXT:
        return Variant(QString::fromUtf8(
            reinterpret_cast<const char*>(sqlite3_value_text(value)), sqlite3_value_bytes(value)));
    case SQLITE_BLOB:
        return Variant(QByteArray(
            static_cast<const char*>(sqlite3_value_blob(value)), sqlite3_value_bytes(value)));
    default:
        return Variant::null();
    }
}

QString TextOf(sqlite3_value* value)
{
    return QString::fromUtf8(
        reinterpret_cast<const char*>(sqlite3_value_text(value)), sqlite3_value_bytes(value));
}

bool IsNull(sqlite3_value* value)
{
    return sqlite3_value_type(value) == SQLITE_NULL;
}

void Result(sqlite3_context* context, const Variant& value)
{
    switch (value.type()) {
    case VariantType::Empty:
    case VariantType::Null:
        sqlite3_result_null(context);
        break;
    case VariantType::Boolean:
        sqlite3_result_int(context, value.boolean() ? 1 : 0);
        break;
    case VariantType::Long:
        sqlite3_result_int64(context, value.whole());
        break;
    case VariantType::Double:
    case VariantType::Currency:
    case VariantType::Date:
        sqlite3_result_double(context, value.number());
        break;
    case VariantType::Text: {
        const QByteArray utf8 = value.text().toUtf8();
        sqlite3_result_text64(context, utf8.constData(), static_cast<sqlite3_uint64>(utf8.size()),
            SQLITE_TRANSIENT, SQLITE_UTF8);
        break;
    }
    case VariantType::Binary: {
        const QByteArray bytes = value.bytes();
        sqlite3_result_blob64(context, bytes.constData(), static_cast<sqlite3_uint64>(bytes.size()),
            SQLITE_TRANSIENT);
        break;
    }
    }
}

void Fail(sqlite3_context* context, int number, const QString& text)
{
    const QByteArray message = "DAO" + QByteArray::number(number) + ':' + text.toUtf8();
    sqlite3_result_error(context, message.constData(), static_cast<int>(message.size()));
}

// Runs a function body, turning the runtime's and the engine's errors into SQL errors.
template <class Body> void Guarded(sqlite3_context* context, Body&& body)
{
    try {
        body();
    } catch (const DaoError& error) {
        Fail(context, error.number(), error.description());
    } catch (const Runtime::Error&) {
        Fail(context, DaoError::TypeMismatchInCriteria,
            DaoError::standardDescription(DaoError::TypeMismatchInCriteria));
    } catch (const std::bad_alloc&) {
        sqlite3_result_error_nomem(context);
    }
}

// A date argument: serials as they are, texts read as dates; empty for Null.
std::optional<double> DateArgument(sqlite3_value* value)
{
    if (IsNull(value))
        return std::nullopt;
    const Variant argument = ValueOf(value);
    const double serial = Runtime::CDate(argument);
    if (!Runtime::IsValidDateSerial(serial))
        throw Runtime::Error(Runtime::Error::Overflow);
    return serial;
}

void Like(sqlite3_context* context, int, sqlite3_value** arguments)
{
    if (IsNull(arguments[0]) || IsNull(arguments[1])) {
        sqlite3_result_null(context);
        return;
    }
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(arguments[1]));
    const qsizetype size = sqlite3_value_bytes(arguments[1]);
    // A constant pattern is compiled once per statement, not once per row.
    if (auto* pattern = static_cast<LikePattern*>(sqlite3_get_auxdata(context, 0))) {
        sqlite3_result_int(context, pattern->matchesUtf8(text, size) ? 1 : 0);
        return;
    }
    auto* pattern = new LikePattern(TextOf(arguments[0]));
    const bool matches = pattern->matchesUtf8(text, size);
    // SQLite keeps the compiled pattern while the pattern stays the same, and deletes it
    // (at once, for a pattern that changes per row) through the destructor given.
    sqlite3_set_auxdata(
        context, 0, pattern, [](void* compiled) { delete static_cast<LikePattern*>(compiled); });
    sqlite3_result_int(context, matches ? 1 : 0);
}

void Convert(sqlite3_context* context, int, sqlite3_value** arguments)
{
    Guarded(context, [&] {
        const Variant value = ValueOf(arguments[0]);
        ColumnType column;
        column.type = static_cast<DataType>(sqlite3_value_int(arguments[1]));
        column.size = sqlite3_value_int(arguments[2]);
        const bool allowZeroLength = sqlite3_value_int(arguments[3]) != 0;
        if (!allowZeroLength && value.type() == VariantType::Text && value.text().isEmpty()) {
            sqlite3_result_null(context);
            return;
        }
        Result(context, ConvertForColumn(value, column, ConversionMode::Statement));
    });
}

void DatePartFunction(sqlite3_context* context, int count, sqlite3_value** arguments)
{
    Guarded(context, [&] {
        const auto serial = DateArgument(arguments[1]);
        if (!serial || IsNull(arguments[0])) {
            sqlite3_result_null(context);
            return;
        }
        const int firstDay = count > 2 ? sqlite3_value_int(arguments[2]) : Runtime::Sunday;
        const int firstWeek = count > 3 ? sqlite3_value_int(arguments[3]) : Runtime::FirstJanuary;
        try {
            sqlite3_result_int(
                context, Runtime::DatePart(TextOf(arguments[0]), *serial, firstDay, firstWeek));
        } catch (const Runtime::Error&) {
            throw DaoError::make(DaoError::InvalidArgument);
        }
    });
}

template <int (*Part)(double)>
void DatePiece(sqlite3_context* context, int, sqlite3_value** arguments)
{
    Guarded(context, [&] {
        const auto serial = DateArgument(arguments[0]);
        if (serial)
            sqlite3_result_int(context, Part(*serial));
        else
            sqlite3_result_null(context);
    });
}

void WeekdayFunction(sqlite3_context* context, int count, sqlite3_value** arguments)
{
    Guarded(context, [&] {
        const auto serial = DateArgument(arguments[0]);
        const int firstDay = count > 1 ? sqlite3_value_int(arguments[1]) : Runtime::Sunday;
        if (serial)
            sqlite3_result_int(context, Runtime::Weekday(*serial, firstDay));
        else
            sqlite3_result_null(context);
    });
}

double NowSerial()
{
    const QDateTime now = QDateTime::currentDateTime();
    Runtime::DateTimeParts parts;
    parts.year = now.date().year();
    parts.month = now.date().month();
    parts.day = now.date().day();
    parts.hour = now.time().hour();
    parts.minute = now.time().minute();
    parts.second = now.time().second();
    return Runtime::JoinDateSerial(parts);
}

void Now(sqlite3_context* context, int, sqlite3_value**)
{
    sqlite3_result_double(context, NowSerial());
}

void Today(sqlite3_context* context, int, sqlite3_value**)
{
    sqlite3_result_double(context, Runtime::DatePartOfSerial(NowSerial()));
}

void TimeNow(sqlite3_context* context, int, sqlite3_value**)
{
    sqlite3_result_double(context, Runtime::TimeOfSerial(NowSerial()));
}

// Lengths and positions count from 1 as the classic string functions do; a negative
// length is an invalid argument.
qsizetype LengthArgument(sqlite3_value* value)
{
    const qint64 length = sqlite3_value_int64(value);
    if (length < 0)
        throw DaoError::make(DaoError::InvalidArgument);
    return static_cast<qsizetype>(std::min<qint64>(length, 1 << 30));
}

void Left(sqlite3_context* context, int, sqlite3_value** arguments)
{
    Guarded(context, [&] {
        if (IsNull(arguments[0]))
            return sqlite3_result_null(context);
        Result(context, Variant(TextOf(arguments[0]).left(LengthArgument(arguments[1]))));
    });
}

void Right(sqlite3_context* context, int, sqlite3_value** arguments)
{
    Guarded(context, [&] {
        if (IsNull(arguments[0]))
            return sqlite3_result_null(context);
        Result(context, Variant(TextOf(arguments[0]).right(LengthArgument(arguments[1]))));
    });
}

void Mid(sqlite3_context* context, int count, sqlite3_value** arguments)
{
    Guarded(context, [&] {
        if (IsNull(arguments[0]))
            return sqlite3_result_null(context);
        const qsizetype start = LengthArgument(arguments[1]);
        if (start < 1)
            throw DaoError::make(DaoError::InvalidArgument);
        const QString text = TextOf(arguments[0]);
        const qsizetype length = count > 2 ? LengthArgument(arguments[2]) : text.size();
        Result(context, Variant(text.mid(start - 1, length)));
    });
}

void Len(sqlite3_context* context, int, sqlite3_value** arguments)
{
    if (IsNull(arguments[0]))
        return sqlite3_result_null(context);
    sqlite3_result_int64(context, TextOf(arguments[0]).size());
}

void InStr(sqlite3_context* context, int count, sqlite3_value** arguments)
{
    Guarded(context, [&] {
        qsizetype start = 1;
        int first = 0;
        if (count >= 3) {
            start = LengthArgument(arguments[0]);
            first = 1;
            if (start < 1)
                throw DaoError::make(DaoError::InvalidArgument);
        }
        if (IsNull(arguments[first]) || IsNull(arguments[first + 1]))
            return sqlite3_result_null(context);
        const qsizetype found
            = TextOf(arguments[first])
                  .indexOf(TextOf(arguments[first + 1]), start - 1, Qt::CaseInsensitive);
        sqlite3_result_int64(context, found + 1);
    });
}

template <bool Upper> void ChangeCase(sqlite3_context* context, int, sqlite3_value** arguments)
{
    if (IsNull(arguments[0]))
        return sqlite3_result_null(context);
    const QString text = TextOf(arguments[0]);
    Result(context, Variant(Upper ? text.toUpper() : text.toLower()));
}

// Numeric functions of one number; Null gives Null.
template <double (*Function)(double)>
void Numeric(sqlite3_context* context, int, sqlite3_value** arguments)
{
    Guarded(context, [&] {
        if (IsNull(arguments[0]))
            return sqlite3_result_null(context);
        Result(context, Variant(Function(Runtime::CDbl(ValueOf(arguments[0])))));
    });
}

void ValFunction(sqlite3_context* context, int, sqlite3_value** arguments)
{
    Guarded(context, [&] {
        if (IsNull(arguments[0]))
            return sqlite3_result_null(context);
        Result(context, Variant(Runtime::Val(TextOf(arguments[0]))));
    });
}

void RoundFunction(sqlite3_context* context, int count, sqlite3_value** arguments)
{
    Guarded(context, [&] {
        if (IsNull(arguments[0]))
            return sqlite3_result_null(context);
        const int digits = count > 1 ? sqlite3_value_int(arguments[1]) : 0;
        Result(context, Variant(Runtime::Round(Runtime::CDbl(ValueOf(arguments[0])), digits)));
    });
}

void Nz(sqlite3_context* context, int count, sqlite3_value** arguments)
{
    if (!IsNull(arguments[0]))
        return sqlite3_result_value(context, arguments[0]);
    if (count > 1)
        return sqlite3_result_value(context, arguments[1]);
    sqlite3_result_text(context, "", 0, SQLITE_STATIC);
}

template <int Kind> void Cast(sqlite3_context* context, int, sqlite3_value** arguments)
{
    Guarded(context, [&] {
        if (IsNull(arguments[0]))
            throw Runtime::Error(Runtime::Error::InvalidUseOfNull);
        const Variant value = ValueOf(arguments[0]);
        switch (Kind) {
        case 0:
            return Result(context, Variant(Runtime::CStr(value)));
        case 1:
            return Result(context, Variant(static_cast<qint64>(Runtime::CLng(value))));
        case 2:
            return Result(context, Variant(static_cast<qint64>(Runtime::CInt(value))));
        case 3:
            return Result(context, Variant(Runtime::CDbl(value)));
        case 4:
            return Result(context, Variant(Runtime::CCur(value)));
        case 5:
            return Result(context, Variant(Runtime::CDate(value)));
        default: {
            const Variant onOff = ConvertForColumn(
                value, ColumnType { DataType::Boolean, 1, false }, ConversionMode::Statement);
            if (onOff.isNull())
                throw Runtime::Error(Runtime::Error::TypeMismatch);
            return Result(context, onOff);
        }
        }
    });
}

using Function = void (*)(sqlite3_context*, int, sqlite3_value**);

void Register(sqlite3* database, const char* name, int arguments, Function function,
    bool deterministic = true)
{
    // Pure functions may appear in a file's views; none of them has side effects.
    const int flags = SQLITE_UTF8 | SQLITE_INNOCUOUS | (deterministic ? SQLITE_DETERMINISTIC : 0);
    sqlite3_create_function_v2(
        database, name, arguments, flags, nullptr, function, nullptr, nullptr, nullptr);
}

} // namespace

void RegisterSqlFunctions(sqlite3* database)
{
    Register(database, "like", 2, Like);
    Register(database, "qb_convert", 4, Convert);
    for (int count = 2; count <= 4; ++count)
        Register(database, "qb_datepart", count, DatePartFunction);
    Register(database, "qb_year", 1, DatePiece<Runtime::Year>);
    Register(database, "qb_month", 1, DatePiece<Runtime::Month>);
    Register(database, "qb_day", 1, DatePiece<Runtime::Day>);
    Register(database, "qb_hour", 1, DatePiece<Runtime::Hour>);
    Register(database, "qb_minute", 1, DatePiece<Runtime::Minute>);
    Register(database, "qb_second", 1, DatePiece<Runtime::Second>);
    Register(database, "qb_weekday", 1, WeekdayFunction);
    Register(database, "qb_weekday", 2, WeekdayFunction);
    Register(database, "qb_now", 0, Now, false);
    Register(database, "qb_date", 0, Today, false);
    Register(database, "qb_time", 0, TimeNow, false);
    Register(database, "qb_left", 2, Left);
    Register(database, "qb_right", 2, Right);
    Register(database, "qb_mid", 2, Mid);
    Register(database, "qb_mid", 3, Mid);
    Register(database, "qb_len", 1, Len);
    Register(database, "qb_instr", 2, InStr);
    Register(database, "qb_instr", 3, InStr);
    Register(database, "qb_ucase", 1, ChangeCase<true>);
    Register(database, "qb_lcase", 1, ChangeCase<false>);
    Register(database, "qb_val", 1, ValFunction);
    Register(database, "qb_int", 1, Numeric<Runtime::Int>);
    Register(database, "qb_fix", 1, Numeric<Runtime::Fix>);
    Register(database, "qb_round", 1, RoundFunction);
    Register(database, "qb_round", 2, RoundFunction);
    Register(database, "qb_nz", 1, Nz);
    Register(database, "qb_nz", 2, Nz);
    Register(database, "qb_cstr", 1, Cast<0>);
    Register(database, "qb_clng", 1, Cast<1>);
    Register(database, "qb_cint", 1, Cast<2>);
    Register(database, "qb_cdbl", 1, Cast<3>);
    Register(database, "qb_ccur", 1, Cast<4>);
    Register(database, "qb_cdate", 1, Cast<5>);
    Register(database, "qb_cbool", 1, Cast<6>);
}

} // namespace Dao
