#include "calc/dialogs/formule_poids_dlg.h"

#include "base/files.h"
#include "base/format.h"
#include "base/text.h"
#include "calc/dialogs/def_variable_dlg.h"
#include "core/file_serializer.h"
#include "ui/driver.h"

namespace veltora {
namespace {

std::optional<base::FileAnswer> choisirFmc(bool enregistrer) {
  base::FileRequest demande;
  demande.filter = L"Formules Moindres carrés (*.fmc)|*.fmc||";
  demande.extension = L"fmc";
  demande.save = enregistrer;
  return ui::chooseFile(demande);
}

/// Value of a text in the variables' present state.
std::wstring evaluer(const ui::TextField& champ, const tableVariables& variables) {
  formule essai;
  essai.analyser(base::narrow(champ.text()));
  return base::formater(L"%.15g", essai.evaluer(variables, false));
}

}  // namespace

CDlgFormulePoids::CDlgFormulePoids(formulesPoids& formules)
    : Dialog(L"Formules poids des observations"), m_formules(formules) {
  verifierAngles.beside(angles);
  verifierGisements.beside(gisements);
  verifierDistances.beside(distances);
  lecture.setReadOnly();
  lecture.setMultiline();
  constantes.addColumn(L"Variable", 25.0);
  constantes.addColumn(L"Valeur", 25.0, ui::Align::Right);
  constantes.addColumn(L"Commentaire", 50.0);
  angle.setRange(0.0, 400.0);
}

void CDlgFormulePoids::onInit() {
  montrerTextes();
  montrerVariables();
}

void CDlgFormulePoids::montrerTextes() {
  angles.setText(base::widen(m_formules.angles));
  gisements.setText(base::widen(m_formules.gisements));
  distances.setText(base::widen(m_formules.distances));
}

void CDlgFormulePoids::montrerVariables() {
  constantes.clear();
  constantes.reserve(m_formules.nombre());
  for (int i = 0; i < m_formules.nombre(); ++i) {
    const std::wstring valeur =
        m_formules.systeme(i) ? L"* obs *" : base::formater(L"%.4f", m_formules.valeur(i));
    constantes.addRow({base::widen(m_formules.nom(i)), valeur, base::widen(m_formules.commentaire(i))}, i);
  }
}

int CDlgFormulePoids::variableChoisie() const {
  const int rang = constantes.selectedRow();
  return rang < 0 || m_formules.systeme(rang) ? -1 : rang;
}

void CDlgFormulePoids::verifier(const ui::TextField& champ) {
  formule essai;
  const bool bon = essai.analyser(base::narrow(champ.text()));
  std::string forme;
  essai.imprimer(forme);
  lecture.setText((bon ? L"OK : " : L"Erreur dans la formule") + base::widen(forme));
}

void CDlgFormulePoids::ajouterVariable() {
  if (CDefVariable(m_formules).doModal() == ui::kOk) montrerVariables();
}

void CDlgFormulePoids::modifierVariable() {
  const int index = variableChoisie();
  if (index >= 0 && CDefVariable(m_formules, index).doModal() == ui::kOk) montrerVariables();
}

void CDlgFormulePoids::supprimerVariable() {
  const int index = variableChoisie();
  if (index < 0) return;
  m_formules.supprimer(index);
  montrerVariables();
}

void CDlgFormulePoids::importerNoms() {
  std::vector<std::string> noms;
  for (const ui::TextField* champ : {&angles, &gisements, &distances}) {
    formule essai;
    essai.analyser(base::narrow(champ->text()));
    essai.listerVariables(noms);
  }
  for (const std::string& nom : noms) {
    if (m_formules.chercher(nom) < 0) m_formules.definir(nom, 1.0, base::narrow(L"Importé des formules"));
  }
  montrerVariables();
}

void CDlgFormulePoids::calculerExemple() {
  if (!validateFields()) return;
  m_formules.definir("d1", d1.value());
  m_formules.definir("d2", d2.value());
  m_formules.definir("d3", d3.value());
  m_formules.definir("ang", angle.value());
  poidsAngle1.setText(evaluer(angles, m_formules));
  poidsAngle2.setText(evaluer(gisements, m_formules));
  poidsDistance.setText(evaluer(distances, m_formules));
}

void CDlgFormulePoids::ouvrir() {
  const auto choix = choisirFmc(false);
  if (!choix) return;
  FileSerializer fichier(base::narrow(choix->path), false);
  if (!fichier.estOuvert()) {
    ui::messageBox(L"Erreur ouverture de fichier");
    return;
  }
  m_formules.reinitialiser();
  if (!m_formules.lire(fichier)) ui::messageBox(L"Erreur dans le fichier");
  montrerTextes();
  montrerVariables();
}

void CDlgFormulePoids::sauver() {
  m_formules.angles = base::narrow(angles.text());
  m_formules.gisements = base::narrow(gisements.text());
  m_formules.distances = base::narrow(distances.text());
  const auto choix = choisirFmc(true);
  if (!choix) return;
  // Deliberate (fmc-sans-ecriture): the file is opened, no field is written, and the answer is that of a
  // failure in every case. What stood under the name stays whole: nothing here could make it again.
  const base::RemplacementFichier fichier(base::toUtf8(choix->path));
  ui::messageBox(L"Erreur création de fichier");
}

}  // namespace veltora
