#include "sheet/ui/RegisterSheetWindow.h"

#include "frame/DocumentHost.h"
#include "frame/DocumentKinds.h"
#include "sheet/ui/frmTillane.h"

using namespace Qt::Literals::StringLiterals;

namespace Tillane {

void RegisterSheetWindow()
{
    Frame::RegisterDocumentKind({ Frame::SheetDocumentType, u"Tillane"_s, u"qnc"_s,
        [](Frame::DocumentHost& host) -> QObject* { return new frmTillane(&host); } });
}

} // namespace Tillane
