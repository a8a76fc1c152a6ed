#pragma once

#include "frame/Prompts.h"

#include <QPointer>
#include <QWidget>

namespace Frame {

// The real dialogs: QMessageBox, QInputDialog, QFileDialog, QColorDialog and QFontDialog, all
// modal. The application installs one at start-up with the main window as `parent`
// (InstallPrompts); without a parent the dialogs belong to the active window.
class QtPrompts : public Prompts
{
public:
    explicit QtPrompts(QWidget* parent = nullptr);

    MessageAnswer message(const QString& text, const QString& title, MessageIcon icon,
        MessageButtons buttons) override;
    std::optional<QString> input(
        const QString& prompt, const QString& title, const QString& defaultText) override;
    std::optional<FileChoice> openFile(const FileDialogRequest& request) override;
    std::optional<FileChoice> saveFile(const FileDialogRequest& request) override;
    std::optional<std::int32_t> colour(std::int32_t initial) override;
    std::optional<QFont> font(const QFont& initial) override;

private:
    QWidget* dialogParent() const;
    std::optional<FileChoice> chooseFile(const FileDialogRequest& request, bool saving);

    QPointer<QWidget> m_parent;
};

} // namespace Frame
