#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QStringView>
#include <functional>

namespace Frame {

// The document type codes. The card window shows three views of one kind of file.
enum DocumentType : int {
    GraphDocumentType = 1,
    VelkinDocumentType = 2,
    CardDocumentType = 3,
    SprondleDocumentType = 4,
    SheetDocumentType = 5,
};

class DocumentHost;

// One kind of document window, registered by its own subsystem at start-up so that the frame
// can open it without depending on it.
struct DocumentKind
{
    int DocType = 0;
    // The first word of an untitled window's caption ("Ormsey", "Bramlet" ...).
    QString CaptionWord;
    // Lower-case, without the point ("qnp"); empty for kinds that are only made new.
    QString Extension;
    // Makes a new window: a QWidget that implements DocumentWindow, owned by the caller, which
    // also hands it the host it may ask for dialogs, icons and the other documents.
    std::function<QObject*(DocumentHost& host)> CreateWindow;
};

// Adds a kind, replacing one with the same code.
void RegisterDocumentKind(const DocumentKind& kind);
void UnregisterDocumentKind(int docType);
// The registered kind with that code, or nullptr.
const DocumentKind* FindDocumentKind(int docType);
bool IsDocumentKindRegistered(int docType);

// The type code for a file: the name's last three characters, lower-cased, against the
// registered extensions; 0 for any other ending (no point is required before them, and a
// name shorter than three characters is compared whole).
int DocTypeForFileName(QStringView fileName);

} // namespace Frame
