#include "graph/ui/RegisterGraphWindow.h"

#include "frame/DocumentHost.h"
#include "frame/DocumentKinds.h"
#include "graph/ui/frmOrmsey.h"

using namespace Qt::Literals::StringLiterals;

namespace Ormsey {

void RegisterGraphWindow()
{
    Frame::RegisterDocumentKind({ Frame::GraphDocumentType, u"Ormsey"_s, u"qnp"_s,
        [](Frame::DocumentHost& host) -> QObject* { return new frmOrmsey(&host); } });
}

} // namespace Ormsey
