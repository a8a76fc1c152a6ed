#include "frame/LinkExecute.h"

#include "RowFile.h"
#include "frame/DocumentKinds.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

using RowFile::In;
using RowFile::Named;

using ParseLinkExecute = RowFile::RowTest<>;

TEST_P(ParseLinkExecute, OpensAndRefusesAsTheScanReadsIt)
{
    const Frame::LinkCommand command = Frame::ParseLinkExecute(row().text("executeString"));
    EXPECT_EQ(command.OpenArgument.has_value(), row().flag("opens"));
    EXPECT_EQ(command.OpenArgument.value_or(QString()).toStdString(),
        row().text("argument").toStdString());
    EXPECT_EQ(command.Cancel, row().flag("cancel"));
    EXPECT_EQ(command.Error, row().whole("error"));
}

INSTANTIATE_TEST_SUITE_P(Rows, ParseLinkExecute, In("frame/links/executeStrings.rows"), Named());

// ---- Routing by extension ---------------------------------------------------------------------

class DocTypeForFileName : public RowFile::RowTest<>
{
protected:
    void SetUp() override
    {
        RowTest::SetUp();
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

TEST_P(DocTypeForFileName, TakesTheLastThreeCharactersWithoutCase)
{
    EXPECT_EQ(Frame::DocTypeForFileName(row().text("fileName")), row().whole("docType"));
}

INSTANTIATE_TEST_SUITE_P(Rows, DocTypeForFileName, In("frame/links/extensions.rows"), Named());

} // namespace
