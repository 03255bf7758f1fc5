// What is read of a file does not depend on what wrote it.

#include "base/format.h"
#include "base/text.h"
#include "calc/adjustment/lecture_gkf.h"
#include "calc/adjustment/lecture_mc.h"
#include "calc/helmert/couples_fichier.h"
#include "calc/network/fichier_mc.h"
#include "calc/traverse/obs_fermee.h"
#include "calc/traverse/obs_ouverte.h"
#include "field/carnet_gsi.h"
#include "points/exchange/lecture_liste.h"
#include "points/exchange/table_obs_xyz.h"
#include "support/case_rows.h"
#include "support/remarques.h"

#include <gtest/gtest.h>

#include <map>

namespace veltora {
namespace {

std::string nombre(double valeur) { return valeur == base::Z_ABSENT ? " -" : base::formater(" %g", valeur); }

std::string nombres(const std::vector<double>& valeurs) {
  std::string texte;
  for (const double valeur : valeurs) texte += nombre(valeur);
  return texte;
}

/// Modes, rows, remarks.
std::string suite(const donneesObs& d, const base::Remarques& remarques) {
  std::string texte = base::formater(" a%d n%d", d.modeAngle, d.modeNivellement);
  for (const ligneObs& l : d.lignes)
    texte += " [" + base::toUtf8(l.nom + L"][" + l.angle + L"][" + l.distance + L"][" + l.dz) + "]";
  for (const std::string& phrase : phrasesDe(remarques)) texte += " " + phrase;
  return texte;
}

std::string lireFermee(const std::string& octets) {
  if (estObsOuverte(octets)) return "open";
  polygonaleFermeeObs d;
  const base::Remarques remarques = lireObsFermee(octets, d);
  return base::toUtf8(d.nom) + nombres({d.x, d.y, d.z, d.vo}) + suite(d, remarques);
}

std::string lireOuverte(const std::string& octets) {
  if (!estObsOuverte(octets)) return "closed";
  polygonaleOuverteObs d;
  const base::Remarques remarques = lireObsOuverte(octets, d);
  const auto station = [](const stationConnue& s) {
    return base::toUtf8(s.nom) + nombres({s.x, s.y, s.z, s.gisement});
  };
  return station(d.depart) + " > " + station(d.arrivee) + base::formater(" f%g", d.fermeture) +
         suite(d, remarques);
}

/// Items and remarks parted by commas.
std::string liste(std::vector<std::string> pieces, const base::Remarques& remarques) {
  for (const std::string& phrase : phrasesDe(remarques)) pieces.push_back(phrase);
  std::string texte;
  for (const std::string& piece : pieces)
    texte += (texte.empty() || texte.ends_with("; ") ? "" : ", ") + piece;
  return texte;
}

std::string lireReseau(const std::string& octets) {
  reseauMoindresCarres reseau;
  base::Remarques remarques;
  lireMc(octets, reseau, &remarques);
  std::vector<std::string> points;
  for (const pointACalculer& p : reseau.points)
    points.push_back(base::toUtf8(p.nom) + (p.planiConnue ? nombres({p.X, p.Y, p.Z}) : ""));
  std::vector<std::string> observations;
  for (const ObservationReduite& o : reseau.observations)
    observations.push_back(base::formater("%d %d %d %g", o.station, o.reference, o.vise, o.mesure));
  return liste(points, {}) + "; " + liste(observations, remarques);
}

/// Points, then measures with their deviations in metres and radians; or why it is refused.
std::string lirePondere(const std::string& octets) {
  reseauPondere reseau;
  base::Remarques remarques;
  const std::wstring refus =
      estGkf(octets) ? lireGkf(octets, reseau, remarques) : lireMcPondere(octets, reseau, remarques);
  std::vector<std::string> points;
  for (const pointPondere& p : reseau.points)
    points.push_back(base::toUtf8(p.nom) + (p.enPlan() ? nombres({p.c[0], p.c[1], p.c[2]}) : ""));
  std::vector<std::string> mesures;
  for (const mesurePonderee& m : reseau.mesures)
    mesures.push_back(base::toUtf8(reseau.nommer(m)) + nombres({m.valeur, m.ecart}));
  return base::toUtf8(refus) + liste(points, {}) + "; " + liste(mesures, remarques);
}

std::string lireListe(const std::string& octets) {
  tableObsXYZ table;
  table.lire(octets);
  std::vector<std::string> lignes;
  for (const pointXYZ& l : table.lignes)
    lignes.push_back(base::toUtf8(l.nom) + nombres({l.x, l.y, l.z}) + base::formater(" %d", l.code) +
                     (l.obs.empty() ? "" : " ") + base::toUtf8(l.obs));
  return liste(lignes, table.remarques);
}

std::string lireTableau(const std::string& octets) {
  const formeListe forme = reconnaitreListe(octets, {}, {});
  const listeLue lue = lireListe(octets, forme);
  std::vector<std::string> lignes;
  for (const ligneListe& l : lue.lignes)
    lignes.push_back(base::toUtf8(l.point.nom) + nombres({l.point.x, l.point.y, l.point.z}) +
                     base::formater(" %d ", l.point.code) + base::toUtf8(l.point.obs));
  return base::toUtf8(texteColonnes(forme.colonnes)) + ": " + liste(lignes, lue.remarques);
}

std::string lirePaires(const std::string& octets) {
  const couplesNommes lus = lireCouples(octets);
  std::vector<std::string> paires;
  for (std::size_t i = 0; i < lus.noms.size(); ++i) {
    const AcGePoint2d& a = lus.couples.depart[i];
    const AcGePoint2d& b = lus.couples.arrivee[i];
    paires.push_back(base::toUtf8(lus.noms[i]) + nombres({a.x, a.y, b.x, b.y}));
  }
  return liste(paires, lus.remarques);
}

std::string lireCarnetGsi(const std::string& octets) {
  analyseGSI analyse;
  std::string detail;
  const carnetGSI carnet = lireCarnet(octets);
  for (std::size_t i = 0; i < carnet.nombreLignes(); ++i) analyse.lire(carnet.ligne(i), detail, ", ");
  return liste({base::toUtf8(base::widen(base::trim(detail, ", ")))}, carnet.remarques);
}

/// UTF-16 with its mark.
std::string utf16(const std::wstring& texte, bool petitDabord) {
  std::string octets;
  for (const wchar_t c : L'\uFEFF' + texte) {
    const char bas = static_cast<char>(c & 0xFF);
    const char haut = static_cast<char>(c >> 8);
    octets += petitDabord ? bas : haut;
    octets += petitDabord ? haut : bas;
  }
  return octets;
}

/// The text in every encoding, with and without mark.
std::map<std::string, std::string> encodages(const std::wstring& texte) {
  const std::string marque = "\xEF\xBB\xBF";
  return {{"Windows-1252", base::narrow(texte)},
          {"Windows-1252, marked", marque + base::narrow(texte)},
          {"UTF-8", base::toUtf8(texte)},
          {"UTF-8, marked", marque + base::toUtf8(texte)},
          {"UTF-16, low byte first", utf16(texte, true)},
          {"UTF-16, high byte first", utf16(texte, false)}};
}

TEST(Formats, MarkEncodingAndLineEndsChangeNothing) {
  using Lecteur = std::string (*)(const std::string&);
  const std::map<std::string, Lecteur> lecteurs{
      {"closed traverse", lireFermee}, {"open traverse", lireOuverte}, {"network", lireReseau},
      {"coordinates", lireListe},      {"sheet", lireTableau},         {"pairs", lirePaires},
      {"field book", lireCarnetGsi},   {"weights", lirePondere}};
  const std::map<std::wstring, const char*> finsDeLigne{{L"\n", "LF"}, {L"\r\n", "CR LF"}, {L"\r", "CR"}};
  for (const CaseRow& row : caseRows("jobs/cases/formats.txt", "formats")) {
    for (const auto& [fin, nomFin] : finsDeLigne) {
      std::wstring texte;
      for (const wchar_t c : base::fromUtf8(row[1])) texte += c == L'\n' ? fin : std::wstring(1, c);
      for (const auto& [nom, octets] : encodages(texte))
        EXPECT_EQ(lecteurs.at(row[0])(octets), row[2]) << row << ", " << nom << ", " << nomFin;
    }
  }
}

}  // namespace
}  // namespace veltora
