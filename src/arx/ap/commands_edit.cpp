#include "arx/ap/commands_edit.h"

#include "arx/ap/acdocman.h"
#include "arx/ap/commands_shared.h"
#include "arx/db/dballents.h"
#include "arx/db/dbgroupmap.h"
#include "arx/ed/edgroups.h"
#include "arx/ed/edports.h"
#include "arx/ed/edselect.h"
#include "base/text.h"

#include <cmath>
#include <memory>

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

/// The pick-first set, else what the user selects.
bool select(ads_name set) {
  if (acedSSGet(L"I", nullptr, nullptr, nullptr, set) == RTNORM) {
    acedSSSetFirst(nullptr, nullptr);
    return true;
  }
  return acedSSGet(nullptr, nullptr, nullptr, nullptr, set) == RTNORM;
}

/// Does something to the entities of a set that are on no locked layer. @return how many took it
template <class Work>
int change(const ads_name set, Work work) {
  int count = 0;
  for (const AcDbObjectId id : acedSSEntities(set)) {
    const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
    if (!entity) continue;
    const AcDbObjectPointer<AcDbLayerTableRecord> layer(entity->layerId());
    if (layer && layer->isLocked()) continue;
    if (work(*entity) == Acad::eOk) ++count;
  }
  return count;
}

}  // namespace

namespace arx_commands {

void listEntities() {
  ads_name set;
  if (!select(set)) return;
  for (const AcDbObjectId id : acedSSEntities(set)) {
    const AcDbObjectPointer<AcDbEntity> entity(id);
    if (entity) listEntity(*entity);
  }
  acedPrompt(L"\n");
  acedSSFree(set);
}

void eraseEntities() {
  ads_name set;
  if (!select(set)) return;
  acutPrintf(L"\n%d objet(s) effacé(s)\n", change(set, [](AcDbEntity& entity) { return entity.erase(); }));
  acedSSFree(set);
}

void moveEntities() {
  ads_name set;
  AcGePoint3d from;
  AcGePoint3d to;
  if (!select(set)) return;
  if (askPoint(L"\nPoint de base : ", from) == RTNORM &&
      askPoint(L"\nDeuxième point : ", to, &from) == RTNORM) {
    const AcGeMatrix3d shift = AcGeMatrix3d::translation(to - from);
    if (const std::wstring immovable = acdbImmovable(acedSSEntities(set)); !immovable.empty()) {
      acedSSFree(set);
      return acedRefuse(L"Rien n'est déplacé, ces objets ne peuvent pas l'être : " + immovable + L".");
    }
    acutPrintf(L"\n%d objet(s) déplacé(s)\n",
               change(set, [&](AcDbEntity& entity) { return entity.transformBy(shift); }));
  }
  acedSSFree(set);
}

}  // namespace arx_commands
