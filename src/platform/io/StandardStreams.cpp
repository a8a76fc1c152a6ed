#include "platform/io/StandardStreams.h"

#include <QBuffer>
#include <QFile>
#include <cstdio>

using namespace Qt::Literals::StringLiterals;

namespace Io {

bool IsStandardStream(QStringView path)
{
    return path == u"-";
}

std::unique_ptr<QIODevice> OpenForReading(const QString& path, QString& error)
{
    if (IsStandardStream(path)) {
        QFile input;
        if (!input.open(stdin, QIODevice::ReadOnly)) {
            error = input.errorString();
            return nullptr;
        }
        auto buffer = std::make_unique<QBuffer>();
        buffer->setData(input.readAll());
        buffer->open(QIODevice::ReadOnly);
        return buffer;
    }
    auto file = std::make_unique<QFile>(path);
    if (!file->open(QIODevice::ReadOnly)) {
        error = file->errorString();
        return nullptr;
    }
    return file;
}

QString ReadWhole(const QString& path, QByteArray& bytes)
{
    QString reason;
    const std::unique_ptr<QIODevice> device = OpenForReading(path, reason);
    if (!device)
        return u"Cannot read %1: %2"_s.arg(path, reason);
    bytes = device->readAll();
    return {};
}

} // namespace Io
