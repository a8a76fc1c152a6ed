#include "cards/CardFiles.h"

#include "cards/CardDatabase.h"
#include "cards/CardMessages.h"
#include "frame/DocumentHost.h"
#include "frame/Hourglass.h"
#include "frame/Prompts.h"
#include "platform/dao/DaoError.h"
#include "resources/StringTable.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;
using Dao::DaoError;

namespace Bramlet {

namespace {

constexpr int databaseFilter = 843;
constexpr int overwriteText = 844; // and 845 on the next line
constexpr int duplicateRowsText = 857;
constexpr int oneDuplicateRowText = 858;
constexpr int importTitle = 859;
constexpr int importFilter = 860;
constexpr int saveAsTitle = 1007;

// Engine failures that mean the file is no card file of ours (or a damaged one) rather than
// one the user could not reach: they all get the one message of a damaged file.
bool IsDamagedFileError(int number)
{
    switch (number) {
    case DaoError::FileNotFound:
    case DaoError::FileInUse:
    case DaoError::PermissionDenied:
    case DaoError::InvalidPath:
    case DaoError::LockedByUser:
    case DaoError::DiskFull:
    case DaoError::DiskOrNetworkError:
        return false;
    default:
        return true;
    }
}

QString DialogFolder(Frame::DocumentHost* host)
{
    return host != nullptr ? host->DialogFolder() : QString();
}

} // namespace

std::unique_ptr<CardDatabase> OpenCardFile(Dao::DBEngine& engine, const QString& path)
{
    auto cards = std::make_unique<CardDatabase>(engine);
    QString failure;
    {
        const Frame::Hourglass hourglass;
        try {
            cards->OpenCardDatabase(path, false);
        } catch (const DaoError& error) {
            failure = IsDamagedFileError(error.number())
                ? DaoError::standardDescription(DaoError::CorruptFile, path)
                : EngineErrorText(error.number(), error.description());
        } catch (const std::exception&) {
            failure = DaoError::standardDescription(DaoError::CorruptFile, path);
        }
    }
    if (!failure.isEmpty()) {
        ShowCardMessage(failure, Frame::MessageIcon::Exclamation);
        return nullptr;
    }
    return cards;
}

bool ReopenCardFile(CardDatabase& cards, const QString& path, bool exclusive)
{
    try {
        cards.OpenCardDatabase(path, exclusive);
        return true;
    } catch (const DaoError& error) {
        ShowCardMessage(
            EngineErrorText(error.number(), error.description()), Frame::MessageIcon::None);
    }
    // Back as it was: shared.
    try {
        cards.OpenCardDatabase(path, false);
    } catch (const DaoError&) { }
    return false;
}

std::optional<QString> AskNewCardFile(Frame::DocumentHost* host)
{
    Frame::FileDialogRequest request { GetResString(saveAsTitle), GetResString(databaseFilter), 1,
        DialogFolder(host), QString(), false };
    for (;;) {
        const std::optional<Frame::FileChoice> choice = Frame::CurrentPrompts().saveFile(request);
        if (!choice || choice->path.isEmpty())
            return std::nullopt;
        QString path = choice->path;
        if (QFileInfo(path).suffix().isEmpty())
            path += u".qnd"_s;
        if (!QFileInfo::exists(path)) {
            if (host != nullptr)
                host->RememberDialogFolder(path);
            return path;
        }
        ShowCardMessage(TwoLineMessage(overwriteText), Frame::MessageIcon::Exclamation);
        request.folder = QFileInfo(path).absolutePath();
    }
}

bool CreateCardFile(Dao::DBEngine& engine, const QString& path, int view)
{
    const bool existed = QFileInfo::exists(path);
    try {
        CardDatabase(engine).CreateCardDatabase(path, view);
    } catch (const DaoError& error) {
        if (!existed) {
            QFile::remove(path);
            QFile::remove(path + u"-journal"_s);
        }
        // The window would otherwise vanish without a word.
        ShowCardMessage(
            EngineErrorText(error.number(), error.description()), Frame::MessageIcon::None);
        return false;
    }
    return true;
}

std::optional<QString> AskImportFile(Frame::DocumentHost* host)
{
    const Frame::FileDialogRequest request { GetResString(importTitle), GetResString(importFilter),
        1, DialogFolder(host), QString() };
    const std::optional<Frame::FileChoice> choice = Frame::CurrentPrompts().openFile(request);
    if (!choice || choice->path.isEmpty())
        return std::nullopt;
    if (host != nullptr)
        host->RememberDialogFolder(choice->path);
    return choice->path;
}

CardImportOutcome ImportCardFile(CardDatabase& cards, const QString& path)
{
    CardImportOutcome outcome;
    const Frame::Hourglass hourglass;
    try {
        outcome.Result = ImportCardRows(cards, path, ImportRefusals::LeaveOut);
    } catch (const DaoError& error) {
        outcome.Failure = EngineErrorText(error.number(), error.description());
    }
    return outcome;
}

bool TellCardImport(const CardImportOutcome& outcome)
{
    if (!outcome.Failure.isEmpty()) {
        ShowCardMessage(outcome.Failure, Frame::MessageIcon::Exclamation);
        return false;
    }
    const CardImportResult& result = outcome.Result;
    if (result.DuplicateNames == 1)
        ShowCardMessage(GetResString(oneDuplicateRowText), Frame::MessageIcon::Information);
    else if (result.DuplicateNames > 1)
        ShowCardMessage(QString::number(result.DuplicateNames) + GetResString(duplicateRowsText),
            Frame::MessageIcon::Information);
    if (result.OtherRefused > 0)
        ShowCardMessage(result.FirstRefusal, Frame::MessageIcon::Exclamation);
    return true;
}

} // namespace Bramlet
