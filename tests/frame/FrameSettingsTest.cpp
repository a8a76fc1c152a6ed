#include "frame/FrameSettings.h"

#include "TableRows.h"
#include "platform/runtime/HostLocale.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace {

// Sets or unsets TEMP for one test and puts the caller's value back.
class ScopedTemp
{
public:
    explicit ScopedTemp(const std::optional<QByteArray>& value)
        : m_wasSet(qEnvironmentVariableIsSet("TEMP"))
        , m_previous(qgetenv("TEMP"))
    {
        if (value)
            qputenv("TEMP", *value);
        else
            qunsetenv("TEMP");
    }
    ~ScopedTemp()
    {
        if (m_wasSet)
            qputenv("TEMP", m_previous);
        else
            qunsetenv("TEMP");
    }

private:
    bool m_wasSet;
    QByteArray m_previous;
};

class InitialiseFrameTest : public testing::Test
{
protected:
    void TearDown() override { Frame::Settings() = {}; }
    QTemporaryDir m_programFolder;
};

TEST_F(InitialiseFrameTest, ReadsColoursBesideTheProgramOrHoldsOneNamelessEntry)
{
    Frame::InitialiseFrame(m_programFolder.path());
    ASSERT_EQ(Frame::Settings().ColourTable.size(), 1);
    EXPECT_EQ(Frame::ColourValueByName(u"RED"), -1);
    QFile file(m_programFolder.filePath(u"Colours.ini"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[Quorbin Colours]\r\nNumber=1\r\nColourName1=RED\r\nColourValue1=&HFF\r\n");
    file.close();
    Frame::InitialiseFrame(m_programFolder.path());
    EXPECT_EQ(Frame::ColourValueByName(u"red"), 255);
}

TEST_F(InitialiseFrameTest, StartsWithOneFreeDocumentSlot)
{
    Frame::Settings().DocumentTable.claimSlot(5);
    Frame::Settings().DocumentTable.claimSlot(1);
    Frame::InitialiseFrame(m_programFolder.path());
    const Frame::DocumentTable& table = Frame::Settings().DocumentTable;
    ASSERT_EQ(table.size(), 1);
    EXPECT_TRUE(table.slot(0).Free);
    EXPECT_FALSE(table.slot(0).Changed);
}

TEST_F(InitialiseFrameTest, TakesTheHostCurrencySymbol)
{
    {
        Runtime::ScopedHostLocale british(QLocale(QLocale::English, QLocale::UnitedKingdom));
        Frame::InitialiseFrame(m_programFolder.path());
        EXPECT_EQ(Frame::Settings().CurrencySymbol, u"£"_s);
    }
    Runtime::ScopedHostLocale german(QLocale(QLocale::German, QLocale::Germany));
    Frame::InitialiseFrame(m_programFolder.path());
    EXPECT_EQ(Frame::Settings().CurrencySymbol, u"€"_s);
}

struct TempRow
{
    const char* name;
    std::optional<QByteArray> temp; // nullopt: TEMP not set
    QString folder; // "<system>": QDir::tempPath()
    QString pictureFile;
};

class TempFolder : public testing::TestWithParam<TempRow>
{
protected:
    void TearDown() override { Frame::Settings() = {}; }
};

TEST_P(TempFolder, FollowsTheTempVariable)
{
    const TempRow& row = GetParam();
    ScopedTemp temp(row.temp);
    QTemporaryDir programFolder;
    Frame::InitialiseFrame(programFolder.path());
    const QString system = QDir::tempPath();
    QString folder = row.folder;
    QString pictureFile = row.pictureFile;
    folder.replace(u"<system>"_s, system);
    pictureFile.replace(u"<system>"_s, system);
    EXPECT_EQ(Frame::Settings().TempFolder, folder);
    EXPECT_EQ(Frame::Settings().PictureTempFile, pictureFile);
    EXPECT_EQ(Frame::TempFilePath(u"Quorbin.tmp"),
        folder.isEmpty() ? QString() : QDir(folder).filePath(u"Quorbin.tmp"_s));
}

INSTANTIATE_TEST_SUITE_P(Rows, TempFolder,
    testing::Values(
        TempRow { "set", "/tmp/class", u"/tmp/class"_s, u"/tmp/class/QBNPicture.tmp"_s },
        TempRow {
            "trailing_separator", "/tmp/class/", u"/tmp/class/"_s, u"/tmp/class/QBNPicture.tmp"_s },
        TempRow { "set_but_empty_means_none", "", QString(), QString() },
        TempRow { "unset_takes_the_system_folder", std::nullopt, u"<system>"_s,
            u"<system>/QBNPicture.tmp"_s }),
    TestRows::Named());

// ---- The document table --------------------------------------------------------------------

TEST(DocumentTable, ReusesTheFirstFreedSlotAndNeverShrinks)
{
    Frame::DocumentTable table;
    EXPECT_EQ(table.claimSlot(3), 0);
    EXPECT_EQ(table.claimSlot(5), 1);
    EXPECT_EQ(table.claimSlot(1), 2);
    EXPECT_EQ(table.slot(1).DocType, 5);
    table.release(0);
    table.release(2);
    EXPECT_EQ(table.size(), 3);
    EXPECT_EQ(table.claimSlot(1), 0);
    EXPECT_EQ(table.claimSlot(3), 2);
    EXPECT_EQ(table.claimSlot(3), 3);
    EXPECT_EQ(table.size(), 4);
}

TEST(DocumentTable, ReleasedSlotForgetsItsWindowAndLateEdits)
{
    Frame::DocumentTable table;
    QObject window;
    const int index = table.claimSlot(5);
    table.setForm(index, &window);
    table.setChanged(index, true);
    table.release(index);
    table.setChanged(index, true); // a late edit event of the closed window
    EXPECT_TRUE(table.slot(index).Free);
    EXPECT_EQ(table.slot(index).Form, nullptr);
    EXPECT_FALSE(table.slot(table.claimSlot(1)).Changed);
}

TEST(DocumentTable, DestroyedWindowLeavesNoDanglingForm)
{
    Frame::DocumentTable table;
    const int index = table.claimSlot(1);
    {
        QObject window;
        table.setForm(index, &window);
    }
    EXPECT_EQ(table.slot(index).Form, nullptr);
    EXPECT_FALSE(table.slot(index).Free);
}

TEST(DocumentTable, BadIndexesAreHarmless)
{
    Frame::DocumentTable table;
    for (const int index : { -1, 1, 1000 }) {
        table.release(index);
        table.setChanged(index, true);
        table.setForm(index, nullptr);
        EXPECT_TRUE(table.slot(index).Free) << index;
    }
    EXPECT_EQ(table.size(), 1);
}

} // namespace
