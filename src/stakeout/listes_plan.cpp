#include "stakeout/listes_plan.h"

#include "arx/db/dblines.h"
#include "arx/db/dbmain.h"
#include "arx/db/dbpl.h"
#include "arx/db/dbtext.h"
#include "base/csv.h"
#include "base/files.h"
#include "base/format.h"
#include "base/paths.h"
#include "base/text.h"
#include "core/drawing_groups.h"
#include "core/drawing_table.h"
#include "points/projets_topo.h"
#include "report/html_document.h"
#include "report/html_text.h"
#include "report/plume_rapport.h"
#include "report/report_setup.h"

#include <algorithm>
#include <memory>

namespace veltora {
namespace {

const pointDuDessin& lieu(int index) {
  const listePointsDuDessin& table = *tablesPoints->currTable();
  return *table.getData(index);
}

std::wstring nomDe(int index) { return base::widen(lieu(index).getNomPoint()); }

/// The two forms of the line of a reference: without name, and with it.
std::wstring ligneReference(
    const viseesPlan& liste, const wchar_t* sansNom, const wchar_t* avecNom,
    std::wstring (*montre)(std::wstring_view) = [](std::wstring_view nom) { return std::wstring(nom); }) {
  if (liste.reference < 0) return {};
  const pointDuDessin& p = lieu(liste.reference);
  const double gis = enGrades(liste.gisReference);
  const std::wstring nom = montre(nomDe(liste.reference));
  return nom.empty() ? base::formater(sansNom, p.x, p.y, gis) : base::formater(avecNom, nom, p.x, p.y, gis);
}

int nombreDe(const viseesPlan& liste) { return static_cast<int>(liste.points.size()); }

// ---- Tables

/// Puts a list into the drawing from a corner downwards.
class tablePlan {
public:
  tablePlan(const AcGePoint3d& coin, double hauteur)
      : m_place(coin), m_hauteur(hauteur), m_espace(nullptr, DrawingSpace::kCurrent) {}

  /// @return how many tables
  int poser(const planImplantationAuto& plan, const viseesPlan& liste) {
    constexpr std::size_t kLignesTable = 50000;  // a table of the host has fewer than 100,000 rows
    const pointDuDessin& station = lieu(liste.station);
    const std::wstring nom = nomDe(liste.station);
    ligne(base::formater(L"Implantation à partir de %s (%d points visés)", nom, nombreDe(liste)));
    ligne(base::formater(L"Station : %s  (X=%.4f Y=%.4f)", nom, station.x, station.y));
    ligne(ligneReference(liste, L"Station de référence en (X=%.4f Y=%.4f ) Gis=%.4f gr",
                         L"Station de référence %s (X=%.4f Y=%.4f ) Gis=%.4f gr"));
    int tables = 0;
    for (std::size_t i = 0; i < liste.points.size(); i += kLignesTable)
      if (placer(plan, liste, i, std::min(i + kLignesTable, liste.points.size()))) ++tables;
    return tables;
  }

private:
  void ligne(const std::wstring& texte) {
    if (texte.empty()) return;
    m_place.y -= kLigne * m_hauteur;
    m_espace.add(std::make_unique<AcDbText>(
        m_place, texte.c_str(), acdbHostApplicationServices()->workingDatabase()->textstyle(), m_hauteur));
  }
  bool placer(const planImplantationAuto& plan, const viseesPlan& liste, std::size_t debut, std::size_t fin) {
    const std::vector<TableColumn> colonnes = {{L"Numero", kColonneNom * m_hauteur, AcDb::kMiddleCenter},
                                               {L"Angle", kColonne * m_hauteur},
                                               {L"Distance", kColonne * m_hauteur}};
    std::unique_ptr<AcDbTable> table =
        textTable(*acdbHostApplicationServices()->workingDatabase(), colonnes, fin - debut, m_hauteur,
                  kLigne * m_hauteur, [&](std::size_t ligne, std::size_t c) -> std::wstring {
                    const int rang = liste.points[debut + ligne];
                    if (c == 0) return plan.nom(rang);
                    return base::formater(
                        L"%.4f", c == 1 ? liste.angleVers(plan, rang) : liste.distanceVers(plan, rang));
                  });
    if (!table) return false;
    m_place.y -= 0.5 * m_hauteur;
    table->setPosition(m_place);
    m_place.y -= table->height() + kLigne * m_hauteur;
    return !addTable(m_espace, std::move(table)).isNull();
  }

  static constexpr double kColonneNom = 10.0;  // in text heights, likewise the next
  static constexpr double kColonne = 16.0;
  static constexpr double kLigne = 1.5;
  AcGePoint3d m_place;
  double m_hauteur;
  DrawingSpace m_espace;
};

// ---- Picture

class imagePlan {
public:
  explicit imagePlan(const paramsDessinImplantation& dessin) : m_dessin(dessin) {}

  void dessiner(const planImplantationAuto& plan, const viseesPlan& liste, int couleur) {
    const pointDuDessin& p = lieu(liste.station);
    const AcGePoint2d station(p.x, p.y);
    m_couleur = couleur;
    if (m_dessin.miseEnStation && liste.reference >= 0) {
      const AcGePoint2d reference(lieu(liste.reference).x, lieu(liste.reference).y);
      fleches(station, reference);
      texte(station, reference, L"Ref=0.0");
    }
    for (const int rang : liste.points) {
      const AcGePoint2d& vers = plan.point(rang);
      if (m_dessin.implantations)
        ajouter(std::make_unique<AcDbLine>(AcGePoint3d(station.x, station.y, 0.0),
                                           AcGePoint3d(vers.x, vers.y, 0.0)));
      if (m_dessin.textes)
        texte(
            station, vers,
            base::formater(L"D=%.3f A=%.4f gr", liste.distanceVers(plan, rang), liste.angleVers(plan, rang)));
    }
    if (m_dessin.groupement == m_dessin.kParMiseEnStation)
      groupEntities({m_entites.begin() + static_cast<std::ptrdiff_t>(m_groupees), m_entites.end()});
    m_groupees = m_entites.size();
  }
  std::vector<AcDbObjectId> finir() {
    if (m_dessin.groupement == m_dessin.kTout) groupEntities(m_entites);
    return std::move(m_entites);
  }

private:
  void ajouter(std::unique_ptr<AcDbEntity> entite) {
    entite->setColorIndex(m_couleur);
    const AcDbObjectId id = m_espace.add(std::move(entite));
    if (!id.isNull()) m_entites.push_back(id);
  }
  /// An arrow at both ends.
  void fleches(const AcGePoint2d& de, const AcGePoint2d& vers) {
    constexpr double kPart = 1.0 / 3.0;  // of a short line
    const reglagesImplantation& reglages = reglagesImplantation::commun();
    const double longueur = std::min(reglages.longueurFleche, de.distanceTo(vers) * kPart);
    const AcGeVector2d pas = (vers - de).normal() * longueur;
    auto polyligne = std::make_unique<AcDbPolyline>(4);
    polyligne->addVertexAt(0, de, 0.0, 0.0, reglages.largeurFleche);
    polyligne->addVertexAt(1, de + pas, 0.0, 0.0, 0.0);
    polyligne->addVertexAt(2, vers - pas, 0.0, reglages.largeurFleche, 0.0);
    polyligne->addVertexAt(3, vers, 0.0, 0.0, 0.0);
    ajouter(std::move(polyligne));
  }
  /// Along the middle of a line, a little to its left.
  void texte(const AcGePoint2d& de, const AcGePoint2d& vers, const std::wstring& mots) {
    constexpr double kEcart = 0.2;  // in text heights
    const double hauteur = reglagesImplantation::commun().hauteurTexte;
    const AcGeVector2d sens = (vers - de).normal();
    const AcGePoint2d place = de + (vers - de) * 0.5 + sens.perpVector() * (kEcart * hauteur);
    ajouter(std::make_unique<AcDbText>(AcGePoint3d(place.x, place.y, 0.0), mots.c_str(),
                                       acdbHostApplicationServices()->workingDatabase()->textstyle(), hauteur,
                                       sens.angle()));
  }

  const paramsDessinImplantation& m_dessin;
  DrawingSpace m_espace;
  std::vector<AcDbObjectId> m_entites;
  std::size_t m_groupees = 0;
  int m_couleur = 1;
};

}  // namespace

std::wstring textePlan(const planImplantationAuto& plan) {
  std::wstring texte;
  for (const viseesPlan& liste : viseesDuPlan(plan)) {
    const pointDuDessin& station = lieu(liste.station);
    const std::wstring nom = nomDe(liste.station);
    texte += base::formater(L"\nImplantation à partir de \t%s\t (\t%d\t points visés)", nom, nombreDe(liste));
    texte += base::formater(L"\nStation :\t%s\t  (X=\t%.4f\tY=\t%.4f\t)", nom, station.x, station.y);
    texte += ligneReference(liste, L"\nStation de référence en (X=\t%.4f\tY=\t%.4f )\tGis=\t%.4f\tgr",
                            L"\nStation de référence %s (X=\t%.4f\tY=\t%.4f )\tGis=\t%.4f\tgr");
    texte += L"\nNumero\tAngle\tDistance\tX\tY";
    for (const int rang : liste.points)
      texte += base::formater(L"\n%s\t%.4f\t%.4f\t%.4f\t%.4f", plan.nom(rang), liste.angleVers(plan, rang),
                              liste.distanceVers(plan, rang), plan.point(rang).x, plan.point(rang).y);
  }
  return texte;
}

void rapportPlan(const planImplantationAuto& plan, htmlDocument& document) {
  plumeRapport plume(document);
  for (const viseesPlan& liste : viseesDuPlan(plan)) {
    const pointDuDessin& station = lieu(liste.station);
    const std::wstring nom = echappe(nomDe(liste.station));
    plume.paragrapheBalise(
        base::formater(L"Implantation à partir de <b>%s</b> (%d points visés)", nom, nombreDe(liste)),
        attributs::kTitreMaj);
    plume.paragrapheBalise(base::formater(L"Station: <b>%s</b>  (X=%.4fY=%.4f)", nom, station.x, station.y),
                           attributs::kPetitMaj);
    const std::wstring reference =
        ligneReference(liste, L"Station de référence en (X=%.4fY=%.4f ) Gis=%.4f gr",
                       L"Station de référence <b>%s</b> (X=%.4fY=%.4f ) Gis=%.4f gr", echappe);
    if (!reference.empty()) plume.paragrapheBalise(reference, attributs::kPetitMaj);
    plume.entetes({L"N°", L"Angle (gr)", L"Distance"}, attributs::kGrisCentre);
    for (const int rang : liste.points) {
      plume.ouvrirLigne();
      plume.texte(plan.nom(rang), attributs::kCentre);
      plume.nombres({liste.angleVers(plan, rang), liste.distanceVers(plan, rang)});
      plume.fermerLigne();
    }
    plume.fermerTable();
  }
}

std::wstring csvPlan(const planImplantationAuto& plan) {
  std::wstring texte = L"Station;Reference;Point;X;Y;Angle_gr;Distance\n";
  for (const viseesPlan& liste : viseesDuPlan(plan))
    for (const int rang : liste.points)
      texte += base::formater(L"%s;%s;%s;%.4f;%.4f;%.4f;%.4f\n", base::champCsv(nomDe(liste.station)),
                              liste.reference < 0 ? std::wstring() : base::champCsv(nomDe(liste.reference)),
                              base::champCsv<wchar_t>(plan.nom(rang)), plan.point(rang).x, plan.point(rang).y,
                              liste.angleVers(plan, rang), liste.distanceVers(plan, rang));
  return texte;
}

bool ecrireRapportPlan(const planImplantationAuto& plan, const std::wstring& chemin, std::wstring& erreur) {
  const bool word = base::toUpper(chemin).ends_with(L".DOC");
  htmlDocument document;
  rapportPlan(plan, document);
  document.setFichier(base::toUtf8(chemin), word ? htmlDocument::word : htmlDocument::simple);
  std::string raison;
  if (document.ecrire(&raison)) return true;
  erreur = base::fromUtf8(raison);
  return false;
}

bool ecrirePlan(const planImplantationAuto& plan, const std::wstring& chemin, std::wstring& erreur) {
  const std::wstring nom = base::toUpper(chemin);
  if (nom.ends_with(L".HTM") || nom.ends_with(L".HTML") || nom.ends_with(L".DOC"))
    return ecrireRapportPlan(plan, chemin, erreur);
  std::string raison;
  if (base::remplacerFichier(base::toUtf8(chemin), base::toUtf8(textePlan(plan)), &raison)) return true;
  erreur = base::fromUtf8(raison);
  return false;
}

int dessinerTablesPlan(const planImplantationAuto& plan, const AcGePoint3d& coin, double hauteur) {
  if (!acdbHostApplicationServices()->workingDatabase()) return 0;
  tablePlan plume(coin, hauteur);
  int tables = 0;
  for (const viseesPlan& liste : viseesDuPlan(plan)) tables += plume.poser(plan, liste);
  return tables;
}

std::vector<AcDbObjectId> schematiserPlan(const planImplantationAuto& plan,
                                          const paramsDessinImplantation& dessin) {
  constexpr int kCouleurs = 254;
  if (!acdbHostApplicationServices()->workingDatabase()) return {};
  imagePlan image(dessin);
  int couleur = 0;
  for (const viseesPlan& liste : viseesDuPlan(plan)) image.dessiner(plan, liste, couleur++ % kCouleurs + 1);
  return image.finir();
}

}  // namespace veltora
