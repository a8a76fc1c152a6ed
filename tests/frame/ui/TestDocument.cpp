#include "TestDocument.h"

#include "frame/DocumentKinds.h"

#include <QApplication>

using namespace Qt::Literals::StringLiterals;

TestDocument::TestDocument()
{
    resize(300, 200);
    Made().append(this);
}

TestDocument::~TestDocument() = default;

void TestDocument::setFileName(const QString& fileName)
{
    m_fileName = fileName;
    Arrivals.append({ fileName, property("Tag").toString(), windowTitle(), isVisible(),
        QApplication::activeModalWidget() != nullptr });
}

bool TestDocument::queryClose()
{
    ++Queries;
    return AllowClose;
}

QList<QPointer<TestDocument>>& TestDocument::Made()
{
    static QList<QPointer<TestDocument>> made;
    return made;
}

void TestDocument::RegisterAllKinds()
{
    const struct
    {
        int type;
        QString word;
        QString extension;
    } kinds[] = { { 1, u"Ormsey"_s, u"qnp"_s }, { 2, u"Velkin"_s, QString() },
        { 3, u"Bramlet"_s, u"qnd"_s }, { 4, u"Sprondle"_s, QString() },
        { 5, u"Tillane"_s, u"qnc"_s } };
    for (const auto& kind : kinds) {
        Frame::RegisterDocumentKind(
            { kind.type, kind.word, kind.extension, [](Frame::DocumentHost& host) -> QObject* {
                 auto* document = new TestDocument;
                 document->Host = &host;
                 return document;
             } });
    }
}

void TestDocument::UnregisterAllKinds()
{
    for (int type = 1; type <= 5; ++type)
        Frame::UnregisterDocumentKind(type);
}
