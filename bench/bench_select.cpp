// Choosing in a drawing of point blocks, each with four attributes: picks, windows at each point as a routine
// does it, sets filtered by type, layer and application, the extents of the drawing.

#include "arx/db/dballents.h"
#include "arx/db/dbmain.h"
#include "arx/ed/acedads.h"
#include "arx/ed/edgraphics.h"
#include "arx/ed/edports.h"
#include "arx/lisp/host/aclisp.h"
#include "mesure.h"

#include <malloc.h>

#include <cstdlib>
#include <string>

namespace {

constexpr int kAcross = 300;  // points a row, ten units apart

void expect(bool right, const char* what) {
  if (right) return;
  std::fprintf(stderr, "%s failed\n", what);
  std::exit(1);
}

AcGePoint3d placeOf(int i) {
  return {650000.0 + 10.0 * (i % kAcross), 6860000.0 + 10.0 * (i / kAcross), 0.0};
}

AcDbObjectId makeBlock(AcDbDatabase& drawing) {
  const AcDbObjectId id = drawing.recordOf("BLOCK_RECORD", L"BORNE");
  const AcDbObjectPointer<AcDbBlockTableRecord> block(id, AcDb::kForWrite);
  for (AcDbEntity* part : {static_cast<AcDbEntity*>(new AcDbLine({-1, 0, 0}, {1, 0, 0})),
                           static_cast<AcDbEntity*>(new AcDbCircle({0, 0, 0}, AcGeVector3d::kZAxis, 0.5))}) {
    expect(block->appendAcDbEntity(part) == Acad::eOk, "block");
    part->close();
  }
  return id;
}

void place(AcDbDatabase& drawing, int n) {
  const AcDbObjectId definition = makeBlock(drawing);
  const AcDbObjectId rare = drawing.recordOf("LAYER", L"RARE");
  acdbRegApp(L"RARE");
  const AcEdRbHolder marked(acutBuildList(1001, L"RARE", 1070, 1));
  const AcDbObjectPointer<AcDbBlockTableRecord> space(drawing.modelSpaceId(), AcDb::kForWrite);
  for (int i = 0; i < n; ++i) {
    auto* reference = new AcDbBlockReference(placeOf(i), definition);
    expect(space->appendAcDbEntity(reference) == Acad::eOk, "reference");
    for (int row = 0; row < 4; ++row) {
      auto* attribute = new AcDbAttribute(placeOf(i) + AcGeVector3d(1, -row, 0), L"101.25", L"ALT");
      attribute->setHeight(0.8);
      expect(reference->appendAttribute(attribute) == Acad::eOk, "attribute");
      attribute->close();
    }
    if (i % 1000 == 0) reference->setLayer(rare);
    if (i % 1000 == 0) expect(reference->setXData(marked.get()) == Acad::eOk, "extended data");
    reference->close();
    if (i % 1000 != 0) continue;
    auto* line = new AcDbLine(placeOf(i), placeOf(i + 1));
    expect(space->appendAcDbEntity(line) == Acad::eOk, "line");
    line->close();
  }
}

void evaluate(const std::wstring& expression) {
  const AcEdRbHolder value(acedPorts().evaluate(expression));
  expect(value != nullptr, "an expression");
}

void pick(int times, int n) {
  expect(acedSetView({650000, 6860000}, 100.0) == Acad::eOk, "view");
  for (int i = 0; i < times; ++i) {
    const AcGePoint3d at = placeOf(i * 7919 % n);
    ads_point point = {at.x, at.y, at.z};
    ads_name entity;
    expect(acedNEntSelP(nullptr, entity, point, 1, nullptr, nullptr) == RTNORM, "pick");
  }
}

/// A routine that looks around each point; the second one also moves what it finds.
void windows(int n, bool moving) {
  std::wstring step =
      L"(setq p (list (+ 650000.0 (* 10 (rem i 300))) (+ 6860000.0 (* 10 (/ i 300)))) "
      L"s (ssget \"C\" (list (- (car p) 0.2) (- (cadr p) 0.2)) (list (+ (car p) 0.2) (+ (cadr p) 0.2))) "
      L"i (1+ i))";
  if (moving)
    step +=
        L"(setq d (entget (ssname s 0))) (entmod (subst (cons 10 (list (car p) (cadr p) 1.0)) (assoc 10 d) "
        L"d))";
  evaluate(L"(progn (setq i 0) (repeat " + std::to_wstring(n) + L" " + step + L") T)");
}

void filtered(const std::wstring& filter, int times) {
  evaluate(L"(repeat " + std::to_wstring(times) + L" (setq s (ssget \"X\" '(" + filter + L"))))");
}

void run(Mesure& measure, int n, bool small) {
  AcDbDatabase drawing;
  acdbHostApplicationServices()->setWorkingDatabase(&drawing);
  aclispInstall();
  place(drawing, n);
  const std::size_t before = mallinfo2().uordblks;
  measure("first pick", n, [&] { pick(1, n); });
  std::printf("%-34s %9d %9.0f bytes each\n", "what it keeps", n,
              static_cast<double>(mallinfo2().uordblks - before) / n);
  measure("100 picks", n, [&] { pick(100, n); });
  measure("10 ZOOM E", n, [&] {
    for (int i = 0; i < 10; ++i) expect(acedZoomExtents() == Acad::eOk, "zoom");
  });
  measure("10 ssget X by type", n, [] { filtered(L"(0 . \"LINE\")", 10); });
  measure("10 ssget X by layer", n, [] { filtered(L"(8 . \"RARE\")", 10); });
  measure("10 ssget X by application", n, [] { filtered(L"(-3 (\"RARE\"))", 10); });
  measure("ssget X of all blocks", n, [] { filtered(L"(0 . \"INSERT\")", 1); });
  if (small) measure("ssget C at each point", n, [&] { windows(n, false); });
  if (small) measure("ssget C and entmod at each point", n, [&] { windows(n, true); });
  evaluate(L"(progn (setq s nil) T)");
  acedPorts() = {};
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
}

}  // namespace

int main() {
  Mesure measure;
  for (const int n : {1000, 2000, 4000, 8000}) run(measure, n, true);
  for (const int n : {25000, 50000, 100000}) run(measure, n, false);
  return 0;
}
