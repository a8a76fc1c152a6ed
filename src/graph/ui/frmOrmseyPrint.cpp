#include "graph/ui/frmOrmseyPrint.h"

#include "frame/Prompts.h"
#include "frame/ui/PrinterList.h"
#include "graph/Graph.h"
#include "graph/ui/PrintPicture.h"
#include "platform/emf/Player.h"
#include "resources/StringTable.h"

#include <QCheckBox>
#include <QPainter>
#include <QPrinter>

namespace Ormsey {

namespace {
constexpr int printDataText = 576;
constexpr int unknownErrorText = 451;
constexpr int printerError = 482;
} // namespace

frmOrmseyPrint::frmOrmseyPrint(QWidget* owner)
    : Frame::PrintSetupDialog(owner, Orientation::Shown)
{
    FormOwner = owner;
    chkPrintData = new QCheckBox(GetResString(printDataText));
    chkPrintData->setObjectName(QStringLiteral("chkPrintData"));
    chkPrintData->setProperty("Tag", printDataText);
    optionsLayout()->addWidget(chkPrintData);
}

GraphPrintChoices frmOrmseyPrint::Choices() const
{
    return { chkPrintData->isChecked(), isLandscape() };
}

void PrintGraphPage(Graph& graph, const GraphPrintChoices& choices, const QString& documentName)
{
    const PrintTable table
        = PrintTableOf(graph, graph.HorizontalAxisLabel(), graph.VerticalAxisLabel());
    const PrintPicture page = BuildPrintPicture(graph, table, choices.PrintData, choices.Landscape);
    if (!page.Picture)
        return;
    QPrinter printer(QPrinter::HighResolution);
    const QString printerName = Frame::CurrentPrinterName();
    if (!printerName.isEmpty())
        printer.setPrinterName(printerName);
    printer.setPageOrientation(choices.Landscape ? QPageLayout::Landscape : QPageLayout::Portrait);
    printer.setDocName(documentName);
    QPainter painter;
    if (!painter.begin(&printer)) {
        Frame::CurrentPrompts().message(
            GetResString(unknownErrorText) + QString::number(printerError), QString(),
            Frame::MessageIcon::Exclamation, Frame::MessageButtons::Ok);
        return;
    }
    const QRectF target = FitFromTopLeft(QSizeF(page.Width, page.Height),
        printer.pageLayout().paintRectPixels(printer.resolution()).size());
    Emf::PlayPicture(*page.Picture, painter, target);
    painter.end();
}

} // namespace Ormsey
