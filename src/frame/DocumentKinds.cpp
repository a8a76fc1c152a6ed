#include "frame/DocumentKinds.h"

namespace Frame {

namespace {

// A handful of kinds, registered once on the user-interface thread.
QList<DocumentKind>& Kinds()
{
    static QList<DocumentKind> kinds;
    return kinds;
}

} // namespace

void RegisterDocumentKind(const DocumentKind& kind)
{
    UnregisterDocumentKind(kind.DocType);
    Kinds().append(kind);
}

void UnregisterDocumentKind(int docType)
{
    Kinds().removeIf([docType](const DocumentKind& kind) { return kind.DocType == docType; });
}

const DocumentKind* FindDocumentKind(int docType)
{
    for (const DocumentKind& kind : Kinds()) {
        if (kind.DocType == docType)
            return &kind;
    }
    return nullptr;
}

bool IsDocumentKindRegistered(int docType)
{
    return FindDocumentKind(docType) != nullptr;
}

int DocTypeForFileName(QStringView fileName)
{
    const QString ending = fileName.right(3).toString().toLower();
    if (ending.isEmpty())
        return 0;
    for (const DocumentKind& kind : Kinds()) {
        if (!kind.Extension.isEmpty() && kind.Extension == ending)
            return kind.DocType;
    }
    return 0;
}

} // namespace Frame
