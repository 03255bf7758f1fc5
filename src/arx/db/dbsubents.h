#pragma once

#include "arx/db/dbents.h"

#include <span>
#include <vector>

/// Walk over the live attributes or vertices of an entity, in order.
class ARX_API AcDbObjectIterator {
public:
  explicit AcDbObjectIterator(std::span<const AcDbObjectId> ids) : m_ids(ids.begin(), ids.end()) {
    skipErased();
  }
  void start() { m_at = 0, skipErased(); }
  [[nodiscard]] bool done() const { return m_at >= m_ids.size(); }
  void step() { ++m_at, skipErased(); }
  /// The null id at the end.
  [[nodiscard]] AcDbObjectId objectId() const { return done() ? AcDbObjectId() : m_ids[m_at]; }

private:
  void skipErased() {
    while (m_at < m_ids.size() && !m_ids[m_at].isLive()) ++m_at;
  }
  std::vector<AcDbObjectId> m_ids;
  std::size_t m_at = 0;
};

/// Part of an entity that owns attributes or vertices: their ids in order and that of the sequence end behind
/// them. The ids belong to objects of the owner's database; a list may hold erased ones.
class ARX_API AcDbSubEntityOwner {
public:
  /// For readers of files, in the order of the file: a part that the database holds already, and the end.
  void enterSub(AcDbObjectId part) { m_subs.push_back(part); }
  void enterEnd(AcDbObjectId sequenceEnd) { m_end = sequenceEnd; }
  /// For a copy, which shares its parts with the original until it gets its own.
  void forgetSubs() { m_subs.clear(), m_end.setNull(); }
  /// Class of what is owned: readers check what they enter.
  [[nodiscard]] virtual AcRxClass* subEntityClass() const = 0;
  [[nodiscard]] std::span<const AcDbObjectId> subEntityIds() const { return m_subs; }
  [[nodiscard]] AcDbObjectId sequenceEndId() const { return m_end; }
  [[nodiscard]] bool hasLiveSub() const;

protected:
  AcDbSubEntityOwner() = default;
  AcDbSubEntityOwner(const AcDbSubEntityOwner&) = default;
  AcDbSubEntityOwner& operator=(const AcDbSubEntityOwner&) = default;
  virtual ~AcDbSubEntityOwner() = default;
  /// Adds a part and, with the first one, the sequence end to the owner's database; the part is left open for
  /// writing. `eNotInDatabase` when the owner is in none, `eAlreadyInDb` when the part is in one.
  Acad::ErrorStatus appendSub(AcDbEntity& owner, AcDbObjectId& id, AcDbEntity* part);
  /// Parts in order and the end; without the end when nothing alive stands in front of it and `endNeedsSub`.
  [[nodiscard]] std::vector<AcDbObjectId> allSubs(bool endNeedsSub) const;
  void visitSubs(const std::function<void(AcDbObjectId&)>& visit);
  void exchangeSubs(AcDbSubEntityOwner& other) { m_subs.swap(other.m_subs), std::swap(m_end, other.m_end); }
  /// Applies a matrix to every live part.
  Acad::ErrorStatus transformSubs(const AcGeMatrix3d& matrix);

private:
  std::vector<AcDbObjectId, AcDbPoolAllocator<AcDbObjectId>> m_subs;
  AcDbObjectId m_end;
};
