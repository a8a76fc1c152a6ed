#include "frame/ui/QtPrompts.h"

#include "frame/Colours.h"
#include "frame/FileFilters.h"

#include <QApplication>
#include <QColorDialog>
#include <QFileDialog>
#include <QFontDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QRegularExpression>
#include <algorithm>

namespace Frame {

namespace {

QString TitleOrProgramName(const QString& title)
{
    return title.isEmpty() ? QGuiApplication::applicationDisplayName() : title;
}

QMessageBox::Icon BoxIcon(MessageIcon icon)
{
    switch (icon) {
    case MessageIcon::None:
        break;
    case MessageIcon::Information:
        return QMessageBox::Information;
    case MessageIcon::Exclamation:
        return QMessageBox::Warning;
    case MessageIcon::Question:
        return QMessageBox::Question;
    case MessageIcon::Critical:
        return QMessageBox::Critical;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons BoxButtons(MessageButtons buttons)
{
    switch (buttons) {
    case MessageButtons::Ok:
        break;
    case MessageButtons::OkCancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    case MessageButtons::YesNo:
    case MessageButtons::YesNoDefaultNo:
        return QMessageBox::Yes | QMessageBox::No;
    case MessageButtons::YesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case MessageButtons::RetryCancel:
        return QMessageBox::Retry | QMessageBox::Cancel;
    }
    return QMessageBox::Ok;
}

// A box closed without a button (its window closed) counts as the most cautious answer.
MessageAnswer Answer(int pressed, MessageButtons buttons)
{
    switch (pressed) {
    case QMessageBox::Ok:
        return MessageAnswer::Ok;
    case QMessageBox::Yes:
        return MessageAnswer::Yes;
    case QMessageBox::No:
        return MessageAnswer::No;
    case QMessageBox::Retry:
        return MessageAnswer::Retry;
    case QMessageBox::Cancel:
        return MessageAnswer::Cancel;
    default:
        break;
    }
    if (buttons == MessageButtons::Ok)
        return MessageAnswer::Ok;
    if (buttons == MessageButtons::YesNo || buttons == MessageButtons::YesNoDefaultNo)
        return MessageAnswer::No;
    return MessageAnswer::Cancel;
}

// "Ormsey Files (*.qnp)" -> "qnp": typed names get the extension of the chosen filter, as
// documents are opened by their extension.
QString SuffixOf(const QString& nameFilter)
{
    static const QRegularExpression firstPattern(QStringLiteral(R"(\(\*\.([A-Za-z0-9]+)[ )])"));
    const QRegularExpressionMatch match = firstPattern.match(nameFilter);
    return match.hasMatch() ? match.captured(1) : QString();
}

} // namespace

QtPrompts::QtPrompts(QWidget* parent)
    : m_parent(parent)
{ }

QWidget* QtPrompts::dialogParent() const
{
    return m_parent ? m_parent.data() : QApplication::activeWindow();
}

MessageAnswer QtPrompts::message(
    const QString& text, const QString& title, MessageIcon icon, MessageButtons buttons)
{
    QMessageBox box(
        BoxIcon(icon), TitleOrProgramName(title), text, BoxButtons(buttons), dialogParent());
    if (buttons == MessageButtons::YesNoDefaultNo)
        box.setDefaultButton(QMessageBox::No);
    return Answer(box.exec(), buttons);
}

std::optional<QString> QtPrompts::input(
    const QString& prompt, const QString& title, const QString& defaultText)
{
    QInputDialog dialog(dialogParent());
    dialog.setWindowTitle(TitleOrProgramName(title));
    dialog.setLabelText(prompt);
    dialog.setTextValue(defaultText);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return dialog.textValue();
}

std::optional<FileChoice> QtPrompts::openFile(const FileDialogRequest& request)
{
    return chooseFile(request, false);
}

std::optional<FileChoice> QtPrompts::saveFile(const FileDialogRequest& request)
{
    return chooseFile(request, true);
}

std::optional<FileChoice> QtPrompts::chooseFile(const FileDialogRequest& request, bool saving)
{
    QFileDialog dialog(dialogParent(), request.title, request.folder);
    dialog.setAcceptMode(saving ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(saving ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    const QStringList filters = QtNameFilters(request.filter);
    if (!filters.isEmpty()) {
        dialog.setNameFilters(filters);
        const qsizetype chosen
            = std::clamp<qsizetype>(request.filterIndex - 1, 0, filters.size() - 1);
        dialog.selectNameFilter(filters[chosen]);
        if (saving) {
            dialog.setDefaultSuffix(SuffixOf(filters[chosen]));
            QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog,
                [&dialog](const QString& filter) { dialog.setDefaultSuffix(SuffixOf(filter)); });
        }
    }
    if (saving && !request.confirmOverwrite)
        dialog.setOption(QFileDialog::DontConfirmOverwrite);
    if (!request.fileName.isEmpty())
        dialog.selectFile(request.fileName);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;

    const qsizetype filter = filters.indexOf(dialog.selectedNameFilter());
    return FileChoice { dialog.selectedFiles().constFirst(),
        filter >= 0 ? int(filter) + 1 : request.filterIndex };
}

std::optional<std::int32_t> QtPrompts::colour(std::int32_t initial)
{
    const QColor chosen = QColorDialog::getColor(ColourFromValue(initial), dialogParent());
    if (!chosen.isValid())
        return std::nullopt;
    return ValueFromColour(chosen);
}

std::optional<QFont> QtPrompts::font(const QFont& initial)
{
    bool accepted = false;
    const QFont chosen = QFontDialog::getFont(&accepted, initial, dialogParent());
    if (!accepted)
        return std::nullopt;
    return chosen;
}

} // namespace Frame
