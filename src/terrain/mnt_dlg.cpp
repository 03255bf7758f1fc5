#include "terrain/mnt_dlg.h"

#include "arx/ed/acutads.h"
#include "base/format.h"
#include "base/text.h"
#include "core/imprimer_doutes.h"
#include "core/picking.h"
#include "terrain/lecture_dessin.h"
#include "terrain/stockage.h"
#include "terrain/terrains_ouverts.h"
#include "terrain/travail.h"
#include "ui/driver.h"

namespace veltora::terrain {

DlgMnt::DlgMnt(AcDbDatabase& dessin) : Dialog(L"Modèle numérique de terrain"), m_dessin(dessin) {
  liste.addColumn(L"Nom", 30.0);
  liste.addColumn(L"Sommets", 15.0, ui::Align::Right);
  liste.addColumn(L"Lignes", 15.0, ui::Align::Right);
  liste.addColumn(L"Plus longue arête", 20.0, ui::Align::Right);
  arete.setRange(0.0, kPlusLoin);
}

void DlgMnt::remplir() {
  liste.clear();
  const TerrainsDuDessin& tous = terrainsDe(m_dessin);
  for (const Terrain* terrain : tous.terrains) {
    const Modele& modele = terrain->modele();
    liste.addRow({modele.nom, std::to_wstring(modele.sommets.size()), std::to_wstring(modele.lignes.size()),
                  modele.areteMaximale > 0.0 ? base::formater(L"%g", modele.areteMaximale) : std::wstring()});
  }
  const Terrain* const actuel = terrainCourant(m_dessin);
  courant.setText(actuel ? actuel->modele().nom : std::wstring(L"aucun"));
  if (const int nombre = illisibles(m_dessin); nombre > 0)
    acutPrintf(L"\nTerrains illisibles dans ce dessin, laissés tels quels : %d", nombre);
}

void DlgMnt::selectionner(Entites& ids, ui::Label& nombre) {
  const ui::HiddenDialog cache(*this);
  selectEntities(nullptr, nullptr, ids);
  nombre.setText(base::formater(L"Entités choisies : %d", static_cast<int>(ids.size())));
}

Terrain* DlgMnt::choisi() {
  const std::vector<int> lignesChoisies = liste.selection();
  const TerrainsDuDessin& tous = terrainsDe(m_dessin);
  if (lignesChoisies.size() == 1 && lignesChoisies[0] < static_cast<int>(tous.terrains.size()))
    return tous.terrains[static_cast<std::size_t>(lignesChoisies[0])];
  ui::messageBox(L"Choisissez un terrain de la liste.", L"Terrain");
  return nullptr;
}

void DlgMnt::choisir() {
  if (const Terrain* terrain = choisi(); terrain)
    terrain::rendreCourant(m_dessin, enregistrementDe(m_dessin, *terrain));
  remplir();
}

void DlgMnt::oter() {
  if (const Terrain* terrain = choisi(); terrain)
    terrain::supprimer(m_dessin, enregistrementDe(m_dessin, *terrain));
  remplir();
}

void DlgMnt::faire() {
  const std::wstring voulu = base::trim(nom.text());
  ChoixCodes choix;
  if (voulu.empty()) return void(ui::messageBox(L"Donnez un nom au terrain.", L"Terrain"));
  if (!arete.validate()) return;
  if (!ChoixCodes::lire(codes.text(), choix))
    return void(ui::messageBox(L"Les codes s'écrivent ainsi : 100, 200-299", L"Terrain"));
  Sources sources;
  sources.areteMaximale = arete.value();
  if (table.checked() && m_faces.empty()) ajouterTable(choix, sources);
  int autres = ajouterEntites(m_entites, Role::kToutes, sources).autres;
  autres += ajouterEntites(m_lignes, Role::kLignes, sources).autres;
  const Bilan limites = ajouterEntites(m_limite, Role::kLimite, sources);
  if (limites.ouvertes > 0) acutPrintf(L"\nLimites ouvertes, fermées d'un trait : %d", limites.ouvertes);
  autres += limites.autres;
  autres += ajouterEntites(m_faces, Role::kFacettes, sources).autres;
  base::Remarques remarques;
  std::wstring erreur;
  std::unique_ptr<Terrain> terrain = fabriquer(voulu, sources, remarques, erreur);
  imprimerDoutes(remarques);
  if (autres > 0) acutPrintf(L"\nEntités qui ne donnent rien au terrain, laissées de côté : %d", autres);
  if (!terrain) return void(ui::messageBox(L"Terrain impossible : " + erreur + L".", L"Terrain"));
  if (remarques.douteuses() &&
      ui::messageBox(
          L"À confirmer : le terrain est à vérifier, la ligne de commande dit pourquoi.\nLe créer ?",
          L"Terrain", ui::Buttons::YesNo) != ui::kYes)
    return;
  ResultatTerrain resultat;
  decrire(*terrain, resultat);
  int remplaces = 0;
  if (!ajouter(m_dessin, std::move(terrain), remplaces))
    return void(ui::messageBox(L"Le dessin ne reçoit pas le terrain.", L"Terrain"));
  acutPrintf(L"\nTerrain « %s » : %d sommets, %d faces, altitudes de %.3f à %.3f%s", resultat.nom,
             resultat.sommets, resultat.faces, resultat.basse, resultat.haute,
             remplaces > 0 ? L", à la place du précédent" : L"");
  remplir();
}

}  // namespace veltora::terrain
