#pragma once

#include <QString>
#include <exception>
#include <string>

namespace Runtime {

// A run-time error with the number the classic runtime gave it; callers that react to a
// particular failure (a card field refusing text, a cell showing an error) test the number.
class Error : public std::exception
{
public:
    static constexpr int InvalidCall = 5;
    static constexpr int Overflow = 6;
    static constexpr int TypeMismatch = 13;
    static constexpr int InvalidUseOfNull = 94;

    explicit Error(int number)
        : Error(number, standardMessage(number))
    { }
    Error(int number, const QString& message)
        : m_number(number)
        , m_message(message)
        , m_what(message.toStdString())
    { }

    int number() const { return m_number; }
    QString message() const { return m_message; }
    const char* what() const noexcept override { return m_what.c_str(); }

    static QString standardMessage(int number)
    {
        switch (number) {
        case InvalidCall:
            return QStringLiteral("Invalid procedure call or argument");
        case Overflow:
            return QStringLiteral("Overflow");
        case TypeMismatch:
            return QStringLiteral("Type mismatch");
        case InvalidUseOfNull:
            return QStringLiteral("Invalid use of Null");
        default:
            return QStringLiteral("Application-defined or object-defined error");
        }
    }

private:
    int m_number;
    QString m_message;
    std::string m_what;
};

} // namespace Runtime
