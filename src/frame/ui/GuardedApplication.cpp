#include "frame/ui/GuardedApplication.h"

#include "frame/Prompts.h"
#include "platform/runtime/Error.h"
#include "resources/StringTable.h"

#include <new>

namespace Frame {

namespace {

constexpr int unknownErrorText = 451;
constexpr int outOfMemory = 7;
constexpr int internalError = 51;

} // namespace

GuardedApplication::GuardedApplication(int& argc, char** argv)
    : QApplication(argc, argv)
{ }

QString EscapedErrorText(const std::exception& error)
{
    int number = internalError;
    if (const auto* runtimeError = dynamic_cast<const Runtime::Error*>(&error))
        number = runtimeError->number();
    else if (dynamic_cast<const std::bad_alloc*>(&error) != nullptr)
        number = outOfMemory;
    return GetResString(unknownErrorText) + QString::number(number);
}

bool GuardedApplication::notify(QObject* receiver, QEvent* event)
{
    try {
        return QApplication::notify(receiver, event);
    } catch (const std::exception& error) {
        CurrentPrompts().message(
            EscapedErrorText(error), QString(), MessageIcon::Exclamation, MessageButtons::Ok);
    }
    // The event counts as handled: whatever raised the error has stopped where it was.
    return true;
}

} // namespace Frame
