#pragma once

#include "frame/DocumentHost.h"
#include "frame/DocumentWindow.h"

#include <QList>
#include <QPointer>
#include <QWidget>

// A document window for the frame's tests: records what the frame tells it and answers the
// close query as told.
class TestDocument : public QWidget, public Frame::DocumentWindow
{
    Q_OBJECT

public:
    // What the window looked like when it was given its file name.
    struct Arrival
    {
        QString fileName;
        QString tag;
        QString caption;
        bool visible = false;
        bool dialogShowing = false; // a modal dialog was still open
    };

    TestDocument();
    ~TestDocument() override;

    void setFileName(const QString& fileName) override;
    QString fileName() const override { return m_fileName; }
    bool queryClose() override;

    // Registers kinds 1 to 5 with their caption words, and "qnp", "qnd", "qnc" for 1, 3, 5.
    static void RegisterAllKinds();
    static void UnregisterAllKinds();
    // Every test document made since the last reset, in order (destroyed ones as null).
    static QList<QPointer<TestDocument>>& Made();

    QList<Arrival> Arrivals;
    // The host the frame handed over when it made the window.
    Frame::DocumentHost* Host = nullptr;
    int Queries = 0;
    bool AllowClose = true;

private:
    QString m_fileName;
};
