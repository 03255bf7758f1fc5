#include "calc/adjustment/textes_compenses.h"

#include "base/format.h"
#include "base/text.h"
#include "calc/adjustment/fautes.h"
#include "calc/adjustment/lois.h"
#include "calc/angles.h"
#include "calc/network/donnees_reseau.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace veltora {
namespace {

constexpr double kGrades = 200.0 / kPi;

std::wstring complete(const std::wstring& texte, std::size_t largeur) {
  return texte.size() < largeur ? texte + std::wstring(largeur - texte.size(), L' ') : texte;
}

std::size_t largeurDesNoms(const reseauCompense& r) {
  std::size_t largeur = 6;
  for (const pointPondere& p : r.reseau.points) largeur = std::max(largeur, p.nom.size());
  return largeur + 2;
}

std::wstring coordonnee(double c) {
  return c == base::Z_ABSENT ? base::formater(L"%14s", L"-") : base::formater(L"%14.4f", c);
}

std::wstring millimetres(bool calcule, double s) {
  return calcule ? base::formater(L"%8.2f", s * kMillimetres) : base::formater(L"%8s", L"-");
}

double grades(double radians) {
  double g = radians * kGrades;
  g -= 400.0 * std::floor(g / 400.0);
  return g;
}

std::wstring lignesEcarts(const ecartsParGenre& e) {
  return base::formater(
      L"Écarts-types : angle %g, direction %g, gisement %g mgr ; distance %g mm + %g mm/km ; nivellement %g "
      L"mm et %g "
      L"mm par racine de km ; centrage station %g mm, visé %g mm (mesures sans écart-type propre)",
      e.angle, e.direction, e.gisement, e.distance, e.ppm, e.nivellement, e.racineKm, e.centrageStation,
      e.centrageVise);
}

}  // namespace

std::vector<std::wstring> lignesBilan(const reseauCompense& r) {
  std::array<int, kGenresMesure> comptes{};
  for (const mesurePonderee& m : r.reseau.mesures)
    if (!m.ecarte) ++comptes.at(static_cast<std::size_t>(m.genre));
  std::wstring mesures;
  for (std::size_t g = 0; g < kGenresMesure; ++g)
    if (comptes.at(g) > 0)
      mesures +=
          (mesures.empty() ? L"" : L", ") +
          base::formater(L"%d %s%s", comptes.at(g), std::wstring(nomDuGenre(static_cast<genreMesure>(g))),
                         comptes.at(g) > 1 ? L"s" : L"");
  std::vector<std::wstring> lignes{L"Mesures      : " + mesures, lignesEcarts(r.reseau.ecarts)};
  lignes.push_back(base::formater(
      L"Inconnues    : %d, redondance %d%s", r.inconnues, r.test.redondance,
      r.defauts > 0 ? base::formater(L", réseau libre (défaut %d)", r.defauts) : std::wstring()));
  if (r.prevu) {
    lignes.emplace_back(L"Prévision    : précision a priori (m0 = 1), sans mesures");
    return lignes;
  }
  lignes.push_back(base::formater(L"Passes       : %d%s", r.bilan.passes,
                                  std::wstring(r.bilan.convergence ? L"" : L", sans convergence")));
  const double a = r.reseau.m0Apriori;
  if (r.test.redondance > 0)
    lignes.push_back(base::formater(L"m0           : %.4f (a priori %g), test à 5 %% : de %.3f à %.3f, %s",
                                    r.test.m0 * a, a, r.test.bas * a, r.test.haut * a,
                                    std::wstring(r.test.tropFort()     ? L"trop fort"
                                                 : r.test.tropFaible() ? L"trop faible"
                                                                       : L"accepté")));
  else
    lignes.emplace_back(
        L"m0           : aucune mesure surabondante, rien n'est contrôlé ; précision a priori");
  return lignes;
}

std::vector<std::wstring> lignesPoints(const reseauCompense& r) {
  const std::size_t largeur = largeurDesNoms(r);
  std::vector<std::wstring> lignes{complete(L"Point", largeur) +
                                   base::formater(L"%14s%14s%14s%8s%8s%8s%8s%8s%8s%8s%8s", L"X", L"Y", L"Z",
                                                  L"sX", L"sY", L"sZ", L"a", L"b", L"gis.", L"a 95 %",
                                                  L"b 95 %")};
  const double f = r.facteur();
  const double f95 = r.facteur95();
  for (std::size_t i = 0; i < r.points.size(); ++i) {
    const statistiquePoint& s = r.points[i];
    const pointPondere& p = r.reseau.points[i];
    if (!s.calculePlan && !s.calculeZ) continue;
    lignes.push_back(
        complete(p.nom, largeur) + coordonnee(p.c[0]) + coordonnee(p.c[1]) + coordonnee(p.c[2]) +
        millimetres(s.calculePlan, s.s[0] * f) + millimetres(s.calculePlan, s.s[1] * f) +
        millimetres(s.calculeZ, s.s[2] * f) + millimetres(s.calculePlan, s.plan.a * f) +
        millimetres(s.calculePlan, s.plan.b * f) +
        (s.calculePlan ? base::formater(L"%8.1f", grades(s.plan.gisement)) : base::formater(L"%8s", L"-")) +
        millimetres(s.calculePlan, s.plan.a * f * f95) + millimetres(s.calculePlan, s.plan.b * f * f95));
  }
  return lignes;
}

std::wstring texteLimites(const reseauCompense& r) {
  if (r.prevu || r.test.redondance < 1) return {};
  const std::size_t mesures = r.reseau.mesures.size();
  return base::formater(L"limites |w| %.2f, |tau| %.2f", limiteW(mesures),
                        limiteTau(risqueMesure(mesures), r.test.redondance));
}

std::vector<std::wstring> lignesMesures(const reseauCompense& r, std::size_t nombre) {
  std::vector<std::size_t> ordre;
  for (std::size_t i = 0; i < r.mesures.size(); ++i)
    if (!r.reseau.mesures[i].ecarte) ordre.push_back(i);
  std::stable_sort(ordre.begin(), ordre.end(), [&](std::size_t a, std::size_t b) {
    return std::abs(r.mesures[a].w) > std::abs(r.mesures[b].w);
  });
  if (ordre.size() > nombre) ordre.resize(nombre);
  std::size_t largeur = 8;
  for (const std::size_t i : ordre)
    largeur = std::max(largeur, r.reseau.nommer(r.reseau.mesures[i]).size() + 2);
  std::vector<std::wstring> lignes{complete(L"Mesure", largeur) +
                                   base::formater(L"%13s%13s%9s%8s%8s%15s%10s", L"écart-type", L"résidu",
                                                  L"redond.", L"w", L"tau", L"détectable", L"effet")};
  for (const std::size_t i : ordre) {
    const mesurePonderee& m = r.reseau.mesures[i];
    const statistiqueMesure& s = r.mesures[i];
    const bool controle = s.redondance > kRedondanceNulle;
    const double tau = r.test.redondance > 0 && r.test.m0 > 0.0 ? s.w / r.test.m0 : 0.0;
    lignes.push_back(
        complete(r.reseau.nommer(m), largeur) +
        base::formater(L"%13s%13s%9.2f", texteEcart(m.genre, m.ecart),
                       r.prevu ? std::wstring(L"-") : texteEcart(m.genre, s.residu), s.redondance) +
        (controle ? base::formater(L"%8.2f%8.2f%15s%10s", s.w, tau, texteEcart(m.genre, s.detectable),
                                   texteEcart(genreMesure::distance, s.effet))
                  : base::formater(L"%8s%8s%15s%10s", L"-", L"-", L"aucune", L"-")));
  }
  if (const std::wstring limites = texteLimites(r); !limites.empty())
    lignes.push_back(L"Une mesure est suspecte au-delà des " + limites);
  return lignes;
}

std::vector<std::wstring> lignesPaires(const reseauCompense& r, bool toutes) {
  std::vector<std::wstring> lignes;
  const double f = r.facteur();
  for (const ellipseDePaire& p : r.paires) {
    if (!toutes && p.mesuree) continue;
    if (lignes.empty())
      lignes.push_back(complete(L"De - à", 24) +
                       base::formater(L"%8s%8s%8s%10s", L"a", L"b", L"gis.", L"a 95 %"));
    lignes.push_back(complete(r.reseau.point(p.a).nom + L" - " + r.reseau.point(p.b).nom, 24) +
                     base::formater(L"%8.2f%8.2f%8.1f%10.2f", p.e.a * f * kMillimetres,
                                    p.e.b * f * kMillimetres, grades(p.e.gisement),
                                    p.e.a * f * r.facteur95() * kMillimetres));
  }
  return lignes;
}

namespace {

std::string texteJson(const std::wstring& texte) {
  std::string sortie = "\"";
  for (const char c : base::toUtf8(texte)) {
    if (c == '"' || c == '\\')
      sortie += std::string("\\") + c;
    else if (static_cast<unsigned char>(c) < 0x20)
      sortie += base::formater("\\u%04x", static_cast<int>(c));
    else
      sortie += c;
  }
  return sortie + "\"";
}

std::string nombreJson(double x, bool donne = true) {
  return donne && std::isfinite(x) && x != base::Z_ABSENT ? base::formater("%.10g", x) : std::string("null");
}

std::string nomJson(const reseauCompense& r, int point) {
  return point < 0 ? "null" : texteJson(r.reseau.point(point).nom);
}

std::string pointJson(const reseauCompense& r, std::size_t i) {
  const pointPondere& p = r.reseau.points[i];
  const statistiquePoint& s = r.points[i];
  const double f = r.facteur();
  std::string t = texteJson(p.nom) + ": {";
  for (std::size_t axe = 0; axe < 3; ++axe)
    t += base::formater("\"%c\": ", "xyz"[axe]) + nombreJson(p.c.at(axe)) + ", ";
  for (std::size_t axe = 0; axe < 3; ++axe)
    t += base::formater("\"s%c\": ", "xyz"[axe]) +
         nombreJson(s.s.at(axe) * f, p.c.at(axe) != base::Z_ABSENT) + ", ";
  return t + "\"a\": " + nombreJson(s.plan.a * f, p.enPlan()) +
         ", \"b\": " + nombreJson(s.plan.b * f, p.enPlan()) +
         ", \"gisement\": " + nombreJson(grades(s.plan.gisement), s.calculePlan) + "}";
}

std::string mesureJson(const reseauCompense& r, std::size_t i) {
  static constexpr std::array<const char*, kGenresMesure> kTypes = {
      "angle", "direction", "gisement", "distance", "denivelee", "x", "y", "z"};
  const mesurePonderee& m = r.reseau.mesures[i];
  const statistiqueMesure& s = r.mesures[i];
  const double unite = estAngulaire(m.genre) ? kGrades : 1.0;
  return base::formater("{\"type\": \"%s\", \"station\": ", kTypes.at(static_cast<std::size_t>(m.genre))) +
         nomJson(r, m.station) + ", \"reference\": " + nomJson(r, m.reference) +
         ", \"vise\": " + nomJson(r, m.vise) + ", \"mesure\": " + nombreJson(m.valeur * unite, !r.prevu) +
         ", \"residu\": " + nombreJson(s.residu * unite, !r.prevu) +
         ", \"w\": " + nombreJson(s.w, !r.prevu && s.redondance > kRedondanceNulle) +
         ", \"redondance\": " + nombreJson(s.redondance) + ", \"ecart\": " + nombreJson(m.ecart * unite) +
         ", \"detectable\": " + nombreJson(s.detectable * unite, s.redondance > kRedondanceNulle) +
         ", \"effet\": " + nombreJson(s.effet, s.redondance > kRedondanceNulle) + "}";
}

}  // namespace

std::string jsonCompense(const reseauCompense& r) {
  std::string t =
      "{\n\"m0\": " + nombreJson(r.test.m0 * r.reseau.m0Apriori, !r.prevu && r.test.redondance > 0) +
      ",\n\"m0_apriori\": " + nombreJson(r.reseau.m0Apriori) +
      ",\n\"redondance\": " + std::to_string(r.test.redondance) + ",\n\"test\": [" +
      nombreJson(r.test.bas * r.reseau.m0Apriori) + ", " + nombreJson(r.test.haut * r.reseau.m0Apriori) +
      "],\n\"points\": {";
  const char* separateur = "\n";
  for (std::size_t i = 0; i < r.points.size(); ++i) {
    t += separateur + pointJson(r, i);
    separateur = ",\n";
  }
  t += "\n},\n\"observations\": [";
  separateur = "\n";
  for (std::size_t i = 0; i < r.mesures.size(); ++i) {
    if (r.reseau.mesures[i].ecarte) continue;
    t += separateur + mesureJson(r, i);
    separateur = ",\n";
  }
  return t + "\n]\n}\n";
}

}  // namespace veltora
