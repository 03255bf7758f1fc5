#include "calc/dialogs/compenser_dlg.h"

#include "base/paths.h"
#include "base/text.h"
#include "calc/dialogs/choisir_sortie.h"
#include "calc/dialogs/resultats_dlg.h"
#include "core/imprimer_doutes.h"
#include "ui/driver.h"

namespace veltora {
namespace {

constexpr double kPetit = 1e-6;
constexpr double kGrand = 1e9;

void ajouterLignes(std::wstring& texte, const std::vector<std::wstring>& lignes) {
  for (const std::wstring& ligne : lignes) texte += ligne + L"\r\n";
  if (!lignes.empty()) texte += L"\r\n";
}

}  // namespace

DlgCompenser::DlgCompenser() : Dialog(L"Compensation pondérée") {
  for (ui::NumberField* champ : {&angle, &direction, &gisement}) champ->setRange(kPetit, kGrand);
  for (ui::NumberField* champ :
       {&distance, &ppm, &nivellement, &racineKm, &centrageStation, &centrageVise, &echelle})
    champ->setRange(0.0, kGrand);
  resultats.setReadOnly();
  resultats.setMultiline();
}

void DlgCompenser::choisir() {
  base::FileRequest demande;
  demande.filter = L"Réseaux (*.mc;*.gkf)|*.mc;*.gkf||";
  demande.extension = L"mc";
  if (const auto choix = ui::chooseFile(demande)) fichier.setText(choix->path);
}

void DlgCompenser::ecrireRapport() {
  if (const auto nom =
          choisirSortie(L"Rapport (*.html)|*.html||", L"html", {base::cheminDuTexte(fichier.text())}))
    executer(false, *nom);
}

void DlgCompenser::montrer(const resultatCompenser& resultat) {
  std::wstring texte;
  ajouterLignes(texte, resultat.bilan);
  ajouterLignes(texte, resultat.remarques.phrases());
  ajouterLignes(texte, resultat.points);
  ajouterLignes(texte, resultat.mesures);
  resultats.setText(texte);
}

void DlgCompenser::executer(bool dessin, const std::wstring& fichierRapport) {
  if (!validateFields()) return;
  demandeCompenser demande;
  demande.fichier = base::toUtf8(fichier.text());
  demande.rapport = base::toUtf8(fichierRapport);
  demande.ecarts = {angle.value(),       direction.value(),   gisement.value(), distance.value(),
                    ppm.value(),         nivellement.value(), racineKm.value(), centrageStation.value(),
                    centrageVise.value()};
  demande.methode = static_cast<robustesse>(robuste.index());
  demande.prevoir = prevoir.checked();
  demande.dessiner = dessin;
  demande.echelleEllipses = echelle.value();
  resultatCompenser resultat;
  bool bon = executerCompenser(demande, resultat);
  montrer(resultat);  // what is to be checked, before it is asked about
  if (bon && resultat.retenu &&
      ui::messageBox(L"Le résultat est à vérifier. Le dessiner malgré les doutes ?", L"Compensation pondérée",
                     ui::Buttons::YesNo) == ui::kYes) {
    demande.malgreDoutes = true;
    bon = executerCompenser(demande, resultat);
    montrer(resultat);
  }
  imprimerDoutes(resultat.remarques);
  if (!bon)
    ui::messageBox(resultat.erreur);
  else if (!fichierRapport.empty())
    DlgRapport(fichierRapport).doModal();
}

}  // namespace veltora
