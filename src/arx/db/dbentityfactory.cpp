#include "arx/db/dbentityfactory.h"

#include "arx/db/dballents.h"
#include "arx/db/dbtable.h"
#include "base/numbers.h"

#include <array>

namespace {

struct Maker {
  std::string_view name;
  AcDbEntity* (*make)();
};

template <class T>
AcDbEntity* make() {
  return new T;
}

// Types in the order of how often drawings hold them: the first few answer nearly all calls.
constexpr std::array kTypes{Maker{"ATTRIB", make<AcDbAttribute>},
                            Maker{"INSERT", make<AcDbBlockReference>},
                            Maker{"SEQEND", make<AcDbSequenceEnd>},
                            Maker{"LINE", make<AcDbLine>},
                            Maker{"LWPOLYLINE", make<AcDbPolyline>},
                            Maker{"TEXT", make<AcDbText>},
                            Maker{"POINT", make<AcDbPoint>},
                            Maker{"MTEXT", make<AcDbMText>},
                            Maker{"CIRCLE", make<AcDbCircle>},
                            Maker{"ARC", make<AcDbArc>},
                            Maker{"3DFACE", make<AcDbFace>},
                            Maker{"ATTDEF", make<AcDbAttributeDefinition>},
                            Maker{"RAY", make<AcDbRay>},
                            Maker{"ELLIPSE", make<AcDbEllipse>},
                            Maker{"SPLINE", make<AcDbSpline>},
                            Maker{"XLINE", make<AcDbXline>},
                            Maker{"ACAD_TABLE", make<AcDbTable>},
                            Maker{"BLOCK", make<AcDbBlockBegin>},
                            Maker{"ENDBLK", make<AcDbBlockEnd>}};

constexpr std::array kMarkers{Maker{"AcDb3dPolylineVertex", make<AcDb3dPolylineVertex>},
                              Maker{"AcDb2dVertex", make<AcDb2dVertex>},
                              Maker{"AcDbPolyFaceMeshVertex", make<AcDbPolyFaceMeshVertex>},
                              Maker{"AcDbFaceRecord", make<AcDbFaceRecord>},
                              Maker{"AcDbPolygonMeshVertex", make<AcDbPolygonMeshVertex>},
                              Maker{"AcDb3dPolyline", make<AcDb3dPolyline>},
                              Maker{"AcDb2dPolyline", make<AcDb2dPolyline>},
                              Maker{"AcDbPolyFaceMesh", make<AcDbPolyFaceMesh>},
                              Maker{"AcDbPolygonMesh", make<AcDbPolygonMesh>}};

// Whether the groups of a kind that demands some shape have it; what is none stays file text.
bool isShape(std::string_view type, std::span<const DxfTag> tags) {
  if (type == "ELLIPSE") return AcDbEllipse::isGivenBy(tags);
  if (type == "SPLINE") return AcDbSpline::isGivenBy(tags);
  if (type == "ACAD_TABLE") return AcDbTable::isGivenBy(tags);
  return type != "XLINE" || AcDbXline::isGivenBy(tags);
}

template <class Table>
const Maker* find(const Table& table, std::string_view name) {
  for (const Maker& maker : table) {
    if (maker.name == name) return &maker;
  }
  return nullptr;
}

struct Marks {
  const Maker* maker = nullptr;
  int flags = 0;
};

Marks marksOf(std::span<const DxfTag> tags) {
  Marks marks;
  bool flagsSeen = false;
  for (const DxfTag& tag : tags) {
    if (tag.code == 100 && !marks.maker) {
      marks.maker = find(kMarkers, tag.value);
    } else if (tag.code == 70 && !flagsSeen) {
      marks.flags = veltora::base::lireEntier(tag.value);
      flagsSeen = true;
    }
  }
  return marks;
}

AcDbEntity* newPolyline(const Marks& marks) {
  if (marks.maker) return marks.maker->make();
  if (marks.flags & 64) return new AcDbPolyFaceMesh;
  if (marks.flags & 16) return new AcDbPolygonMesh;
  if (marks.flags & 8) return new AcDb3dPolyline;
  return new AcDb2dPolyline;
}

AcDbEntity* newVertex(const Marks& marks) {
  if (marks.maker) return marks.maker->make();
  if ((marks.flags & 192) == 192) return new AcDbPolyFaceMeshVertex;
  if (marks.flags & 128) return new AcDbFaceRecord;
  if (marks.flags & 64) return new AcDbPolygonMeshVertex;
  if (marks.flags & 32) return new AcDb3dPolylineVertex;
  return new AcDb2dVertex;
}

}  // namespace

AcDbEntity* acdbNewEntity(std::string_view dxfType, std::span<const DxfTag> tags) {
  if (dxfType == "VERTEX") return newVertex(marksOf(tags));
  if (dxfType == "POLYLINE") return newPolyline(marksOf(tags));
  const Maker* const maker = find(kTypes, dxfType);
  if (maker && isShape(dxfType, tags)) return maker->make();
  return new AcDbOtherEntity(std::string(dxfType));
}
