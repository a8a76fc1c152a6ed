#include "platform/dao/SqlTranslator.h"

#include "platform/dao/DaoError.h"
#include "platform/dao/DateLiteral.h"
#include "platform/dao/SchemaSql.h"
#include "platform/dao/SqlTokenizer.h"

#include <QHash>
#include <QSet>

using namespace Qt::Literals::StringLiterals;

namespace Dao {

namespace {

using Kind = SqlToken::Kind;

// Words of the dialect that SQLite understands as they are.
const QSet<QString>& Keywords()
{
    static const QSet<QString> keywords = {
        u"SELECT"_s,
        u"FROM"_s,
        u"WHERE"_s,
        u"AND"_s,
        u"OR"_s,
        u"NOT"_s,
        u"LIKE"_s,
        u"BETWEEN"_s,
        u"IN"_s,
        u"IS"_s,
        u"NULL"_s,
        u"ORDER"_s,
        u"BY"_s,
        u"ASC"_s,
        u"DESC"_s,
        u"GROUP"_s,
        u"HAVING"_s,
        u"AS"_s,
        u"DISTINCT"_s,
        u"ALL"_s,
        u"UPDATE"_s,
        u"SET"_s,
        u"DELETE"_s,
        u"INSERT"_s,
        u"INTO"_s,
        u"VALUES"_s,
        u"UNION"_s,
        u"EXISTS"_s,
        u"JOIN"_s,
        u"INNER"_s,
        u"LEFT"_s,
        u"RIGHT"_s,
        u"OUTER"_s,
        u"ON"_s,
        u"ESCAPE"_s,
    };
    return keywords;
}

// The engine's functions and the names the connection registers them under. Names not
// listed pass through (SQLite's abs, length ...); an unknown one fails with 3085.
const QHash<QString, QString>& FunctionNames()
{
    static const QHash<QString, QString> names = {
        { u"datepart"_s, u"qb_datepart"_s },
        { u"year"_s, u"qb_year"_s },
        { u"month"_s, u"qb_month"_s },
        { u"day"_s, u"qb_day"_s },
        { u"weekday"_s, u"qb_weekday"_s },
        { u"hour"_s, u"qb_hour"_s },
        { u"minute"_s, u"qb_minute"_s },
        { u"second"_s, u"qb_second"_s },
        { u"date"_s, u"qb_date"_s },
        { u"time"_s, u"qb_time"_s },
        { u"now"_s, u"qb_now"_s },
        { u"left"_s, u"qb_left"_s },
        { u"right"_s, u"qb_right"_s },
        { u"mid"_s, u"qb_mid"_s },
        { u"len"_s, u"qb_len"_s },
        { u"instr"_s, u"qb_instr"_s },
        { u"ucase"_s, u"qb_ucase"_s },
        { u"lcase"_s, u"qb_lcase"_s },
        { u"val"_s, u"qb_val"_s },
        { u"int"_s, u"qb_int"_s },
        { u"fix"_s, u"qb_fix"_s },
        { u"round"_s, u"qb_round"_s },
        { u"nz"_s, u"qb_nz"_s },
        { u"cstr"_s, u"qb_cstr"_s },
        { u"clng"_s, u"qb_clng"_s },
        { u"cint"_s, u"qb_cint"_s },
        { u"cdbl"_s, u"qb_cdbl"_s },
        { u"ccur"_s, u"qb_ccur"_s },
        { u"cdate"_s, u"qb_cdate"_s },
        { u"cbool"_s, u"qb_cbool"_s },
        { u"sgn"_s, u"sign"_s },
        { u"format"_s, u"qb_format"_s },
        { u"first"_s, u"qb_first"_s },
        { u"last"_s, u"qb_last"_s },
        { u"stdev"_s, u"qb_stdev"_s },
        { u"var"_s, u"qb_var"_s },
    };
    return names;
}

bool IsAggregate(const QString& function)
{
    static const QSet<QString> aggregates
        = { u"min"_s, u"max"_s, u"count"_s, u"sum"_s, u"avg"_s, u"first"_s, u"last"_s };
    return aggregates.contains(function.toLower());
}

class Translator
{
public:
    Translator(QStringView statement, const SqlSchemaLookup& schema)
        : m_statement(statement)
        , m_schema(schema)
        , m_tokens(TokenizeSql(statement))
    {
        // A closing ";" is allowed; anything after one is not.
        while (!m_tokens.empty() && m_tokens.back().isSymbol(u";"))
            m_tokens.pop_back();
        for (const SqlToken& token : m_tokens) {
            if (token.isSymbol(u";"))
                Fail(DaoError::SyntaxErrorAtEnd);
        }
    }

    SqlStatement translate()
    {
        if (m_tokens.empty())
            Fail(DaoError::InvalidStatement);
        const SqlToken& first = m_tokens.front();
        if (first.isWord(u"SELECT"))
            return translateSelect(0, m_tokens.size());
        if (first.isWord(u"UPDATE"))
            return translateUpdate();
        if (first.isWord(u"DELETE"))
            return translateDelete();
        if (first.isWord(u"INSERT"))
            return translateInsert();
        if (first.isWord(u"ALTER"))
            return translateAlter();
        if (first.isWord(u"CREATE"))
            return translateCreate();
        if (first.isWord(u"DROP"))
            return translateDrop();
        Fail(DaoError::InvalidStatement);
    }

    QString condition() { return rewrite(0, m_tokens.size()); }

private:
    [[noreturn]] void Fail(int number) const
    {
        throw DaoError::make(number, m_statement.toString());
    }

    const SqlToken* at(size_t index) const
    {
        return index < m_tokens.size() ? &m_tokens[index] : nullptr;
    }

    bool wordAt(size_t index, QStringView word) const
    {
        const SqlToken* token = at(index);
        return token && token->isWord(word);
    }

    bool symbolAt(size_t index, QStringView symbol) const
    {
        const SqlToken* token = at(index);
        return token && token->isSymbol(symbol);
    }

    // A name: [bracketed] or a bare word that is not a keyword.
    std::optional<QString> nameAt(size_t index) const
    {
        const SqlToken* token = at(index);
        if (!token)
            return std::nullopt;
        if (token->kind == Kind::BracketedName)
            return token->text;
        if (token->kind == Kind::Word && !Keywords().contains(token->text.toUpper()))
            return token->text;
        return std::nullopt;
    }

    // The first word of `words` at bracket depth 0 in [begin, end), or end.
    size_t findTopLevel(size_t begin, size_t end, std::initializer_list<QStringView> words) const
    {
        int depth = 0;
        for (size_t i = begin; i < end; ++i) {
            const SqlToken& token = m_tokens[i];
            if (token.isSymbol(u"("))
                ++depth;
            else if (token.isSymbol(u")"))
                --depth;
            else if (depth == 0 && token.kind == Kind::Word) {
                for (QStringView word : words) {
                    if (token.isWord(word))
                        return i;
                }
            }
        }
        return end;
    }

    // [begin, end) split at commas of bracket depth 0.
    std::vector<std::pair<size_t, size_t>> splitAtCommas(size_t begin, size_t end) const
    {
        std::vector<std::pair<size_t, size_t>> items;
        int depth = 0;
        size_t start = begin;
        for (size_t i = begin; i < end; ++i) {
            const SqlToken& token = m_tokens[i];
            if (token.isSymbol(u"("))
                ++depth;
            else if (token.isSymbol(u")"))
                --depth;
            else if (depth == 0 && token.isSymbol(u",")) {
                items.emplace_back(start, i);
                start = i + 1;
            }
        }
        items.emplace_back(start, end);
        return items;
    }

    // The tokens of [begin, end) as SQLite text.
    QString rewrite(size_t begin, size_t end) const
    {
        QString out;
        int depth = 0;
        bool glue = true; // no blank before the next token
        for (size_t i = begin; i < end; ++i) {
            const SqlToken& token = m_tokens[i];
            const bool callFollows = symbolAt(i + 1, u"(");
            QString piece;
            bool glueNext = false;
            switch (token.kind) {
            case Kind::Word: {
                const QString upper = token.text.toUpper();
                if (upper == u"DISTINCTROW"_s)
                    continue;
                if (callFollows
                    && (FunctionNames().contains(token.text.toLower())
                        || !Keywords().contains(upper))) {
                    piece = FunctionNames().value(token.text.toLower(), token.text);
                    glueNext = true;
                } else if (upper == u"TRUE"_s || upper == u"YES"_s) {
                    piece = u"1"_s;
                } else if (upper == u"FALSE"_s || upper == u"NO"_s) {
                    piece = u"0"_s;
                } else if (upper == u"MOD"_s) {
                    piece = u"%"_s;
                } else if (Keywords().contains(upper)) {
                    piece = upper;
                } else {
                    piece = QuoteIdentifier(token.text);
                }
                break;
            }
            case Kind::BracketedName:
                piece = QuoteIdentifier(token.text);
                break;
            case Kind::String:
                // Text compares without regard to case wherever it stands, as the engine's
                // does: a literal carries that collation into any comparison it is part of.
                piece = QuoteString(token.text) + u" COLLATE NOCASE"_s;
                break;
            case Kind::Number:
                piece = token.text;
                break;
            case Kind::Date: {
                const auto serial = ParseDateLiteral(token.text);
                if (!serial)
                    Fail(DaoError::SyntaxErrorInExpression);
                piece = QString::number(*serial, 'g', 17);
                if (!piece.contains(u'.') && !piece.contains(u'e'))
                    piece += u".0"_s; // a date is a real, never an integer
                break;
            }
            case Kind::Symbol:
                if (token.text == u"("_s) {
                    ++depth;
                    glueNext = true;
                    piece = token.text;
                } else if (token.text == u")"_s) {
                    if (--depth < 0)
                        Fail(DaoError::SyntaxErrorInExpression);
                    piece = token.text;
                    glue = true;
                } else if (token.text == u"."_s || token.text == u"!"_s) {
                    piece = u"."_s;
                    glue = true;
                    glueNext = true;
                } else if (token.text == u"&"_s) {
                    piece = u"||"_s;
                } else if (token.text == u","_s) {
                    piece = token.text;
                    glue = true;
                } else if (token.text == u"\\"_s || token.text == u"^"_s || token.text == u"?"_s
                    || token.text == u";"_s) {
                    Fail(DaoError::SyntaxErrorInExpression);
                } else {
                    piece = token.text;
                }
                break;
            }
            if (!glue && !out.isEmpty())
                out += u' ';
            out += piece;
            glue = glueNext;
        }
        if (depth != 0)
            Fail(DaoError::SyntaxErrorInExpression);
        return out;
    }

    // The column a select item shows: a name, table.name, or Min/Max/First/Last of one,
    // optionally followed by AS alias.
    QString sourceColumnOf(size_t begin, size_t end) const
    {
        size_t stop = end;
        if (end >= begin + 2 && wordAt(end - 2, u"AS"))
            stop = end - 2;
        const size_t count = stop - begin;
        if (count == 1)
            return nameAt(begin).value_or(QString());
        if (count == 3 && (symbolAt(begin + 1, u".") || symbolAt(begin + 1, u"!")))
            return nameAt(begin + 2).value_or(QString());
        if (count == 4 && symbolAt(begin + 1, u"(") && symbolAt(begin + 3, u")")) {
            const SqlToken& function = m_tokens[begin];
            if (function.isWord(u"Min") || function.isWord(u"Max") || function.isWord(u"First")
                || function.isWord(u"Last"))
                return nameAt(begin + 2).value_or(QString());
        }
        return {};
    }

    SqlStatement translateSelect(size_t begin, size_t end) const
    {
        SqlStatement result;
        result.kind = SqlStatement::Kind::Select;
        size_t i = begin + 1;
        bool distinct = false;
        while (wordAt(i, u"DISTINCTROW") || wordAt(i, u"DISTINCT") || wordAt(i, u"ALL")) {
            distinct = distinct || wordAt(i, u"DISTINCT");
            ++i;
        }
        if (wordAt(i, u"TOP")) {
            const SqlToken* count = at(i + 1);
            if (!count || count->kind != Kind::Number || count->text.contains(u'.')
                || wordAt(i + 2, u"PERCENT"))
                Fail(DaoError::SyntaxErrorInExpression);
            result.limit = count->text;
            i += 2;
        }
        const size_t from = findTopLevel(i, end, { u"FROM" });
        if (from == i)
            Fail(DaoError::SyntaxErrorInExpression); // nothing selected
        // The clauses after FROM, in the order they stand.
        const size_t where = findTopLevel(from, end, { u"WHERE" });
        const size_t group = findTopLevel(from, end, { u"GROUP" });
        const size_t having = findTopLevel(from, end, { u"HAVING" });
        const size_t order = findTopLevel(from, end, { u"ORDER" });
        const size_t union_ = findTopLevel(from, end, { u"UNION" });
        const size_t fromEnd = std::min({ where, group, having, order, union_ });
        if (from < end && from + 1 >= fromEnd)
            Fail(DaoError::SyntaxErrorInFrom);

        const auto items = splitAtCommas(i, from);
        bool plainColumns = true;
        bool star = false;
        for (const auto& [itemBegin, itemEnd] : items) {
            if (itemBegin == itemEnd)
                Fail(DaoError::SyntaxErrorInExpression);
            result.sourceColumns.push_back(sourceColumnOf(itemBegin, itemEnd));
            if (itemEnd - itemBegin == 1 && symbolAt(itemBegin, u"*")) {
                star = true;
            } else if (itemEnd - itemBegin == 1 && nameAt(itemBegin)) {
                result.selectedColumns.append(*nameAt(itemBegin));
            } else {
                plainColumns = false;
            }
            for (size_t t = itemBegin; t + 1 < itemEnd; ++t) {
                if (m_tokens[t].kind == Kind::Word && symbolAt(t + 1, u"(")
                    && IsAggregate(m_tokens[t].text))
                    plainColumns = false;
            }
        }
        if (star && (items.size() > 1))
            plainColumns = false;
        if (star)
            result.sourceColumns.clear();

        QString sql = u"SELECT "_s;
        if (distinct)
            sql += u"DISTINCT "_s;
        sql += rewrite(i, from);
        if (from < end) {
            sql += u" FROM "_s + rewrite(from + 1, fromEnd);
            if (fromEnd - from == 2)
                result.table = nameAt(from + 1).value_or(QString());
        }
        // The remaining clauses keep their order and words; only their contents change.
        if (fromEnd < end)
            sql += u' ' + rewrite(fromEnd, end);
        if (!result.limit.isEmpty()) {
            if (union_ < end)
                Fail(DaoError::SyntaxErrorInExpression);
            sql += u" LIMIT "_s + result.limit;
        }
        result.sql = sql;

        result.singleTable = !distinct && plainColumns && !result.table.isEmpty() && group == end
            && having == end && union_ == end;
        if (result.singleTable) {
            if (star)
                result.selectedColumns.clear();
            const size_t whereEnd = std::min(order, end);
            if (where < end)
                result.where = rewrite(where + 1, whereEnd);
            if (order < end) {
                if (!wordAt(order + 1, u"BY") || order + 2 >= end)
                    Fail(DaoError::SyntaxErrorInExpression);
                result.orderBy = rewrite(order + 2, end);
            }
        } else {
            result.selectedColumns.clear();
        }
        return result;
    }

    QString converted(const QString& expression, const QString& table, const QString& column) const
    {
        if (!m_schema.column)
            return expression;
        const auto schema = m_schema.column(table, column);
        if (!schema)
            return expression;
        return u"qb_convert("_s + expression + u", "_s
            + QString::number(static_cast<int>(schema->type.type)) + u", "_s
            + QString::number(schema->type.size) + u", "_s
            + (schema->allowZeroLength ? u"1"_s : u"0"_s) + u")"_s;
    }

    SqlStatement translateUpdate() const
    {
        SqlStatement result;
        result.kind = SqlStatement::Kind::Update;
        size_t i = 1;
        while (wordAt(i, u"DISTINCTROW"))
            ++i;
        const auto table = nameAt(i);
        if (!table || !wordAt(i + 1, u"SET"))
            Fail(DaoError::SyntaxErrorInUpdate);
        result.table = *table;
        const size_t end = m_tokens.size();
        const size_t where = findTopLevel(i + 2, end, { u"WHERE" });
        QStringList assignments;
        for (const auto& [begin, itemEnd] : splitAtCommas(i + 2, where)) {
            // column = value, the column perhaps written table.column
            size_t equals = begin;
            while (equals < itemEnd && !m_tokens[equals].isSymbol(u"="))
                ++equals;
            if (equals == begin || equals + 1 >= itemEnd)
                Fail(DaoError::SyntaxErrorInUpdate);
            const auto column = nameAt(equals - 1);
            const bool plain = equals - begin == 1
                || (equals - begin == 3
                    && (symbolAt(begin + 1, u".") || symbolAt(begin + 1, u"!")));
            if (!column || !plain)
                Fail(DaoError::SyntaxErrorInUpdate);
            assignments.append(QuoteIdentifier(*column) + u" = "_s
                + converted(rewrite(equals + 1, itemEnd), result.table, *column));
        }
        result.sql
            = u"UPDATE "_s + QuoteIdentifier(result.table) + u" SET "_s + assignments.join(u", "_s);
        if (where < end) {
            if (where + 1 >= end)
                Fail(DaoError::SyntaxErrorInUpdate);
            result.where = rewrite(where + 1, end);
            result.sql += u" WHERE "_s + result.where;
        }
        return result;
    }

    SqlStatement translateDelete() const
    {
        SqlStatement result;
        result.kind = SqlStatement::Kind::Delete;
        const size_t end = m_tokens.size();
        const size_t from = findTopLevel(1, end, { u"FROM" });
        const auto table = nameAt(from + 1);
        if (from == end || !table)
            Fail(DaoError::SyntaxErrorInFrom);
        result.table = *table;
        const size_t where = findTopLevel(from, end, { u"WHERE" });
        if (where != from + 2)
            Fail(DaoError::SyntaxErrorInFrom);
        result.sql = u"DELETE FROM "_s + QuoteIdentifier(result.table);
        if (where < end) {
            result.where = rewrite(where + 1, end);
            result.sql += u" WHERE "_s + result.where;
        }
        return result;
    }

    SqlStatement translateInsert() const
    {
        SqlStatement result;
        result.kind = SqlStatement::Kind::Insert;
        const size_t end = m_tokens.size();
        const auto table = nameAt(2);
        if (!wordAt(1, u"INTO") || !table)
            Fail(DaoError::InvalidStatement);
        result.table = *table;
        size_t i = 3;
        QStringList columns;
        const bool listed = symbolAt(i, u"(");
        if (listed) {
            ++i;
            while (i < end && !symbolAt(i, u")")) {
                const auto column = nameAt(i);
                if (!column)
                    Fail(DaoError::SyntaxErrorInExpression);
                columns.append(*column);
                ++i;
                if (symbolAt(i, u","))
                    ++i;
            }
            if (!symbolAt(i, u")"))
                Fail(DaoError::SyntaxErrorInExpression);
            ++i;
        }
        if (wordAt(i, u"SELECT")) {
            const SqlStatement select = translateSelect(i, end);
            QStringList quoted;
            for (const QString& column : columns)
                quoted.append(QuoteIdentifier(column));
            result.sql = u"INSERT INTO "_s + QuoteIdentifier(result.table)
                + (listed ? u" ("_s + quoted.join(u", "_s) + u")"_s : QString()) + u' '
                + select.sql;
            return result;
        }
        if (!wordAt(i, u"VALUES") || !symbolAt(i + 1, u"(") || !symbolAt(end - 1, u")"))
            Fail(DaoError::SyntaxErrorInExpression);
        if (!listed && m_schema.columnNames)
            columns = m_schema.columnNames(result.table);
        const auto values = splitAtCommas(i + 2, end - 1);
        if (!listed && columns.isEmpty()) {
            result.sql = u"INSERT INTO "_s + QuoteIdentifier(result.table) + u" VALUES ("_s
                + rewrite(i + 2, end - 1) + u")"_s;
            return result;
        }
        if (static_cast<qsizetype>(values.size()) != columns.size())
            Fail(DaoError::SyntaxErrorInExpression);
        QStringList names;
        QStringList expressions;
        for (qsizetype c = 0; c < columns.size(); ++c) {
            const auto& [valueBegin, valueEnd] = values[static_cast<size_t>(c)];
            if (valueBegin == valueEnd)
                Fail(DaoError::SyntaxErrorInExpression);
            names.append(QuoteIdentifier(columns[c]));
            expressions.append(converted(rewrite(valueBegin, valueEnd), result.table, columns[c]));
        }
        // A counter that is not given gets the next number, as a recordset gives it.
        if (m_schema.columnNames && m_schema.column) {
            for (const QString& column : m_schema.columnNames(result.table)) {
                const auto schema = m_schema.column(result.table, column);
                if (schema && schema->type.autoIncrement
                    && !columns.contains(column, Qt::CaseInsensitive)) {
                    names.append(QuoteIdentifier(column));
                    expressions.append(m_schema.nextCounter
                            ? m_schema.nextCounter(result.table, column)
                            : u"(SELECT COALESCE(MAX("_s + QuoteIdentifier(column)
                                + u"), 0) + 1 FROM "_s + QuoteIdentifier(result.table) + u")"_s);
                }
            }
        }
        result.sql = u"INSERT INTO "_s + QuoteIdentifier(result.table) + u" ("_s
            + names.join(u", "_s) + u") VALUES ("_s + expressions.join(u", "_s) + u")"_s;
        return result;
    }

    // name TYPE[(size)] [NOT NULL] in [begin, end); text columns added by SQL refuse
    // zero-length values, as the engine's own SQL made them.
    QString columnDefinition(size_t begin, size_t end, QString* name) const
    {
        const auto column = nameAt(begin);
        const SqlToken* word = at(begin + 1);
        if (!column || !word || begin + 1 >= end || word->kind != Kind::Word)
            Fail(DaoError::SyntaxErrorInFieldDefinition);
        size_t i = begin + 2;
        int size = 0;
        if (i < end && symbolAt(i, u"(")) {
            const SqlToken* number = at(i + 1);
            if (!number || number->kind != Kind::Number || number->text.contains(u'.')
                || number->text.size() > 5 || !symbolAt(i + 2, u")"))
                Fail(DaoError::SyntaxErrorInFieldDefinition);
            size = number->text.toInt();
            i += 3;
        }
        bool required = false;
        if (wordAt(i, u"NOT") && i + 1 < end && wordAt(i + 1, u"NULL")) {
            required = true;
            i += 2;
        }
        if (i != end)
            Fail(DaoError::SyntaxErrorInFieldDefinition);
        const auto type = ColumnTypeFromTypeWord(word->text, size);
        if (!type)
            Fail(DaoError::SyntaxErrorInFieldDefinition);
        *name = *column;
        return ColumnDefinition(*column, *type, required, false);
    }

    SqlStatement translateAlter() const
    {
        SqlStatement result;
        const size_t end = m_tokens.size();
        const auto table = nameAt(2);
        if (!wordAt(1, u"TABLE") || !table)
            Fail(DaoError::SyntaxErrorInAlterTable);
        result.table = *table;
        size_t i = 4;
        const bool add = wordAt(3, u"ADD");
        if (!add && !wordAt(3, u"DROP"))
            Fail(DaoError::SyntaxErrorInAlterTable);
        if (wordAt(i, u"COLUMN"))
            ++i;
        if (add) {
            result.kind = SqlStatement::Kind::AddColumn;
            const QString definition = columnDefinition(i, end, &result.column);
            result.sql = u"ALTER TABLE "_s + QuoteIdentifier(result.table) + u" ADD COLUMN "_s
                + definition;
        } else {
            result.kind = SqlStatement::Kind::DropColumn;
            const auto column = nameAt(i);
            if (!column || i + 1 != end)
                Fail(DaoError::SyntaxErrorInAlterTable);
            result.column = *column;
            result.sql = u"ALTER TABLE "_s + QuoteIdentifier(result.table) + u" DROP COLUMN "_s
                + QuoteIdentifier(result.column);
        }
        return result;
    }

    SqlStatement translateCreate() const
    {
        SqlStatement result;
        result.kind = SqlStatement::Kind::CreateTable;
        const size_t end = m_tokens.size();
        const auto table = nameAt(2);
        if (!wordAt(1, u"TABLE"))
            throw DaoError::make(DaoError::OperationNotSupported);
        if (!table || !symbolAt(3, u"(") || !symbolAt(end - 1, u")") || end < 6)
            Fail(DaoError::SyntaxErrorInFieldDefinition);
        result.table = *table;
        QStringList definitions;
        for (const auto& [begin, itemEnd] : splitAtCommas(4, end - 1)) {
            QString name;
            definitions.append(columnDefinition(begin, itemEnd, &name));
        }
        result.sql = u"CREATE TABLE "_s + QuoteIdentifier(result.table) + u" ("_s
            + definitions.join(u", "_s) + u")"_s;
        return result;
    }

    SqlStatement translateDrop() const
    {
        SqlStatement result;
        result.kind = SqlStatement::Kind::DropTable;
        const auto table = nameAt(2);
        if (!wordAt(1, u"TABLE"))
            throw DaoError::make(DaoError::OperationNotSupported);
        if (!table || m_tokens.size() != 3)
            Fail(DaoError::InvalidStatement);
        result.table = *table;
        result.sql = u"DROP TABLE "_s + QuoteIdentifier(result.table);
        return result;
    }

    QStringView m_statement;
    const SqlSchemaLookup& m_schema;
    std::vector<SqlToken> m_tokens;
};

} // namespace

SqlStatement TranslateSql(QStringView statement, const SqlSchemaLookup& schema)
{
    return Translator(statement, schema).translate();
}

QString TranslateCondition(QStringView condition)
{
    static const SqlSchemaLookup none;
    Translator translator(condition, none);
    const QString rewritten = translator.condition();
    if (rewritten.isEmpty())
        throw DaoError::make(DaoError::SyntaxErrorInExpression, condition.toString());
    return rewritten;
}

} // namespace Dao
