#include "platform/emf/FitPicture.h"

#include <gtest/gtest.h>

namespace {

struct FitRow
{
    const char* name;
    QSizeF picture;
    QRectF box;
    Qt::Alignment alignment;
    bool mayEnlarge;
    QRectF expected;
};

class FitPictureTest : public testing::TestWithParam<FitRow>
{
};

TEST_P(FitPictureTest, KeepsTheProportionsInsideTheBox)
{
    const FitRow& row = GetParam();
    EXPECT_EQ(Emf::FitPicture(row.picture, row.box, row.alignment, row.mayEnlarge), row.expected);
}

constexpr Qt::Alignment Centre = Qt::AlignCenter;
constexpr Qt::Alignment TopLeft = Qt::AlignTop | Qt::AlignLeft;

INSTANTIATE_TEST_SUITE_P(Rows, FitPictureTest,
    testing::Values(FitRow { "widePictureFillsTheWidth", { 400, 200 }, { 0, 0, 800, 1000 }, Centre,
                        true, { 0, 300, 800, 400 } },
        FitRow { "tallPictureFillsTheHeight", { 200, 400 }, { 0, 0, 800, 1000 }, TopLeft, true,
            { 0, 0, 500, 1000 } },
        FitRow { "centredInAnOffsetBox", { 100, 50 }, { 10, 10, 400, 400 }, Centre, true,
            { 10, 110, 400, 200 } },
        FitRow { "cornerOfAnOffsetBox", { 100, 100 }, { 5, 5, 50, 20 }, TopLeft, true,
            { 5, 5, 20, 20 } },
        FitRow { "bottomRightCorner", { 100, 100 }, { 0, 0, 50, 20 },
            Qt::AlignBottom | Qt::AlignRight, true, { 30, 0, 20, 20 } },
        FitRow { "neverEnlargedKeepsItsSize", { 100, 50 }, { 0, 0, 400, 400 }, Centre, false,
            { 150, 175, 100, 50 } },
        FitRow { "neverEnlargedStillShrinks", { 100, 50 }, { 0, 0, 50, 50 }, Centre, false,
            { 0, 12.5, 50, 25 } },
        FitRow {
            "pictureWithoutWidth", { 0, 100 }, { 0, 0, 50, 50 }, Centre, true, { 25, 25, 0, 0 } },
        FitRow {
            "boxWithoutHeight", { 100, 50 }, { 10, 20, 80, 0 }, TopLeft, true, { 10, 20, 0, 0 } }),
    [](const testing::TestParamInfo<FitRow>& info) { return info.param.name; });

} // namespace
