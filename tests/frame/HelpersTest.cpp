#include "frame/Helpers.h"

#include "RowFile.h"
#include "frame/FileFilters.h"
#include "platform/runtime/RuntimeRows.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

using RowFile::In;
using RowFile::Named;

using Log10 = RowFile::RowTest<>;

TEST_P(Log10, IsTheDecimalLogarithm)
{
    RuntimeRows::ExpectOutcome(
        row(), "log10", [&] { return Frame::Log10Of(row().number("value")); });
}

INSTANTIATE_TEST_SUITE_P(Rows, Log10, In("frame/helpers/log10.rows"), Named());

using KeyFilter = RowFile::RowTest<>;

TEST_P(KeyFilter, PassesOrSwallows)
{
    const int key = row().text("key").front().unicode();
    EXPECT_EQ(Frame::NumericKeyFilter(key, row().text("mode")), row().flag("passes") ? key : 0);
}

INSTANTIATE_TEST_SUITE_P(Rows, KeyFilter, In("frame/helpers/numericKeys.rows"), Named());

using FitPicture = RowFile::RowTest<>;

TEST_P(FitPicture, GivesTheRectangle)
{
    // The two numbers of a "width height" or "x y" field.
    const auto pair = [&](const char* column) {
        const QStringList numbers = row().list(column, u" "_s);
        EXPECT_EQ(numbers.size(), 2) << column;
        return std::pair(numbers.value(0).toInt(), numbers.value(1).toInt());
    };
    const auto [pictureWidth, pictureHeight] = pair("picture");
    const auto [boxWidth, boxHeight] = pair("box");
    const auto [centreX, centreY] = pair("centre");
    const QRect rect
        = Frame::FitPictureRect(pictureWidth, pictureHeight, boxWidth, boxHeight, centreX, centreY);
    EXPECT_EQ(rect.left(), row().whole("left"));
    EXPECT_EQ(rect.top(), row().whole("top"));
    EXPECT_EQ(rect.left() + rect.width(), row().whole("right"));
    EXPECT_EQ(rect.top() + rect.height(), row().whole("bottom"));
}

INSTANTIATE_TEST_SUITE_P(Rows, FitPicture, In("frame/helpers/fitPicture.rows"), Named());

using FileTitle = RowFile::RowTest<>;

TEST_P(FileTitle, IsTheNameWithoutExtension)
{
    EXPECT_EQ(
        Frame::FileTitleOf(row().text("path")).toStdString(), row().text("title").toStdString());
}

INSTANTIATE_TEST_SUITE_P(Rows, FileTitle, In("frame/helpers/fileTitles.rows"), Named());

using Twips = RowFile::RowTest<>;

TEST_P(Twips, ArePixelsAtTheDeviceResolutionHalvesToEven)
{
    EXPECT_EQ(
        Frame::TwipsToPixels(row().number("twips"), row().number("dpi")), row().whole("pixels"));
}

INSTANTIATE_TEST_SUITE_P(Rows, Twips, In("frame/helpers/twips.rows"), Named());

// ---- File filters ---------------------------------------------------------------------------

using NameFilters = RowFile::RowTest<>;

TEST_P(NameFilters, BecomeQtForm)
{
    EXPECT_EQ(Frame::QtNameFilters(row().text("filter")).join(u" | ").toStdString(),
        row().text("qtFilters").toStdString());
}

INSTANTIATE_TEST_SUITE_P(Rows, NameFilters, In("frame/helpers/nameFilters.rows"), Named());

} // namespace
