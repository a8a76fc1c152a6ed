#include "RowFile.h"
#include "VerbTestSupport.h"

#include <QFile>

using namespace Qt::Literals::StringLiterals;
using CliTest::RunCli;

namespace {

class CardVerbs : public CliTest::VerbTest
{
protected:
    CliTest::Outcome cards(const QStringList& arguments)
    {
        return RunCli(QStringList { u"cards"_s } + inFolder(arguments));
    }
};

TEST_F(CardVerbs, TeachersRoundTrip)
{
    ASSERT_EQ(cards({ u"new"_s, u"@/class.qnd"_s }).status, 0);
    write(u"pets.csv"_s, "Name,Field Label\r\nTiddles,cat\r\nRex,dog\r\nBobcat,wild cat\r\n");
    const CliTest::Outcome imported = cards({ u"import"_s, u"@/class.qnd"_s, u"@/pets.csv"_s });
    EXPECT_EQ(imported.status, 0) << imported.err.toStdString();
    EXPECT_EQ(imported.out, u"3 cards imported\n"_s);

    EXPECT_EQ(cards({ u"find"_s, u"@/class.qnd"_s, u"Field1 LIKE '*cat*'"_s }).out,
        u"Bobcat\nTiddles\n"_s);

    EXPECT_EQ(
        cards({ u"export"_s, u"@/class.qnd"_s, u"@/out.csv"_s, u"--where"_s, u"Field1 <> 'dog'"_s })
            .status,
        0);
    EXPECT_EQ(read(path(u"out.csv"_s)),
        QByteArray("\"Card Name\",\"Keywords\"\r\n"
                   "\"Bobcat\",\"\",\"\",\"\",\"\",\"\",\"\"\r\n"
                   "\"Tiddles\",\"\",\"\",\"\",\"\",\"\",\"\""));

    const CliTest::Outcome info = cards({ u"info"_s, u"@/class.qnd"_s });
    EXPECT_TRUE(info.out.startsWith(u"Version\t350\nCards\t3\nCardName\t\t0\nFreeText\t\t1\n"_s))
        << info.out.toStdString();
    EXPECT_TRUE(info.out.contains(u"\nField1\tField Label\t3\n"_s));

    EXPECT_EQ(cards({ u"compact"_s, u"@/class.qnd"_s }).status, 0);
    EXPECT_EQ(cards({ u"find"_s, u"@/class.qnd"_s, u"CardName < 'S'"_s }).out, u"Bobcat\nRex\n"_s);
}

TEST_F(CardVerbs, LabelsNameTheStartingFieldsSoImportFindsThem)
{
    ASSERT_EQ(cards({ u"new"_s, u"@/pets.qnd"_s, u"--labels"_s, u"Animal, ,Legs"_s }).status, 0);
    EXPECT_TRUE(cards({ u"info"_s, u"@/pets.qnd"_s })
                    .out.contains(u"\nField1\tAnimal\t3\nField2\tField Label\t3\n"
                                  u"Field3\tLegs\t3\nField4\tField Label\t3\n"_s));
    write(u"pets.csv"_s, "Name,legs,ANIMAL\r\nPolly,2,parrot\r\nRex,4,dog\r\n");
    ASSERT_EQ(cards({ u"import"_s, u"@/pets.qnd"_s, u"@/pets.csv"_s }).status, 0);
    EXPECT_EQ(cards({ u"find"_s, u"@/pets.qnd"_s, u"Field3 = '2' AND Field1 = 'Parrot'"_s }).out,
        u"Polly\n"_s);
}

class CardExports : public RowFile::RowTest<CardVerbs>
{
};

TEST_P(CardExports, WriteTheChosenItems)
{
    ASSERT_EQ(cards({ u"new"_s, u"@/class.qnd"_s, u"--view"_s, u"2"_s, u"--labels"_s,
                        u"Name2,Pet,Colour"_s })
                  .status,
        0);
    write(u"pets.csv"_s, "Name,Pet,Colour\r\nRex,dog,brown\r\n");
    ASSERT_EQ(cards({ u"import"_s, u"@/class.qnd"_s, u"@/pets.csv"_s }).status, 0);
    const CliTest::Outcome outcome
        = cards(QStringList { u"export"_s, u"@/class.qnd"_s, u"@/out.csv"_s }
            + row().list("options", u" | "_s));
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_EQ(read(path(u"out.csv"_s)), row().bytes("written"));
}

INSTANTIATE_TEST_SUITE_P(Rows, CardExports, RowFile::In("app/cardExports.rows"), RowFile::Named());

TEST_F(CardVerbs, CompactWithoutATemporaryFolderSaysSo)
{
    ASSERT_EQ(cards({ u"new"_s, u"@/class.qnd"_s }).status, 0);
    const QByteArray before = read(path(u"class.qnd"_s));
    const QByteArray previous = qgetenv("TEMP");
    const bool wasSet = qEnvironmentVariableIsSet("TEMP");
    qputenv("TEMP", "");
    const CliTest::Outcome outcome = cards({ u"compact"_s, u"@/class.qnd"_s });
    if (wasSet)
        qputenv("TEMP", previous);
    else
        qunsetenv("TEMP");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(
        outcome.err, u"You cannot compact a database because there is no temporary path set.\n"_s);
    EXPECT_EQ(read(path(u"class.qnd"_s)), before);
}

// A card added as if typed into the window and saved, then shown as the Sprondle view shows
// it. Its refusals (the window's messages, on one line) are rows of refusals.rows.
TEST_F(CardVerbs, AddTypesIntoTheFieldsAndShowPrintsTheCard)
{
    ASSERT_EQ(cards({ u"new"_s, u"@/pets.qnd"_s, u"--labels"_s, u"Animal,Legs"_s }).status, 0);
    const CliTest::Outcome added
        = cards({ u"add"_s, u"@/pets.qnd"_s, u" Rex "_s, u"animal=Dog"_s, u"LEGS=007"_s });
    EXPECT_EQ(added.status, 0) << added.err.toStdString();
    EXPECT_EQ(added.err, QString());
    const CliTest::Outcome shown = cards({ u"show"_s, u"@/pets.qnd"_s, u"rex"_s });
    EXPECT_EQ(shown.out,
        u"Name\tRex\nAnimal\tDog\nLegs\t007\nField Label\t\nField Label\t\n"
        u"Field Label\t\nField Label\t\n"_s);
}

} // namespace
