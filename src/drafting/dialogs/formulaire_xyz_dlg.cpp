#include "drafting/dialogs/formulaire_xyz_dlg.h"

#include "arx/db/dbmain.h"
#include "arx/ed/acutads.h"
#include "base/files.h"
#include "base/format.h"
#include "base/paths.h"
#include "base/text.h"
#include "codes/table_codification.h"
#include "core/imprimer_doutes.h"
#include "jobs/genre_fichier.h"
#include "jobs/lire_liste.h"
#include "jobs/placer_stations.h"
#include "points/dialogs/numerotation_dlg.h"
#include "points/point_du_dessin.h"
#include "ui/driver.h"

namespace veltora {
namespace {

std::optional<base::FileAnswer> choisir(const wchar_t* filtre, bool enregistrer) {
  base::FileRequest demande;
  demande.extension = L"XYZ";
  demande.filter = filtre;
  demande.save = enregistrer;
  return ui::chooseFile(demande);
}

/// False after a message when a line holds a coordinate that is no number.
bool placables(const tableObsXYZ& table) {
  std::vector<stationCalculee> points;
  for (const pointXYZ& ligne : table.lignes) points.push_back({ligne.nom, ligne.x, ligne.y, ligne.z});
  const std::wstring refus = refusDePlacer(points, true);
  if (!refus.empty()) ui::messageBox(refus, L"Points en XYZ");
  return refus.empty();
}

}  // namespace

CformulaireXYZ::CformulaireXYZ(tableCodification& codes, tableObsXYZ& table)
    : Dialog(L"Points en XYZ"), m_codes(codes), m_table(table) {
  menuTable.add(L"Charger ...", [this] { charger(true); });
  menuTable.add(L"&Sauvegarder", [this] { sauvegarder(); });
  menuTable.addSeparator();
  menuTable.add(L"Fusionner", [this] { charger(false); });
  menuTable.add(L"Fin", [this] { endDialog(ui::kOk); });
  menuPoints.add(L"&PLacer dans le dessin", [this] { placer(); });
  menuPoints.add(L"&Renumeroter", [this] { renumeroter(); });
  liste.addColumn(L"Numero", 8.0);
  for (const wchar_t* titre : {L"X  ", L"Y  ", L"Z  "}) liste.addColumn(titre, 15.0, ui::Align::Right);
  liste.addColumn(L"Code", 25.0);
  liste.addColumn(L"Obs", 22.0);
  liste.onColumn = [this](int colonne) { liste.sort(m_table.comparateur(colonne)); };
}

void CformulaireXYZ::remplir() {
  liste.clear();
  liste.reserve(static_cast<int>(m_table.lignes.size()) + 10);
  for (const pointXYZ& ligne : m_table.lignes) {
    // Deliberate (obs-vide): the column of the observation stays empty.
    liste.addRow({ligne.nom, texteCoordonnee(ligne.x, 3), texteCoordonnee(ligne.y, 3),
                  texteCoordonnee(ligne.z, 3), m_codes.getLibelleCode(ligne.code), L""},
                 ligne.numeroInterne);
  }
}

/// Codes that the table lacks, in the order in which the lines bring them.
void CformulaireXYZ::ajouterCodesManquants() {
  for (const pointXYZ& ligne : m_table.lignes) m_codes.getOuCreerCode(ligne.code);
}

void CformulaireXYZ::charger(bool vider) {
  const auto choix = choisir(L"Fichier XYZ (.XYZ)|*.xyz|Tous (*.*)|*.*||", false);
  if (!choix) return;
  m_table.nomFichier = choix->path;
  {
    base::Suivi suivi;
    m_table.charger(nullptr, vider, &suivi);
  }
  if (const auto octets = base::lireFichier(base::cheminDuTexte(choix->path))) {
    imprimerDoutes(doutesDuGenre(choix->path, *octets, genreFichier::xyz));
    imprimerDoutes(doutesXyz(choix->path, *octets));
  }
  imprimerDoutes(m_table.remarques);
  // Deliberate (fusionner-libelle): a new code is labelled "Code 7" when its list is loaded, but "Code N° 7",
  // by the row that shows it, when its list is merged.
  if (vider) ajouterCodesManquants();
  remplir();
}

void CformulaireXYZ::sauvegarder() {
  const auto choix = choisir(L"Fichier Texte (.TXT)|*.txt|Tous (*.*)|*.*||", true);
  base::Suivi suivi;
  if (choix && !m_table.sauver(choix->path.c_str(), &suivi) && !suivi.arrete())
    acutPrintf(L"\nEcriture impossible du fichier %s", choix->path);
}

void CformulaireXYZ::placer() {
  m_codes.creerTousLayers(acdbHostApplicationServices()->workingDatabase());
  if (m_table.lignes.empty() || !placables(m_table)) return;
  base::Suivi suivi(static_cast<long long>(m_table.lignes.size()) - 1);
  for (const pointXYZ& ligne : m_table.lignes) {
    if (suivi.arrete()) return;
    pointDuDessin point;
    point = ligne;
    // Deliberate (placer-hors-table): blocks only; they enter a table when the drawing is read again
    // (MAJPOINTS). The observation of the line is not shown.
    point.creer(true, L"");
    suivi.avancer();
  }
}

void CformulaireXYZ::renumeroter() {
  CString prefixe;
  CString suffixe;
  int depart = 1;
  if (!saisirNumerotation(prefixe, depart, suffixe)) return;
  m_table.renumeroter(prefixe, depart, suffixe);
  remplir();
}

void coordsXYZ() {
  tableObsXYZ table;
  CformulaireXYZ(getTableCodification(), table).doModal();
}

}  // namespace veltora
