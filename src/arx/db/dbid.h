#pragma once

#include "arx/adesk.h"

#include <compare>
#include <functional>

class AcDbDatabase;
class AcDbObject;
class AcRxClass;

/// Permanent name of an object within one drawing; 0 is no handle.
class AcDbHandle {
public:
  constexpr AcDbHandle() = default;
  constexpr AcDbHandle(Adesk::UInt64 value) : m_value(value) {}
  constexpr operator Adesk::UInt64() const { return m_value; }
  [[nodiscard]] constexpr bool isNull() const { return m_value == 0; }

private:
  Adesk::UInt64 m_value = 0;
};

/// What an id points at: one stub for each handle that a drawing owns or refers to. Stubs live as long as
/// their database and never move. A stub without an object is a reference to something that does not exist.
struct AcDbStub {
  AcDbObject* object = nullptr;
  AcDbDatabase* database = nullptr;
  Adesk::UInt64 handle = 0;
  Adesk::UInt32 undoStep = 0;  ///< the undo step that already holds a snapshot of the object
  Adesk::UInt16 readers = 0;   ///< how often the object is open for reading
  bool writer : 1 = false;     ///< open for writing
  bool erased : 1 = false;
  unsigned char touched : 2 = 0;  ///< the lists of `AcDbTouched` that it stands in
};

/// Reference to an object of a drawing, valid while the drawing is in memory. The default is the null id.
class ARX_API AcDbObjectId {
public:
  constexpr AcDbObjectId() = default;
  constexpr explicit AcDbObjectId(AcDbStub* stub) : m_stub(stub) {}
  static const AcDbObjectId kNull;

  [[nodiscard]] bool isNull() const { return m_stub == nullptr; }
  /// Refers to an object in memory, erased or not.
  [[nodiscard]] bool isValid() const { return m_stub && m_stub->object; }
  [[nodiscard]] bool isErased() const { return m_stub && m_stub->erased; }
  /// An object in memory that is not erased.
  [[nodiscard]] bool isLive() const { return isValid() && !m_stub->erased; }
  void setNull() { m_stub = nullptr; }
  [[nodiscard]] AcDbHandle handle() const { return m_stub ? AcDbHandle(m_stub->handle) : AcDbHandle(); }
  [[nodiscard]] AcDbDatabase* database() const { return m_stub ? m_stub->database : nullptr; }
  /// Class of the object, null when there is none in memory.
  [[nodiscard]] AcRxClass* objectClass() const;
  [[nodiscard]] Adesk::IntDbId asOldId() const { return reinterpret_cast<Adesk::IntDbId>(m_stub); }
  AcDbObjectId& setFromOldId(Adesk::IntDbId old) {
    m_stub = reinterpret_cast<AcDbStub*>(old);
    return *this;
  }
  [[nodiscard]] AcDbStub* stub() const { return m_stub; }
  constexpr auto operator<=>(const AcDbObjectId&) const = default;

private:
  AcDbStub* m_stub = nullptr;
};
inline constexpr AcDbObjectId AcDbObjectId::kNull{};

template <>
struct std::hash<AcDbObjectId> {
  std::size_t operator()(const AcDbObjectId& id) const noexcept { return std::hash<AcDbStub*>()(id.stub()); }
};

namespace AcDb {
enum OpenMode { kForRead = 0, kForWrite = 1, kForNotify = 2 };
enum Visibility { kInvisible = 1, kVisible = 0 };
enum TextHorzMode {
  kTextLeft = 0,
  kTextCenter = 1,
  kTextRight = 2,
  kTextAlign = 3,
  kTextMid = 4,
  kTextFit = 5
};
enum TextVertMode { kTextBase = 0, kTextBottom = 1, kTextVertMid = 2, kTextTop = 3 };
enum Poly2dType { k2dSimplePoly = 0, k2dFitCurvePoly = 1, k2dQuadSplinePoly = 2, k2dCubicSplinePoly = 3 };
enum Poly3dType { k3dSimplePoly = 0, k3dQuadSplinePoly = 1, k3dCubicSplinePoly = 2 };
enum PolyMeshType { kSimpleMesh = 0, kQuadSurfaceMesh = 5, kCubicSurfaceMesh = 6, kBezierSurfaceMesh = 8 };
enum Vertex2dType { k2dVertex = 0, k2dSplineCtlVertex = 1, k2dSplineFitVertex = 2, k2dCurveFitVertex = 3 };
}  // namespace AcDb
