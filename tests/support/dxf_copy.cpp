// dxf_copy IN OUT [A B X Y]: reads a drawing and saves it, for the independent checks of tests/dxf. What was
// mended is listed on standard output; a refusal is printed on standard error and gives status 1. With four
// numbers every entity of model space is carried along first: (x, y) to (A x - B y + X, B x + A y + Y).
#include "arx/db/dbgroupmap.h"
#include "arx/db/dbmain.h"
#include "arx/dxf/dxffile.h"
#include "arx/dxf/dxfread.h"
#include "base/text.h"

#include <cmath>
#include <cstdio>

namespace {

int refuse(const std::wstring& message) {
  std::fprintf(stderr, "%s\n", veltora::base::toUtf8(message).c_str());
  return 1;
}

/// What stays behind, empty when all went along.
std::wstring carry(AcDbDatabase& database, char** numbers) {
  double n[4] = {};
  for (int i = 0; i < 4; ++i) dxfParseReal(numbers[i], n[i]);
  AcGeMatrix3d matrix = AcGeMatrix3d::scaling(std::hypot(n[0], n[1]));
  matrix.entry[0][0] = matrix.entry[1][1] = n[0];
  matrix.entry[1][0] = n[1], matrix.entry[0][1] = -n[1];
  matrix.entry[0][3] = n[2], matrix.entry[1][3] = n[3];
  const AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId());
  if (std::wstring immovable = acdbImmovable(space->entities()); !immovable.empty()) return immovable;
  for (const AcDbObjectId id : space->entities()) {
    const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
    if (entity && entity->transformBy(matrix) != Acad::eOk) return L"?";
  }
  return {};
}

}  // namespace

int main(int argc, char** argv) {
  const bool carrying = argc == 7;
  if (carrying) argc = 3;
  if (argc != 2 && argc != 3) {
    std::fprintf(stderr, "usage: dxf_copy [IN] OUT [A B X Y]\n");
    return 2;
  }
  AcDbDatabase database(argc == 2, true);
  std::wstring message;
  DxfFindings findings;
  if (argc == 3 && dxfReadFile(database, dxfServingFile(argv[1]), &message, &findings) != Acad::eOk)
    return refuse(message);
  if (const std::wstring left = carrying ? carry(database, argv + 3) : std::wstring(); !left.empty())
    return refuse(left);
  if (database.saveAs(veltora::base::fromUtf8(argv[argc - 1]).c_str(), &message) != Acad::eOk)
    return refuse(message);
  for (const std::string& finding : findings) std::printf("%s\n", finding.c_str());
  return 0;
}
