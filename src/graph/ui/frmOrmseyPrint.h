#pragma once

#include "frame/ui/PrintSetupDialog.h"

class QCheckBox;

namespace Ormsey {

class Graph;

// What the user chose in the graph's print dialog.
struct GraphPrintChoices
{
    // The data table beside (landscape) or below (portrait) the graph.
    bool PrintData = false;
    bool Landscape = false;
};

// The graph window's print dialog: the shared printer list and orientation, and "Print
// Data". It only asks; the window prints what it answers.
class frmOrmseyPrint : public Frame::PrintSetupDialog
{
    Q_OBJECT

public:
    explicit frmOrmseyPrint(QWidget* owner);

    GraphPrintChoices Choices() const;

    QCheckBox* chkPrintData = nullptr;
};

// Prints the graph (and with the choice its data table) on the current printer or into a PDF
// file, the page scaled to fit; a printer that cannot start is reported through Prompts.
void PrintGraphPage(Graph& graph, const GraphPrintChoices& choices, const QString& documentName);

} // namespace Ormsey
