#include "sheet/SheetError.h"

#include "platform/runtime/Error.h"
#include "resources/StringTable.h"

using namespace Qt::Literals::StringLiterals;

namespace Tillane {

SheetError::SheetError(int number, const QString& description)
    : m_number(number)
    , m_description(description)
    , m_what(description.toStdString())
{ }

SheetError SheetError::user(Offset offset)
{
    switch (offset) {
    case NoSuchCell:
        return user(offset, GetResString(1279));
    case UnclosedFunction:
        return user(offset, GetResString(1280));
    case MissingReference:
        return user(offset, GetResString(1276));
    case EvaluationFailed:
        return user(offset, u"Syntax Error"_s);
    case CircularReference:
        return user(offset, GetResString(1277));
    case CopyOutOfRange:
        return user(offset, GetResString(1281));
    }
    return user(offset, GetResString(0));
}

SheetError SheetError::user(Offset offset, const QString& description)
{
    return SheetError(UserErrorBase + offset, description);
}

SheetError SheetError::fromRuntime(const Runtime::Error& error)
{
    return SheetError(error.number(), error.message());
}

SheetError SheetError::divisionByZero()
{
    return SheetError(DivisionByZeroNumber, u"Division by zero"_s);
}

} // namespace Tillane
