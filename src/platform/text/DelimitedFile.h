#pragma once

#include <QIODevice>
#include <QString>
#include <QStringList>
#include <memory>

namespace Text {

// A reader of comma- or tab-separated text in the classic dialect (DelimitedText.h), record
// by record; the card import and the sheet's import read through it. Lines end in LF or
// CR LF; each line is read as UTF-8 when it is valid UTF-8, else as Windows-1252 (files made
// on Windows), and a leading UTF-8 byte-order mark is dropped. The file is read a line at a
// time, so a large class list costs no more memory than its longest line; "-" reads standard
// input, which is held in memory.
class DelimitedFile
{
public:
    DelimitedFile() = default;
    DelimitedFile(const DelimitedFile&) = delete;
    DelimitedFile& operator=(const DelimitedFile&) = delete;

    const QString& Separator() const { return m_separator; }
    // Its first character separates the fields.
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
    std::unique_ptr<QIODevice> m_file;
    int m_lineCount = 0;
    int m_linesRead = 0;
    QStringList m_labels;
};

} // namespace Text
