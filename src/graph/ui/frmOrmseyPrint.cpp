#include "graph/ui/frmOrmseyPrint.h"

#include "graph/ui/frmOrmsey.h"
#include "resources/StringTable.h"

#include <QCheckBox>

namespace Ormsey {

namespace {
constexpr int printDataText = 576;
} // namespace

frmOrmseyPrint::frmOrmseyPrint(frmOrmsey* owner)
    : Frame::PrintSetupDialog(owner, Orientation::Shown)
{
    FormOwner = owner;
    chkPrintData = new QCheckBox(GetResString(printDataText));
    chkPrintData->setProperty("Tag", printDataText);
    optionsLayout()->addWidget(chkPrintData);
}

void frmOrmseyPrint::printDocument()
{
    if (auto* graphWindow = qobject_cast<frmOrmsey*>(FormOwner.data()))
        graphWindow->PrintGraphOn(chkPrintData->isChecked(), isLandscape());
}

} // namespace Ormsey
