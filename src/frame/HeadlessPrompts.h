#pragma once

#include "frame/Prompts.h"

#include <QTextStream>

namespace Frame {

// The prompts of a run without a user (quorbin-cli, batch work): messages are written as one
// line each to the error stream, and every question is answered as if the user had
// cancelled: Cancel where the box has it, else No, else OK; no input, file, colour or font.
class HeadlessPrompts : public Prompts
{
public:
    // Writes to stderr.
    HeadlessPrompts();
    // Writes to `stream`, which must outlive this object.
    explicit HeadlessPrompts(QTextStream& stream);

    MessageAnswer message(const QString& text, const QString& title, MessageIcon icon,
        MessageButtons buttons) override;
    std::optional<QString> input(
        const QString& prompt, const QString& title, const QString& defaultText) override;
    std::optional<FileChoice> openFile(const FileDialogRequest& request) override;
    std::optional<FileChoice> saveFile(const FileDialogRequest& request) override;
    std::optional<std::int32_t> colour(std::int32_t initial) override;
    std::optional<QFont> font(const QFont& initial) override;

private:
    QTextStream m_standardError;
    QTextStream& m_stream;
};

} // namespace Frame
