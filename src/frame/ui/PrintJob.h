#pragma once

#include <QPainter>
#include <QPrinter>
#include <QString>
#include <memory>

class QTemporaryDir;

namespace Frame {

// One print job of a document window, on the program's current printer or, when the print
// dialog's "PDF File" entry is chosen, into a PDF file that the user names in the save dialog.
// The PDF is laid out exactly as the paper would be and goes into place through a temporary
// file, so an existing file is replaced only by a complete one. Failures are reported through
// Prompts.
//
//     PrintJob job(windowTitle(), landscape);
//     if (!job.begin())
//         return; // cancelled, or the printer would not start (already reported)
//     ... draw with job.painter(), job.newPage() between pages ...
//     job.finish();
class PrintJob
{
public:
    PrintJob(const QString& documentName, bool landscape);
    ~PrintJob();
    PrintJob(const PrintJob&) = delete;
    PrintJob& operator=(const PrintJob&) = delete;

    // Asks for the PDF file's name when printing to a file, then starts the job. False when
    // the user cancels or the printer cannot start.
    bool begin();
    QPrinter& printer() { return m_printer; }
    QPainter& painter() { return m_painter; }
    // The page's printable area in the painter's coordinates (device pixels).
    QRectF pageArea() const;
    bool newPage();
    // Ends the job and, for a PDF, puts the file in place. False when that failed.
    bool finish();

private:
    QPrinter m_printer;
    QPainter m_painter;
    QString m_pdfTarget;
    std::unique_ptr<QTemporaryDir> m_pdfFolder;
};

} // namespace Frame
