#include "arx/ent_support.h"

#include "base/format.h"

#include <gtest/gtest.h>

#include <cmath>
#include <ostream>

namespace {

using namespace ent_test;

std::string described(const AcDbPolyline& polyline) {
  std::string text;
  for (unsigned int i = 0; i < polyline.numVerts(); ++i) {
    AcGePoint2d p;
    double bulge = 0, start = 0, end = 0;
    polyline.getPointAt(i, p);
    polyline.getBulgeAt(i, bulge);
    polyline.getWidthsAt(i, start, end);
    text += veltora::base::formater("%g,%g b%g w%g:%g; ", p.x, p.y, bulge, start, end);
  }
  return text;
}

TEST(Polyline, VerticesComeAndGo) {
  AcDbPolyline line;
  EXPECT_EQ(line.addVertexAt(5, {3, 3}), Acad::eOk);  // beyond the end: at the end
  line.addVertexAt(0, {1, 1}, 0.5);
  line.addVertexAt(1, {2, 2});
  EXPECT_EQ(described(line), "1,1 b0.5 w0:0; 2,2 b0 w0:0; 3,3 b0 w0:0; ");
  EXPECT_EQ(line.removeVertexAt(3), Acad::eInvalidIndex);
  EXPECT_EQ(line.removeVertexAt(1), Acad::eOk);
  EXPECT_EQ(line.setPointAt(1, {9, 9}), Acad::eOk);
  EXPECT_EQ(described(line), "1,1 b0.5 w0:0; 9,9 b0 w0:0; ");
  EXPECT_EQ(line.addVertexAt(0, {std::nan(""), 0}), Acad::eInvalidInput);
  EXPECT_EQ(line.setBulgeAt(0, HUGE_VAL), Acad::eInvalidInput);
  AcGePoint3d world;
  EXPECT_EQ(line.getPointAt(2, world), Acad::eInvalidIndex);
}

TEST(Polyline, OneWidthGivesWayToWidthsOfTheirOwn) {
  AcDbPolyline line;
  line.addVertexAt(0, {0, 0});
  line.addVertexAt(1, {1, 0});
  line.setConstantWidth(0.5);
  double width = 0;
  line.addVertexAt(2, {2, 0});  // -1: the polyline's width
  EXPECT_EQ(line.getConstantWidth(width), Acad::eOk);
  EXPECT_EQ(width, 0.5);
  line.addVertexAt(3, {3, 0}, 0, 1, -1);
  EXPECT_EQ(described(line), "0,0 b0 w0.5:0.5; 1,0 b0 w0.5:0.5; 2,0 b0 w0.5:0.5; 3,0 b0 w1:0; ");
  EXPECT_EQ(line.getConstantWidth(width), Acad::eInvalidInput);
}

TEST(Polyline, TellsTheKindOfEachSegment) {
  const auto open = polyline({{0, 0, 0}, {4, 0, 1}, {4, 4, 0.7}, {4, 4, 1e-12}, {0, 4, 0.3}});
  const AcDbPolyline::SegType expected[] = {AcDbPolyline::kLine,       AcDbPolyline::kArc,
                                            AcDbPolyline::kCoincident, AcDbPolyline::kLine,
                                            AcDbPolyline::kPoint,      AcDbPolyline::kEmpty};
  for (unsigned int i = 0; i < 6; ++i) EXPECT_EQ(open->segType(i), expected[i]) << i;
  open->setClosed(true);
  EXPECT_EQ(open->segType(4), AcDbPolyline::kArc);
  AcGeCircArc2d arc;
  AcGeLineSeg2d segment;
  ASSERT_EQ(open->getArcSegAt(1, arc), Acad::eOk);
  EXPECT_NEAR(arc.radius(), 2, 1e-12);
  EXPECT_LE(arc.center().distanceTo({4, 2}), 1e-12);
  EXPECT_FALSE(arc.isClockWise());
  EXPECT_EQ(open->getLineSegAt(1, segment), Acad::eInvalidInput);
  EXPECT_EQ(open->getArcSegAt(5, arc), Acad::eInvalidIndex);
}

TEST(Polyline, ReversalRunsTheSamePathBack) {
  for (const bool closed : {false, true}) {
    const auto line = polyline({{0, 0, 0.5}, {4, 0, 0}, {4, 4, -0.8}, {0, 5, 0.2}}, closed);
    const auto back = polyline({{0, 0, 0.5}, {4, 0, 0}, {4, 4, -0.8}, {0, 5, 0.2}}, closed);
    line->setWidthsAt(0, 1, 2);
    back->setWidthsAt(0, 1, 2);
    back->reverseCurve();
    double length = 0, end = 0;
    line->getEndParam(end);
    line->getDistAtParam(end, length);
    for (int i = 0; i <= 20; ++i) {
      AcGePoint3d there, again;
      // A closed polyline starts anew at what was its last vertex.
      double shift = 0;
      if (closed) line->getDistAtParam(3, shift);
      double at = closed ? std::fmod(shift - length * i / 20 + 2 * length, length) : length * (20 - i) / 20;
      line->getPointAtDist(at, there);
      back->getPointAtDist(length * i / 20, again);
      EXPECT_POINT(there, again, 1e-9);
    }
    back->reverseCurve();
    EXPECT_EQ(described(*back), described(*line));
  }
}

// Offsets: the vertices of the parallel, or none where it degenerates.
struct OffsetRow {
  const char* name;
  Vertices vertices;
  bool closed;
  double offset;
  Vertices expected;
};
std::ostream& operator<<(std::ostream& out, const OffsetRow& row) { return out << row.name; }

const Vertices kSquare = {{0, 0}, {4, 0}, {4, 4}, {0, 4}};
const Vertices kHalf = {{0, 0, 1}, {4, 0}};
constexpr double kEighth = 0.41421356237309503;
const OffsetRow kOffsets[] = {
    {"line to the right", {{0, 0}, {10, 0}}, false, 2, {{0, -2}, {10, -2}}},
    {"corner to the left", {{0, 0}, {10, 0}, {10, 10}}, false, -1, {{0, 1}, {9, 1}, {9, 10}}},
    {"square outwards", kSquare, true, 1, {{-1, -1}, {5, -1}, {5, 5}, {-1, 5}}},
    {"square inwards", kSquare, true, -1, {{1, 1}, {3, 1}, {3, 3}, {1, 3}}},
    {"square turned inside out", kSquare, true, -3, {}},
    {"half circle outwards", kHalf, false, 1, {{-1, 0, 1}, {5, 0}}},
    {"half circle inwards", kHalf, false, -1, {{1, 0, 1}, {3, 0}}},
    {"half circle vanishes", kHalf, false, -2, {}},
    {"clockwise half circle", {{0, 0, -1}, {4, 0}}, false, 1, {{1, 0, -1}, {3, 0}}},
    {"tangent arc", {{0, 0}, {4, 0, kEighth}, {8, 4}}, false, 1, {{0, -1}, {4, -1, kEighth}, {9, 4}}},
    {"full circle of two arcs", {{0, 0, 1}, {4, 0, 1}}, true, 1, {{-1, 0, 1}, {5, 0, 1}}},
    {"doubled", {{0, 0}, {4, 0}, {4, 0}, {4, 4}}, false, 1, {{0, -1}, {5, -1}, {5, -1}, {5, 4}}},
    {"all vertices equal", {{1, 1}, {1, 1}}, true, 1, {}},
    {"turns straight back", {{0, 0}, {4, 0}, {1, 0}}, false, 1, {}},
    {"bevel left out", {{0, 0}, {10, 0}, {10.5, 0.5}, {10.5, 10}}, false, -2, {{0, 2}, {8.5, 2}, {8.5, 10}}},
    {"rounding left out", {{0, 0}, {9, 0, kEighth}, {10, 1}, {10, 10}}, false, -2, {{0, 2}, {8, 2}, {8, 10}}},
    {"bevels of a square left out",
     {{1, 0}, {9, 0}, {10, 1}, {10, 9}, {9, 10}, {1, 10}, {0, 9}, {0, 1}},
     true,
     -4,
     {{4, 4}, {6, 4}, {6, 6}, {4, 6}}},
    {"notch too narrow", {{0, 0}, {4, 0}, {4, -9}, {5, -9}, {5, 0}, {9, 0}}, false, -1, {}},
    {"short step swallowed", {{0, 0}, {4, 0}, {4, 1}, {0, 1}}, false, -2, {}},
};

class PolylineOffset : public ::testing::TestWithParam<OffsetRow> {};

TEST_P(PolylineOffset, MovesToTheRightOfTravel) {
  const OffsetRow& row = GetParam();
  for (const bool mirrored : {false, true}) {
    for (const AcGeVector3d& shift : {AcGeVector3d(), kFar.asVector()}) {
      const auto source = polyline(row.vertices, row.closed);
      if (mirrored) source->transformBy(AcGeMatrix3d::scaling(AcGeScale3d(1, -1, 1)));
      source->transformBy(AcGeMatrix3d::translation(shift));
      std::vector<AcDbCurve*> curves;
      const Acad::ErrorStatus status = source->getOffsetCurves(mirrored ? -row.offset : row.offset, curves);
      if (row.expected.empty()) {
        EXPECT_EQ(status, Acad::eInvalidInput);
        EXPECT_TRUE(curves.empty());
        continue;
      }
      ASSERT_EQ(status, Acad::eOk);
      ASSERT_EQ(curves.size(), 1U);
      const std::unique_ptr<AcDbPolyline> result(AcDbPolyline::cast(curves[0]));
      ASSERT_EQ(result->numVerts(), row.expected.size());
      for (unsigned int i = 0; i < result->numVerts(); ++i) {
        const auto& want = row.expected[i];
        AcGePoint2d p;
        double bulge = 0;
        result->getPointAt(i, p);
        result->getBulgeAt(i, bulge);
        EXPECT_LE(p.distanceTo({want[0] + shift.x, (mirrored ? -want[1] : want[1]) + shift.y}), 1e-8) << i;
        EXPECT_NEAR(bulge, mirrored ? -want[2] : want[2], 1e-8) << i;
      }
      EXPECT_TRUE(result->objectId().isNull());
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Rows, PolylineOffset, ::testing::ValuesIn(kOffsets));

TEST(CurveOffset, CirclesAndArcsGrowOutwards) {
  const AcDbCircle circle({1, 2, 3}, {0, 0, 1}, 5);
  std::vector<AcDbCurve*> curves;
  EXPECT_EQ(circle.getOffsetCurves(-5, curves), Acad::eInvalidInput);
  ASSERT_EQ(circle.getOffsetCurves(2, curves), Acad::eOk);
  const std::unique_ptr<AcDbCurve> grown(curves[0]);
  EXPECT_EQ(AcDbCircle::cast(grown.get())->radius(), 7);
  curves.clear();
  ASSERT_EQ(AcDbLine({0, 0, 1}, {0, 9, 1}).getOffsetCurves(2, curves), Acad::eOk);
  const std::unique_ptr<AcDbCurve> moved(curves[0]);
  EXPECT_POINT(AcGePoint3d(2, 0, 1), AcDbLine::cast(moved.get())->startPoint(), 1e-12);
  EXPECT_EQ(AcDbLine({1, 1, 1}, {1, 1, 1}).getOffsetCurves(2, curves), Acad::eInvalidInput);
}

// Heavy polylines keep their vertices as objects of the drawing.
TEST(HeavyPolyline, RunsThroughItsLiveVertices) {
  AcDbDatabase db;
  AcDb3dPolyline* line = place(db, std::make_unique<AcDb3dPolyline>());
  AcDbObjectId ids[3];
  {
    const AcDbObjectPointer<AcDb3dPolyline> open(line->objectId(), AcDb::kForWrite);
    const AcGePoint3d points[] = {{0, 0, 0}, {3, 4, 0}, {3, 4, 12}};
    for (int i = 0; i < 3; ++i) {
      auto* vertex = new AcDb3dPolylineVertex(points[i]);
      ASSERT_EQ(open->appendVertex(ids[i], vertex), Acad::eOk);
      vertex->close();
    }
    open->transformBy(AcGeMatrix3d::translation(kFar.asVector()));
  }
  double length = 0;
  EXPECT_EQ(line->getDistAtParam(2, length), Acad::eOk);
  EXPECT_NEAR(length, 17, 1e-9);
  EXPECT_EQ(line->subObjects().size(), 4U);
  EXPECT_EQ(line->subObjects().back().objectClass(), AcDbSequenceEnd::desc());
  erase(ids[1]);
  EXPECT_EQ(line->getDistAtParam(1, length), Acad::eOk);
  EXPECT_NEAR(length, 13, 1e-9);
  const std::unique_ptr<AcDbObjectIterator> walk(line->vertexIterator());
  int count = 0;
  for (; !walk->done(); walk->step()) count += walk->objectId().isLive() ? 1 : 100;
  EXPECT_EQ(count, 2);
  EXPECT_TRUE(walk->objectId().isNull());
}

TEST(HeavyPolyline, LeavesTheFrameOfASplineOut) {
  AcDbDatabase db;
  AcDb2dPolyline* line = place(db, std::make_unique<AcDb2dPolyline>());
  const char* const vertices[] = {"70 16|10 50.0|20 50.0|30 0.0", "70 8|10 0.0|20 0.0|30 0.0|42 1.0",
                                  "70 8|10 4.0|20 0.0|30 0.0"};
  for (const char* text : vertices) {
    AcDbObjectId id;
    std::unique_ptr<AcDbEntity> vertex =
        read(db, "VERTEX", std::string("100 AcDbEntity|8 0|100 AcDbVertex|100 AcDb2dVertex|") + text);
    ASSERT_EQ(db.addAcDbObject(id, vertex.get()), Acad::eOk);
    vertex.release()->close();
    line->enterSub(id);
  }
  double length = 0;
  EXPECT_EQ(line->getDistAtParam(1, length), Acad::eOk);
  EXPECT_NEAR(length, 2 * 3.141592653589793, 1e-9);
  AcDbExtents box;
  ASSERT_EQ(line->getGeomExtents(box), Acad::eOk);
  EXPECT_POINT(AcGePoint3d(0, -2, 0), box.minPoint(), 1e-9);
  const AcDbObjectPointer<AcDb2dPolyline> open(line->objectId(), AcDb::kForWrite);
  EXPECT_EQ(open->transformBy(AcGeMatrix3d::scaling(AcGeScale3d(2, 1, 1))), Acad::eCannotScaleNonUniformly);
  EXPECT_EQ(open->transformBy(AcGeMatrix3d::scaling(AcGeScale3d(-2, 2, 2))), Acad::eOk);
  ASSERT_EQ(line->getGeomExtents(box), Acad::eOk);
  EXPECT_POINT(AcGePoint3d(-8, -4, 0), box.minPoint(), 1e-9);
  EXPECT_POINT(AcGePoint3d(0, 0, 0), box.maxPoint(), 1e-9);
}

}  // namespace
