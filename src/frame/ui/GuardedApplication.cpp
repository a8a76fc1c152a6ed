#include "frame/ui/GuardedApplication.h"

#include "frame/ErrorMessage.h"
#include "platform/runtime/Error.h"

#include <new>

namespace Frame {

namespace {

constexpr int outOfMemory = 7;
constexpr int internalError = 51;

} // namespace

GuardedApplication::GuardedApplication(int& argc, char** argv)
    : QApplication(argc, argv)
{ }

int EscapedErrorNumber(const std::exception& error)
{
    if (const auto* runtimeError = dynamic_cast<const Runtime::Error*>(&error))
        return runtimeError->number();
    if (dynamic_cast<const std::bad_alloc*>(&error) != nullptr)
        return outOfMemory;
    return internalError;
}

bool GuardedApplication::notify(QObject* receiver, QEvent* event)
{
    try {
        return QApplication::notify(receiver, event);
    } catch (const std::exception& error) {
        ShowErrorMessage(EscapedErrorNumber(error));
    }
    // The event counts as handled: whatever raised the error has stopped where it was.
    return true;
}

} // namespace Frame
