#include "graph/ui/frmOrmseyPrint.h"

#include "frame/ui/PrintJob.h"
#include "graph/Graph.h"
#include "graph/PrintPicture.h"
#include "platform/emf/FitPicture.h"
#include "platform/emf/Player.h"
#include "resources/StringTable.h"

#include <QCheckBox>

namespace Ormsey {

namespace {
constexpr int printDataText = 576;
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
    Frame::PrintJob job(documentName, choices.Landscape);
    if (!job.begin())
        return;
    // From the paper's top left corner, as large as the page allows.
    const QRectF target = Emf::FitPicture(
        QSizeF(page.Width, page.Height), job.pageArea(), Qt::AlignTop | Qt::AlignLeft);
    Emf::PlayPicture(*page.Picture, job.painter(), target);
    job.finish();
}

} // namespace Ormsey
