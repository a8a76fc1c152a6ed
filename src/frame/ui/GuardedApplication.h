#pragma once

#include <QApplication>

namespace Frame {

// The application object of the suite. An error that escapes a command's event handler would
// otherwise end the program and lose every unsaved document; here it becomes the standard
// error message, and the program and its documents carry on. Commands still handle the
// failures they expect themselves: this is the last line, not the way errors are reported.
class GuardedApplication : public QApplication
{
    Q_OBJECT

public:
    GuardedApplication(int& argc, char** argv);

    bool notify(QObject* receiver, QEvent* event) override;
};

// The number shown for an error that reached the guard: the runtime's own, 7 for memory that
// ran out, 51 for an error with no number.
int EscapedErrorNumber(const std::exception& error);

} // namespace Frame
