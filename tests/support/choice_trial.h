#pragma once

#include "arx/db/dballents.h"
#include "arx/db/dbmain.h"
#include "arx/ed/acedads.h"
#include "arx/ed/acutads.h"
#include "arx/ed/edfilter.h"
#include "arx/ed/edpick.h"
#include "arx/ed/edports.h"
#include "base/files.h"
#include "base/text.h"

#include <array>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

/// Edits two drawings as bytes say (adds, moves, erases, undoes, changes blocks, layers and styles, saves)
/// and chooses in between: what the index finds must be what a walk over all entities finds, in the same
/// order.
class ChoiceTrial {
public:
  /// @param bytes  one for each decision; the trial ends with them
  explicit ChoiceTrial(std::string_view bytes) : m_bytes(bytes) {
    for (Drawing& d : m_drawings) prepare(d);
    use(m_drawings[0]);
  }
  ChoiceTrial(const ChoiceTrial&) = delete;
  ChoiceTrial& operator=(const ChoiceTrial&) = delete;
  ~ChoiceTrial() { acdbHostApplicationServices()->setWorkingDatabase(nullptr); }

  /// @return  what differed, and after how many bytes; empty for nothing
  std::string run() {
    while (m_at < m_bytes.size() && m_fault.empty()) {
      use(m_drawings[byte() % 8 == 0 ? 1 : 0]);
      edit();
      if (byte() % 2 == 0) ask();
    }
    while (m_now->db->undoLog().depth() > 0) m_now->db->undoLog().end();
    ask();
    return m_fault;
  }

private:
  using Ids = std::vector<AcDbObjectId>;
  struct Drawing {
    std::unique_ptr<AcDbDatabase> db = std::make_unique<AcDbDatabase>();
    Ids made;  // entities, parts of blocks and attributes
    Ids blocks;
    Ids layers;
    AcDbObjectId style;
  };
  static constexpr std::size_t kMost = 60;  // of `made`: a walk looks at all of them

  static void prepare(Drawing& d) {
    for (const wchar_t* name : {L"A", L"B", L"C"}) d.blocks.push_back(d.db->recordOf("BLOCK_RECORD", name));
    d.blocks.push_back(d.db->paperSpaceId());
    d.blocks.push_back(d.db->modelSpaceId());
    for (const wchar_t* name : {L"0", L"UN", L"DEUX"}) d.layers.push_back(d.db->recordOf("LAYER", name));
    for (const wchar_t* name : {L"ESSAI", L"AUTRE"}) static_cast<void>(d.db->recordOf("APPID", name));
    d.style = d.db->textstyle();
  }
  void use(Drawing& d) {
    if (m_now && m_now != &d)
      while (m_now->db->undoLog().depth() > 0) m_now->db->undoLog().end();
    m_now = &d;
    acdbHostApplicationServices()->setWorkingDatabase(d.db.get());
  }

  unsigned byte() { return m_at < m_bytes.size() ? static_cast<unsigned char>(m_bytes[m_at++]) : 0U; }
  // Whole numbers, so that things touch.
  AcGePoint3d point() {
    const double x = byte() % 32;
    return {650000.0 + x, 6860000.0 + byte() % 32, 0.0};
  }
  AcGeVector3d step() {
    const double x = byte() % 7;
    return {x - 3.0, byte() % 7 - 3.0, 0.0};
  }
  AcDbObjectId oneOf(const Ids& ids) {
    const unsigned choice = byte();
    return ids.empty() ? AcDbObjectId() : ids[choice % ids.size()];
  }

  // ---- Edits

  AcDbEntity* newEntity() {
    const AcGePoint3d at = point();
    switch (byte() % 8) {
      case 0:
        return new AcDbCircle(at, AcGeVector3d::kZAxis, 1.0 + byte() % 3);
      case 1:
        return new AcDbText(at, L"12.5", m_now->style, 0.0);
      case 2: {
        auto* ray = new AcDbRay;
        ray->setBasePoint(at);
        ray->setUnitDir({1, 0, 0});
        return ray;
      }
      case 3:
        return new AcDbPoint(at);
      case 4:
        return new AcDbOtherEntity("HATCH");
      case 5:
        return new AcDbLine(at, at + step());
      default:
        return new AcDbBlockReference(at, oneOf(m_now->blocks));
    }
  }

  void add() {
    if (m_now->made.size() >= kMost) return move();
    const AcDbObjectId block = byte() % 4 == 0 ? oneOf(m_now->blocks) : m_now->db->modelSpaceId();
    std::unique_ptr<AcDbEntity> entity(newEntity());
    // What blocks show in blocks multiplies; a few parts show all there is to see.
    AcDbObjectPointer<AcDbBlockTableRecord> owner(block, AcDb::kForWrite);
    if (!owner || (block != m_now->db->modelSpaceId() && owner->entities().size() >= 4)) return;
    AcDbObjectId id;
    if (owner->appendAcDbEntity(id, entity.get()) != Acad::eOk) return;
    m_now->made.push_back(id);
    AcDbEntity* const placed = entity.release();
    auto* const reference = AcDbBlockReference::cast(placed);
    for (unsigned i = reference ? byte() % 3 : 0; i > 0; --i) {
      auto* const attribute = new AcDbAttribute(reference->position() + step(), L"7", L"T", m_now->style);
      AcDbObjectId part;
      if (reference->appendAttribute(part, attribute) == Acad::eOk) m_now->made.push_back(part);
      attribute->setHeight(1.0);
      attribute->close();
    }
    placed->close();
  }

  void move() {
    const AcDbObjectPointer<AcDbEntity> entity(oneOf(m_now->made), AcDb::kForWrite);
    if (entity) entity->transformBy(AcGeMatrix3d::translation(step()));
  }

  void modify() {
    const AcDbObjectPointer<AcDbEntity> entity(oneOf(m_now->made), AcDb::kForWrite);
    if (!entity) return;
    const unsigned what = byte() % 5;
    if (what == 4) {
      const wchar_t* const application = byte() % 2 ? L"ESSAI" : L"AUTRE";
      const AcEdRbHolder data(byte() % 2 ? acutBuildList(1001, application, 1070, 1)
                                         : acutBuildList(1001, application));
      entity->setXData(data.get());
    }
    if (what == 0) entity->setVisibility(byte() % 2 ? AcDb::kVisible : AcDb::kInvisible);
    if (what == 1) entity->setLayer(oneOf(m_now->layers));
    if (auto* reference = AcDbBlockReference::cast(entity.object())) {
      if (what == 2) reference->setBlockTableRecord(oneOf(m_now->blocks));
      if (what == 3) reference->setPosition(point());
    } else if (auto* text = AcDbText::cast(entity.object())) {
      if (what == 2) text->setTextString(byte() % 2 ? L"" : L"un texte");
      if (what == 3) text->setHeight(1.0 + byte() % 3);
    }
  }

  void modifyGroups() {
    ads_name name = {0, 0};
    if (acdbGetAdsName(name, oneOf(m_now->made)) != Acad::eOk) return;
    const AcEdRbHolder groups(acdbEntGet(name));
    for (resbuf* item = groups.get(); item; item = item->rbnext) {
      if (item->restype != 10) continue;
      item->resval.rpoint[0] += byte() % 5;
      break;
    }
    if (groups) acdbEntMod(groups.get());
  }

  void erase(AcDbObjectId id) {
    const AcDbObjectPointer<AcDbObject> object(id, AcDb::kForWrite, true);
    if (object) object->erase(!object->isErased());
  }

  void changeTables() {
    const AcDbObjectPointer<AcDbLayerTableRecord> layer(oneOf(m_now->layers), AcDb::kForWrite);
    const AcDbObjectPointer<AcDbTextStyleTableRecord> style(m_now->style, AcDb::kForWrite);
    const AcDbObjectPointer<AcDbBlockTableRecord> block(m_now->blocks[byte() % 3], AcDb::kForWrite, true);
    switch (byte() % 5) {
      case 0:
        if (layer) layer->setIsOff(!layer->isOff());
        break;
      case 1:
        if (layer) layer->setIsFrozen(!layer->isFrozen());
        break;
      case 2:
        if (style) style->setTextSize(1.0 + byte() % 3);
        break;
      case 3:
        if (block) block->setOrigin({1.0 * (byte() % 3), 0.0, 0.0});
        break;
      default:
        if (block) block->erase(!block->isErased());
    }
  }

  void save() {
    namespace base = veltora::base;
    const std::filesystem::path file = base::creerFichierTemporaire(base::dossierTemporaire(), "CHX");
    const std::wstring name = base::fromUtf8(file.string() + ".dxf");
    Drawing read;
    read.db = std::make_unique<AcDbDatabase>(false);
    const std::wstring former = m_now->db->fileName();
    if (m_now->db->saveAs(name.c_str()) == Acad::eOk && read.db->readDwgFile(name.c_str()) == Acad::eOk) {
      Drawing* const own = m_now;
      m_now = &read;
      ask();
      m_now = own;
    }
    std::error_code ignored;
    std::filesystem::remove(file, ignored);
    std::filesystem::remove(file.string() + ".dxf", ignored);
  }

  void edit() {
    AcDbUndoLog& log = m_now->db->undoLog();
    switch (byte() % 16) {
      case 0:
        if (log.depth() == 0) log.undo();
        return;
      case 1:
        if (log.depth() == 0) log.redo();
        return;
      case 2:
        return log.depth() < 3 ? log.begin(L"ESSAI") : log.end();
      case 3:
        return byte() % 2 ? log.rollBack() : log.end();
      case 4:
        return changeTables();
      case 5:
        return erase(oneOf(m_now->made));
      case 6:
        return modifyGroups();
      case 7: {  // what is open is passed by, and goes on changing
        const AcDbObjectPointer<AcDbEntity> open(oneOf(m_now->made), AcDb::kForWrite);
        if (open && byte() % 4 == 0)
          open->erase();
        else if (open)
          open->transformBy(AcGeMatrix3d::translation(step()));
        ask();
        if (open) open->transformBy(AcGeMatrix3d::translation(step()));
        return;
      }
      case 8:
        return byte() % 16 == 0 ? save() : modify();
      case 9:
      case 10:
        return modify();
      case 11:
        return move();
      default:
        return add();
    }
  }

  // ---- Questions

  static bool same(const std::optional<AcEdHit>& a, const std::optional<AcEdHit>& b) {
    if (!a || !b) return !a && !b;
    return a->entity == b->entity && a->innermost == b->innermost && a->references == b->references &&
           a->distance == b->distance;
  }

  void expect(bool right, const char* what) {
    if (!right && m_fault.empty()) m_fault = std::string(what) + " after " + std::to_string(m_at) + " bytes";
  }

  void ask() {
    AcDbDatabase& db = *m_now->db;
    const AcEdPicker index(db);
    const AcEdPicker walk(db, AcEdPicker::Way::kWalk);
    const AcGePoint3d a = point();
    const AcGePoint3d b = a + step() * 3.0;
    const Ids seen = index.visible();
    expect(index.lastVisible() == (seen.empty() ? AcDbObjectId() : seen.back()), "last");
    const double aperture = 0.25 * (byte() % 8);
    expect(same(index.pick(a, aperture), walk.pick(a, aperture)), "pick");
    for (const bool crossing : {false, true}) {
      expect(index.window(a, b, crossing) == walk.window(a, b, crossing), crossing ? "crossing" : "window");
      const AcEdOutline line({{a.x, a.y}, {b.x, b.y}, {a.x, b.y + 5.0}}, byte() % 2 == 0);
      expect(index.outline(line, crossing) == walk.outline(line, crossing), "outline");
    }
    for (resbuf* chain :
         {acutBuildList(0, L"INSERT,TEXT"), acutBuildList(8, L"un", 0, L"*E*"), acutBuildList(8, L"DEUX,0"),
          acutBuildList(-3, 1001, L"ESSAI"), acutBuildList(-3, 1001, L"A*", 0, L"LINE"),
          acutBuildList(-4, L"<NOT", 0, L"LINE", -4, L"NOT>")}) {
      const AcEdRbHolder holder(chain);
      const AcEdFilter filter(chain);
      expect(index.fitting(filter) == walk.fitting(filter), "filter");
    }
    const AcDbObjectPointer<AcDbBlockTableRecord> space(db.modelSpaceId());
    AcDbExtents whole, sum, box;
    space->getGeomExtents(whole);
    for (const AcDbObjectId id : space->entities()) {
      const auto* entity = id.isLive() ? AcDbEntity::cast(id.stub()->object) : nullptr;
      if (entity && entity->getGeomExtents(box) == Acad::eOk) sum.addExt(box);
    }
    expect(whole.minPoint() == sum.minPoint() && whole.maxPoint() == sum.maxPoint(), "extents");
  }

  std::string_view m_bytes;
  std::size_t m_at = 0;
  std::array<Drawing, 2> m_drawings;
  Drawing* m_now = nullptr;
  std::string m_fault;
};
