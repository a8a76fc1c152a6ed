#include "cards/CardsCommand.h"

#include "CardTestSupport.h"

#include <QCryptographicHash>
#include <QFile>

using namespace Qt::Literals::StringLiterals;

namespace {

struct Result
{
    int status = 0;
    QString out;
    QString err;
};

class CardsCommandTest : public CardTest::CardTestBase
{
protected:
    Result run(const QStringList& arguments)
    {
        Result result;
        QTextStream out(&result.out);
        QTextStream err(&result.err);
        result.status = Bramlet::RunCardsCommand(QStringList { u"cards"_s } + arguments, out, err);
        return result;
    }

    QString write(const QString& name, const QByteArray& text)
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return file.fileName();
    }

    QByteArray read(const QString& file)
    {
        QFile in(file);
        return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
    }
};

TEST_F(CardsCommandTest, TeachersRoundTrip)
{
    const QString file = path(u"class.qnd"_s);
    ASSERT_EQ(run({ u"new"_s, file }).status, 0);
    const QString csv
        = write(u"pets.csv"_s, "Name,Field Label\r\nTiddles,cat\r\nRex,dog\r\nBobcat,wild cat\r\n");
    const Result imported = run({ u"import"_s, file, csv });
    EXPECT_EQ(imported.status, 0) << imported.err.toStdString();
    EXPECT_EQ(imported.out, u"3 cards imported\n"_s);

    const Result found = run({ u"find"_s, file, u"Field1 LIKE '*cat*'"_s });
    EXPECT_EQ(found.out, u"Bobcat\nTiddles\n"_s);

    const QString out = path(u"out.csv"_s);
    EXPECT_EQ(run({ u"export"_s, file, out, u"--where"_s, u"Field1 <> 'dog'"_s }).status, 0);
    EXPECT_EQ(read(out),
        QByteArray("\"Card Name\",\"Keywords\"\r\n"
                   "\"Bobcat\",\"\",\"\",\"\",\"\",\"\",\"\"\r\n"
                   "\"Tiddles\",\"\",\"\",\"\",\"\",\"\",\"\""));

    const Result info = run({ u"info"_s, file });
    EXPECT_TRUE(info.out.startsWith(u"Version\t350\nCards\t3\nCardName\t\t0\nFreeText\t\t1\n"_s))
        << info.out.toStdString();
    EXPECT_TRUE(info.out.contains(u"\nField1\tField Label\t3\n"_s));

    EXPECT_EQ(run({ u"compact"_s, file }).status, 0);
    EXPECT_EQ(run({ u"find"_s, file, u"CardName < 'S'"_s }).out, u"Bobcat\nRex\n"_s);
}

TEST_F(CardsCommandTest, LabelsNameTheStartingFieldsSoImportFindsThem)
{
    const QString file = path(u"pets.qnd"_s);
    ASSERT_EQ(run({ u"new"_s, file, u"--labels"_s, u"Animal, ,Legs"_s }).status, 0);
    const Result info = run({ u"info"_s, file });
    EXPECT_TRUE(info.out.contains(
        u"\nField1\tAnimal\t3\nField2\tField Label\t3\nField3\tLegs\t3\nField4\tField Label\t3\n"_s))
        << info.out.toStdString();

    const QString csv = write(u"pets.csv"_s, "Name,legs,ANIMAL\r\nPolly,2,parrot\r\nRex,4,dog\r\n");
    ASSERT_EQ(run({ u"import"_s, file, csv }).status, 0);
    EXPECT_EQ(run({ u"find"_s, file, u"Field3 = '2' AND Field1 = 'Parrot'"_s }).out, u"Polly\n"_s);
}

TEST_F(CardsCommandTest, LabelsAreRefusedWhenTooManyOrOnAnotherVerb)
{
    const QString file = path(u"pets.qnd"_s);
    EXPECT_EQ(run({ u"new"_s, file, u"--labels"_s, u"a,b,c,d,e,f,g"_s }).status, 64);
    EXPECT_FALSE(QFile::exists(file));
    ASSERT_EQ(run({ u"new"_s, file }).status, 0);
    EXPECT_EQ(run({ u"info"_s, file, u"--labels"_s, u"a"_s }).status, 64);
}

TEST_F(CardsCommandTest, ExportViewFollowsTheFileUnlessGiven)
{
    const QString file = path(u"class.qnd"_s);
    run({ u"new"_s, file, u"--view"_s, u"2"_s });
    const QString out = path(u"out.csv"_s);
    run({ u"export"_s, file, out });
    EXPECT_EQ(read(out), QByteArray("\"Card Name\",\"Key Pictures\""));
    QFile::remove(out);
    run({ u"export"_s, file, out, u"--view"_s, u"4"_s });
    EXPECT_TRUE(read(out).startsWith("\"Card Name\",\"Field Label\","));
}

// Failures: one line with the engine's number, status 1, and the file as it was.
struct FailureRow
{
    const char* name;
    QStringList arguments; // FILE stands for the class file
    QString message;
};

class CardsCommandFailureTest : public CardsCommandTest,
                                public testing::WithParamInterface<FailureRow>
{
};

TEST_P(CardsCommandFailureTest, ReportsTheEngineNumberAndKeepsTheFile)
{
    const QString file = path(u"class.qnd"_s);
    ASSERT_EQ(run({ u"new"_s, file }).status, 0);
    ASSERT_EQ(run({ u"import"_s, file, write(u"one.csv"_s, "Name\r\nRex\r\n") }).status, 0);
    write(u"text.qnd"_s, "Name,Kind\r\nRex,Dog\r\n");
    write(u"dup.csv"_s, "Name\r\nTiddles\r\nrex\r\n");
    const QByteArray before = read(file);
    QStringList arguments;
    for (const QString& word : GetParam().arguments) {
        arguments.append(word == u"FILE"_s                             ? file
                : word.endsWith(u".qnd"_s) || word.endsWith(u".csv"_s) ? path(word)
                                                                       : word);
    }
    const Result result = run(arguments);
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.err.startsWith(GetParam().message)) << result.err.toStdString();
    EXPECT_EQ(result.err.count(u'\n'), 1);
    EXPECT_EQ(read(file), before);
}

INSTANTIATE_TEST_SUITE_P(Failures, CardsCommandFailureTest,
    testing::Values(
        FailureRow { "textFileAsDatabase", { u"info"_s, u"text.qnd"_s }, u"Error 3343: "_s },
        FailureRow { "missingFile", { u"find"_s, u"none.qnd"_s, u"True"_s }, u"Error 3024: "_s },
        FailureRow { "badCondition", { u"find"_s, u"FILE"_s, u"CardName = 'o'brien'"_s },
            u"Error 3075: "_s },
        FailureRow {
            "unknownField", { u"find"_s, u"FILE"_s, u"Colour = 'red'"_s }, u"Error 3061: "_s },
        FailureRow { "duplicateName", { u"import"_s, u"FILE"_s, u"dup.csv"_s },
            u"Error 3022: Line 3 of "_s },
        FailureRow { "newOverExisting", { u"new"_s, u"FILE"_s }, u"Error 3204: "_s }),
    [](const testing::TestParamInfo<FailureRow>& info) { return std::string(info.param.name); });

TEST_F(CardsCommandTest, ExportWritesTheChosenFieldsOnly)
{
    const QString file = path(u"class.qnd"_s);
    ASSERT_EQ(
        run({ u"new"_s, file, u"--view"_s, u"4"_s, u"--labels"_s, u"Name2,Pet,Colour"_s }).status,
        0);
    const QString csv = write(u"pets.csv"_s, "Name,Pet,Colour\r\nRex,dog,brown\r\n");
    ASSERT_EQ(run({ u"import"_s, file, csv }).status, 0);
    const QString out = path(u"out.csv"_s);
    // Named in any order and case, written in the list's order.
    EXPECT_EQ(run({ u"export"_s, file, out, u"--fields"_s, u"colour,Pet"_s }).status, 0);
    EXPECT_EQ(
        read(out), QByteArray("\"Card Name\",\"Pet\",\"Colour\"\r\n\"Rex\",\"dog\",\"brown\""));
    EXPECT_EQ(run({ u"export"_s, file, out, u"--fields"_s, QString() }).status, 0);
    EXPECT_EQ(read(out), QByteArray("\"Card Name\"\r\n\"Rex\""));

    const Result unknown = run({ u"export"_s, file, out, u"--fields"_s, u"Legs"_s });
    EXPECT_EQ(unknown.status, Bramlet::CardsUsageError);
    EXPECT_EQ(unknown.err, u"quorbin-cli cards export: no item \"Legs\" to export\n"_s);
    EXPECT_EQ(read(out), QByteArray("\"Card Name\"\r\n\"Rex\"")); // left as it was
}

TEST_F(CardsCommandTest, WrongWordsShowTheUsage)
{
    for (const QStringList& arguments :
        { QStringList { u"new"_s }, QStringList { u"frobnicate"_s, u"x.qnd"_s },
            QStringList { u"new"_s, u"x.qnd"_s, u"--view"_s, u"5"_s },
            QStringList { u"export"_s, u"x.qnd"_s, u"out.csv"_s, u"--where"_s } }) {
        const Result result = run(arguments);
        EXPECT_EQ(result.status, Bramlet::CardsUsageError);
        EXPECT_TRUE(result.err.startsWith(u"usage: quorbin-cli cards new"_s));
    }
    EXPECT_FALSE(QFile::exists(path(u"x.qnd"_s)));
}

TEST_F(CardsCommandTest, CompactWithoutATemporaryFolderSaysSo)
{
    const QString file = path(u"class.qnd"_s);
    run({ u"new"_s, file });
    const QByteArray before = read(file);
    const QByteArray previous = qgetenv("TEMP");
    const bool wasSet = qEnvironmentVariableIsSet("TEMP");
    qputenv("TEMP", "");
    const Result result = run({ u"compact"_s, file });
    if (wasSet)
        qputenv("TEMP", previous);
    else
        qunsetenv("TEMP");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(
        result.err, u"You cannot compact a database because there is no temporary path set.\n"_s);
    EXPECT_EQ(read(file), before);
}

} // namespace
