#include "frame/HeadlessPrompts.h"

#include <cstdio>

using namespace Qt::Literals::StringLiterals;

namespace Frame {

HeadlessPrompts::HeadlessPrompts()
    : m_standardError(stderr)
    , m_stream(m_standardError)
{ }

HeadlessPrompts::HeadlessPrompts(QTextStream& stream)
    : m_stream(stream)
{ }

MessageAnswer HeadlessPrompts::message(
    const QString& text, const QString& title, MessageIcon, MessageButtons buttons)
{
    // Line ends inside a message would split it over several lines of a log.
    QString line = text;
    line.replace(u"\r\n"_s, u" "_s).replace(u'\n', u' ').replace(u'\r', u' ');
    if (!title.isEmpty())
        m_stream << title << ": ";
    m_stream << line << Qt::endl;

    switch (buttons) {
    case MessageButtons::Ok:
        return MessageAnswer::Ok;
    case MessageButtons::YesNo:
    case MessageButtons::YesNoDefaultNo:
        return MessageAnswer::No;
    case MessageButtons::OkCancel:
    case MessageButtons::YesNoCancel:
    case MessageButtons::RetryCancel:
        break;
    }
    return MessageAnswer::Cancel;
}

std::optional<QString> HeadlessPrompts::input(const QString&, const QString&, const QString&)
{
    return std::nullopt;
}

std::optional<FileChoice> HeadlessPrompts::openFile(const FileDialogRequest&)
{
    return std::nullopt;
}

std::optional<FileChoice> HeadlessPrompts::saveFile(const FileDialogRequest&)
{
    return std::nullopt;
}

std::optional<std::int32_t> HeadlessPrompts::colour(std::int32_t)
{
    return std::nullopt;
}

std::optional<QFont> HeadlessPrompts::font(const QFont&)
{
    return std::nullopt;
}

} // namespace Frame
