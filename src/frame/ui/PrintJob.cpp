#include "frame/ui/PrintJob.h"

#include "frame/ErrorMessage.h"
#include "frame/FrameSettings.h"
#include "frame/Prompts.h"
#include "frame/ui/PrinterList.h"
#include "platform/io/SafeFileWriter.h"
#include "resources/StringTable.h"

#include <QFileInfo>
#include <QTemporaryDir>

using namespace Qt::Literals::StringLiterals;

namespace Frame {

namespace {

constexpr int printerError = 482;
constexpr int pdfTitle = 442;
constexpr int pdfFilter = 587;

void Report(const QString& text)
{
    CurrentPrompts().message(text, QString(), MessageIcon::Exclamation, MessageButtons::Ok);
}

} // namespace

PrintJob::PrintJob(const QString& documentName, bool landscape)
    : m_printer(QPrinter::HighResolution)
{
    m_printer.setDocName(documentName);
    m_printer.setPageOrientation(landscape ? QPageLayout::Landscape : QPageLayout::Portrait);
}

PrintJob::~PrintJob()
{
    if (m_painter.isActive())
        m_painter.end();
}

bool PrintJob::begin()
{
    if (Settings().PrintToPdfFile) {
        const FileDialogRequest request { GetResString(pdfTitle), GetResString(pdfFilter), 1,
            QString(), QString() };
        const std::optional<FileChoice> choice = CurrentPrompts().saveFile(request);
        if (!choice || choice->path.isEmpty())
            return false;
        m_pdfTarget = choice->path;
        if (QFileInfo(m_pdfTarget).suffix().isEmpty())
            m_pdfTarget += u".pdf"_s;
        m_pdfFolder = std::make_unique<QTemporaryDir>();
        if (!m_pdfFolder->isValid()) {
            Report(m_pdfFolder->errorString());
            return false;
        }
        m_printer.setOutputFormat(QPrinter::PdfFormat);
        m_printer.setOutputFileName(m_pdfFolder->filePath(u"print.pdf"_s));
    } else {
        const QString printerName = CurrentPrinterName();
        if (!printerName.isEmpty())
            m_printer.setPrinterName(printerName);
    }
    if (!m_painter.begin(&m_printer)) {
        ShowErrorMessage(printerError);
        return false;
    }
    return true;
}

QRectF PrintJob::pageArea() const
{
    return QRectF(
        QPointF(0, 0), m_printer.pageLayout().paintRectPixels(m_printer.resolution()).size());
}

bool PrintJob::newPage()
{
    return m_printer.newPage();
}

bool PrintJob::finish()
{
    if (!m_painter.isActive())
        return false;
    m_painter.end();
    if (m_pdfTarget.isEmpty())
        return true;
    const QString error = Io::SafeFileWriter::copyFile(m_printer.outputFileName(), m_pdfTarget);
    if (!error.isEmpty()) {
        Report(error);
        return false;
    }
    return true;
}

} // namespace Frame
