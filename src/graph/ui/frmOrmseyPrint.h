#pragma once

#include "frame/ui/PrintSetupDialog.h"

class QCheckBox;

namespace Ormsey {

class frmOrmsey;

// The graph window's print dialog: the shared printer list and orientation, and "Print
// Data", which prints the data table beside (landscape) or below (portrait) the graph.
class frmOrmseyPrint : public Frame::PrintSetupDialog
{
    Q_OBJECT

public:
    explicit frmOrmseyPrint(frmOrmsey* owner);

    QCheckBox* chkPrintData = nullptr;

protected:
    void printDocument() override;
};

} // namespace Ormsey
