#include "lisp/host_support.h"

namespace base = veltora::base;

namespace {

/// TRAIT: points until an empty line, a segment between each two of them.
void drawSegments() {
  ads_point from, to;
  if (acedGetPoint(nullptr, L"\nPremier point : ", from) != RTNORM) return;
  while (acedGetPoint(from, L"\nPoint suivant : ", to) == RTNORM) {
    append(*curDoc()->database(), new AcDbLine({from[0], from[1], from[2]}, {to[0], to[1], to[2]}));
    ads_point_set(to, from);
  }
}

/// ROND: a centre and a radius.
void drawCircle() {
  ads_point center;
  ads_real radius = 0.0;
  if (acedGetPoint(nullptr, L"\nCentre : ", center) != RTNORM) return;
  acedInitGet(RSG_NOZERO | RSG_NONEG, nullptr);
  if (acedGetDist(center, L"\nRayon : ", &radius) != RTNORM) return;
  append(*curDoc()->database(), new AcDbCircle({center[0], center[1], center[2]}, {0, 0, 1}, radius));
}

}  // namespace

LispHost::LispHost() {
  acedRegCmds->addCommand(L"ESSAI", L"TRAIT", L"TRAIT", 0, drawSegments);
  acedRegCmds->addCommand(L"ESSAI", L"ROND", L"ROND", 0, drawCircle);
  acDocManager->appContextNewDocument();
  aclispInstall();
}

LispHost::~LispHost() { acedRegCmds->removeGroup(L"ESSAI"); }

std::string LispHost::outcome(const std::string& expression) {
  transcript.text.clear();
  const AcApSession session;
  try {
    const AcEdRbHolder value(acedPorts().evaluate(base::fromUtf8(expression)));
    return base::trim(transcript.text + base::toUtf8(acedValueText(value.get())), " \n");
  } catch (const base::ScriptError& error) {
    return "!! " + error.message;
  }
}

void LispHost::type(std::initializer_list<const char*> lines) {
  answer(lines, true);
  AcApSession session;
  session.run();
}

std::string LispHost::script(std::initializer_list<const char*> lines) {
  answer(lines);
  AcApSession session;
  try {
    session.run();
  } catch (const base::ScriptError& error) {
    return error.message;
  }
  return {};
}

void LispHost::write(const char* name, const std::string& bytes) const {
  std::ofstream(folder / name, std::ios::binary) << bytes;
}
