#pragma once

#include "platform/runtime/HostLocale.h"

#include <QByteArray>
#include <QLocale>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <ostream>

// Shows QString values as text in failure messages instead of bytes.
inline void PrintTo(const QString& text, std::ostream* stream)
{
    *stream << '"' << text.toStdString() << '"';
}

// Shows bytes as text, with the control characters escaped.
inline void PrintTo(const QByteArray& bytes, std::ostream* stream)
{
    for (const char byte : bytes) {
        if (byte == '\r')
            *stream << "\\r";
        else if (byte == '\n')
            *stream << "\\n";
        else
            *stream << byte;
    }
}

namespace CliTest {

// What one command line printed and returned.
struct Outcome
{
    int status = -1;
    QString out;
    QString err;
};

// Runs a whole command line (without the program name) through quorbin-cli's dispatcher.
Outcome RunCli(const QStringList& arguments);

// A folder of its own, the program's locale (English, United Kingdom) and its colour table.
class VerbTest : public testing::Test
{
protected:
    void SetUp() override;
    void TearDown() override;

    QString path(const QString& name) const { return m_folder.filePath(name); }
    // Writes the file into the folder and returns its path.
    QString write(const QString& name, const QByteArray& bytes) const;
    // The file's bytes; "<missing>" when it cannot be read.
    static QByteArray read(const QString& path);
    // The arguments with "@" standing for the folder.
    QStringList inFolder(const QStringList& arguments) const;
    // Every file of the folder (and below) with its bytes, to prove a command changed nothing.
    QMap<QString, QByteArray> snapshot() const;

    QTemporaryDir m_folder;
    Runtime::ScopedHostLocale m_locale { QLocale(QLocale::English, QLocale::UnitedKingdom) };
};

} // namespace CliTest
