#include "jobs/rendre.h"

#include "arx/db/dbmain.h"
#include "arx/gi/giextents.h"
#include "arx/plot/plcairo.h"
#include "arx/plot/pldraw.h"
#include "arx/plot/plsvg.h"
#include "base/files.h"
#include "base/format.h"
#include "base/paths.h"
#include "base/text.h"
#include "core/drawing_records.h"
#include "drafting/sheet/formats_papier.h"
#include "jobs/resultat_points.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <limits>
#include <memory>

namespace veltora {
namespace {

constexpr double kMarge = 10.0;              // mm, left free where the paper is chosen by the drawing
constexpr double kMilli = 1000.0;            // drawing units are metres
constexpr double kPlusGrandPapier = 5000.0;  // mm: PDF pages end at 14,400 points
constexpr double kPlusDePoints = 1e8;        // of a PNG
constexpr double kTolerance = 1e-6;          // mm
constexpr int kFormatsIso = 10;

bool echec(resultatRendu& resultat, const std::wstring& raison) {
  resultat.erreur = raison;
  return false;
}

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
  AcPlLooks aspects(calques);
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
    AcPlView view;
    view.paper.width = m_resultat.largeur;
    view.paper.height = m_resultat.hauteur;
    view.paper.dotsPerInch = m_demande.ppp;
    if (m_demande.fondNoir) view.paper.background = {0, 0, 0};
    view.mmPerUnit = kMilli / m_resultat.echelle;
    view.corner = {(m_vue.x1 + m_vue.x2) / 2 - m_resultat.largeur / 2 / view.mmPerUnit,
                   (m_vue.y1 + m_vue.y2) / 2 - m_resultat.hauteur / 2 / view.mmPerUnit};
    view.monochrome = m_demande.monochrome;
    view.layers = m_demande.calques;
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

/// What was left out makes the picture doubtful.
void raconter(const AcPlOmissions& omis, base::Remarques& remarques) {
  std::wstring genres;
  for (const auto& [genre, nombre] : omis.kinds)
    genres += base::formater(L"%ls%d %ls", genres.empty() ? L"" : L", ", nombre, base::fromUtf8(genre));
  if (!genres.empty()) remarques.douter(L"entités qui ne sont pas tracées : " + genres);
  if (omis.places > 0)
    remarques.douter(base::formater(L"entités aux coordonnées sans valeur, non tracées : %d", omis.places));
  if (omis.texts > 0)
    remarques.douter(
        base::formater(L"textes plus hauts que deux mètres de papier, non tracés : %d", omis.texts));
  if (omis.repeats > 0)
    remarques.douter(
        base::formater(L"blocs en plus de 100 000 rangées et colonnes, tracés une fois : %d", omis.repeats));
}

std::unique_ptr<AcPlPen> plumePour(const std::wstring& genre, const AcPlPaper& papier, std::wstring& raison) {
  if (genre == L"svg") return std::make_unique<AcPlSvgPen>(papier);
  const double points =
      papier.width * papier.height * (papier.dotsPerInch / 25.4) * (papier.dotsPerInch / 25.4);
  if (genre == L"png" && points > kPlusDePoints) {
    raison =
        L"l'image aurait plus de 100 millions de points : moins de points par pouce, ou un papier plus petit";
    return nullptr;
  }
  std::string why;
  auto plume = acplCairoPen(papier, genre == L"pdf" ? AcPlCairoKind::kPdf : AcPlCairoKind::kPng, why);
  raison = base::fromUtf8(why);
  return plume;
}

}  // namespace

bool rendreDessin(const demandeRendu& demande, resultatRendu& resultat) {
  resultat = {};
  AcDbDatabase* const dessin = acdbHostApplicationServices()->workingDatabase();
  if (!dessin) return echec(resultat, kSansProjet);
  const std::filesystem::path chemin = base::toUtf8(demande.fichier);
  const std::wstring genre = base::terminaison(chemin);
  if (genre != L"pdf" && genre != L"svg" && genre != L"png")
    return echec(resultat, L"« " + demande.fichier + L" » : les plans s'écrivent en .pdf, .svg ou .png");
  for (const std::wstring& nom : demande.calques)
    if (recordNamed(dessin->layerTableId(), nom).isNull())
      return echec(resultat, L"le dessin n'a pas de calque « " + nom + L" »");
  boite vue = boiteVisible(*dessin, demande.calques);
  if (demande.fenetre) {
    const auto& [x1, y1, x2, y2] = *demande.fenetre;
    vue = {std::min(x1, x2), std::min(y1, y2), std::max(x1, x2), std::max(y1, y2)};
    if (!(vue.largeur() > 0.0 && vue.hauteur() > 0.0))
      return echec(resultat, L"la fenêtre n'a pas d'étendue");
  }
  if (vue.vide()) return echec(resultat, L"le dessin ne montre rien");
  Mise mise(demande, resultat);
  if (!mise.choisir(vue)) return false;
  const AcPlView view = mise.vue();
  std::wstring raison;
  const std::unique_ptr<AcPlPen> plume = plumePour(genre, view.paper, raison);
  if (!plume) return echec(resultat, raison);
  raconter(acplPlot(*dessin, dessin->modelSpaceId(), view, *plume), resultat.remarques);
  std::string contenu;
  std::string why;
  if (!plume->finish(contenu, why) || !base::remplacerFichier(chemin, contenu, &why))
    return echec(resultat, base::fromUtf8(why));
  return true;
}

}  // namespace veltora
