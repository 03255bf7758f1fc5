#include "stakeout/listes_implantation.h"

#include "arx/db/dbmain.h"
#include "base/csv.h"
#include "base/format.h"
#include "base/text.h"
#include "calc/angles.h"
#include "core/drawing_table.h"
#include "report/html_document.h"
#include "report/html_text.h"
#include "report/plume_rapport.h"
#include "report/report_setup.h"
#include "stakeout/dessin_implantation.h"

#include <algorithm>
#include <array>
#include <memory>
#include <unordered_map>

namespace veltora {
namespace {

double enUnite(double radians, const uniteAngle& unite) {
  return radians == Z_ABSENT ? Z_ABSENT : radians / unite.versRadians;
}

double angleEnGrades(const observationMiseEnStation& mise, const observationImplantation& point) {
  return enUnite(mise.gisementVers(point), uniteDeMode(0));
}

/// Name, X, Y, Z and, from a station, angle and distance.
std::vector<std::wstring> cellules(const observationMiseEnStation* mise,
                                   const observationImplantation& point) {
  std::vector<std::wstring> ligne{point.nom, coteImplantation(point.x), coteImplantation(point.y),
                                  coteImplantation(point.z)};
  if (mise) {
    ligne.push_back(coteImplantation(angleEnGrades(*mise, point)));
    ligne.push_back(coteImplantation(distanceImplantation(*mise, point)));
  }
  return ligne;
}

std::vector<const wchar_t*> titres(const std::array<const wchar_t*, 6>& tous, bool avecStation) {
  return {tous.begin(), tous.begin() + (avecStation ? 6 : 4)};
}

const wchar_t* motVerdict(const observationImplantation& point) {
  switch (verdict(point)) {
    case verdictVisee::kVisible:
      return L"visible";
    case verdictVisee::kNonVisible:
      return L"masqué";
    case verdictVisee::kNonVerifie:
      break;
  }
  return L"";
}

/// The points of a list from one place to another. @return the height of the table placed, 0 when the drawing
/// refuses it
double poserTable(const visees& liste, std::size_t debut, std::size_t fin, double hauteur,
                  const AcGePoint3d& coin) {
  constexpr double kColonneNom = 10.0;  // in text heights, likewise the next
  constexpr double kColonne = 16.0;
  constexpr double kLigne = 1.5;
  std::vector<TableColumn> colonnes;
  for (const wchar_t* titre : titres({L"PT", L"X", L"Y", L"Z", L"ANGLE", L"DISTANCE"}, liste.mise != nullptr))
    colonnes.push_back({titre, kColonne * hauteur});
  colonnes[0].width = kColonneNom * hauteur;
  colonnes[0].alignment = AcDb::kMiddleCenter;
  std::vector<std::vector<std::wstring>> lignes;
  for (std::size_t i = debut; i < fin; ++i) lignes.push_back(cellules(liste.mise, *liste.points[i]));
  std::unique_ptr<AcDbTable> table =
      textTable(*acdbHostApplicationServices()->workingDatabase(), colonnes, lignes.size(), hauteur,
                kLigne * hauteur, [&](std::size_t ligne, std::size_t c) { return lignes[ligne][c]; });
  if (!table) return 0.0;
  const double prise = table->height();
  table->setPosition(coin);
  DrawingSpace espace(nullptr, DrawingSpace::kCurrent);
  return addTable(espace, std::move(table)).isNull() ? 0.0 : prise;
}

}  // namespace

std::vector<visees> viseesParStation(const projetImplantation& projet) {
  std::vector<visees> listes(projet.stations.size() + 1);
  std::unordered_map<std::uint32_t, std::size_t> rangs;
  for (std::size_t i = 0; i < projet.stations.size(); ++i) {
    listes[i].mise = projet.stations[i];
    rangs.emplace(projet.stations[i]->idMise, i);
  }
  for (const observationImplantation& point : projet.points) {
    const auto rang = rangs.find(point.idStation);
    (rang == rangs.end() ? listes.back() : listes[rang->second]).points.push_back(&point);
  }
  return listes;
}

std::wstring coteImplantation(double valeur) {
  return valeur == Z_ABSENT ? std::wstring() : base::formater(L"%.4f", valeur);
}

std::wstring celluleAngle(const observationMiseEnStation* mise, const observationImplantation& point) {
  if (!mise) return L"-";
  if (const double angle = mise->gisementVers(point); angle != Z_ABSENT)
    return base::formater(L"%.4f", enGrades(angle));
  const double brut = mise->gisementBrut(point);
  return brut == Z_ABSENT ? L"-" : base::formater(L"g= %s", base::formater(L"%.4f", enGrades(brut)));
}

void rapportImplantation(const projetImplantation& projet, htmlDocument& document) {
  plumeRapport plume(document);
  plume.paragraphe(L"Implantations", "class=grand");
  for (const visees& liste : viseesParStation(projet)) {
    if (liste.mise) {
      std::string tete;
      liste.mise->texteHtml(tete);
      document.ajouterCorps(tete);
    }
    if (liste.points.empty()) continue;
    plume.ouvrirLigne();
    for (const wchar_t* titre :
         titres({L"N°", L"X", L"Y", L"Z", L"Angle (gr)", L"Distance"}, liste.mise != nullptr))
      plume.texte(titre, attributs::kGrisCentre);
    plume.fermerLigne();
    for (const observationImplantation* point : liste.points) {
      plume.ouvrirLigne();
      bool nom = true;
      for (const std::wstring& texte : cellules(liste.mise, *point)) {
        plume.texte(texte, nom ? attributs::kCentre : attributs::kNombre);
        nom = false;
      }
      plume.fermerLigne();
    }
    plume.fermerTable();
    document.ajouterCorps("<br>");
  }
  document.ajouterCorps("<br>");
}

bool exporterImplantation(const projetImplantation& projet, const std::wstring& chemin,
                          const std::wstring& extension, std::wstring& erreur) {
  constexpr std::size_t kPlusCourte = 3;
  const std::wstring majuscules = base::toUpper(extension);
  const bool word = majuscules.size() < kPlusCourte || majuscules.ends_with(L".DOC");
  htmlDocument document;
  rapportImplantation(projet, document);
  document.setFichier(base::toUtf8(chemin), word ? htmlDocument::word : htmlDocument::simple);
  std::string raison;
  if (document.ecrire(&raison)) return true;
  erreur = base::fromUtf8(raison);
  return false;
}

std::wstring texteImplantation(const projetImplantation& projet, int modeAngle) {
  const uniteAngle& unite = uniteDeMode(modeAngle);
  const auto champ = [](double valeur) {
    return valeur == Z_ABSENT ? base::formater(L"%15s", L"-") : base::formater(L" %14.4f", valeur);
  };
  std::wstring texte = L"Implantation, angles en " + std::wstring(unite.nom) + L"\n";
  for (const visees& liste : viseesParStation(projet)) {
    if (liste.points.empty()) continue;
    texte += liste.mise ? L"\nStation " + liste.mise->texteStation() + L", référence " +
                              liste.mise->texteReference() + L"\n"
                        : std::wstring(L"\nSans station\n");
    std::size_t largeur = 8;
    for (const auto* point : liste.points) largeur = std::max(largeur, point->nom.size() + 2);
    const auto nom = [largeur](std::wstring mot) {
      mot.resize(std::max(largeur, mot.size()), L' ');
      return mot;
    };
    texte += nom(L"Point") + base::formater(L"%15s%15s%15s", L"X", L"Y", L"Z");
    texte += liste.mise ? base::formater(L"%15s%15s\n", L"Angle", L"Distance") : std::wstring(L"\n");
    for (const auto* point : liste.points) {
      texte += nom(point->nom) + champ(point->x) + champ(point->y) + champ(point->z);
      if (liste.mise) {
        texte += champ(enUnite(liste.mise->gisementVers(*point), unite)) +
                 champ(distanceImplantation(*liste.mise, *point));
        if (point->visibiliteCalculee)
          texte += base::formater(L"  %s (%.2f)", motVerdict(*point), point->hauteurRequise);
      }
      texte += L"\n";
    }
  }
  return texte;
}

std::wstring csvImplantation(const projetImplantation& projet) {
  std::wstring texte = L"Station;Reference;Point;X;Y;Z;Angle_gr;Distance;Visibilite;Depassement\n";
  for (const visees& liste : viseesParStation(projet)) {
    for (const auto* point : liste.points) {
      const bool station = liste.mise != nullptr;
      texte += base::champCsv(station ? liste.mise->texteStation() : std::wstring()) + L";" +
               base::champCsv(station ? liste.mise->texteReference() : std::wstring());
      std::vector<std::wstring> champs = cellules(liste.mise, *point);
      champs.resize(6);
      for (const std::wstring& champ : champs) texte += L";" + base::champCsv(champ);
      texte += L";" + std::wstring(motVerdict(*point)) + L";" +
               (point->visibiliteCalculee ? coteImplantation(point->hauteurRequise) : L"") + L"\n";
    }
  }
  return texte;
}

int dessinerTables(const projetImplantation& projet, const AcGePoint3d& coin, double hauteur) {
  constexpr std::size_t kLignesTable = 50000;  // a table of the host has fewer than 100,000 rows
  constexpr double kTetes = 3.5;               // in text heights, likewise the next
  constexpr double kApres = 2.0;
  if (!acdbHostApplicationServices()->workingDatabase()) return 0;
  int tables = 0;
  AcGePoint3d place = coin;
  entitesDessinees textes;
  for (const visees& liste : viseesParStation(projet)) {
    if (liste.points.empty()) continue;
    if (liste.mise) {
      liste.mise->dessinerTexte(place, hauteur, textes);
      place.y -= kTetes * hauteur;
    }
    for (std::size_t i = 0; i < liste.points.size(); i += kLignesTable) {
      const std::size_t fin = std::min(i + kLignesTable, liste.points.size());
      const double prise = poserTable(liste, i, fin, hauteur, place);
      if (prise > 0.0) ++tables;
      place.y -= prise + kApres * hauteur;
    }
  }
  return tables;
}

}  // namespace veltora
