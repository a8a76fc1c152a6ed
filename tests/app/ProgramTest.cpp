// The programs themselves, as a shell runs them: standard streams, "-", the environment of
// cron and CI (no XDG_RUNTIME_DIR), and which verbs start without the GUI libraries.
#include "VerbTestSupport.h"

#include <QProcess>

using namespace Qt::Literals::StringLiterals;

namespace {

struct ProgramRow
{
    const char* name;
    QStringList arguments; // "@" stands for the folder
    QByteArray input = {}; // standard input; "@name" sends that file of the folder
    QByteArray output = {}; // what standard output holds, or begins with when `whole` is false
    bool whole = true;
    int status = 0;
    QString errStart = {}; // empty: nothing on standard error
    QString platform = u"offscreen"_s; // QT_QPA_PLATFORM
};

class Program : public CliTest::VerbTest, public testing::WithParamInterface<ProgramRow>
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
    CliTest::Outcome start(const ProgramRow& row, const QString& outputFile = {})
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove(u"XDG_RUNTIME_DIR"_s);
        environment.insert(u"QT_QPA_PLATFORM"_s, row.platform);
        process.setProcessEnvironment(environment);
        if (!outputFile.isEmpty())
            process.setStandardOutputFile(outputFile, QIODevice::Append);
        process.start(QStringLiteral(QUORBIN_CLI), inFolder(row.arguments));
        EXPECT_TRUE(process.waitForStarted());
        process.write(row.input.startsWith('@')
                ? read(path(QString::fromLatin1(row.input.sliced(1))))
                : row.input);
        process.closeWriteChannel();
        EXPECT_TRUE(process.waitForFinished(60000));
        m_output = process.readAllStandardOutput();
        return { process.exitCode(), QString(), QString::fromUtf8(process.readAllStandardError()) };
    }

    QByteArray m_output;
};

TEST_P(Program, UsesItsStandardStreams)
{
    const ProgramRow& row = GetParam();
    const CliTest::Outcome outcome = start(row);
    EXPECT_EQ(outcome.status, row.status);
    if (row.errStart.isEmpty())
        EXPECT_EQ(outcome.err, QString());
    else
        EXPECT_TRUE(outcome.err.startsWith(row.errStart)) << outcome.err.toStdString();
    if (row.whole)
        EXPECT_EQ(m_output, row.output);
    else
        EXPECT_TRUE(m_output.startsWith(row.output)) << m_output.first(40).toStdString();
}

const QByteArray emptyExport = "\"Card Name\",\"Keywords\"";

INSTANTIATE_TEST_SUITE_P(Rows, Program,
    testing::Values(
        // No platform plugin of that name exists: a GUI application could not start.
        ProgramRow { "conversionStartsWithoutTheGui", { u"val"_s, u"12kg"_s }, {}, "12\n", true, 0,
            {}, u"no-such-platform"_s },
        ProgramRow { "cardsStartWithoutTheGui",
            { u"cards"_s, u"export"_s, u"@/class.qnd"_s, u"-"_s }, {}, emptyExport, true, 0, {},
            u"no-such-platform"_s },
        ProgramRow { "cardsImportStandardInput",
            { u"cards"_s, u"import"_s, u"@/class.qnd"_s, u"-"_s }, "Name\r\nRex\r\n",
            "1 cards imported\n" },
        ProgramRow { "graphTextInPngOut", { u"graph"_s, u"convert"_s, u"-"_s, u"-"_s },
            "@fruit.csv", "\x89PNG\r\n", false },
        ProgramRow { "graphFormatNamesTheKind",
            { u"graph"_s, u"convert"_s, u"@/fruit.csv"_s, u"-"_s, u"--format"_s, u"svg"_s }, {},
            "<?xml", false },
        ProgramRow { "graphFileThroughAPipe",
            { u"graph"_s, u"convert"_s, u"-"_s, u"-"_s, u"--format"_s, u"qnp"_s }, "@fruit.qnp",
            "[Ormsey Data File]\r\n", false },
        ProgramRow { "graphOfNothing", { u"graph"_s, u"convert"_s, u"-"_s, u"-"_s }, {}, {}, true,
            1, u"standard input holds no rows.\n"_s },
        ProgramRow { "sheetTextInTextOut", { u"sheet"_s, u"convert"_s, u"-"_s, u"-"_s },
            "1,=A1+1\n", "1,2\r\n" },
        ProgramRow { "evalIsAnsweredToo", { u"eval"_s, u"2+3*4"_s }, {}, "14\n" }),
    [](const testing::TestParamInfo<ProgramRow>& info) { return std::string(info.param.name); });

// A shell's redirection stays its own: what the program writes to /dev/stdout follows what
// was in the file before, in the same file.
TEST_F(Program, DevStdoutWritesAtTheRedirectionsPlace)
{
    const QString file = write(u"log.txt"_s, "head\n");
    const CliTest::Outcome outcome = start(
        { "export", { u"cards"_s, u"export"_s, u"@/class.qnd"_s, u"/dev/stdout"_s } }, file);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, QString());
    EXPECT_EQ(read(file), "head\n" + emptyExport);
}

} // namespace
