#pragma once

#include <QFile>
#include <QString>
#include <QStringList>
#include <QStringView>

namespace Tillane {

// One line of delimited text split at `separator` (its first character; "," for .csv, TAB
// for .txt). A field that begins with a double quote runs to the next double quote and may
// hold the separator; the quotes are not part of it, there is no escape for a quote inside,
// and anything between the closing quote and the next separator is dropped. A quoted field
// without its closing quote runs to the end of the line. An empty line is one empty field.
QStringList SplitDelimitedLine(QStringView line, QStringView separator);

// The separator of a delimited file by its name: TAB for ".txt" (any case), else ",".
QString SeparatorForFile(const QString& path);

// A reader of comma- or tab-separated text, record by record; the card window imports
// through it. Lines end in LF or CRLF; each line is read as UTF-8 when it is valid UTF-8,
// else as Windows-1252 (files made on Windows).
class DelimitedFile
{
public:
    DelimitedFile() = default;
    DelimitedFile(const DelimitedFile&) = delete;
    DelimitedFile& operator=(const DelimitedFile&) = delete;

    const QString& Separator() const { return m_separator; }
    void setSeparator(const QString& separator) { m_separator = separator; }
    // Whether the first line holds the field names rather than a record.
    bool FirstRowIsLabels() const { return m_firstRowIsLabels; }
    void setFirstRowIsLabels(bool labels) { m_firstRowIsLabels = labels; }

    // The number of lines, less 1 when the first holds labels (never below 0).
    int NumberOfRecords() const;
    // The number of fields of the first line.
    int NumberOfFields() const { return static_cast<int>(m_labels.size()); }
    // Field i (from 0) of the first line; empty outside the line.
    QString FieldLabel(int index) const;

    // Closes any open file, opens `path`, counts its lines and takes the first line's fields
    // as the labels, then stands before the first line. False when the file cannot be read.
    bool OpenFile(const QString& path);
    // The next record's fields (from 0); false at the end of the file. With
    // FirstRowIsLabels the labels line is passed over.
    bool GetRecords(QStringList& fields);
    // Closes the file; both counts go back to 0.
    void CloseFile();

private:
    bool readLine(QString& line);

    QString m_separator = QStringLiteral(",");
    bool m_firstRowIsLabels = false;
    QFile m_file;
    int m_lineCount = 0;
    int m_linesRead = 0;
    QStringList m_labels;
};

} // namespace Tillane
