// Any bytes as extended data of a polyline and as XML of a clothoid: what is taken can be drawn, without nan,
// and what is written is read again.
#include "fuzz/fuzz.h"

#include "arx/db/dbpl.h"
#include "arx/db/resbuf.h"
#include "core/xml_champs.h"
#include "drafting/clothoids/clothoide_donnees.h"
#include "drafting/clothoids/clothoide_parcours.h"

#include <cmath>
#include <cstring>

using namespace veltora;

namespace {

void checkSampled(clothoide curve) {
  for (const double s : echantillonner(curve, 0.001, 0.9)) {
    const AcGePoint2d p = curve.pointEn(curve.startParam + s);
    require(std::isfinite(p.x) && std::isfinite(p.y));
  }
}

/// The chain that the bytes make: of each 25 one gives the kind of the item, the rest its value.
resbuf* chainOf(std::string_view bytes) {
  constexpr short kCodes[] = {1011, 1071, 1001, 1010, 1040, 1000};
  resbuf* head = nullptr;
  resbuf** end = &head;
  for (; bytes.size() >= 25; bytes.remove_prefix(25), end = &(*end)->rbnext) {
    *end = acutNewRb(kCodes[static_cast<unsigned char>(bytes[0]) % 6]);
    const RbKind kind = acutRbKind((*end)->restype);
    if (kind == RbKind::kPoint) std::memcpy((*end)->resval.rpoint, bytes.data() + 1, 24);
    if (kind == RbKind::kReal) std::memcpy(&(*end)->resval.rreal, bytes.data() + 1, 8);
    if (kind == RbKind::kLong) std::memcpy(&(*end)->resval.rlong, bytes.data() + 1, 4);
    if (kind == RbKind::kText) acutNewString(L"x", (*end)->resval.rstring);
  }
  return head;
}

void fuzzChain(std::string_view bytes) {
  resbuf* const chain = chainOf(bytes);
  clothoide curve;
  if (lireXData(curve, chain)) {
    require(curve.estTracable());
    checkSampled(curve);
    // On a polyline with any vertices it is either taken or left.
    AcDbPolyline line;
    line.addVertexAt(0, curve.pointEn(curve.startParam));
    line.addVertexAt(1, curve.pointEn((curve.startParam + curve.endParam) / 2));
    if (line.setXData(chain) == Acad::eOk && lireXDataEntite(curve, line)) require(curve.estTracable());
  }
  acutRelRb(chain);
}

void fuzzXml(std::string_view bytes) {
  TiXmlDocument document;
  clothoide curve;
  if (!analyserXML(document, bytes) || !document.RootElement() || !lireXML(curve, *document.RootElement()))
    return;
  TiXmlElement written("c");
  ecrireXML(curve, written);
  clothoide again;
  require(lireXML(again, written) && again.mirrored() == curve.mirrored());
}

}  // namespace

void fuzz(std::string_view bytes) {
  if (bytes.starts_with('<'))
    fuzzXml(bytes);
  else
    fuzzChain(bytes);
}
