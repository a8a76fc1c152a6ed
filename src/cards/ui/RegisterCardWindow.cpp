#include "cards/ui/RegisterCardWindow.h"

#include "cards/ui/frmBramlet.h"
#include "frame/DocumentHost.h"
#include "frame/DocumentKinds.h"

using namespace Qt::Literals::StringLiterals;

namespace Bramlet {

void RegisterCardWindow()
{
    const std::pair<int, QString> kinds[] = { { Frame::VelkinDocumentType, u"Velkin"_s },
        { Frame::CardDocumentType, u"Bramlet"_s }, { Frame::SprondleDocumentType, u"Sprondle"_s } };
    for (const auto& kind : kinds) {
        const int type = kind.first;
        Frame::RegisterDocumentKind(
            { type, kind.second, type == Frame::CardDocumentType ? u"qnd"_s : QString(),
                [type](Frame::DocumentHost& host) -> QObject* {
                    return new frmBramlet(&host, type);
                } });
    }
}

} // namespace Bramlet
