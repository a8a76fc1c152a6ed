#include "cards/CardFields.h"

#include "cards/CardDatabase.h"
#include "cards/DaoProperties.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Error.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;
using Runtime::Variant;

namespace Bramlet {

QString SqlTypeWord(int fieldType)
{
    switch (fieldType) {
    case FreeTextField:
        return u"LONGTEXT"_s;
    case MainPictureField:
        return u"LONGBINARY"_s;
    case WholeNumberField:
        return u"LONG"_s;
    case DecimalNumberField:
        return u"DOUBLE"_s;
    case CurrencyField:
        return u"CURRENCY"_s;
    case DateField:
    case TimeField:
    case DateTimeField:
        return u"DATETIME"_s;
    case OnOffField:
        return u"BOOLEAN"_s;
    case KeywordField:
        return {};
    default:
        return u"TEXT"_s;
    }
}

QString DefaultFieldFormat(int fieldType)
{
    switch (fieldType) {
    case WholeNumberField:
        return u"General Number"_s;
    case DecimalNumberField:
        return u"Fixed"_s;
    case CurrencyField:
        return u"Currency"_s;
    case DateField:
        return u"dd MMM yyyy"_s;
    case TimeField:
        return u"HH:mm"_s;
    case DateTimeField:
        return u"dd MMM yyyy HH:mm"_s;
    default:
        return {};
    }
}

namespace {

QString TextOf(const Variant& value)
{
    return value.isEmpty() || value.isNull() ? QString() : Runtime::CStr(value);
}

} // namespace

int FieldType(Dao::Field& field)
{
    const Variant value = GetDaoProperty(field, u"FieldType"_s);
    return value.isNumeric() ? static_cast<int>(value.number()) : 0;
}

void SetFieldType(Dao::Field& field, int fieldType)
{
    SetDaoProperty(field, u"FieldType"_s, Variant(qint64(fieldType)), Dao::DataType::Long);
}

QString FieldFormat(Dao::Field& field)
{
    return TextOf(GetDaoProperty(field, u"FieldFormat"_s));
}

void SetFieldFormat(Dao::Field& field, const QString& format)
{
    SetDaoProperty(field, u"FieldFormat"_s, format, Dao::DataType::Text);
}

QString FieldLabel(Dao::Field& field)
{
    return TextOf(GetDaoProperty(field, u"FieldLabel"_s));
}

void SetFieldLabel(Dao::Field& field, const QString& label)
{
    SetDaoProperty(field, u"FieldLabel"_s, label, Dao::DataType::Text);
}

QString FieldChoices(Dao::Field& field)
{
    return TextOf(GetDaoProperty(field, u"FieldChoices"_s));
}

void SetFieldChoices(Dao::Field& field, const QString& choices)
{
    SetDaoProperty(field, u"FieldChoices"_s, choices, Dao::DataType::Text);
}

void SetDefaultFieldLayout(Dao::Field& field, int index)
{
    SetFieldLabel(field, u"Field Label"_s);
    SetFieldType(field, TextField);
    SetDaoProperty(field, u"LabelLeft"_s, qint64(120));
    SetDaoProperty(field, u"LabelTop"_s, qint64(3780 + 480 * index));
    SetDaoProperty(field, u"LabelWidth"_s, qint64(2655));
    SetDaoProperty(field, u"LabelHeight"_s, qint64(255));
    SetDaoProperty(field, u"FieldLeft"_s, qint64(2880));
    SetDaoProperty(field, u"FieldTop"_s, qint64(3720 + 480 * index));
    SetDaoProperty(field, u"FieldWidth"_s, qint64(4935));
    SetDaoProperty(field, u"FieldHeight"_s, qint64(375));
    SetDaoProperty(field, u"FieldVisible"_s, true);
}

ColumnCounters CountColumns(const QStringList& columnNames)
{
    ColumnCounters counters;
    auto highest = [](int& counter, const QString& name, const QString& prefix) {
        if (!name.startsWith(prefix, Qt::CaseInsensitive))
            return;
        try {
            const double number = Runtime::Val(QStringView(name).mid(prefix.size()));
            if (number > counter && number < 1e9)
                counter = static_cast<int>(number);
        } catch (const Runtime::Error&) {
            // Digits too many for a number: no column the program made.
        }
    };
    for (const QString& name : columnNames) {
        highest(counters.FieldCounter, name, u"Field"_s);
        highest(counters.UrlCounter, name, u"URL"_s);
        highest(counters.ResourceCounter, name, u"Resource"_s);
    }
    return counters;
}

void LabelStartingFields(CardDatabase& cards, const QStringList& labels)
{
    const qsizetype count = std::min<qsizetype>(labels.size(), StartingFieldCount);
    for (qsizetype index = 0; index < count; ++index) {
        if (labels[index].isEmpty())
            continue;
        const auto field = cards.MainTableDef()->Fields(u"Field"_s + QString::number(index + 1));
        if (field)
            SetFieldLabel(*field, labels[index]);
    }
}

} // namespace Bramlet
