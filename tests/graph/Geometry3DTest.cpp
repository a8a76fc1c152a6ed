#include "graph/Geometry3D.h"

#include "graph/MetaFile.h"
#include "platform/emf/RecordTrace.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

using namespace Qt::Literals::StringLiterals;
using Ormsey::Face;
using Ormsey::Point3D;

namespace {

constexpr float HalfTurn = std::numbers::pi_v<float> / 2;

using Corners = std::array<QPoint, 4>;

struct FaceRow
{
    const char* name;
    Face face;
    bool threeDimensional;
    Corners corners;
    bool degenerate;
};

class ProjectedFace : public testing::TestWithParam<FaceRow>
{
};

TEST_P(ProjectedFace, HasItsCornersAndIsDroppedOnlyWhenEdgeOn)
{
    const FaceRow& row = GetParam();
    const Corners corners = Ormsey::FaceCorners(row.face, Ormsey::Projection(row.threeDimensional));
    EXPECT_EQ(corners, row.corners);
    EXPECT_EQ(Ormsey::IsDegenerateFace(corners), row.degenerate);
}

const Face barFront { { 100, 300, 0 }, 40, -100, 0, 0 };
const Face barTop { { 100, 200, 0 }, 40, -40, HalfTurn, 0 };
const Face barSide { { 140, 300, 0 }, 40, -100, 0, HalfTurn };

const FaceRow faceRows[] = {
    { "barFrontFlat", barFront, false,
        { QPoint(100, 300), QPoint(140, 300), QPoint(140, 200), QPoint(100, 200) }, false },
    { "barFrontThreeD", barFront, true,
        { QPoint(100, 300), QPoint(140, 300), QPoint(140, 200), QPoint(100, 200) }, false },
    { "barTopFlatIsEdgeOn", barTop, false,
        { QPoint(100, 200), QPoint(140, 200), QPoint(140, 200), QPoint(100, 200) }, true },
    // Depth 40 goes 17 right and 10 up: a parallelogram leaning up and to the right.
    { "barTopThreeD", barTop, true,
        { QPoint(100, 200), QPoint(140, 200), QPoint(157, 190), QPoint(117, 190) }, false },
    { "barSideFlatIsEdgeOn", barSide, false,
        { QPoint(140, 300), QPoint(140, 300), QPoint(140, 200), QPoint(140, 200) }, true },
    { "barSideThreeDRunsBackToTheRight", barSide, true,
        { QPoint(140, 300), QPoint(157, 290), QPoint(157, 190), QPoint(140, 200) }, false },
};

INSTANTIATE_TEST_SUITE_P(Geometry3DTest, ProjectedFace, testing::ValuesIn(faceRows),
    [](const testing::TestParamInfo<FaceRow>& info) { return std::string(info.param.name); });

TEST(Geometry3DTest, PointBehindTheFrontPlaneIsDrawnRightAndUp)
{
    const QPoint flat = Ormsey::ProjectPoint({ 200, 300, -130 }, Ormsey::FlatProjection());
    const QPoint deep = Ormsey::ProjectPoint({ 200, 300, -130 }, Ormsey::ObliqueProjection());
    EXPECT_EQ(flat, QPoint(200, 300));
    EXPECT_EQ(deep.x() - flat.x(), 56);
    EXPECT_GE(flat.y() - deep.y(), 32);
    EXPECT_LE(flat.y() - deep.y(), 33);
}

TEST(Geometry3DTest, ObliqueProjectionMovesDepthByScaleAlongTheAngle)
{
    // A quarter turn downward with scale 1: depth d is drawn d below.
    const Ormsey::Transform3D down = Ormsey::Oblique(1, HalfTurn);
    EXPECT_EQ(Ormsey::ProjectPoint({ 10, 10, -50 }, down), QPoint(10, 60));
    EXPECT_EQ(Ormsey::ProjectPoint({ 10, 10, 0 }, down), QPoint(10, 10));
}

TEST(Geometry3DTest, ProjectedCoordinatesRoundHalvesToEven)
{
    EXPECT_EQ(Ormsey::ProjectPoint({ 2.5f, 3.5f, 0 }, Ormsey::Identity()), QPoint(2, 4));
    EXPECT_EQ(Ormsey::ProjectPoint({ -2.5f, 0.4f, 0 }, Ormsey::Identity()), QPoint(-2, 0));
}

QStringList drawnRecords(Ormsey::MetaFile& surface)
{
    surface.CloseMF();
    QStringList lines = Emf::TraceRecords(*surface.hMF());
    return lines.filter(u"POLYGON"_s) + lines.filter(u"LINETO"_s);
}

TEST(Geometry3DTest, FaceIsDrawnAsAPolygonUnlessEdgeOn)
{
    Ormsey::MetaFile surface;
    surface.OpenMF();
    EXPECT_TRUE(Ormsey::DrawFace(surface, barTop, true));
    EXPECT_FALSE(Ormsey::DrawFace(surface, barTop, false));
    EXPECT_EQ(
        drawnRecords(surface), (QStringList { u"POLYGON 100,200 140,200 157,190 117,190"_s }));
}

TEST(Geometry3DTest, LineIsDrawnOnlyBetweenDifferentProjectedPoints)
{
    Ormsey::MetaFile surface;
    surface.OpenMF();
    EXPECT_TRUE(Ormsey::DrawLine3D(surface, { 100, 300, 0 }, { 100, 300, -130 }, true));
    EXPECT_FALSE(Ormsey::DrawLine3D(surface, { 100, 300, 0 }, { 100, 300, -130 }, false));
    EXPECT_EQ(drawnRecords(surface), (QStringList { u"LINETO 156,268"_s }));
}

} // namespace
