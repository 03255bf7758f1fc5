#include "arx/ed/edjig.h"

#include "arx/db/dbmain.h"
#include "arx/ed/edinput.h"
#include "arx/ed/edprompt.h"

#include <memory>
#include <sstream>

namespace {

/// Place of a keyword in its list, from 1; 0 when it is not there.
int numberOf(const AcString& keyword, const AcString& list) {
  std::wistringstream words(list);
  int number = 1;
  for (AcString word; words >> word; ++number)
    if (word == keyword) return number;
  return 0;
}

const AcDbEntity*& dragged() {
  static const AcDbEntity* entity = nullptr;
  return entity;
}

}  // namespace

const AcDbEntity* acedDragged() { return dragged(); }

AcEdJig::DragStatus AcEdJig::drag() {
  DragStatus status = sampler();
  if (status == kNormal) update();
  return status == kNoChange ? kNormal : status;
}

AcDbObjectId AcEdJig::append() {
  std::unique_ptr<AcDbEntity> owned(entity());
  AcDbDatabase* const database = acdbHostApplicationServices()->workingDatabase();
  AcDbObjectId id;
  if (!owned || !database) return id;
  const AcDbObjectPointer<AcDbBlockTableRecord> space(database->currentSpaceId(), AcDb::kForWrite);
  if (space.openStatus() != Acad::eOk || space->appendAcDbEntity(id, owned.get()) != Acad::eOk)
    return AcDbObjectId::kNull;
  owned.release()->close();
  return id;
}

AcEdJig::DragStatus AcEdJig::acquirePoint(AcGePoint3d& value) { return acquire(nullptr, value); }

AcEdJig::DragStatus AcEdJig::acquirePoint(AcGePoint3d& value, const AcGePoint3d& base) {
  const ads_point from = {base.x, base.y, base.z};
  return acquire(from, value);
}

/// Samples and shapes anew for a place that is no answer yet.
void AcEdJig::follow(const AcGePoint3d& cursor) {
  m_followed = cursor;
  const DragStatus status = sampler();
  if (status == kNormal) update();
  if (status == kNormal || status == kNoChange) dragged() = entity();
  m_followed.reset();
}

AcEdJig::DragStatus AcEdJig::acquire(const ads_real* base, AcGePoint3d& value) {
  if (m_followed) {
    value = *m_followed;
    return kNormal;
  }
  acedPromptState().drag = [this](const std::array<double, 3>& p) { follow({p[0], p[1], p[2]}); };
  const DragStatus status = ask(base, value);
  acedPromptState().drag = nullptr;
  dragged() = nullptr;
  return status;
}

AcEdJig::DragStatus AcEdJig::ask(const ads_real* base, AcGePoint3d& value) {
  ads_point point = {0.0, 0.0, 0.0};
  acedInitGet(0, m_keywords.c_str());
  switch (acedGetPoint(base, m_prompt.c_str(), point)) {
    case RTNORM:
      value.set(point[0], point[1], point[2]);
      return kNormal;
    case RTNONE:
      return kNull;
    case RTKWORD: {
      AcString keyword;
      acedGetInput(keyword);
      const int number = numberOf(keyword, m_keywords);
      return number > 0 ? static_cast<DragStatus>(number) : kOther;
    }
    default:
      return kCancel;
  }
}
