#include "calc/dialogs/saisie_polygonale_dlg.h"

#include "base/files.h"
#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"
#include "calc/angles.h"
#include "calc/traverse/nivellement.h"
#include "calc/traverse/obs_fichier.h"
#include "core/imprimer_doutes.h"
#include "jobs/genre_fichier.h"
#include "jobs/placer_stations.h"
#include "ui/driver.h"

#include <cmath>
#include <exception>

namespace veltora {
namespace {

void direImpossible() { ui::messageBox(L"Ouverture impossible du fichier", L"Erreur"); }

std::optional<base::FileAnswer> choisir(bool enregistrer) {
  base::FileRequest demande;
  demande.filter = kFiltreObs;
  demande.save = enregistrer;
  return ui::chooseFile(demande);
}

/// What a cell shows for what was typed into it, numbers as « Ajouter » writes them; nothing, behind a
/// message, for what is no number.
std::optional<std::wstring> celluleSaisie(const std::wstring& titre, bool nombre, const std::wstring& texte) {
  const std::wstring saisi = base::trim(texte);
  if (!nombre) return saisi;
  double valeur = 0.0;
  if (base::lireReelExact(base::toUtf8(saisi), valeur) && std::isfinite(valeur))
    return base::formater(L"%.5f", valeur);
  ui::messageBox(L"« " + titre + L" » : « " + saisi + L" » n'est pas un nombre.", L"Calculs Topo");
  return std::nullopt;
}

}  // namespace

void preparerModes(ui::ComboBox& angles, ui::ComboBox& nivellement) {
  for (const uniteAngle& unite : kUnitesAngle) angles.addItem(std::wstring(unite.motCle));
  for (const std::wstring_view mot : kModesNivellement) nivellement.addItem(std::wstring(mot));
  angles.setIndex(0);
  nivellement.setIndex(0);
}

void preparerListe(ui::List& liste) {
  liste.addColumn(L"St Observée", 25.0);
  liste.addColumn(L"Angle", 25.0, ui::Align::Right);
  liste.addColumn(L"Distance", 25.0, ui::Align::Right);
  liste.addColumn(L"Altitude", 25.0, ui::Align::Right);
  for (int colonne = 0; colonne < 4; ++colonne) liste.setEditable(colonne);
  liste.onEdit = [&liste](int, int colonne, const std::wstring& texte) {
    return celluleSaisie(liste.columns()[static_cast<std::size_t>(colonne)].caption, colonne > 0, texte);
  };
}

void ajouterLigne(ui::List& liste, const ligneObs& ligne) {
  liste.addRow({ligne.nom, ligne.angle, ligne.distance, ligne.dz});
}

void montrerLignes(ui::List& liste, const std::vector<ligneObs>& lignes) {
  liste.clear();
  for (const ligneObs& ligne : lignes) ajouterLigne(liste, ligne);
}

void enleverLigne(ui::List& liste) {
  const int choisie = liste.selectedRow();
  liste.removeRow(choisie >= 0 ? choisie : liste.rowCount() - 1);
  liste.clearSelection();
}

std::vector<ligneObs> lignesDe(const ui::List& liste) {
  std::vector<ligneObs> lignes;
  lignes.reserve(static_cast<std::size_t>(liste.rowCount()));
  for (int i = 0; i < liste.rowCount(); ++i) {
    lignes.push_back({liste.cell(i, 0), liste.cell(i, 1), liste.cell(i, 2), liste.cell(i, 3)});
  }
  return lignes;
}

bool donneesSuffisantes(const ui::List& liste) {
  if (liste.rowCount() >= 2) return true;
  ui::messageBox(L"Erreur , données insuffisantes ", L"Calculs Topo");
  return false;
}

bool placables(const std::vector<stationCalculee>& stations, bool altitudes) {
  const std::wstring refus = refusDePlacer(stations, altitudes);
  if (!refus.empty()) ui::messageBox(refus, L"Calculs Topo");
  return refus.empty();
}

std::optional<std::filesystem::path> choisirObsALire() {
  const auto choix = choisir(false);
  if (!choix) return std::nullopt;
  return base::toUtf8(choix->path);
}

std::optional<std::filesystem::path> choisirObsAEcrire() {
  const auto choix = choisir(true);
  if (!choix) return std::nullopt;
  return base::toUtf8(nomFichierObs(choix->path, choix->filterIndex));
}

void lireObs(const std::filesystem::path& chemin,
             const std::function<void(const std::string& octets)>& lire) {
  try {
    if (const auto octets = base::lireFichier(chemin)) {
      imprimerDoutes(doutesDuGenre(base::fromUtf8(chemin.string()), *octets, genreFichier::obs));
      lire(*octets);
    }
  } catch (const std::exception&) {
    direImpossible();
  }
}

void ecrireObs(const std::filesystem::path& chemin, const std::function<std::string()>& contenu) {
  bool ecrit = false;
  try {
    ecrit = base::remplacerFichier(chemin, contenu());
  } catch (const std::exception&) {
    ecrit = false;
  }
  if (!ecrit) direImpossible();
}

}  // namespace veltora
