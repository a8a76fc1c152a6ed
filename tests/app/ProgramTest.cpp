// The programs themselves, as a shell runs them: standard streams, "-", the environment of
// cron and CI (no XDG_RUNTIME_DIR), and which verbs start without the GUI libraries.
#include "RowFile.h"
#include "VerbTestSupport.h"

#include <QProcess>

using namespace Qt::Literals::StringLiterals;

namespace {

class Program : public CliTest::VerbTest
{
protected:
    void SetUp() override
    {
        VerbTest::SetUp();
        write(u"fruit.csv"_s, "Fruit,Pupils\nApples,12\nPears,7\n");
        ASSERT_EQ(CliTest::RunCli(
                      { u"graph"_s, u"convert"_s, path(u"fruit.csv"_s), path(u"fruit.qnp"_s) })
                      .status,
            0);
        ASSERT_EQ(CliTest::RunCli({ u"cards"_s, u"new"_s, path(u"class.qnd"_s) }).status, 0);
    }

    // Runs quorbin-cli with its standard output going to `outputFile` when given.
    CliTest::Outcome start(const QStringList& arguments, const QByteArray& input = {},
        const QString& platform = u"offscreen"_s, const QString& outputFile = {})
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove(u"XDG_RUNTIME_DIR"_s);
        environment.insert(u"QT_QPA_PLATFORM"_s, platform);
        process.setProcessEnvironment(environment);
        if (!outputFile.isEmpty())
            process.setStandardOutputFile(outputFile, QIODevice::Append);
        process.start(QStringLiteral(QUORBIN_CLI), inFolder(arguments));
        EXPECT_TRUE(process.waitForStarted());
        process.write(
            input.startsWith('@') ? read(path(QString::fromLatin1(input.sliced(1)))) : input);
        process.closeWriteChannel();
        EXPECT_TRUE(process.waitForFinished(60000));
        m_output = process.readAllStandardOutput();
        return { process.exitCode(), QString(), QString::fromUtf8(process.readAllStandardError()) };
    }

    QByteArray m_output;
};

class Streams : public RowFile::RowTest<Program>
{
};

TEST_P(Streams, AreUsedAsAShellExpects)
{
    const CliTest::Outcome outcome
        = start(row().list("arguments", u" | "_s), row().bytes("input"), row().text("platform"));
    EXPECT_EQ(outcome.status, row().whole("status"));
    const QString errStart = row().text("err");
    if (errStart.isEmpty())
        EXPECT_EQ(outcome.err, QString());
    else
        EXPECT_TRUE(outcome.err.startsWith(errStart)) << outcome.err.toStdString();
    if (row().flag("whole"))
        EXPECT_EQ(m_output, row().bytes("output"));
    else
        EXPECT_TRUE(m_output.startsWith(row().bytes("output"))) << m_output.first(40).toStdString();
}

INSTANTIATE_TEST_SUITE_P(Rows, Streams, RowFile::In("app/program.rows"), RowFile::Named());

// A shell's redirection stays its own: what the program writes to /dev/stdout follows what
// was in the file before, in the same file.
TEST_F(Program, DevStdoutWritesAtTheRedirectionsPlace)
{
    const QString file = write(u"log.txt"_s, "head\n");
    const CliTest::Outcome outcome = start(
        { u"cards"_s, u"export"_s, u"@/class.qnd"_s, u"/dev/stdout"_s }, {}, u"offscreen"_s, file);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, QString());
    EXPECT_EQ(read(file), "head\n\"Card Name\",\"Keywords\"");
}

} // namespace
