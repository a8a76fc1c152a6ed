#pragma once

#include <QString>
#include <QStringView>
#include <vector>

namespace Dao {

// One word of the engine's SQL dialect.
struct SqlToken
{
    enum class Kind {
        Word, // a name or a keyword, as written: Quorbin_Card, SELECT, DATEPART
        BracketedName, // [Card Name]; text holds the name without the brackets
        String, // 'it''s' or "w"; text holds the value, quotes undone
        Number, // 12, 1.5, .5, 1E-3; text as written
        Date, // #3-5-04#; text holds what stands between the "#"
        Symbol, // = <> < > <= >= + - * / \ ^ & ( ) , . ! ; ?
    };

    Kind kind = Kind::Symbol;
    QString text;
    qsizetype position = 0; // where the token starts in the statement

    bool isWord(QStringView word) const
    {
        return kind == Kind::Word && text.compare(word, Qt::CaseInsensitive) == 0;
    }
    bool isSymbol(QStringView symbol) const { return kind == Kind::Symbol && text == symbol; }
};

// Splits a statement into tokens. Throws DaoError 3075 (naming the statement) for a string,
// bracketed name or date literal that is not closed, or a character the dialect does not
// use.
std::vector<SqlToken> TokenizeSql(QStringView statement);

} // namespace Dao
