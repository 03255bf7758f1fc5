#include "arx/ap/commands_edit.h"

#include "arx/ap/acdocman.h"
#include "arx/ap/commands_shared.h"
#include "arx/db/dballents.h"
#include "arx/ed/acutads.h"
#include "arx/ed/edgroups.h"
#include "base/text.h"

#include <memory>
#include <optional>
#include <vector>

namespace base = veltora::base;

namespace {

struct TypeName {
  const char* type;
  const wchar_t* french;
};
constexpr TypeName kTypeNames[] = {
    {"3DFACE", L"FACE 3D"},
    {"ARC", L"ARC"},
    {"ATTDEF", L"DÉFINITION D'ATTRIBUT"},
    {"CIRCLE", L"CERCLE"},
    {"INSERT", L"BLOC"},
    {"LINE", L"LIGNE"},
    {"LWPOLYLINE", L"POLYLIGNE"},
    {"MTEXT", L"TEXTE MULTILIGNE"},
    {"POINT", L"POINT"},
    {"POLYLINE", L"POLYLIGNE"},
    {"TEXT", L"TEXTE"},
};

std::wstring typeName(const AcDbEntity& entity) {
  for (const TypeName& row : kTypeNames) {
    if (entity.dxfName() == row.type) return row.french;
  }
  return base::fromUtf8(entity.dxfName());
}

void printPoint(const wchar_t* what, const AcGePoint3d& p) {
  acutPrintf(L"\n    %s : X = %.4f  Y = %.4f  Z = %.4f", what, p.x, p.y, p.z);
}

void listBlock(const AcDbBlockReference& reference) {
  const AcDbObjectPointer<AcDbBlockTableRecord> block(reference.blockTableRecord());
  acutPrintf(L"\n    nom : %s", block ? block->name() : std::wstring(L"?"));
  printPoint(L"insertion", reference.position());
  const AcGeScale3d scale = reference.scaleFactors();
  acutPrintf(L"\n    échelles : %.4f  %.4f  %.4f   rotation : %.4f grades", scale.sx, scale.sy, scale.sz,
             reference.rotation() * 200.0 / 3.141592653589793);
  const std::unique_ptr<AcDbObjectIterator> attributes(reference.attributeIterator());
  for (; !attributes->done(); attributes->step()) {
    const AcDbObjectPointer<AcDbAttribute> attribute(attributes->objectId());
    if (attribute) acutPrintf(L"\n    %s = %s", attribute->tag(), attribute->textString());
  }
}

void listCurve(const AcDbCurve& curve) {
  AcGePoint3d point;
  if (curve.getStartPoint(point) == Acad::eOk) printPoint(L"du point", point);
  if (curve.getEndPoint(point) == Acad::eOk) printPoint(L"au point", point);
  double end = 0.0;
  double length = 0.0;
  if (curve.getEndParam(end) == Acad::eOk && curve.getDistAtParam(end, length) == Acad::eOk)
    acutPrintf(L"\n    longueur : %.4f", length);
  double area = 0.0;
  if (curve.isClosed() && curve.getArea(area) == Acad::eOk) acutPrintf(L"\n    surface : %.4f", area);
}

void listExtents(const AcDbEntity& entity) {
  AcDbExtents box;
  if (entity.getGeomExtents(box) != Acad::eOk || box.isEmpty()) return;
  printPoint(L"coin inférieur", box.minPoint());
  printPoint(L"coin supérieur", box.maxPoint());
}

void listEntity(const AcDbEntity& entity) {
  acutPrintf(L"\n%s   calque : %s   maintien : %s", typeName(entity), entity.layer(),
             base::fromUtf8(acedHandleText(entity.handle())));
  if (const AcDbBlockReference* reference = AcDbBlockReference::cast(&entity)) return listBlock(*reference);
  if (const AcDbCurve* curve = AcDbCurve::cast(&entity)) return listCurve(*curve);
  if (const AcDbText* text = AcDbText::cast(&entity)) {
    acutPrintf(L"\n    texte : %s   hauteur : %.4f", text->textString(), text->height());
    return printPoint(L"position", text->position());
  }
  listExtents(entity);
}

}  // namespace

namespace arx_commands {

void listEntities() {
  const std::optional<std::vector<AcDbObjectId>> entities = selectEntities();
  if (!entities) return;
  for (const AcDbObjectId id : *entities) {
    const AcDbObjectPointer<AcDbEntity> entity(id);
    if (entity) listEntity(*entity);
  }
  acedPrompt(L"\n");
}

void eraseEntities() {
  const std::optional<std::vector<AcDbObjectId>> entities = selectEditable();
  if (!entities) return;
  int count = 0;
  for (const AcDbObjectId id : *entities) {
    const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
    if (entity && entity->erase() == Acad::eOk) ++count;
  }
  acutPrintf(L"\n%d objet(s) effacé(s)\n", count);
}

}  // namespace arx_commands
