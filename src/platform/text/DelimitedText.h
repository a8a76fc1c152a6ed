#pragma once

#include <QChar>
#include <QList>
#include <QString>
#include <QStringList>
#include <QStringView>

// Delimited text: records of fields split at a one-character separator ("," in .csv files,
// TAB in .txt files), read by one reader in one of two dialects.
namespace Text {

enum class Dialect {
    // The program's own, as the card import and the sheet read it: one record per line (LF or
    // CR LF). A field that begins with a double quote runs to the next double quote and may
    // hold the separator; the quotes are not part of it, there is no escape for a quote inside,
    // and anything between the closing quote and the next separator is dropped. A quoted field
    // without its closing quote runs to the end of the line. A quote later in a field is text.
    // An empty line is a record of one empty field.
    Classic,
    // As spreadsheets write comma-separated text: a double quote anywhere in a field opens a
    // quoted part, which may hold the separator, line breaks and doubled quotes (one quote
    // each) up to the closing quote. CR outside quotes is dropped. A line with nothing but
    // blanks outside quotes is no record.
    Quoted,
};

// Record by record over text already decoded (Profile::DecodeSystemText). Blanks around
// fields are kept.
class DelimitedReader
{
public:
    // The text must outlive the reader.
    DelimitedReader(QStringView text, QChar separator, Dialect dialect);

    // The next record's fields (at least one); false at the end of the text.
    bool next(QStringList& fields);

private:
    bool nextLine(QStringList& fields);
    bool nextQuoted(QStringList& fields);

    QStringView m_text;
    QChar m_separator;
    Dialect m_dialect;
    qsizetype m_position = 0;
};

// Every record of the text.
QList<QStringList> ReadDelimitedText(QStringView text, QChar separator, Dialect dialect);

// One line of the classic dialect split at `separator` (its first character; an empty
// separator leaves the line whole). An empty line is one empty field.
QStringList SplitDelimitedLine(QStringView line, QStringView separator);

// The separator of a delimited file by its name: TAB for ".txt" (any case), else ",".
QString SeparatorForFile(const QString& path);

} // namespace Text
