#include "stakeout/listes_implantation.h"

#include "arx/db/dbmain.h"
#include "arx/db/dbtable.h"
#include "base/format.h"
#include "base/text.h"
#include "calc/angles.h"
#include "core/drawing_space.h"
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

std::unique_ptr<AcDbTable> table(const visees& liste, std::size_t debut, std::size_t fin, double hauteur) {
  constexpr double kColonneNom = 10.0;  // in text heights, likewise the next
  constexpr double kColonne = 16.0;
  constexpr double kLigne = 1.5;
  const auto entetes = titres({L"PT", L"X", L"Y", L"Z", L"ANGLE", L"DISTANCE"}, liste.mise != nullptr);
  const int colonnes = static_cast<int>(entetes.size());
  const int lignes = static_cast<int>(fin - debut) + 1;
  auto faite = std::make_unique<AcDbTable>();
  faite->setSize(lignes, colonnes);
  faite->suppressTitleRow(true);
  faite->setTextStyle(acdbHostApplicationServices()->workingDatabase()->textstyle());
  faite->setTextHeight(hauteur);
  for (int i = 0; i < lignes; ++i) faite->setRowHeight(i, kLigne * hauteur);
  for (int c = 0; c < colonnes; ++c) {
    faite->setColumnWidth(c, (c == 0 ? kColonneNom : kColonne) * hauteur);
    faite->setTextString(0, c, entetes[static_cast<std::size_t>(c)]);
  }
  for (int i = 1; i < lignes; ++i) {
    const auto textes = cellules(liste.mise, *liste.points[debut + static_cast<std::size_t>(i) - 1]);
    for (int c = 0; c < colonnes; ++c) {
      faite->setTextString(i, c, textes[static_cast<std::size_t>(c)].substr(0, AcDbTable::kLongestText));
      faite->setAlignment(i, c, c == 0 ? AcDb::kMiddleCenter : AcDb::kMiddleRight);
    }
  }
  return faite;
}

/// @return the height of the table placed, 0 when the drawing refuses it
double poser(std::unique_ptr<AcDbTable> table, const AcGePoint3d& coin) {
  const double hauteur = table->height();
  table->setPosition(coin);
  DrawingSpace espace(nullptr, DrawingSpace::kCurrent);
  AcDbTable* const posee = espace.ready() ? espace.addOpen(std::move(table)) : nullptr;
  if (!posee) return 0.0;
  const bool montree = posee->recomputeTableBlock() == Acad::eOk;
  if (!montree) posee->erase();
  posee->close();
  return montree ? hauteur : 0.0;
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
  const auto entreGuillemets = [](const std::wstring& mot) {
    if (mot.find_first_of(L";\"\n") == std::wstring::npos) return mot;
    std::wstring ecrit = L"\"";
    for (const wchar_t c : mot) ecrit.append(c == L'"' ? 2 : 1, c);
    return ecrit + L"\"";
  };
  std::wstring texte = L"Station;Reference;Point;X;Y;Z;Angle_gr;Distance;Visibilite;Depassement\n";
  for (const visees& liste : viseesParStation(projet)) {
    for (const auto* point : liste.points) {
      const bool station = liste.mise != nullptr;
      texte += entreGuillemets(station ? liste.mise->texteStation() : L"") + L";" +
               entreGuillemets(station ? liste.mise->texteReference() : L"");
      std::vector<std::wstring> champs = cellules(liste.mise, *point);
      champs.resize(6);
      for (const std::wstring& champ : champs) texte += L";" + entreGuillemets(champ);
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
      const double prise = poser(table(liste, i, fin, hauteur), place);
      if (prise > 0.0) ++tables;
      place.y -= prise + kApres * hauteur;
    }
  }
  return tables;
}

}  // namespace veltora
