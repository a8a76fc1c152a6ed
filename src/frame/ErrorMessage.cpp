#include "frame/ErrorMessage.h"

#include "frame/Prompts.h"
#include "resources/StringTable.h"

namespace Frame {

namespace {

constexpr int unknownErrorText = 451;

} // namespace

void ShowErrorMessage(int errorNumber)
{
    CurrentPrompts().message(GetResString(unknownErrorText) + QString::number(errorNumber),
        QString(), MessageIcon::Exclamation, MessageButtons::Ok);
}

} // namespace Frame
