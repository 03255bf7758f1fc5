#include "arx/db/dbblockref.h"

#include "arx/db/dbmain.h"
#include "arx/db/dbplanemap.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

ACDB_DEFINE_MEMBERS(AcDbBlockReference, AcDbEntity, "INSERT")

namespace {

constexpr std::size_t kDeepest = 200;       // blocks within blocks; what is deeper is not measured
constexpr std::size_t kFewEntities = 1000;  // of a nested block that is measured exactly each time
constexpr double kRightAngle = 1e-9;        // relative: axes of a block that are farther from it are refused

bool isFactor(double value) { return value != 0 && std::isfinite(value); }

const AcDbBlockTableRecord* recordOf(AcDbObjectId block) {
  return block.isLive() ? AcDbBlockTableRecord::cast(block.stub()->object) : nullptr;
}

// The blocks whose extents are being gathered, one within the other, and the boxes of nested ones found so
// far. A block that shows itself is entered once; a nested block with many entities is measured once and
// stands in as a box after that, so that deep nesting costs no more than its blocks have entities.
class BlockVisit {
public:
  explicit BlockVisit(const AcDbBlockTableRecord* block)
      : m_isNew(block && depth() < kDeepest && !contains(block)) {
    if (m_isNew) state().open.push_back(block);
  }
  ~BlockVisit() {
    if (!m_isNew) return;
    state().open.pop_back();
    if (state().open.empty()) state().boxes.clear();
  }
  BlockVisit(const BlockVisit&) = delete;
  BlockVisit& operator=(const BlockVisit&) = delete;
  [[nodiscard]] bool isNew() const { return m_isNew; }
  [[nodiscard]] static std::size_t depth() { return state().open.size(); }
  static std::unordered_map<const AcDbBlockTableRecord*, AcDbExtents>& boxes() { return state().boxes; }

private:
  struct State {
    std::vector<const AcDbBlockTableRecord*> open;
    std::unordered_map<const AcDbBlockTableRecord*, AcDbExtents> boxes;
  };
  static State& state() {
    thread_local State value;
    return value;
  }
  static bool contains(const AcDbBlockTableRecord* block) {
    const auto& open = state().open;
    return std::find(open.begin(), open.end(), block) != open.end();
  }
  bool m_isNew;
};

// What a reference shows of an entity of its block: not the definitions of attributes that have values of
// their own.
bool isShown(const AcDbEntity& entity) {
  if (entity.visibility() == AcDb::kInvisible) return false;
  const AcDbAttributeDefinition* definition = AcDbAttributeDefinition::cast(&entity);
  return !definition || (definition->isConstant() && !definition->isInvisible());
}

void addEntities(const AcDbBlockTableRecord& block, const AcGeMatrix3d& matrix, AcDbExtents& extents) {
  for (const AcDbObjectId& id : block.entities()) {
    const AcDbEntity* entity = id.isLive() ? AcDbEntity::cast(id.stub()->object) : nullptr;
    if (entity && isShown(*entity)) entity->addExtentsUnder(matrix, extents);
  }
}

void addBlock(const AcDbBlockTableRecord& block, const AcGeMatrix3d& matrix, AcDbExtents& extents) {
  if (BlockVisit::depth() <= 2 && block.entities().size() <= kFewEntities)
    return addEntities(block, matrix, extents);
  if (BlockVisit::depth() <= 1) return addEntities(block, matrix, extents);
  const auto [found, isNew] = BlockVisit::boxes().try_emplace(&block);
  if (isNew) {
    AcDbExtents own;
    addEntities(block, AcGeMatrix3d(), own);
    BlockVisit::boxes()[&block] = own;  // the map may have grown meanwhile
  }
  AcDbExtents box = BlockVisit::boxes()[&block];
  if (box.isEmpty()) return;
  box.transformBy(matrix);
  extents.addExt(box);
}

}  // namespace

AcDbBlockReference::AcDbBlockReference(const AcDbBlockReference& other)
    : AcDbEntity(other),
      AcDbSubEntityOwner(other),
      m_position(other.m_position),
      m_scale(other.m_scale),
      m_normal(other.m_normal),
      m_rotation(other.m_rotation),
      m_block(other.m_block),
      m_grid(other.m_grid ? std::make_unique<Grid>(*other.m_grid) : nullptr) {}

Acad::ErrorStatus AcDbBlockReference::setBlockTableRecord(AcDbObjectId block) {
  return change(m_block, block);
}

AcGePoint3d AcDbBlockReference::position() const { return acdbToWorld(m_position, m_normal); }
Acad::ErrorStatus AcDbBlockReference::setPosition(const AcGePoint3d& position) {
  return change(m_position, acdbToPlane(position, m_normal));
}

Acad::ErrorStatus AcDbBlockReference::setScaleFactors(const AcGeScale3d& factors) {
  const bool good = isFactor(factors.sx) && isFactor(factors.sy) && isFactor(factors.sz);
  return good ? change(m_scale, factors) : Acad::eInvalidInput;
}

double AcDbBlockReference::rotation() const { return acdbRadians(m_rotation); }
Acad::ErrorStatus AcDbBlockReference::setRotation(double radians) {
  return std::isfinite(radians) ? change(m_rotation, acdbDegrees(radians)) : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbBlockReference::setNormal(const AcGeVector3d& normal) {
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  m_position = acdbToPlane(position(), acdbUnitNormal(normal));
  m_normal = acdbUnitNormal(normal);
  return status;
}

AcGeMatrix3d AcDbBlockReference::blockTransform() const {
  const AcDbBlockTableRecord* block = recordOf(m_block);
  const AcGePoint3d origin = block ? block->origin() : AcGePoint3d::kOrigin;
  const AcGeMatrix3d turned =
      AcGeMatrix3d::rotation(acdbRadians(m_rotation), AcGeVector3d::kZAxis) * AcGeMatrix3d::scaling(m_scale);
  const AcGeMatrix3d placed = AcGeMatrix3d::translation(m_position.asVector()) * turned *
                              AcGeMatrix3d::translation(-origin.asVector());
  if (m_normal == AcGeVector3d::kZAxis) return placed;
  return AcGeMatrix3d::planeToWorld(acdbUnitNormal(m_normal)) * placed;
}

Acad::ErrorStatus AcDbBlockReference::setBlockTransform(const AcGeMatrix3d& matrix) {
  const AcGeVector3d x = matrix * AcGeVector3d::kXAxis;
  const AcGeVector3d y = matrix * AcGeVector3d::kYAxis;
  const AcGeVector3d z = matrix * AcGeVector3d::kZAxis;
  const AcGeScale3d size(x.length(), y.length(), z.length());
  if (!isFactor(size.sx) || !isFactor(size.sy) || !isFactor(size.sz)) return Acad::eInvalidInput;
  const bool square = std::fabs(x.dotProduct(y)) <= kRightAngle * size.sx * size.sy &&
                      std::fabs(y.dotProduct(z)) <= kRightAngle * size.sy * size.sz &&
                      std::fabs(z.dotProduct(x)) <= kRightAngle * size.sz * size.sx;
  if (!square) return Acad::eCannotScaleNonUniformly;
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  const AcDbBlockTableRecord* block = recordOf(m_block);
  m_normal = acdbUnitNormal(z);
  const AcGeMatrix3d toPlane = AcGeMatrix3d::worldToPlane(m_normal);
  const AcGeVector3d flat = toPlane * x;
  m_position = acdbToPlane(matrix * (block ? block->origin() : AcGePoint3d::kOrigin), m_normal);
  m_rotation = acdbDegrees(AcGeVector2d(flat.x, flat.y).angle());
  m_scale = size;
  if (x.crossProduct(y).dotProduct(z) < 0) m_scale.sy = -m_scale.sy;
  return status;
}

AcDbBlockReference::Grid& AcDbBlockReference::ownGrid() {
  if (!m_grid) m_grid = std::make_unique<Grid>();
  return *m_grid;
}

Acad::ErrorStatus AcDbBlockReference::appendAttribute(AcDbObjectId& id, AcDbAttribute* attribute) {
  return appendSub(*this, id, attribute);
}

Acad::ErrorStatus AcDbBlockReference::appendAttribute(AcDbAttribute* attribute) {
  AcDbObjectId id;
  return appendAttribute(id, attribute);
}

AcDbObjectIterator* AcDbBlockReference::attributeIterator() const {
  return new AcDbObjectIterator(subEntityIds());
}

Acad::ErrorStatus AcDbBlockReference::transformBy(const AcGeMatrix3d& matrix) {
  const AcDbPlaneMap plane(matrix, m_normal);
  const bool simple = plane.valid && plane.conformal && plane.upright;
  Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  if (simple) {
    m_position = plane.map * m_position;
    m_normal = plane.normal;
    m_rotation = plane.turned(m_rotation);
    m_scale.sx *= plane.factor;
    m_scale.sy *= plane.mirrored ? -plane.factor : plane.factor;
    m_scale.sz *= plane.depth;
    if (m_grid) {
      m_grid->columnSpacing *= plane.factor;
      m_grid->rowSpacing *= plane.mirrored ? -plane.factor : plane.factor;
    }
  } else {
    status = setBlockTransform(matrix * blockTransform());
  }
  // A copy without a place in a drawing shares its attributes with the original.
  return status == Acad::eOk && database() ? transformSubs(matrix) : status;
}

Acad::ErrorStatus AcDbBlockReference::getGeomExtents(AcDbExtents& extents) const {
  AcDbExtents own;
  addExtentsUnder(AcGeMatrix3d(), own);
  if (own.isEmpty()) return Acad::eInvalidExtents;
  extents = own;
  return Acad::eOk;
}

// The block at the four corners of its rows and columns: their box holds what lies between.
void AcDbBlockReference::addGridExtents(const AcGeMatrix3d& matrix, AcDbExtents& extents) const {
  const AcDbBlockTableRecord& block = *recordOf(m_block);
  const AcGeMatrix3d placed = blockTransform();
  addBlock(block, matrix * placed, extents);
  if (!m_grid || (m_grid->columns <= 1 && m_grid->rows <= 1)) return;
  const AcGeMatrix3d turned = AcGeMatrix3d::planeToWorld(acdbUnitNormal(m_normal)) *
                              AcGeMatrix3d::rotation(acdbRadians(m_rotation), AcGeVector3d::kZAxis);
  const AcGeVector3d across = turned * AcGeVector3d((m_grid->columns - 1) * m_grid->columnSpacing, 0, 0);
  const AcGeVector3d up = turned * AcGeVector3d(0, (m_grid->rows - 1) * m_grid->rowSpacing, 0);
  for (const AcGeVector3d& step : {across, up, across + up}) {
    addBlock(block, matrix * AcGeMatrix3d::translation(step) * placed, extents);
  }
}

void AcDbBlockReference::addExtentsUnder(const AcGeMatrix3d& matrix, AcDbExtents& extents) const {
  {
    const BlockVisit visit(recordOf(m_block));
    if (visit.isNew()) addGridExtents(matrix, extents);
  }
  for (const AcDbObjectId& id : subEntityIds()) {
    const AcDbAttribute* attribute = id.isLive() ? AcDbAttribute::cast(id.stub()->object) : nullptr;
    if (!attribute || attribute->isInvisible() || attribute->visibility() == AcDb::kInvisible) continue;
    attribute->addExtentsUnder(matrix, extents);
  }
}

bool AcDbBlockReference::takeGroup(AcDbDxfReader& in) {
  switch (in.code()) {
    case 2:
      m_block = in.block();
      return true;
    case 41:
      m_scale.sx = in.real();
      return true;
    case 42:
      m_scale.sy = in.real();
      return true;
    case 43:
      m_scale.sz = in.real();
      return true;
    case 50:
      m_rotation = in.real();
      return true;
    case 66:
      return true;  // follows from the attributes
    case 44:
      ownGrid().columnSpacing = in.real();
      return true;
    case 45:
      ownGrid().rowSpacing = in.real();
      return true;
    case 70:
      ownGrid().columns = static_cast<Adesk::Int16>(in.integer());
      return true;
    case 71:
      ownGrid().rows = static_cast<Adesk::Int16>(in.integer());
      return true;
    default:
      return in.coordinate(10, m_position) || in.coordinate(210, m_normal);
  }
}

void AcDbBlockReference::dxfInFields(AcDbDxfReader& in) {
  AcDbEntity::dxfInFields(in);
  if (!readSection(in, "AcDbBlockReference") && readSection(in, "AcDbMInsertBlock"))
    ownGrid().ownMarker = true;
  if (m_grid && *m_grid == Grid()) m_grid.reset();
}

void AcDbBlockReference::dxfOutFields(AcDbDxfWriter& out) const {
  const std::string_view marker = m_grid && m_grid->ownMarker ? "AcDbMInsertBlock" : "AcDbBlockReference";
  AcDbEntity::dxfOutFields(out);
  out.subclass(marker);
  if (hasLiveSub()) out.integer(66, 1);
  const AcDbSymbolTableRecord* block =
      m_block.isValid() ? AcDbSymbolTableRecord::cast(m_block.stub()->object) : nullptr;
  out.wide(2, block ? std::wstring_view(block->name()) : std::wstring_view());
  out.point(10, m_position);
  if (m_scale.sx != 1.0) out.real(41, m_scale.sx);
  if (m_scale.sy != 1.0) out.real(42, m_scale.sy);
  if (m_scale.sz != 1.0) out.real(43, m_scale.sz);
  if (m_rotation != 0.0) out.real(50, m_rotation);
  if (m_grid) {
    if (m_grid->columns != 1) out.integer(70, m_grid->columns);
    if (m_grid->rows != 1) out.integer(71, m_grid->rows);
    if (m_grid->columnSpacing != 0.0) out.real(44, m_grid->columnSpacing);
    if (m_grid->rowSpacing != 0.0) out.real(45, m_grid->rowSpacing);
  }
  out.normal(m_normal);
  writeExtras(out, marker);
}

void AcDbBlockReference::visitReferences(const std::function<void(AcDbObjectId&)>& visit) {
  AcDbEntity::visitReferences(visit);
  visit(m_block);
  visitSubs(visit);
}

void AcDbBlockReference::exchangeFields(AcDbBlockReference& other) {
  std::swap(m_position, other.m_position);
  std::swap(m_scale, other.m_scale);
  std::swap(m_normal, other.m_normal);
  std::swap(m_rotation, other.m_rotation);
  std::swap(m_block, other.m_block);
  m_grid.swap(other.m_grid);
  exchangeSubs(other);
  AcDbEntity::exchangeFields(other);
}
