#include "platform/dao/DaoError.h"

using namespace Qt::Literals::StringLiterals;

namespace Dao {

DaoError::DaoError(int number, const QString& description)
    : m_number(number)
    , m_description(description)
    , m_what(description.toStdString())
{ }

DaoError DaoError::make(int number, const QString& argument)
{
    return DaoError(number, standardDescription(number, argument));
}

QString DaoError::standardDescription(int number, const QString& argument)
{
    const QString quoted = u"'"_s + argument + u"'"_s;
    switch (number) {
    case InvalidArgument:
        return u"Invalid argument."_s;
    case TableExists:
        return u"Table "_s + quoted + u" already exists."_s;
    case ObjectNotFound:
        return u"The database engine could not find the object "_s + quoted + u"."_s;
    case ObjectExists:
        return u"Object "_s + quoted + u" already exists."_s;
    case NotAnIndex:
        return quoted + u" is not an index in this table."_s;
    case NoCurrentIndex:
        return u"Operation invalid without a current index."_s;
    case UpdateWithoutEdit:
        return u"Update or CancelUpdate without AddNew or Edit."_s;
    case NoCurrentRecord:
        return u"No current record."_s;
    case DuplicateValue:
        return u"The changes you requested to the table were not successful because they would "
               u"create duplicate values in the index or primary key."_s;
    case FileNotFound:
        return u"Could not find file "_s + quoted + u"."_s;
    case DiskFull:
        return u"Not enough space on disk."_s;
    case ResourcesExceeded:
        return u"System resource exceeded."_s;
    case DiskOrNetworkError:
        return u"Disk or network error."_s;
    case InvalidPath:
        return quoted + u" is not a valid path."_s;
    case ReadOnly:
        return u"Cannot update. Database or object is read-only."_s;
    case FileInUse:
        return u"Could not use "_s + quoted + u"; file already in use."_s;
    case CorruptFile:
        return u"Cannot open database "_s + quoted
            + u". It may not be a database that this program recognizes, or the file may be "
              u"damaged."_s;
    case PermissionDenied:
        return u"Cannot open the file "_s + quoted
            + u". It is already opened exclusively by another user, or you need permission to "
              u"change its data."_s;
    case IndexRequiresValue:
        return u"Index or primary key cannot contain a Null value."_s;
    case TooFewParameters:
        return u"Too few parameters. Expected 1 ("_s + argument + u")."_s;
    case CannotExecuteSelect:
        return u"Cannot execute a select query."_s;
    case UnknownName:
        return u"The database engine does not recognize "_s + quoted
            + u" as a valid field name or expression."_s;
    case SyntaxErrorInExpression:
        return u"Syntax error in query expression "_s + quoted + u"."_s;
    case InputTableNotFound:
        return u"The database engine cannot find the input table or query "_s + quoted + u"."_s;
    case UndefinedFunction:
        return u"Undefined function "_s + quoted + u" in expression."_s;
    case InvalidStatement:
        return u"Invalid SQL statement; expected 'DELETE', 'INSERT', 'PROCEDURE', 'SELECT', or "
               u"'UPDATE'."_s;
    case SyntaxErrorInFrom:
        return u"Syntax error in FROM clause."_s;
    case SyntaxErrorAtEnd:
        return u"Syntax error at end of SQL statement."_s;
    case SyntaxErrorInUpdate:
        return u"Syntax error in UPDATE statement."_s;
    case NotAValidBookmark:
        return u"Not a valid bookmark."_s;
    case FieldTooSmall:
        return u"The field is too small to accept the amount of data you attempted to add."_s;
    case FieldNotUpdatable:
        return u"Field cannot be updated."_s;
    case FieldDefinedTwice:
        return u"Cannot define field more than once."_s;
    case RecordDeleted:
        return u"Record is deleted."_s;
    case ReadLocked:
        return u"Could not read; currently locked by another user."_s;
    case LockedBySession:
        return u"Could not update; currently locked by another session on this machine."_s;
    case ChangedByAnotherUser:
        return u"The database engine stopped the process because you and another user are "
               u"attempting to change the same data at the same time."_s;
    case DatabaseExists:
        return u"Database already exists."_s;
    case InvalidOperation:
        return u"Invalid operation."_s;
    case OperationNotSupported:
        return u"Operation is not supported for this type of object."_s;
    case LockedByUser:
        return u"Could not update; currently locked by another user."_s;
    case NoFieldsDefined:
        return u"No field defined; cannot append the table definition or index."_s;
    case ItemNotFound:
        return u"Item not found in this collection."_s;
    case AlreadyAppended:
        return u"Cannot append an object that is already part of a collection."_s;
    case PropertyNotFound:
        return u"Property not found."_s;
    case FieldInIndex:
        return u"Cannot delete a field that is part of an index."_s;
    case PrimaryKeyExists:
        return u"Primary key already exists."_s;
    case IndexExists:
        return u"Index already exists."_s;
    case SyntaxErrorInFieldDefinition:
        return u"Syntax error in field definition."_s;
    case SyntaxErrorInAlterTable:
        return u"Syntax error in ALTER TABLE statement."_s;
    case RequiredFieldNull:
        return u"The field "_s + quoted
            + u" cannot contain a Null value because the Required property for this field is "
              u"set to True. Enter a value in this field."_s;
    case ZeroLengthNotAllowed:
        return u"Field "_s + quoted + u" cannot be a zero-length string."_s;
    case NotUpdatable:
        return u"This Recordset is not updatable."_s;
    case UnrecognizedFormat:
        return u"Unrecognized database format "_s + quoted + u"."_s;
    case NumericOverflow:
        return u"Numeric field overflow."_s;
    case NameExistsInCollection:
        return u"Cannot append. An object with that name already exists in the collection."_s;
    case FieldExists:
        return u"Field "_s + quoted + u" already exists in the table."_s;
    case ObjectClosed:
        return u"Object invalid or no longer set."_s;
    case ConversionError:
        return u"Data type conversion error."_s;
    case TypeMismatchInCriteria:
        return u"Data type mismatch in criteria expression."_s;
    default:
        return u"Database engine error "_s + QString::number(number) + u"."_s;
    }
}

DaoError DaoError::naming(const QString& statement) const
{
    return m_number == SyntaxErrorInExpression ? make(m_number, statement) : *this;
}

} // namespace Dao
