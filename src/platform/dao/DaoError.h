#pragma once

#include <QString>
#include <exception>
#include <string>

namespace Dao {

// A failure of the card database engine, numbered as the original engine numbered it: the
// card window tells a duplicate name (3022) from a conflicting edit (3197) by the number
// alone, so every failure that a caller may react to has its own stable number here.
class DaoError : public std::exception
{
public:
    // Errors on the file and the objects.
    static constexpr int InvalidArgument = 3001;
    static constexpr int TableExists = 3010;
    static constexpr int ObjectNotFound = 3011;
    static constexpr int ObjectExists = 3012;
    static constexpr int NotAnIndex = 3015;
    static constexpr int NoCurrentIndex = 3019;
    static constexpr int UpdateWithoutEdit = 3020;
    static constexpr int NoCurrentRecord = 3021;
    static constexpr int DuplicateValue = 3022;
    static constexpr int FileNotFound = 3024;
    static constexpr int DiskFull = 3026;
    static constexpr int ResourcesExceeded = 3035;
    static constexpr int DiskOrNetworkError = 3043;
    static constexpr int InvalidPath = 3044;
    static constexpr int ReadOnly = 3027;
    static constexpr int FileInUse = 3045;
    static constexpr int CorruptFile = 3049;
    static constexpr int PermissionDenied = 3051;
    static constexpr int IndexRequiresValue = 3058;
    static constexpr int TooFewParameters = 3061;
    static constexpr int CannotExecuteSelect = 3065;
    static constexpr int UnknownName = 3070;
    static constexpr int SyntaxErrorInExpression = 3075;
    static constexpr int InputTableNotFound = 3078;
    static constexpr int UndefinedFunction = 3085;
    static constexpr int InvalidStatement = 3129;
    static constexpr int SyntaxErrorInFrom = 3131;
    static constexpr int SyntaxErrorAtEnd = 3138;
    static constexpr int SyntaxErrorInUpdate = 3144;
    static constexpr int NotAValidBookmark = 3159;
    static constexpr int FieldTooSmall = 3163;
    static constexpr int FieldNotUpdatable = 3164;
    static constexpr int RecordDeleted = 3167;
    static constexpr int ReadLocked = 3187;
    static constexpr int LockedBySession = 3188;
    static constexpr int FieldDefinedTwice = 3191;
    static constexpr int ChangedByAnotherUser = 3197;
    static constexpr int DatabaseExists = 3204;
    static constexpr int InvalidOperation = 3219;
    static constexpr int OperationNotSupported = 3251;
    static constexpr int LockedByUser = 3260;
    static constexpr int NoFieldsDefined = 3264;
    static constexpr int ItemNotFound = 3265;
    static constexpr int AlreadyAppended = 3266;
    static constexpr int PropertyNotFound = 3270;
    static constexpr int FieldInIndex = 3280;
    static constexpr int PrimaryKeyExists = 3283;
    static constexpr int IndexExists = 3284;
    static constexpr int SyntaxErrorInFieldDefinition = 3292;
    static constexpr int SyntaxErrorInAlterTable = 3293;
    static constexpr int RequiredFieldNull = 3314;
    static constexpr int ZeroLengthNotAllowed = 3315;
    static constexpr int NotUpdatable = 3326;
    static constexpr int UnrecognizedFormat = 3343;
    static constexpr int NumericOverflow = 3349;
    static constexpr int NameExistsInCollection = 3367;
    static constexpr int FieldExists = 3380;
    static constexpr int ObjectClosed = 3420;
    static constexpr int ConversionError = 3421;
    static constexpr int TypeMismatchInCriteria = 3464;

    DaoError(int number, const QString& description);

    // The engine's own text for a number; `argument` fills the name the text mentions (a
    // file, a table, a field). Numbers without a text of their own get a generic one.
    static DaoError make(int number, const QString& argument = {});
    static QString standardDescription(int number, const QString& argument = {});

    // The same error, but a syntax error names `statement`: what the user wrote, not the
    // SQL the engine made of it.
    DaoError naming(const QString& statement) const;

    int number() const { return m_number; }
    QString description() const { return m_description; }
    const char* what() const noexcept override { return m_what.c_str(); }

private:
    int m_number;
    QString m_description;
    std::string m_what;
};

} // namespace Dao
