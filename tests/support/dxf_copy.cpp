// dxf_copy IN OUT: reads a drawing and saves it, for the independent checks of tests/dxf. What was mended is
// listed on standard output; a refusal is printed on standard error and gives status 1.
#include "arx/db/dbmain.h"
#include "arx/dxf/dxffile.h"
#include "base/text.h"

#include <cstdio>

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: dxf_copy IN OUT\n");
    return 2;
  }
  AcDbDatabase database(false, true);
  std::wstring message;
  DxfFindings findings;
  if (dxfReadFile(database, dxfServingFile(argv[1]), &message, &findings) != Acad::eOk ||
      database.saveAs(veltora::base::fromUtf8(argv[2]).c_str(), &message) != Acad::eOk) {
    std::fprintf(stderr, "%s\n", veltora::base::toUtf8(message).c_str());
    return 1;
  }
  for (const std::string& finding : findings) std::printf("%s\n", finding.c_str());
  return 0;
}
