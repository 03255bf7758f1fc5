// dxf_copy IN OUT: reads a drawing and saves it, for the independent checks of tests/dxf. What was mended is
// listed on standard output; a refusal is printed on standard error and gives status 1.
#include "arx/db/dbmain.h"
#include "arx/dxf/dxffile.h"
#include "arx/dxf/dxfread.h"
#include "base/text.h"

#include <cstdio>

namespace {

int refuse(const std::wstring& message) {
  std::fprintf(stderr, "%s\n", veltora::base::toUtf8(message).c_str());
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2 && argc != 3) {
    std::fprintf(stderr, "usage: dxf_copy [IN] OUT\n");
    return 2;
  }
  AcDbDatabase database(argc == 2, true);
  std::wstring message;
  DxfFindings findings;
  if (argc == 3 && dxfReadFile(database, dxfServingFile(argv[1]), &message, &findings) != Acad::eOk)
    return refuse(message);
  if (database.saveAs(veltora::base::fromUtf8(argv[argc - 1]).c_str(), &message) != Acad::eOk)
    return refuse(message);
  for (const std::string& finding : findings) std::printf("%s\n", finding.c_str());
  return 0;
}
