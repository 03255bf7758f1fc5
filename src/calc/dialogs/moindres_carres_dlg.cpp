#include "calc/dialogs/moindres_carres_dlg.h"

#include "arx/ed/acutads.h"
#include "base/files.h"
#include "base/text.h"
#include "calc/dialogs/saisie_polygonale_dlg.h"
#include "calc/dialogs/tab_poids_dlg.h"
#include "calc/network/fichier_mc.h"
#include "calc/network/listing_reseau.h"
#include "calc/network/remarques_reseau.h"
#include "calc/network/residus_reseau.h"
#include "core/imprimer_doutes.h"
#include "jobs/genre_fichier.h"
#include "jobs/placer_reseau.h"
#include "ui/driver.h"

namespace veltora {
namespace {

/// On the host's command line: what the dialog's own texts do not tell.
void imprimer(const std::vector<std::wstring>& lignes) {
  for (const std::wstring& ligne : lignes) acedPrompt(L"\n" + ligne);
  if (!lignes.empty()) acedPrompt(L"\n");
}

}  // namespace

CDlgMoindresCarres::CDlgMoindresCarres() : Dialog(L"Moindres carrés") {
  // Deliberate (iterer-inerte): the button "Itérer" does nothing; "Calculer X,Y" goes through all passes.
  for (ui::TextField* champ : {&journal, &lecture}) {
    champ->setReadOnly();
    champ->setMultiline();
  }
}

void CDlgMoindresCarres::charger() {
  base::FileRequest demande;
  demande.filter = L"Fichier Moindres carrés (*.mc)|*.mc||";
  demande.extension = L"mc";
  const auto choix = ui::chooseFile(demande);
  if (!choix) return;
  // Whatever could be read is listed, nothing included.
  if (const auto octets = base::lireFichier(base::toUtf8(choix->path))) {
    base::Remarques remarques = doutesDuGenre(choix->path, *octets, genreFichier::mc);
    lireMc(*octets, m_reseau, &remarques);
    imprimerDoutes(remarques);
  }
  lecture.setText(listerReseau(m_reseau));
  imprimer(lignesRecensement(m_reseau));
}

void CDlgMoindresCarres::calculerPlan() {
  std::wstring texte;
  journal.setText(texte);
  const bilanIteration bilan = veltora::iterer(m_reseau, texte);
  journal.setText(texte);
  base::Remarques remarques;
  remarquerObservations(m_reseau, remarques);
  remarquerPlan(m_reseau, bilan, remarques);
  imprimer(tableauResidus(m_reseau, residusPlan(m_reseau)));
  imprimer(remarques.phrases());
}

void CDlgMoindresCarres::calculerAltitudes() {
  std::wstring texte;
  journal.setText(texte);
  m_reseau.calculerAlti(texte);
  journal.setText(texte);
  base::Remarques remarques;
  remarquerAltitudes(m_reseau, remarques);
  imprimer(tableauResidus(m_reseau, residusAltitudes(m_reseau)));
  imprimer(remarques.phrases());
}

void CDlgMoindresCarres::placer(bool canevas) {
  const std::vector<stationCalculee> points = canevas ? pointsCanevas(m_reseau) : pointsCalcules(m_reseau);
  if (placables(points, true)) placerReseau(points);
}

void CDlgMoindresCarres::montrerPoids() { CDlgTabPoidsObse(m_reseau).doModal(); }

}  // namespace veltora
