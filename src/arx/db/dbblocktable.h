#pragma once

#include "arx/db/dbsymtb.h"
#include "arx/ge/gematrix.h"

class AcDbEntity;

inline constexpr const ACHAR* ACDB_MODEL_SPACE = L"*Model_Space";
inline constexpr const ACHAR* ACDB_PAPER_SPACE = L"*Paper_Space";

/// Walk over the live entities of a block, in order.
class ARX_API AcDbBlockTableRecordIterator {
public:
  explicit AcDbBlockTableRecordIterator(const std::vector<AcDbObjectId>& ids) : m_ids(ids) { skipErased(); }
  void start() { m_at = 0, skipErased(); }
  [[nodiscard]] bool done() const { return m_at >= m_ids.size(); }
  void step() { ++m_at, skipErased(); }
  Acad::ErrorStatus getEntityId(AcDbObjectId& id) const;
  Acad::ErrorStatus getEntity(AcDbEntity*& entity, AcDb::OpenMode mode = AcDb::kForRead) const;

private:
  void skipErased() {
    while (m_at < m_ids.size() && !m_ids[m_at].isLive()) ++m_at;
  }
  const std::vector<AcDbObjectId>& m_ids;
  std::size_t m_at = 0;
};

/// A block definition: model space, a paper space, or a block that references show. Owns its entities in
/// order.
class ARX_API AcDbBlockTableRecord : public AcDbSymbolTableRecord {
  ACRX_DECLARE_MEMBERS(AcDbBlockTableRecord)
  ACDB_DECLARE_COPY(AcDbBlockTableRecord)
public:
  AcDbBlockTableRecord() = default;
  /// Without the entities and markers: they belong to the original, and undo restores them one by one.
  AcDbBlockTableRecord(const AcDbBlockTableRecord& other)
      : AcDbSymbolTableRecord(other),
        m_origin(other.m_origin),
        m_comments(other.m_comments),
        m_layout(other.m_layout) {}
  /// The database owns the entity from then on; it takes the drawing's current properties and stays open for
  /// writing until the caller closes it. `eAlreadyInDb` when it is resident already; needs the record open
  /// for writing.
  Acad::ErrorStatus appendAcDbEntity(AcDbObjectId& id, AcDbEntity* entity);
  Acad::ErrorStatus appendAcDbEntity(AcDbEntity* entity);
  Acad::ErrorStatus newIterator(AcDbBlockTableRecordIterator*& iterator) const;
  /// All entities, the erased ones included.
  [[nodiscard]] const std::vector<AcDbObjectId>& entities() const { return m_entities; }
  /// The last one that is not erased, null for none. However many erased ones stand behind it, they are
  /// passed over once.
  [[nodiscard]] AcDbObjectId lastEntity() const;
  [[nodiscard]] AcGePoint3d origin() const { return m_origin; }
  Acad::ErrorStatus setOrigin(const AcGePoint3d& origin);
  [[nodiscard]] AcString comments() const { return m_comments; }
  Acad::ErrorStatus setComments(const ACHAR* text);
  [[nodiscard]] bool isLayout() const { return !m_layout.isNull(); }
  [[nodiscard]] bool isAnonymous() const { return !m_name.empty() && m_name[0] == L'*'; }
  [[nodiscard]] AcDbObjectId getLayoutId() const { return m_layout; }
  void setLayoutId(AcDbObjectId layout) { m_layout = layout; }
  [[nodiscard]] bool hasAttributeDefinitions() const;
  /// Live references to this block in blocks and layouts, found by a walk over the drawing.
  Acad::ErrorStatus getBlockReferenceIds(std::vector<AcDbObjectId>& ids) const;
  /// Box around all live entities; `eInvalidExtents` when there is none.
  Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const;
  /// What references show of it.
  void subWorldDraw(AcGiWorldDraw& draw) const override;
  [[nodiscard]] AcDbObjectId blockBeginId() const { return m_begin; }
  [[nodiscard]] AcDbObjectId blockEndId() const { return m_end; }
  void setBlockMarkers(AcDbObjectId begin, AcDbObjectId end) { m_begin = begin, m_end = end; }
  void enter(AcDbObjectId entity) { m_entities.push_back(entity); }  ///< for readers of files
  [[nodiscard]] int flags() const { return m_flags; }
  void setFlags(int flags) { m_flags = flags; }

  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;
  void visitReferences(const std::function<void(AcDbObjectId&)>& visit) override;
  [[nodiscard]] std::vector<AcDbObjectId> ownedObjects() const override { return m_entities; }

protected:
  void exchangeFields(AcDbBlockTableRecord& other);

private:
  [[nodiscard]] AcDbExtents measured() const;
  AcGePoint3d m_origin;
  AcString m_comments;
  AcDbObjectId m_layout;
  AcDbObjectId m_begin;  // BLOCK and ENDBLK entities, made when missing
  AcDbObjectId m_end;
  std::vector<AcDbObjectId> m_entities;
  // What `lastEntity` knows: among the first `size` entities all from `liveEnd` on are erased, as long as
  // nothing came back.
  struct Tail {
    std::size_t liveEnd = 0;
    std::size_t size = 0;
    Adesk::UInt64 revivals = 0;
  };
  mutable Tail m_tail;
};

/// The block of an id, open or not; null when it is erased or no block.
ARX_API const AcDbBlockTableRecord* acdbBlockRecord(AcDbObjectId id);

/// Makes an empty block whose name is a beginning ("*T") and a number that no block bears behind it. Null
/// when the drawing does not take it. Costs a few look-ups however many such blocks there are.
ARX_API AcDbObjectId acdbAddNumberedBlock(AcDbDatabase& database, const std::wstring& beginning);
