#include "platform/dao/SchemaSql.h"

using namespace Qt::Literals::StringLiterals;

namespace Dao {

QString QuoteIdentifier(const QString& name)
{
    QString quoted = name;
    quoted.replace(u'"', u"\"\""_s);
    return u'"' + quoted + u'"';
}

QString QuoteString(const QString& text)
{
    QString quoted = text;
    quoted.replace(u'\'', u"''"_s);
    return u'\'' + quoted + u'\'';
}

QString ColumnDefinition(
    const QString& name, const ColumnType& type, bool required, bool allowZeroLength)
{
    QString definition = QuoteIdentifier(name) + u' ' + DeclaredType(type);
    if (required)
        definition += u" NOT NULL"_s;
    if (IsTextType(type.type)) {
        definition += u" COLLATE NOCASE"_s;
        if (!allowZeroLength)
            definition += u" CHECK ("_s + QuoteIdentifier(name) + u" <> '')"_s;
    }
    return definition;
}

} // namespace Dao
