// Puts any bytes as extended data on an entity, as a mark of an obstacle: what a job reads of it, sights
// meet.
#include "fuzz/fuzz.h"

#include "arx/db/dbblockref.h"
#include "arx/db/dblines.h"
#include "arx/db/dbservices.h"
#include "core/drawing_space.h"
#include "core/resbuf_serializer.h"
#include "stakeout/marques_implantation.h"
#include "stakeout/projet_implantation.h"

#include <cstring>
#include <memory>

using namespace veltora;

namespace {

/// The bytes in turn.
class Bytes {
public:
  explicit Bytes(std::string_view bytes) : m_bytes(bytes) {}
  [[nodiscard]] bool empty() const { return m_bytes.empty(); }
  template <class Value>
  Value take() {
    Value value{};
    const std::size_t size = std::min(sizeof value, m_bytes.size());
    std::memcpy(&value, m_bytes.data(), size);
    m_bytes.remove_prefix(size);
    return value;
  }

private:
  std::string_view m_bytes;
};

resbuf* item(Bytes& bytes) {
  constexpr short kCodes[] = {1071, 1040, 1041, 1042, 1070, 1000, 1003, 1010, 1005};
  resbuf* made = acutNewRb(kCodes[bytes.take<std::uint8_t>() % std::size(kCodes)]);
  switch (acutRbKind(made->restype)) {
    case RbKind::kLong: {
      // The two magic numbers are easier to meet so.
      constexpr std::int32_t kMagic[] = {71209, 87340};
      const auto choice = bytes.take<std::uint8_t>();
      made->resval.rlong = choice < 128 ? kMagic[choice % 2] : bytes.take<std::int32_t>();
      break;
    }
    case RbKind::kReal:
      made->resval.rreal = bytes.take<double>();
      break;
    case RbKind::kShort:
      made->resval.rint = bytes.take<short>();
      break;
    case RbKind::kPoint:
      for (double& coordinate : made->resval.rpoint) coordinate = bytes.take<double>();
      break;
    case RbKind::kText:
      acutNewString(std::wstring(bytes.take<std::uint8_t>() % 40, L'x'), made->resval.rstring);
      break;
    default:
      break;
  }
  return made;
}

void mark(Bytes& bytes, const AcDbObjectId& id) {
  chaineResbuf chain(acutBuildList(1001, kXDataObstacles, RTNONE));
  for (int count = bytes.take<std::uint8_t>() % 7; count > 0; --count) chain.ajouter(item(bytes));
  const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
  entity->setXData(chain.tete);
}

}  // namespace

void fuzz(std::string_view given) {
  AcDbDatabase drawing;
  acdbHostApplicationServices()->setWorkingDatabase(&drawing);
  acdbRegApp(kXDataObstacles);
  Bytes bytes(given);
  const AcDbObjectId line =
      addToModelSpace(std::make_unique<AcDbLine>(AcGePoint3d(5, -9, 0), AcGePoint3d(5, 9, 3)));
  const AcDbObjectId block = addToModelSpace(
      std::make_unique<AcDbBlockReference>(AcGePoint3d(8, 0, 0), drawing.recordOf("BLOCK_RECORD", L"B")));
  mark(bytes, line);
  mark(bytes, block);
  {
    projetImplantation job;
    require(job.obstacles.GetSize() <= 2);
    const AcDbLine sight({0, 0, 0}, {10, 0, 0});
    for (obstacleImplantation* obstacle : job.obstacles) {
      AcGePoint3dArray points;
      require(obstacle->intersections(sight, points) == !points.empty());
      for (const AcGePoint3d& point : points)
        require(point.z == 0.0 && point.x > -1e-6 && point.x < 10.000001);
      obstacle->surligner(1);
      // What is written is read again; numbers that the drawing refuses are not written.
      if (obstacle->ecrireMarque()) require(obstacle->lireDepuis(obstacle->objet) == 1);
    }
    while (job.obstacles.GetSize() > 0) require(job.retirerObstacle(job.obstacles.GetAt(0)->objet));
    require(projetImplantation().obstacles.GetSize() == 0);
  }
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
}
