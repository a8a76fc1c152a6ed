#include "frame/FrameSettings.h"

#include "RowFile.h"
#include "platform/runtime/HostLocale.h"

#include <QDir>
#include <QFile>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

class InitialiseFrameTest : public testing::Test
{
protected:
    void TearDown() override { Frame::Settings() = {}; }
    QTemporaryDir m_programFolder;
};

// What the file holds and a missing file give is ReadColourTable's (ColoursTest).
TEST_F(InitialiseFrameTest, ReadsTheColoursBesideTheProgram)
{
    QFile file(m_programFolder.filePath(u"Colours.ini"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[Quorbin Colours]\r\nNumber=1\r\nColourName1=RED\r\nColourValue1=&HFF\r\n");
    file.close();
    Frame::InitialiseFrame(m_programFolder.path());
    EXPECT_EQ(Frame::ColourValueByName(u"red"), 255);
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

using TempFolder = RowFile::RowTest<InitialiseFrameTest>;

TEST_P(TempFolder, FollowsTheTempVariable)
{
    const bool wasSet = qEnvironmentVariableIsSet("TEMP");
    const QByteArray previous = qgetenv("TEMP");
    const auto restore
        = qScopeGuard([&] { wasSet ? qputenv("TEMP", previous) : qunsetenv("TEMP"); });
    row().text("temp") == u"(unset)" ? qunsetenv("TEMP") : qputenv("TEMP", row().bytes("temp"));
    Frame::InitialiseFrame(m_programFolder.path());
    const auto local = [&](const char* column) {
        return row().text(column).replace(u"(system)"_s, QDir::tempPath());
    };
    const QString folder = local("folder");
    EXPECT_EQ(Frame::Settings().TempFolder, folder);
    EXPECT_EQ(Frame::Settings().PictureTempFile, local("pictureFile"));
    EXPECT_EQ(Frame::TempFilePath(u"Quorbin.tmp"),
        folder.isEmpty() ? QString() : QDir(folder).filePath(u"Quorbin.tmp"_s));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, TempFolder, RowFile::In("frame/settings/tempFolder.rows"), RowFile::Named());

// ---- The document table --------------------------------------------------------------------

// A window's slot number is in its caption ("Untitled:2"), so reuse goes from slot 0 upward.
TEST(DocumentTable, ReusesTheFirstFreedSlotCleanAndNeverShrinks)
{
    Frame::DocumentTable table;
    QObject window;
    EXPECT_EQ(table.claimSlot(3), 0);
    EXPECT_EQ(table.claimSlot(5), 1);
    EXPECT_EQ(table.claimSlot(1), 2);
    table.setForm(0, &window);
    table.release(0);
    table.release(2);
    table.setChanged(0, true); // a late edit event of the closed window
    EXPECT_EQ(table.size(), 3);
    EXPECT_EQ(table.slot(0).Form, nullptr);
    EXPECT_EQ(table.claimSlot(1), 0);
    EXPECT_FALSE(table.slot(0).Changed); // no save prompt for the new document
    EXPECT_EQ(table.claimSlot(3), 2);
    EXPECT_EQ(table.claimSlot(3), 3);
    EXPECT_EQ(table.slot(1).DocType, 5);
}

// A window with a damaged Tag must not bring the program down.
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
