#include "jobs/mise_en_page.h"

#include "arx/gi/giextents.h"
#include "base/format.h"
#include "base/text.h"
#include "drafting/sheet/formats_papier.h"
#include "drafting/sheet/planches_dessin.h"
#include "jobs/echec.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace veltora {
namespace {

constexpr double kMarge = 10.0;              // mm, left free where the paper is chosen by the drawing
constexpr double kMilli = 1000.0;            // drawing units are metres
constexpr double kPlusGrandPapier = 5000.0;  // mm: PDF pages end at 14,400 points
constexpr double kTolerance = 1e-6;          // mm
constexpr int kFormatsIso = 10;

struct boite {
  double x1 = std::numeric_limits<double>::infinity();
  double y1 = std::numeric_limits<double>::infinity();
  double x2 = -std::numeric_limits<double>::infinity();
  double y2 = -std::numeric_limits<double>::infinity();
  [[nodiscard]] double largeur() const { return x2 - x1; }
  [[nodiscard]] double hauteur() const { return y2 - y1; }
  [[nodiscard]] bool vide() const {
    return !(x2 >= x1) || !std::isfinite(largeur()) || !std::isfinite(hauteur());
  }
};

/// Around what is to be seen in model space, on the layers that are asked for.
boite boiteVisible(AcDbDatabase& dessin, const std::vector<std::wstring>& calques) {
  AcPlLooks aspects(calques, {}, true);
  const AcDbObjectPointer<AcDbBlockTableRecord> espace(dessin.modelSpaceId());
  AcGiExtents mesure;
  AcDbExtents gardees;
  for (const AcDbObjectId& id : espace->entities()) {
    const auto* const entity = id.isLive() ? AcDbEntity::cast(id.stub()->object) : nullptr;
    if (!entity || !aspects.isShown(*entity)) continue;
    mesure.show(*entity);
    if (const auto* const gardee = AcDbOtherEntity::cast(entity)) gardee->addKeptExtents(gardees);
  }
  gardees.addExt(mesure.box());
  if (gardees.isEmpty()) return {};
  const AcGePoint3d& bas = gardees.minPoint();
  const AcGePoint3d& haut = gardees.maxPoint();
  return {bas.x, bas.y, haut.x, haut.y};
}

/// The first denominator of the series 1, 2, 2.5, 5, 10... at which a length fits into one of the paper, mm.
double echelleRonde(double denominateur) {
  if (!(denominateur > 0.0)) return 1.0;
  const double decade = std::pow(10.0, std::floor(std::log10(denominateur)));
  for (const double pas : {1.0, 2.0, 2.5, 5.0, 10.0})
    if (pas * decade >= denominateur * (1 - 1e-12)) return pas * decade;
  return 10.0 * decade;
}

/// Paper, colours and layers, for the paper that the result has.
AcPlView vueNue(const demandeRendu& demande, const resultatRendu& resultat) {
  AcPlView view;
  view.paper.width = resultat.largeur;
  view.paper.height = resultat.hauteur;
  view.paper.dotsPerInch = demande.ppp;
  if (demande.fondNoir) view.paper.background = {0, 0, 0};
  view.printed = true;
  view.monochrome = demande.monochrome;
  view.layers = demande.calques;
  return view;
}

class Mise {
public:
  Mise(const demandeRendu& demande, resultatRendu& resultat) : m_demande(demande), m_resultat(resultat) {}

  /// Chooses paper and scale for what is drawn. @return false with the reason told
  bool choisir(const boite& vue) {
    m_vue = vue;
    if (!m_demande.format.empty()) return choisirFormat();
    if (m_demande.echelle > 0.0) return choisirPapier();
    const bool large = vue.largeur() > vue.hauteur();
    prendre(large ? 1 : 0);
    m_resultat.echelle = echelleRonde(denominateurPour(kMarge));
    return true;
  }
  [[nodiscard]] AcPlView vue() const {
    AcPlView view = vueNue(m_demande, m_resultat);
    view.mmPerUnit = kMilli / m_resultat.echelle;
    view.corner = {(m_vue.x1 + m_vue.x2) / 2 - m_resultat.largeur / 2 / view.mmPerUnit,
                   (m_vue.y1 + m_vue.y2) / 2 - m_resultat.hauteur / 2 / view.mmPerUnit};
    if (m_demande.fenetre) {
      AcPlBox box;
      for (const auto& [x, y] : {std::pair(m_vue.x1, m_vue.y1), std::pair(m_vue.x2, m_vue.y2)})
        box.add({(x - view.corner.x) * view.mmPerUnit, (y - view.corner.y) * view.mmPerUnit});
      view.window = box;
    }
    return view;
  }

private:
  void prendre(int rang) {
    const AcGePoint2d taille = tailleFormat(rang);
    m_resultat.largeur = taille.x;
    m_resultat.hauteur = taille.y;
    m_resultat.format = motFormat(rang);
  }
  /// The least denominator at which the view fits the paper.
  [[nodiscard]] double denominateurPour(double marge) const {
    return std::max(m_vue.largeur() * kMilli / (m_resultat.largeur - 2 * marge),
                    m_vue.hauteur() * kMilli / (m_resultat.hauteur - 2 * marge));
  }
  bool choisirFormat() {
    int rang = 0;
    while (rang < kNombreFormats && motFormat(rang) != m_demande.format) ++rang;
    if (rang == kNombreFormats) return echec(m_resultat, L"format de papier inconnu : " + m_demande.format);
    prendre(rang);
    if (!(m_resultat.largeur > 2 * kMarge && m_resultat.hauteur > 2 * kMarge))
      return echec(m_resultat, L"le papier « " + m_demande.format + L" » est trop petit");
    const double rond = echelleRonde(denominateurPour(kMarge));
    m_resultat.echelle = m_demande.echelle > 0.0 ? m_demande.echelle : rond;
    if (m_resultat.echelle < denominateurPour(0.0) * (1 - kTolerance))
      m_resultat.remarques.douter(base::formater(
          L"le dessin dépasse le papier au 1/%.15g : il y entre au 1/%.15g", m_resultat.echelle, rond));
    return true;
  }
  /// The first paper that holds the view at the scale; else one of its size.
  bool choisirPapier() {
    m_resultat.echelle = m_demande.echelle;
    for (int rang = 0; rang < kFormatsIso; ++rang) {
      prendre(rang);
      if (denominateurPour(kMarge) <= m_demande.echelle * (1 + kTolerance)) return true;
    }
    m_resultat.format.clear();
    m_resultat.largeur = m_vue.largeur() * kMilli / m_demande.echelle + 2 * kMarge;
    m_resultat.hauteur = m_vue.hauteur() * kMilli / m_demande.echelle + 2 * kMarge;
    if (std::max(m_resultat.largeur, m_resultat.hauteur) <= kPlusGrandPapier) return true;
    return echec(m_resultat,
                 base::formater(L"au 1/%.15g le dessin demande un papier de %.0f x %.0f mm ; au 1/%.15g il "
                                L"entre dans un A0",
                                m_demande.echelle, m_resultat.largeur, m_resultat.hauteur, pourA0()));
  }
  [[nodiscard]] double pourA0() {
    const double l = m_resultat.largeur;
    const double h = m_resultat.hauteur;
    prendre(m_vue.largeur() > m_vue.hauteur() ? 8 : 9);
    const double echelle = echelleRonde(denominateurPour(kMarge));
    m_resultat.largeur = l;
    m_resultat.hauteur = h;
    return echelle;
  }

  const demandeRendu& m_demande;
  resultatRendu& m_resultat;
  boite m_vue;
};

/// The word of a size of paper; empty for one that has none.
std::wstring motPour(const AcGePoint2d& taille) {
  for (int rang = 0; rang < kNombreFormats; ++rang)
    if (taille.distanceTo(tailleFormat(rang)) <= kTolerance) return motFormat(rang);
  return {};
}

bool poser(const plancheDessinee& feuille, const std::wstring& numero, const demandeRendu& demande,
           miseEnPage& mise, resultatRendu& resultat) {
  if (feuille.deformee)
    return echec(resultat,
                 L"la planche " + numero + L" est déformée : ses côtés ne sont plus ceux de son papier");
  if (std::max(feuille.papier.x, feuille.papier.y) > kPlusGrandPapier)
    return echec(resultat, L"la planche " + numero + L" a un papier de plus de cinq mètres");
  resultat.largeur = feuille.papier.x;
  resultat.hauteur = feuille.papier.y;
  resultat.format = motPour(feuille.papier);
  resultat.echelle = feuille.echelle;
  if (feuille.echelle != feuille.voulue)
    resultat.remarques.douter(
        base::formater(L"la planche %ls a été agrandie : elle est au 1/%.15g, et non plus au 1/%.15g", numero,
                       feuille.echelle, feuille.voulue));
  mise.vue = vueNue(demande, resultat);
  mise.vue.mmPerUnit = kMilli / feuille.echelle;
  mise.vue.corner = feuille.origine;
  mise.vue.right = feuille.cote;
  return true;
}

bool poser(const AcPlLayout& feuille, const demandeRendu& demande, miseEnPage& mise,
           resultatRendu& resultat) {
  const std::wstring nom = L"la présentation « " + feuille.name + L" »";
  if (feuille.empty) return echec(resultat, nom + L" ne montre rien");
  if (!(feuille.width > 0.0) || std::max(feuille.width, feuille.height) > kPlusGrandPapier)
    return echec(resultat, nom + L" ne dit pas son papier");
  resultat.largeur = feuille.width;
  resultat.hauteur = feuille.height;
  resultat.format = motPour({feuille.width, feuille.height});
  resultat.echelle = feuille.denominator;
  mise.vue = vueNue(demande, resultat);
  mise.vue.mmPerUnit = feuille.mmPerUnit;
  mise.vue.corner = feuille.corner;
  mise.presentation = feuille;
  return true;
}

/// What there is to choose from: "le dessin a 2 planches et les présentations « A », « B »".
std::wstring offre(std::size_t planches, const std::vector<AcPlLayout>& presentations) {
  std::wstring texte = planches == 0 ? std::wstring(L"le dessin n'a pas de planche de CREERPLANCHE")
                       : planches == 1
                           ? std::wstring(L"le dessin a une planche")
                           : base::formater(L"le dessin a %d planches", static_cast<int>(planches));
  std::wstring noms;
  for (const AcPlLayout& une : presentations)
    if (!une.empty) noms += (noms.empty() ? L" « " : L", « ") + une.name + L" »";
  return noms.empty() ? texte : texte + L", et des présentations :" + noms;
}

bool choisirPlanche(AcDbDatabase& dessin, const demandeRendu& demande, miseEnPage& mise,
                    resultatRendu& resultat) {
  const std::vector<plancheDessinee> planches = planchesDuDessin(dessin);
  const std::vector<AcPlLayout> presentations = acplLayouts(dessin);
  const std::wstring& voulue = demande.planche;
  const bool numero = voulue.size() < 6 && voulue.find_first_not_of(L"0123456789") == std::wstring::npos;
  const std::size_t rang = numero ? static_cast<std::size_t>(std::stoi(voulue)) : 0;
  if (rang >= 1 && rang <= planches.size()) return poser(planches[rang - 1], voulue, demande, mise, resultat);
  for (const AcPlLayout& une : presentations)
    if (base::compareNoCase(une.name, voulue) == 0) return poser(une, demande, mise, resultat);
  return echec(resultat, L"pas de planche « " + voulue + L" » : " + offre(planches.size(), presentations));
}

}  // namespace

bool mettreEnPage(AcDbDatabase& dessin, const demandeRendu& demande, miseEnPage& mise,
                  resultatRendu& resultat) {
  if (!demande.planche.empty()) return choisirPlanche(dessin, demande, mise, resultat);
  boite vue = boiteVisible(dessin, demande.calques);
  if (demande.fenetre) {
    const auto& [x1, y1, x2, y2] = *demande.fenetre;
    vue = {std::min(x1, x2), std::min(y1, y2), std::max(x1, x2), std::max(y1, y2)};
    if (!(vue.largeur() > 0.0 && vue.hauteur() > 0.0))
      return echec(resultat, L"la fenêtre n'a pas d'étendue");
  }
  if (vue.vide()) return echec(resultat, L"le dessin ne montre rien");
  Mise choix(demande, resultat);
  if (!choix.choisir(vue)) return false;
  mise.vue = choix.vue();
  return true;
}

}  // namespace veltora
