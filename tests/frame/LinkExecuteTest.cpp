#include "frame/LinkExecute.h"

#include "TableRows.h"
#include "frame/DocumentKinds.h"

#include <gtest/gtest.h>
#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace {

using TestRows::PrintTo;

struct ExecuteRow
{
    const char* name;
    QString executeString;
    std::optional<QString> openArgument;
    bool cancel;
    int error;
};

class ParseLinkExecuteTest : public testing::TestWithParam<ExecuteRow>
{
};

TEST_P(ParseLinkExecuteTest, OpensAndRefusesAsTheScanReadsIt)
{
    const ExecuteRow& row = GetParam();
    const Frame::LinkCommand command = Frame::ParseLinkExecute(row.executeString);
    EXPECT_EQ(command.OpenArgument, row.openArgument);
    EXPECT_EQ(command.Cancel, row.cancel);
    EXPECT_EQ(command.Error, row.error);
}

const QString a = uR"(C:\A.qnd)"_s;

INSTANTIATE_TEST_SUITE_P(Rows, ParseLinkExecuteTest,
    testing::Values(ExecuteRow { "OneOpen", uR"([open(C:\A.qnd)])"_s, a, false, 0 },
        ExecuteRow { "VerbMixedCase", uR"([Open(/home/class/Pets.qnd)])"_s,
            u"/home/class/Pets.qnd"_s, false, 0 },
        ExecuteRow { "OtherVerbAccepted", uR"([print(C:\A.qnd)])"_s, std::nullopt, false, 0 },
        ExecuteRow { "NoBrackets", uR"(open(C:\A.qnd))"_s, std::nullopt, true, 0 },
        ExecuteRow { "SecondCommandRefused", uR"([open(C:\A.qnd)][open(C:\B.qnd)])"_s, a, true, 0 },
        ExecuteRow { "TrailingTextRefused", uR"([open(C:\A.qnd)] )"_s, a, true, 0 },
        ExecuteRow { "NoClosingBracket", uR"([open(C:\A.qnd))"_s, std::nullopt, true, 0 },
        ExecuteRow { "QuotesKept", uR"([open("C:\A.qnd")])"_s, uR"("C:\A.qnd")"_s, false, 0 },
        ExecuteRow { "BlanksInPathKept", u"[open(/home/my class/A b.qnd)]"_s,
            u"/home/my class/A b.qnd"_s, false, 0 },
        ExecuteRow { "EmptyArgument", u"[open()]"_s, u""_s, false, 0 },
        ExecuteRow { "NoRoomForArgument", u"[open(]"_s, std::nullopt, false, 5 },
        ExecuteRow { "LastCharacterDropped", u"[open(A.qnd]"_s, u"A.qn"_s, false, 0 },
        ExecuteRow { "SingleCharacterNeverExamined", u"x"_s, std::nullopt, false, 0 },
        ExecuteRow { "OtherVerbThenOpenRefused", uR"([print(A)][open(C:\A.qnd)])"_s, std::nullopt,
            true, 0 }),
    TestRows::Named());

// ---- Routing by extension ---------------------------------------------------------------------

struct ExtensionRow
{
    const char* name;
    QString fileName;
    int docType;
};

class DocTypeForFileNameTest : public testing::TestWithParam<ExtensionRow>
{
protected:
    void SetUp() override
    {
        for (const auto& [type, word, extension] : { std::tuple { 1, u"Ormsey"_s, u"qnp"_s },
                 std::tuple { 2, u"Velkin"_s, QString() }, std::tuple { 3, u"Bramlet"_s, u"qnd"_s },
                 std::tuple { 5, u"Tillane"_s, u"qnc"_s } })
            Frame::RegisterDocumentKind({ type, word, extension,
                [](Frame::DocumentHost&) -> QObject* { return nullptr; } });
    }
    void TearDown() override
    {
        for (int type = 1; type <= 5; ++type)
            Frame::UnregisterDocumentKind(type);
    }
};

TEST_P(DocTypeForFileNameTest, TakesTheLastThreeCharactersWithoutCase)
{
    EXPECT_EQ(Frame::DocTypeForFileName(GetParam().fileName), GetParam().docType);
}

INSTANTIATE_TEST_SUITE_P(Rows, DocTypeForFileNameTest,
    testing::Values(ExtensionRow { "Graph", u"/home/class/Heights.qnp"_s, 1 },
        ExtensionRow { "CardsInCapitals", u"C:\\Work\\Class.QND"_s, 3 },
        ExtensionRow { "Sheet", u"Weather.qnc"_s, 5 },
        ExtensionRow { "TextFileIgnored", u"notes.txt"_s, 0 },
        ExtensionRow { "NoPointNeeded", u"backupqnd"_s, 3 },
        ExtensionRow { "LongerEndingIgnored", u"Class.qnd2"_s, 0 },
        ExtensionRow { "ShortName", u"qn"_s, 0 }),
    TestRows::Named());

TEST(DocTypeForFileName, UnregisteredKindOpensNothing)
{
    Frame::UnregisterDocumentKind(3);
    EXPECT_EQ(Frame::DocTypeForFileName(u"Class.qnd"), 0);
}

} // namespace
