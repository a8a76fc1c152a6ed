#pragma once

#include <QPoint>
#include <array>

namespace Ormsey {

class MetaFile;

// Bar charts and the backgrounds of line graphs are flat rectangles placed in a 3D scene and
// projected onto the page, so the same drawing code gives a flat or a 3D graph depending only
// on the projection in force. Page units; x to the right, y downward, z towards the viewer
// (points behind the front plane have negative z). Single precision, as stored in graphs.

struct Point3D
{
    float x = 0;
    float y = 0;
    float z = 0;
};

// A 4 x 4 matrix, row by row, applied to the row vector (x, y, z, 1).
using Transform3D = std::array<float, 16>;

// A rectangle of `width` by `height` in its own plane, turned about the x axis by `turnX`
// and then about the y axis by `turnY` (radians), then moved to `origin`. A turn of pi/2
// about x with a negative height runs straight back from the origin (a bar's top, the
// floor); a turn of pi/2 about y runs back to the right (a bar's side, the left wall).
struct Face
{
    Point3D origin;
    float width = 0;
    float height = 0;
    float turnX = 0;
    float turnY = 0;
};

Transform3D Identity();
// Cabinet projection: a point `d` behind the front plane is drawn scale x d away from where
// it would be at z = 0, in the direction `angle` (radians, y downward), e.g. -pi/6 draws it
// to the right and up.
Transform3D Oblique(float scale, float angle);

// The two projections every graph shares, made once on first use: the identity (z is
// ignored) and the oblique projection of scale 0.5 and angle -pi/6.
const Transform3D& FlatProjection();
const Transform3D& ObliqueProjection();
const Transform3D& Projection(bool threeDimensional);

// x and y of (x, y, z, 1) times the matrix, each rounded to a whole number (halves to even).
QPoint ProjectPoint(const Point3D& point, const Transform3D& transform);

// The four projected corners: (0, 0), (width, 0), (width, height), (0, height) of the face.
std::array<QPoint, 4> FaceCorners(const Face& face, const Transform3D& transform);

// A face seen edge-on: its first two corners within 0.1 horizontally, or its first and third
// within 0.1 vertically. Under the flat projection these are exactly the faces that run
// into the depth.
bool IsDegenerateFace(const std::array<QPoint, 4>& corners);

// Projects the face and draws it with PolygonMF in the surface's current pen and brush,
// unless it is degenerate. True when drawn.
bool DrawFace(MetaFile& surface, const Face& face, bool threeDimensional);

// Projects both points and draws the line between them with LineMF when they differ. True
// when drawn.
bool DrawLine3D(MetaFile& surface, const Point3D& from, const Point3D& to, bool threeDimensional);

} // namespace Ormsey
