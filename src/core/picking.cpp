#include "core/picking.h"

#include "arx/db/dbmain.h"
#include "arx/ed/acedads.h"
#include "core/xdata_names.h"

namespace veltora {

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
  entities.clear();
  ads_name set = {0, 0};
  const int result = acedSSGet(mode, nullptr, nullptr, filter, set);
  acutRelRb(filter);
  if (result != RTNORM) return result;
  entities = acedSSEntities(set);
  acedSSFree(set);
  return result;
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
