#include "cards/CardMessages.h"

#include "platform/dao/DaoError.h"
#include "resources/StringTable.h"

using namespace Qt::Literals::StringLiterals;
using Dao::DaoError;

namespace Bramlet {

namespace {

constexpr int emptyNameText = 840;
constexpr int duplicateNameText = 841; // and 842 on the next line
constexpr int conflictText = 855; // and 856 on the next line

} // namespace

void ShowCardMessage(const QString& text, Frame::MessageIcon icon)
{
    Frame::CurrentPrompts().message(text, QString(), icon, Frame::MessageButtons::Ok);
}

QString TwoLineMessage(int first)
{
    return GetResString(first) + u'\n' + GetResString(first + 1);
}

QString EngineErrorText(int number, const QString& description)
{
    return u"Error %1: %2"_s.arg(number).arg(description);
}

AfterSaveFailure TellSaveFailure(int number, const QString& description)
{
    switch (number) {
    case DaoError::DuplicateValue:
        ShowCardMessage(TwoLineMessage(duplicateNameText), Frame::MessageIcon::Exclamation);
        return AfterSaveFailure::Nothing;
    case DaoError::ZeroLengthNotAllowed:
        ShowCardMessage(GetResString(emptyNameText), Frame::MessageIcon::Information);
        return AfterSaveFailure::Nothing;
    case DaoError::ChangedByAnotherUser:
    case DaoError::LockedBySession:
    // Another copy holding the file past the busy timeout is the same story to the user: the
    // card could not be saved because of someone else, and trying again later works.
    case DaoError::LockedByUser:
        ShowCardMessage(TwoLineMessage(conflictText), Frame::MessageIcon::Exclamation);
        return AfterSaveFailure::ShowStoredCard;
    case DaoError::NoCurrentRecord:
        return AfterSaveFailure::Nothing;
    default:
        ShowCardMessage(EngineErrorText(number, description), Frame::MessageIcon::None);
        return AfterSaveFailure::Nothing;
    }
}

} // namespace Bramlet
