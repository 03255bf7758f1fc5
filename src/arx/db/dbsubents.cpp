#include "arx/db/dbsubents.h"

#include "arx/db/dbmain.h"

namespace {

Acad::ErrorStatus addSequenceEnd(const AcDbEntity& owner, AcDbObjectId& id) {
  auto end = std::make_unique<AcDbSequenceEnd>();
  const Acad::ErrorStatus status = owner.database()->addAcDbObject(id, end.get());
  if (status != Acad::eOk) return status;
  AcDbSequenceEnd* const added = end.release();
  added->setOwnerId(owner.objectId());
  added->setLayer(owner.layerId());
  added->setInPaperSpace(owner.inPaperSpace());
  return added->close();
}

}  // namespace

bool AcDbSubEntityOwner::hasLiveSub() const {
  for (const AcDbObjectId& id : m_subs) {
    if (id.isLive()) return true;
  }
  return false;
}

Acad::ErrorStatus AcDbSubEntityOwner::appendSub(AcDbEntity& owner, AcDbObjectId& id, AcDbEntity* part) {
  if (!part) return Acad::eNullObjectPointer;
  if (!owner.database()) return Acad::eNotInDatabase;
  if (part->database()) return Acad::eAlreadyInDb;
  const Acad::ErrorStatus allowed = owner.assertWriteEnabled();
  if (allowed != Acad::eOk) return allowed;
  if (!m_end.isLive()) {
    AcDbObjectId end;
    const Acad::ErrorStatus made = addSequenceEnd(owner, end);
    if (made != Acad::eOk) return made;
    m_end = end;
  }
  part->setDatabaseDefaults(owner.database());
  const Acad::ErrorStatus added = owner.database()->addAcDbObject(id, part);
  if (added != Acad::eOk) return added;
  part->setOwnerId(owner.objectId());
  part->setInPaperSpace(owner.inPaperSpace());
  m_subs.push_back(id);
  return Acad::eOk;
}

std::vector<AcDbObjectId> AcDbSubEntityOwner::allSubs(bool endNeedsSub) const {
  std::vector<AcDbObjectId> all(m_subs.begin(), m_subs.end());
  // An erased end went with its erased owner, and comes back with it.
  const bool endCounts = !endNeedsSub || hasLiveSub() || m_end.isErased();
  if (!m_end.isNull() && endCounts) all.push_back(m_end);
  return all;
}

void AcDbSubEntityOwner::visitSubs(const std::function<void(AcDbObjectId&)>& visit) {
  for (AcDbObjectId& id : m_subs) visit(id);
  if (!m_end.isNull()) visit(m_end);
}

Acad::ErrorStatus AcDbSubEntityOwner::transformSubs(const AcGeMatrix3d& matrix) {
  Acad::ErrorStatus result = Acad::eOk;
  for (const AcDbObjectId& id : m_subs) {
    if (!id.isLive()) continue;
    const AcDbObjectPointer<AcDbEntity> part(id, AcDb::kForWrite);
    const Acad::ErrorStatus status =
        part.openStatus() == Acad::eOk ? part->transformBy(matrix) : part.openStatus();
    if (result == Acad::eOk) result = status;
  }
  return result;
}
