#include "sheet/ExpressionEvaluator.h"

#include "frame/Prompts.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Error.h"

#include <QStringList>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <numbers>

using namespace Qt::Literals::StringLiterals;

namespace Tillane {

namespace {

constexpr int DivisionByZero = 11;

[[noreturn]] void throwDivisionByZero()
{
    throw Runtime::Error(DivisionByZero, u"Division by zero"_s);
}

// Every arithmetic result passes here: the classic runtime never produced infinities or NaNs
// but raised Overflow or Invalid procedure call instead.
double checked(double value)
{
    if (std::isnan(value))
        throw Runtime::Error(Runtime::Error::InvalidCall);
    if (std::isinf(value))
        throw Runtime::Error(Runtime::Error::Overflow);
    return value;
}

// The generator behind rnd. Any generator with the seeding rules will do; this one is
// SplitMix64, which needs one 64-bit word of state and mixes every bit of a seed. The
// sequence starts from a fixed seed, so a fresh program repeats it, as the classic one did.
class RandomSequence
{
public:
    double next()
    {
        m_state += 0x9E3779B97F4A7C15ULL;
        std::uint64_t z = m_state;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
        z ^= z >> 31;
        // The top 53 bits give every double in [0, 1) with equal steps.
        m_last = static_cast<double>(z >> 11) * 0x1.0p-53;
        m_drawn = true;
        return m_last;
    }

    // rnd(x): x < 0 seeds from x itself, so the same x always gives the same number; x = 0
    // repeats the last number (before any number, the first one); x > 0 gives the next.
    double rnd(double x)
    {
        if (x < 0) {
            std::uint64_t bits = 0;
            static_assert(sizeof bits == sizeof x);
            std::memcpy(&bits, &x, sizeof bits);
            m_state = bits;
            return next();
        }
        if (x == 0 && m_drawn)
            return m_last;
        return next();
    }

private:
    std::uint64_t m_state = 0x51A7E5EEDULL;
    double m_last = 0.0;
    bool m_drawn = false;
};

RandomSequence& randomSequence()
{
    static RandomSequence sequence;
    return sequence;
}

struct Operator
{
    int maximumLevel = 0; // applies while the level being parsed is at most this
    int rightLevel = 0;
};

// The binary operators by token; level 0 means "not an operator".
Operator binaryOperator(const QString& token)
{
    if (token == u"^")
        return { 11, 12 };
    if (token == u"*" || token == u"/")
        return { 10, 11 };
    if (token == u"\\")
        return { 9, 10 };
    if (token == u"mod")
        return { 8, 9 };
    if (token == u"+" || token == u"-")
        return { 7, 8 };
    if (token == u"=" || token == u"<>" || token == u"<" || token == u">" || token == u"<="
        || token == u">=")
        return { 6, 7 };
    if (token == u"and")
        return { 5, 6 };
    if (token == u"or")
        return { 4, 5 };
    if (token == u"xor")
        return { 3, 4 };
    if (token == u"eqv")
        return { 2, 3 };
    if (token == u"imp")
        return { 1, 2 };
    return {};
}

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

bool isLetter(QChar c)
{
    return c >= u'a' && c <= u'z';
}

double power(double base, double exponent)
{
    if (base == 0 && exponent < 0)
        throwDivisionByZero();
    return checked(std::pow(base, exponent));
}

double divide(double left, double right)
{
    if (right == 0) {
        // 0/0 was an overflow, anything else over 0 a division by zero.
        if (left == 0)
            throw Runtime::Error(Runtime::Error::Overflow);
        throwDivisionByZero();
    }
    return checked(left / right);
}

double integerQuotient(double left, double right)
{
    const std::int64_t dividend = Runtime::CLng(left);
    const std::int64_t divisor = Runtime::CLng(right);
    if (divisor == 0)
        throwDivisionByZero();
    const std::int64_t quotient = dividend / divisor;
    if (quotient > INT32_MAX)
        throw Runtime::Error(Runtime::Error::Overflow);
    return static_cast<double>(quotient);
}

double remainder(double left, double right)
{
    const std::int64_t dividend = Runtime::CLng(left);
    const std::int64_t divisor = Runtime::CLng(right);
    if (divisor == 0)
        throwDivisionByZero();
    return static_cast<double>(dividend % divisor);
}

double truth(bool holds)
{
    return holds ? -1.0 : 0.0;
}

double combine(const QString& op, double left, double right)
{
    if (op == u"^")
        return power(left, right);
    if (op == u"*")
        return checked(left * right);
    if (op == u"/")
        return divide(left, right);
    if (op == u"\\")
        return integerQuotient(left, right);
    if (op == u"mod")
        return remainder(left, right);
    if (op == u"+")
        return checked(left + right);
    if (op == u"-")
        return checked(left - right);
    if (op == u"=")
        return truth(left == right);
    if (op == u"<>")
        return truth(left != right);
    if (op == u"<")
        return truth(left < right);
    if (op == u">")
        return truth(left > right);
    if (op == u"<=")
        return truth(left <= right);
    if (op == u">=")
        return truth(left >= right);
    const std::int32_t a = Runtime::CLng(left);
    const std::int32_t b = Runtime::CLng(right);
    if (op == u"and")
        return a & b;
    if (op == u"or")
        return a | b;
    if (op == u"xor")
        return a ^ b;
    if (op == u"eqv")
        return ~(a ^ b);
    return ~a | b; // imp
}

// One evaluation's state: the rest of the input, the current token and the first error.
class Parser
{
public:
    explicit Parser(QStringView expression)
        : m_expression(expression.toString().toLower())
    { }

    Evaluation run()
    {
        nextToken();
        Evaluation evaluation;
        evaluation.Result = parseLevel(1);
        if (!m_token.isEmpty())
            fail(TrailingText, syntaxMessage());
        evaluation.ErrorCode = m_errorCode;
        evaluation.Message = m_message;
        return evaluation;
    }

private:
    void nextToken()
    {
        m_token.clear();
        m_tokenText.clear();
        while (m_position < m_expression.size() && m_expression[m_position] == u' ')
            ++m_position;
        if (m_position >= m_expression.size())
            return;
        const QChar first = m_expression[m_position];
        if (isDigit(first) || first == u'.') {
            m_token = u"num"_s;
            while (m_position < m_expression.size()) {
                const QChar c = m_expression[m_position];
                const bool afterExponent = !m_tokenText.isEmpty() && m_tokenText.back() == u'e';
                if (!(isDigit(c) || c == u'.' || c == u'e'
                        || ((c == u'+' || c == u'-') && afterExponent)))
                    break;
                m_tokenText += c;
                ++m_position;
            }
        } else if (isLetter(first) || first == u'_') {
            while (m_position < m_expression.size()) {
                const QChar c = m_expression[m_position];
                if (!(isLetter(c) || isDigit(c) || c == u'_'))
                    break;
                m_tokenText += c;
                ++m_position;
            }
            static const QStringList keywords
                = { u"and"_s, u"eqv"_s, u"imp"_s, u"mod"_s, u"not"_s, u"or"_s, u"xor"_s, u"pi"_s };
            m_token = keywords.contains(m_tokenText) ? m_tokenText : u"id"_s;
        } else if (first == u'<' || first == u'>') {
            m_token = first;
            ++m_position;
            if (m_position < m_expression.size()
                && (m_expression[m_position] == u'>' || m_expression[m_position] == u'=')) {
                m_token += m_expression[m_position];
                ++m_position;
            }
        } else {
            m_token = first;
            ++m_position;
        }
        if (m_tokenText.isEmpty())
            m_tokenText = m_token;
    }

    // Where the grammar wants a bracket: the next token is read without looking at this one,
    // so a missing or different token there is consumed silently.
    void skip() { nextToken(); }

    QString syntaxMessage() const { return u"syntax error, token = '"_s + m_tokenText + u"'"_s; }

    void fail(int code, const QString& message)
    {
        if (m_errorCode != NoEvaluatorError)
            return;
        m_errorCode = code;
        m_message = message;
    }

    double parseLevel(int level)
    {
        if (m_depth >= MaximumExpressionDepth) {
            fail(UnexpectedToken, syntaxMessage());
            return 0.0;
        }
        ++m_depth;
        double value = parseOperand();
        // An operator whose right operand failed still combines with the 0 it gave, so a
        // half-typed "1/" faults as a division by zero; only the next operator is not read.
        while (m_errorCode == NoEvaluatorError) {
            const Operator op = binaryOperator(m_token);
            if (op.maximumLevel == 0 || level > op.maximumLevel)
                break;
            const QString name = m_token;
            nextToken();
            const double right = parseLevel(op.rightLevel);
            value = combine(name, value, right);
        }
        --m_depth;
        return value;
    }

    double parseOperand()
    {
        if (m_token == u"num") {
            const double value = Runtime::Val(m_tokenText);
            nextToken();
            return value;
        }
        if (m_token == u"pi") {
            nextToken();
            return std::numbers::pi;
        }
        if (m_token == u"-") {
            nextToken();
            return -parseLevel(11);
        }
        if (m_token == u"not") {
            nextToken();
            return ~Runtime::CLng(parseLevel(6));
        }
        if (m_token == u"(") {
            nextToken();
            const double value = parseLevel(1);
            skip();
            return value;
        }
        if (m_token == u"id") {
            const QString name = m_tokenText;
            nextToken();
            skip();
            const double argument = parseLevel(1);
            skip();
            return callFunction(name, argument);
        }
        fail(UnexpectedToken, syntaxMessage());
        return 0.0;
    }

    double callFunction(const QString& name, double x)
    {
        static const QStringList known = { u"abs"_s, u"atn"_s, u"cos"_s, u"sin"_s, u"tan"_s,
            u"exp"_s, u"fix"_s, u"int"_s, u"log"_s, u"rnd"_s, u"sgn"_s, u"sqr"_s };
        if (!known.contains(name)) {
            fail(UndefinedFunction, u"Undefined function '"_s + name + u"'"_s);
            return 0.0;
        }
        if (name == u"abs")
            return std::fabs(x);
        if (name == u"atn")
            return std::atan(x);
        if (name == u"cos")
            return checked(std::cos(x));
        if (name == u"sin")
            return checked(std::sin(x));
        if (name == u"tan")
            return checked(std::tan(x));
        if (name == u"exp")
            return checked(std::exp(x));
        if (name == u"fix")
            return std::trunc(x);
        if (name == u"int")
            return std::floor(x);
        if (name == u"log") {
            if (x <= 0)
                throw Runtime::Error(Runtime::Error::InvalidCall);
            return std::log(x);
        }
        if (name == u"rnd")
            return randomSequence().rnd(x);
        if (name == u"sgn")
            return x > 0 ? 1.0 : (x < 0 ? -1.0 : 0.0);
        // sqr
        if (x < 0)
            throw Runtime::Error(Runtime::Error::InvalidCall);
        return std::sqrt(x);
    }

    QString m_expression;
    qsizetype m_position = 0;
    QString m_token;
    QString m_tokenText;
    int m_errorCode = NoEvaluatorError;
    QString m_message;
    int m_depth = 0;
};

} // namespace

Evaluation EvaluateExpression(QStringView expression)
{
    return Parser(expression).run();
}

int Evaluate(QStringView expression, double& result, bool showErrors)
{
    const Evaluation evaluation = EvaluateExpression(expression);
    result = evaluation.Result;
    if (showErrors && evaluation.ErrorCode != NoEvaluatorError)
        Frame::CurrentPrompts().message(
            evaluation.Message, QString(), Frame::MessageIcon::None, Frame::MessageButtons::Ok);
    return evaluation.ErrorCode;
}

QString FormulaNumberText(double value)
{
    QString text = Runtime::Str(value);
    if (text.startsWith(u' '))
        text.remove(0, 1);
    return text;
}

} // namespace Tillane
