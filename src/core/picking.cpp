#include "core/picking.h"

#include "arx/db/dbmain.h"
#include "arx/ed/acedads.h"
#include "core/xdata_names.h"

namespace veltora {
namespace {

int select(const ACHAR* mode, const void* from, const void* to, const resbuf* filter,
           std::vector<AcDbObjectId>& entities) {
  entities.clear();
  ads_name set = {0, 0};
  const int result = acedSSGet(mode, from, to, filter, set);
  if (result != RTNORM) return result;
  entities = acedSSEntities(set);
  acedSSFree(set);
  return result;
}

}  // namespace

int pickEntity(const ACHAR* prompt, AcDbObjectId& id, AcGePoint3d* where) {
  ads_name name = {0, 0};
  ads_point point = {0.0, 0.0, 0.0};
  id.setNull();
  const int result = acedEntSel(prompt, name, point);
  if (where) where->set(point[0], point[1], point[2]);
  if (result == RTNORM && acdbGetObjectId(id, name) != Acad::eOk) id.setNull();
  return result;
}

Answer pickEntityOrLeave(const ACHAR* prompt, AcDbObjectId& id, AcGePoint3d& where) {
  // Without a drawing every attempt would fail.
  if (!acdbHostApplicationServices()->workingDatabase()) return Answer::kEnd;
  const int result = pickEntity(prompt, id, &where);
  if (result == RTERROR) return Answer::kAgain;
  return id.isNull() ? Answer::kEnd : Answer::kGiven;
}

int selectEntities(const ACHAR* mode, resbuf* filter, std::vector<AcDbObjectId>& entities) {
  const int result = select(mode, nullptr, nullptr, filter, entities);
  acutRelRb(filter);
  return result;
}

int selectCrossing(const AcGePoint2d& a, const AcGePoint2d& b, std::vector<AcDbObjectId>& entities) {
  const ads_point from = {a.x, a.y, 0.0};
  const ads_point to = {b.x, b.y, 0.0};
  return select(L"C", from, to, nullptr, entities);
}

std::vector<AcDbObjectId> selectPointBlocks(const ACHAR* mode) {
  std::vector<AcDbObjectId> entities;
  selectEntities(mode, acutBuildList(1001, kXDataVeltora, RTNONE), entities);
  return entities;
}

std::wstring typedText() {
  std::wstring text;
  return acedGetInput(text) == RTNORM ? text : std::wstring();
}

bool askDistance(const std::wstring& prompt, double& value) {
  double read = value;
  const int result = acedGetDist(nullptr, prompt.c_str(), &read);
  if (result == RTNORM) value = read;
  return result == RTNORM || result == RTNONE;
}

}  // namespace veltora
