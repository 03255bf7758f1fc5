#include "field/dialogs/import_gsi_dlg.h"

#include "base/text.h"
#include "field/dialogs/calc_import_gsi_dlg.h"

namespace veltora {

ImportGSI::ImportGSI() : Dialog(L"Import GSI") {
  fichier.setReadOnly();
  parcourir.beside(fichier);
  for (ui::TextField* boite : {&brut, &analyse}) {
    boite->setMultiline();
    boite->setReadOnly();
  }
  analyser.disable();
}

void ImportGSI::choisirFichier() {
  std::wstring chemin;
  if (!choisirCarnet(chemin, m_carnet)) return;
  fichier.setText(chemin);
  brut.setText(m_carnet.brut());
  analyse.setText(L"Appuyer sur le bouton Analyser \npour démarrer l'analyse!");
  progression.setRange(0, 100);
  progression.setPosition(0);
  analyser.enable();
}

// Deliberate (gsi-analyse-ajoute): the table is not emptied, so a second analysis adds to the first.
void ImportGSI::analyserLignes() {
  analyse.setText({});
  const auto lignes = static_cast<long long>(m_carnet.nombreLignes());
  progression.setRange(0, lignes - 1);
  analyseGSI lecteur;
  std::string texte;
  analyseGSI::preparer(m_carnet, texte);
  for (long long i = 0; i < lignes; ++i) {
    progression.setPosition(i);
    lecteur.lire(m_carnet.ligne(static_cast<std::size_t>(i)), texte, "\n");
  }
  analyse.setText(base::widen(texte));
}

}  // namespace veltora
