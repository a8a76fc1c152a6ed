#include "VerbTestSupport.h"

#include "app/cli/CommandLine.h"
#include "frame/FrameSettings.h"

#include <QDirIterator>
#include <QFile>
#include <QTextStream>

using namespace Qt::Literals::StringLiterals;

namespace CliTest {

Outcome RunCli(const QStringList& arguments)
{
    Outcome outcome;
    QTextStream out(&outcome.out);
    QTextStream err(&outcome.err);
    outcome.status = Cli::RunCommandLine(arguments, out, err);
    out.flush();
    err.flush();
    return outcome;
}

void VerbTest::SetUp()
{
    ASSERT_TRUE(m_folder.isValid());
    Frame::Settings().ColourTable = { { u"RED"_s, 255 }, { u"LIGHT BLUE"_s, 16760960 } };
}

void VerbTest::TearDown()
{
    Frame::Settings() = {};
}

QString VerbTest::write(const QString& name, const QByteArray& bytes) const
{
    QFile file(path(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << name.toStdString();
    file.write(bytes);
    return file.fileName();
}

QByteArray VerbTest::read(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

QStringList VerbTest::inFolder(const QStringList& arguments) const
{
    QStringList result;
    for (const QString& argument : arguments)
        result << QString(argument).replace(u'@', m_folder.path());
    return result;
}

QMap<QString, QByteArray> VerbTest::snapshot() const
{
    QMap<QString, QByteArray> files;
    QDirIterator entries(m_folder.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QString file = entries.next();
        files.insert(file, read(file));
    }
    return files;
}

} // namespace CliTest
