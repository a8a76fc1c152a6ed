#include "graph/Geometry3D.h"

#include "graph/MetaFile.h"
#include "platform/runtime/Conversions.h"

#include <cmath>
#include <numbers>

namespace Ormsey {

namespace {

Point3D turnAboutX(const Point3D& point, float angle)
{
    const float cosine = std::cos(angle);
    const float sine = std::sin(angle);
    return { point.x, point.y * cosine - point.z * sine, point.y * sine + point.z * cosine };
}

Point3D turnAboutY(const Point3D& point, float angle)
{
    const float cosine = std::cos(angle);
    const float sine = std::sin(angle);
    return { point.x * cosine + point.z * sine, point.y, -point.x * sine + point.z * cosine };
}

} // namespace

Transform3D Identity()
{
    return { 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1 };
}

Transform3D Oblique(float scale, float angle)
{
    Transform3D matrix = Identity();
    // Depth goes into x and y: z = -d moves the point by (scale cos angle, scale sin angle) d.
    matrix[8] = -scale * std::cos(angle);
    matrix[9] = -scale * std::sin(angle);
    matrix[10] = 0;
    return matrix;
}

const Transform3D& FlatProjection()
{
    static const Transform3D flat = Identity();
    return flat;
}

const Transform3D& ObliqueProjection()
{
    static const Transform3D oblique = Oblique(0.5f, -std::numbers::pi_v<float> / 6);
    return oblique;
}

const Transform3D& Projection(bool threeDimensional)
{
    return threeDimensional ? ObliqueProjection() : FlatProjection();
}

QPoint ProjectPoint(const Point3D& point, const Transform3D& m)
{
    const float x = point.x * m[0] + point.y * m[4] + point.z * m[8] + m[12];
    const float y = point.x * m[1] + point.y * m[5] + point.z * m[9] + m[13];
    return QPoint(Runtime::CLng(x), Runtime::CLng(y));
}

std::array<QPoint, 4> FaceCorners(const Face& face, const Transform3D& transform)
{
    const Point3D corners[4] = { { 0, 0, 0 }, { face.width, 0, 0 }, { face.width, face.height, 0 },
        { 0, face.height, 0 } };
    std::array<QPoint, 4> projected;
    for (std::size_t index = 0; index < 4; ++index) {
        const Point3D turned = turnAboutY(turnAboutX(corners[index], face.turnX), face.turnY);
        projected[index] = ProjectPoint(
            { turned.x + face.origin.x, turned.y + face.origin.y, turned.z + face.origin.z },
            transform);
    }
    return projected;
}

bool IsDegenerateFace(const std::array<QPoint, 4>& corners)
{
    return std::abs(corners[0].x() - corners[1].x()) < 0.1
        || std::abs(corners[0].y() - corners[2].y()) < 0.1;
}

bool DrawFace(MetaFile& surface, const Face& face, bool threeDimensional)
{
    const std::array<QPoint, 4> corners = FaceCorners(face, Projection(threeDimensional));
    if (IsDegenerateFace(corners))
        return false;
    std::array<std::int32_t, 8> points {};
    for (std::size_t index = 0; index < 4; ++index) {
        points[index * 2] = corners[index].x();
        points[index * 2 + 1] = corners[index].y();
    }
    surface.PolygonMF(points, 4);
    return true;
}

bool DrawLine3D(MetaFile& surface, const Point3D& from, const Point3D& to, bool threeDimensional)
{
    const Transform3D& projection = Projection(threeDimensional);
    const QPoint start = ProjectPoint(from, projection);
    const QPoint end = ProjectPoint(to, projection);
    if (start == end)
        return false;
    surface.LineMF(start.x(), start.y(), end.x(), end.y());
    return true;
}

} // namespace Ormsey
