#include "graph/ui/RegisterGraphWindow.h"

#include "frame/DocumentKinds.h"
#include "graph/ui/frmOrmsey.h"

using namespace Qt::Literals::StringLiterals;

namespace Ormsey {

void RegisterGraphWindow()
{
    Frame::RegisterDocumentKind({ Frame::GraphDocument, u"Ormsey"_s, u"qnp"_s,
        []() -> QObject* { return new frmOrmsey; } });
}

} // namespace Ormsey
