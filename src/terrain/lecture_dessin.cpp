#include "terrain/lecture_dessin.h"

#include "arx/db/dbheavypoly.h"
#include "arx/db/dblines.h"
#include "arx/db/dbmain.h"
#include "arx/db/dbpl.h"
#include "base/numbers.h"
#include "base/text.h"
#include "core/code_range.h"
#include "core/drawing_records.h"
#include "points/projets_topo.h"

#include <algorithm>

namespace veltora::terrain {
namespace {

bool lireCode(const std::wstring& texte, int& code) {
  const std::wstring seul = base::trim(texte);
  if (seul.empty() || seul.size() > 4 || seul.find_first_not_of(L"0123456789") != std::wstring::npos)
    return false;
  code = base::lireEntier(seul);
  return isPointCode(code);
}

/// A line whose altitudes are none: all its vertices lie at 0.
bool sansAltitude(const std::vector<AcGePoint3d>& ligne) {
  return std::all_of(ligne.begin(), ligne.end(), [](const AcGePoint3d& s) { return s.z == 0.0; });
}

void ajouterFacette(const AcDbFace& face, Sources& sources) {
  std::array<AcGePoint3d, 4> c;
  for (Adesk::UInt16 i = 0; i < 4; ++i) face.getVertexAt(i, c[i]);
  sources.facettes.push_back({c[0], c[1], c[2]});
  if (!(c[3] == c[2])) sources.facettes.push_back({c[0], c[2], c[3]});
}

/// @return false for an entity that gives nothing
bool ajouterLigne(const AcDbEntity& entite, bool limite, Sources& sources, Bilan& bilan) {
  bool fermee = false;
  std::vector<AcGePoint3d> sommets = sommetsDe(entite, fermee);
  if (sommets.size() < 2 || (!limite && sansAltitude(sommets))) return false;
  if (limite) {
    if (sommets.front() == sommets.back()) {
      fermee = true;
      sommets.pop_back();
    }
    if (sommets.size() < 3) return false;
    bilan.ouvertes += fermee ? 0 : 1;
    sources.limites.push_back(std::move(sommets));
    return true;
  }
  if (fermee && !(sommets.front() == sommets.back())) sommets.push_back(sommets.front());
  sources.lignes.push_back(std::move(sommets));
  return true;
}

bool ajouterEntite(const AcDbEntity& entite, Role role, Sources& sources, Bilan& bilan) {
  const bool tout = role == Role::kToutes;
  if (const auto* point = AcDbPoint::cast(&entite); point && (tout || role == Role::kPoints)) {
    sources.points.push_back(point->position());
    return ++bilan.points, true;
  }
  if (const auto* face = AcDbFace::cast(&entite); face && role == Role::kFacettes) {
    ajouterFacette(*face, sources);
    return ++bilan.facettes, true;
  }
  if (!tout && role != Role::kLignes && role != Role::kLimite) return false;
  if (!ajouterLigne(entite, role == Role::kLimite, sources, bilan)) return false;
  return ++bilan.lignes, true;
}

}  // namespace

bool ChoixCodes::lire(const std::wstring& texte, ChoixCodes& choix) {
  ChoixCodes lu;
  std::size_t debut = 0;
  while (!base::trim(texte).empty() && debut <= texte.size()) {
    const std::size_t fin = std::min(texte.find_first_of(L",;", debut), texte.size());
    const std::wstring plage = texte.substr(debut, fin - debut);
    const std::size_t tiret = plage.find(L'-');
    int de = 0;
    int a = 0;
    if (!lireCode(plage.substr(0, tiret), de)) return false;
    if (!lireCode(tiret == std::wstring::npos ? plage : plage.substr(tiret + 1), a) || a < de) return false;
    lu.m_plages.emplace_back(de, a);
    debut = fin + 1;
  }
  choix = std::move(lu);
  return true;
}

bool ChoixCodes::prend(int code) const {
  return m_plages.empty() || std::any_of(m_plages.begin(), m_plages.end(), [code](const auto& plage) {
           return plage.first <= code && code <= plage.second;
         });
}

int ajouterTable(const ChoixCodes& codes, Sources& sources) {
  if (!tablesPoints) return 0;
  int nombre = 0;
  for (const pointDuDessin& point : *tablesPoints->currTable()->getData()) {
    if (!codes.prend(point.code)) continue;
    sources.reperes.resize(sources.points.size());
    sources.reperes.push_back(base::widen(point.nomPoint));
    sources.points.push_back(point.getAs3dPnt());
    ++nombre;
  }
  return nombre;
}

std::vector<AcGePoint3d> sommetsDe(const AcDbEntity& entite, bool& fermee) {
  std::vector<AcGePoint3d> sommets;
  const auto* courbe = AcDbCurve::cast(&entite);
  if (!courbe) return sommets;
  fermee = courbe->isClosed();
  for (const AcGeCurvePiece& piece : courbe->pieces()) {
    if (piece.endless || piece.endlessBefore) return {};
    if (sommets.empty()) sommets.push_back(piece.start);
    for (const double part : piece.chords()) sommets.push_back(part < 1.0 ? piece.pointAt(part) : piece.end);
  }
  return sommets;
}

Bilan ajouterEntites(const std::vector<AcDbObjectId>& ids, Role role, Sources& sources) {
  Bilan bilan;
  for (const AcDbObjectId& id : ids) {
    const AcDbObjectPointer<AcDbEntity> entite(id);
    if (entite.openStatus() == Acad::eOk && !ajouterEntite(*entite, role, sources, bilan)) ++bilan.autres;
  }
  return bilan;
}

bool entitesDuCalque(AcDbDatabase& dessin, const std::wstring& calque, std::vector<AcDbObjectId>& ids) {
  ids.clear();
  const AcDbObjectId voulu = calque.empty() ? AcDbObjectId() : recordNamed(dessin.layerTableId(), calque);
  if (!calque.empty() && voulu.isNull()) return false;
  const AcDbObjectPointer<AcDbBlockTableRecord> espace(dessin.modelSpaceId());
  if (espace.openStatus() != Acad::eOk) return true;
  for (const AcDbObjectId& id : espace->entities()) {
    const AcDbObjectPointer<AcDbEntity> entite(id);
    if (entite.openStatus() == Acad::eOk && (voulu.isNull() || entite->layerId() == voulu)) ids.push_back(id);
  }
  return true;
}

}  // namespace veltora::terrain
