#pragma once

#include <QCoreApplication>
#include <QCursor>
#include <QGuiApplication>

namespace Frame {

// The busy pointer for the length of a command, restored however the command ends. Messages
// are shown after it has gone, so that they come up with the normal pointer. Documents use it
// as well as windows, so it needs no widgets; without a GUI application (quorbin-cli) it does
// nothing.
class Hourglass
{
public:
    Hourglass()
        : m_shown(qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr)
    {
        if (m_shown)
            QGuiApplication::setOverrideCursor(QCursor(Qt::WaitCursor));
    }
    ~Hourglass()
    {
        if (m_shown)
            QGuiApplication::restoreOverrideCursor();
    }
    Hourglass(const Hourglass&) = delete;
    Hourglass& operator=(const Hourglass&) = delete;

private:
    bool m_shown;
};

} // namespace Frame
