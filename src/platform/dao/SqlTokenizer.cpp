#include "platform/dao/SqlTokenizer.h"

#include "platform/dao/DaoError.h"

using namespace Qt::Literals::StringLiterals;

namespace Dao {

namespace {

bool StartsWord(QChar c)
{
    return c.isLetter() || c == u'_';
}

bool InWord(QChar c)
{
    return c.isLetterOrNumber() || c == u'_' || c.isMark();
}

bool IsDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

[[noreturn]] void Fail(QStringView statement)
{
    throw DaoError::make(DaoError::SyntaxErrorInExpression, statement.toString());
}

} // namespace

std::vector<SqlToken> TokenizeSql(QStringView statement)
{
    std::vector<SqlToken> tokens;
    const qsizetype size = statement.size();
    qsizetype i = 0;
    while (i < size) {
        const QChar c = statement[i];
        if (c.isSpace()) {
            ++i;
            continue;
        }
        SqlToken token;
        token.position = i;
        if (StartsWord(c)) {
            qsizetype end = i + 1;
            while (end < size && InWord(statement[end]))
                ++end;
            token.kind = SqlToken::Kind::Word;
            token.text = statement.mid(i, end - i).toString();
            i = end;
        } else if (c == u'[') {
            const qsizetype close = statement.indexOf(u']', i + 1);
            if (close < 0)
                Fail(statement);
            token.kind = SqlToken::Kind::BracketedName;
            token.text = statement.mid(i + 1, close - i - 1).toString();
            i = close + 1;
        } else if (c == u'\'' || c == u'"') {
            // Both quotes delimit strings in this dialect; a doubled quote stands for itself.
            QString value;
            qsizetype j = i + 1;
            bool closed = false;
            while (j < size) {
                if (statement[j] == c) {
                    if (j + 1 < size && statement[j + 1] == c) {
                        value += c;
                        j += 2;
                        continue;
                    }
                    closed = true;
                    break;
                }
                value += statement[j];
                ++j;
            }
            if (!closed)
                Fail(statement);
            token.kind = SqlToken::Kind::String;
            token.text = value;
            i = j + 1;
        } else if (c == u'#') {
            const qsizetype close = statement.indexOf(u'#', i + 1);
            if (close < 0)
                Fail(statement);
            token.kind = SqlToken::Kind::Date;
            token.text = statement.mid(i + 1, close - i - 1).toString();
            i = close + 1;
        } else if (IsDigit(c) || (c == u'.' && i + 1 < size && IsDigit(statement[i + 1]))) {
            qsizetype end = i;
            while (end < size && IsDigit(statement[end]))
                ++end;
            if (end < size && statement[end] == u'.') {
                ++end;
                while (end < size && IsDigit(statement[end]))
                    ++end;
            }
            if (end < size && (statement[end] == u'e' || statement[end] == u'E')) {
                qsizetype exponent = end + 1;
                if (exponent < size && (statement[exponent] == u'+' || statement[exponent] == u'-'))
                    ++exponent;
                if (exponent < size && IsDigit(statement[exponent])) {
                    end = exponent;
                    while (end < size && IsDigit(statement[end]))
                        ++end;
                }
            }
            if (end < size && StartsWord(statement[end]))
                Fail(statement); // 12abc is neither a number nor a name
            token.kind = SqlToken::Kind::Number;
            token.text = statement.mid(i, end - i).toString();
            i = end;
        } else {
            static const QString twoCharacter[] = { u"<>"_s, u"<="_s, u">="_s };
            token.kind = SqlToken::Kind::Symbol;
            for (const QString& symbol : twoCharacter) {
                if (statement.mid(i, 2) == symbol) {
                    token.text = symbol;
                    break;
                }
            }
            if (token.text.isEmpty()) {
                if (!u"=<>+-*/\\^&(),.!;?"_s.contains(c))
                    Fail(statement);
                token.text = QString(c);
            }
            i += token.text.size();
        }
        tokens.push_back(std::move(token));
    }
    return tokens;
}

} // namespace Dao
