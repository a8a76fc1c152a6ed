#pragma once

#include <QByteArray>
#include <QFile>
#include <QRegularExpression>
#include <QString>
#include <QStringList>
#include <gtest/gtest.h>
#include <memory>
#include <ostream>
#include <set>
#include <string>
#include <vector>

// Contract tables kept as plain text under tests/data, one case per line, so that the cases can
// be read and added to without reading C++. A row file (UTF-8):
//
//     # Val: the number at the start of a text.      <- comments start with '#'
//     name            text        expected           <- header: the column names, `name` first
//     plainWhole      42          42                 <- one case per line
//     blankTextIsZero <empty>     0
//
// Fields are separated by tabs; a run of tabs counts as one, so columns can be lined up. A field
// is never blank: an empty text is written <empty>. Inside a field <tab>, <lf>, <cr>, <nul> and
// <space> stand for those characters and <xHH> for the character (or, read as bytes, the byte)
// with that hexadecimal code; everything else is literal, backslashes included. A blank at either
// end of a field must be written <space>, so that no case hangs on a blank nobody can see.
// Names are letters, digits and underscores, unique in the file: each names its test.
//
// Nothing is skipped silently: a missing file, a file without rows, a header without `name`,
// and a malformed line (wrong number of fields, bad or repeated name, unknown <marker>, plain
// blank at a field's end) each become a case that fails, named after its line (line12). A field
// that does not read as the kind a test asks for (a number, yes or no) fails that case.
//
//     class ValReading : public RowFile::RowTest<> {};
//     TEST_P(ValReading, ReadsTheNumber) { EXPECT_EQ(Val(row().text("text")), ...); }
//     INSTANTIATE_TEST_SUITE_P(Rows, ValReading, RowFile::In("platform/runtime/val.rows"),
//         RowFile::Named());
namespace RowFile {

namespace Detail {

// The code a marker's word stands for: a character or byte, -1 for <empty>, -2 for none known.
inline int MarkerCode(QStringView word)
{
    static const std::pair<const char16_t*, int> names[] = { { u"empty", -1 }, { u"tab", '\t' },
        { u"lf", '\n' }, { u"cr", '\r' }, { u"nul", 0 }, { u"space", ' ' } };
    for (const auto& [name, code] : names) {
        if (word == QStringView(name))
            return code;
    }
    bool hex = false;
    const int code = word.size() == 3 && word[0] == u'x' ? word.sliced(1).toInt(&hex, 16) : 0;
    return hex ? code : -2;
}

// Gives `sink` each stretch of literal text with the code of the marker after it (-1 after the
// last); false on an unknown marker.
template <typename Sink> bool Decode(const QString& field, Sink sink)
{
    static const QRegularExpression marker(QStringLiteral("<([A-Za-z0-9]+)>"));
    qsizetype from = 0;
    for (const QRegularExpressionMatch& match : marker.globalMatch(field)) {
        const int code = MarkerCode(match.capturedView(1));
        if (code == -2)
            return false;
        sink(QStringView(field).sliced(from, match.capturedStart() - from), code);
        from = match.capturedEnd();
    }
    sink(QStringView(field).sliced(from), -1);
    return true;
}

} // namespace Detail

class Row
{
public:
    std::string name; // the generated test's name
    QString file; // under the test data folder
    int line = 0;
    QString problem; // why the line is malformed; empty when it is well formed

    // "tests/data/<file>:<line> <name>", the row in failure messages.
    std::string where() const
    {
        return "tests/data/" + file.toStdString() + ':' + std::to_string(line) + ' ' + name;
    }

    // The field with its markers read; <xHH> gives the character HH.
    QString text(const char* column) const
    {
        QString text;
        Detail::Decode(field(column), [&](QStringView literal, int code) {
            text += literal;
            if (code >= 0)
                text += QChar(code);
        });
        return text;
    }

    // The field as bytes: UTF-8 for the text, <xHH> the byte HH.
    QByteArray bytes(const char* column) const
    {
        QByteArray bytes;
        Detail::Decode(field(column), [&](QStringView literal, int code) {
            bytes += literal.toUtf8();
            if (code >= 0)
                bytes += char(code);
        });
        return bytes;
    }

    // A number as C++ writes one, or inf, -inf, nan.
    double number(const char* column) const
    {
        bool ok = false;
        const double value = text(column).toDouble(&ok);
        if (!ok)
            ADD_FAILURE() << where() << ": column " << column << " is no number";
        return value;
    }

    // A whole number, decimal or 0x-hexadecimal.
    qint64 whole(const char* column) const
    {
        QString text = this->text(column);
        const bool hex = text.startsWith(u"0x") || text.startsWith(u"-0x");
        if (hex)
            text.remove(text.indexOf(u"0x"), 2);
        bool ok = false;
        const qint64 value = text.toLongLong(&ok, hex ? 16 : 10);
        if (!ok)
            ADD_FAILURE() << where() << ": column " << column << " is no whole number";
        return value;
    }

    // yes or no.
    bool flag(const char* column) const
    {
        const QString text = this->text(column);
        if (text != u"yes" && text != u"no")
            ADD_FAILURE() << where() << ": column " << column << " is neither yes nor no";
        return text == u"yes";
    }

    // The field's text cut at each separator; <empty> is the empty list.
    QStringList list(const char* column, const QString& separator = QStringLiteral(", ")) const
    {
        const QString text = this->text(column);
        return text.isEmpty() ? QStringList() : text.split(separator);
    }

    std::shared_ptr<const QStringList> columns;
    QStringList fields;

private:
    QString field(const char* column) const
    {
        const qsizetype index = columns ? columns->indexOf(QLatin1StringView(column)) : -1;
        if (index < 0 || index >= fields.size()) {
            ADD_FAILURE() << where() << ": the file has no column " << column;
            return {};
        }
        return fields[index];
    }
};

inline void PrintTo(const Row& row, std::ostream* stream)
{
    *stream << row.where();
}

// The rows of `file` under the test data folder, malformed lines included as failing rows.
inline std::vector<Row> Load(const char* file)
{
    static const QRegularExpression validName(QStringLiteral("^[A-Za-z0-9_]+$"));
    std::vector<Row> rows;
    std::set<std::string> names;
    std::shared_ptr<const QStringList> columns;
    // A failing row is named after its line, made unique: the tests need unique names.
    const auto add = [&](int line, const QStringList& fields, const QString& problem) {
        Row& row = rows.emplace_back();
        row.name = problem.isEmpty() ? fields[0].toStdString() : "line" + std::to_string(line);
        while (!names.insert(row.name).second)
            row.name += '_';
        row.file = QString::fromUtf8(file);
        row.line = line;
        row.problem = problem;
        row.columns = columns;
        row.fields = fields;
    };
    QFile input(QStringLiteral(QUORBIN_TEST_DATA "/") + QString::fromUtf8(file));
    if (!input.open(QIODevice::ReadOnly))
        add(0, {}, QStringLiteral("cannot read ") + input.fileName());
    int number = 0;
    for (const QByteArray& bytes : input.readAll().split('\n')) {
        ++number;
        const QString line = QString::fromUtf8(bytes.endsWith('\r') ? bytes.chopped(1) : bytes);
        if (line.trimmed().isEmpty() || line.startsWith(u'#'))
            continue;
        QStringList fields = line.split(u'\t', Qt::SkipEmptyParts);
        QString problem;
        if (!columns) {
            columns = std::make_shared<const QStringList>(fields);
            if (fields.value(0) != u"name" || fields.removeDuplicates() > 0)
                add(number, {},
                    QStringLiteral("the header must name distinct columns, name first"));
            continue;
        }
        for (const QString& field : fields) {
            if (field.startsWith(u' ') || field.endsWith(u' '))
                problem = QStringLiteral("a blank at the end of a field is written <space>");
            if (!Detail::Decode(field, [](QStringView, int) {}))
                problem = QStringLiteral("unknown marker in ") + field;
        }
        if (line.startsWith(u'\t'))
            problem = QStringLiteral("a row starts with its name, not a tab");
        else if (fields.size() != columns->size())
            problem = QStringLiteral("%1 fields where the header has %2")
                          .arg(fields.size())
                          .arg(columns->size());
        else if (!validName.match(fields[0]).hasMatch())
            problem = QStringLiteral("a name is letters, digits and underscores");
        else if (names.count(fields[0].toStdString()))
            problem = QStringLiteral("the name is taken by an earlier row");
        add(number, fields, problem);
    }
    if (rows.empty())
        add(0, {}, QStringLiteral("no rows"));
    return rows;
}

inline auto In(const char* file)
{
    return testing::ValuesIn(Load(file));
}

// Names each generated test after its row.
struct Named
{
    std::string operator()(const testing::TestParamInfo<Row>& info) const
    {
        return info.param.name;
    }
};

// A test whose parameter is a row; a malformed row fails before the test body runs.
template <typename Base = testing::Test>
class RowTest : public Base, public testing::WithParamInterface<Row>
{
protected:
    void SetUp() override
    {
        Base::SetUp();
        ASSERT_TRUE(this->GetParam().problem.isEmpty())
            << this->GetParam().where() << ": " << this->GetParam().problem.toStdString();
    }
    const Row& row() const { return this->GetParam(); }
};

} // namespace RowFile
