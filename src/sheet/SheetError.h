#pragma once

#include <QString>
#include <exception>
#include <string>

namespace Runtime {
class Error;
}

namespace Tillane {

// An error that stops a sheet command (an entry, a copy, a recalculation). Either one of the
// sheet's own user errors, numbered from the user-error base, or an arithmetic fault of the
// runtime (division by zero, overflow, invalid argument) with its classic number and text.
// The command that started the action shows the description.
class SheetError : public std::exception
{
public:
    // The classic base of application-defined error numbers (vbObjectError) plus the 512
    // numbers reserved below it.
    static constexpr int UserErrorBase = -2147221504 + 512;

    // Offsets from UserErrorBase.
    enum Offset {
        NoSuchCell = 0,
        UnclosedFunction = 1,
        MissingReference = 2,
        EvaluationFailed = 4, // "Syntax Error" and "Undefined Function"
        CircularReference = 5,
        CopyOutOfRange = 6,
    };

    // Runtime numbers of the arithmetic faults that reach the sheet.
    static constexpr int InvalidArgumentNumber = 5;
    static constexpr int OverflowNumber = 6;
    static constexpr int DivisionByZeroNumber = 11;

    // A user error with its description from the string table (or the evaluator's texts).
    static SheetError user(Offset offset);
    static SheetError user(Offset offset, const QString& description);
    static SheetError fromRuntime(const Runtime::Error& error);
    static SheetError divisionByZero();

    int number() const { return m_number; }
    const QString& description() const { return m_description; }
    bool isUserError() const
    {
        return m_number >= UserErrorBase && m_number <= UserErrorBase + CopyOutOfRange;
    }
    // The offset from UserErrorBase; -1 for an arithmetic fault.
    int offset() const { return isUserError() ? m_number - UserErrorBase : -1; }
    const char* what() const noexcept override { return m_what.c_str(); }

private:
    SheetError(int number, const QString& description);

    int m_number;
    QString m_description;
    std::string m_what;
};

} // namespace Tillane
