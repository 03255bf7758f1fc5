#include "calc/dialogs/calculs_topo_dlg.h"

#include "calc/network/canevas.h"

namespace veltora {
namespace {

constexpr const wchar_t* kInviteImport =
    L"Introduisez les points a ajouter un par ligne.\r\n"
    L"Format  Nom X Y Z Vo .  Mettez un \".\" pour une donnée absente";

}  // namespace

CDlgSaisieTexte::CDlgSaisieTexte(const std::wstring& titre, const std::wstring& texteInvite)
    : Dialog(titre), invite(this, {}, texteInvite) {
  texte.setMultiline();
}

CDlgCalcCanevas::CDlgCalcCanevas(ui::Pages* pages) : Page(pages, L"Canevas") {
  liste.addColumn(L"Points", 20.0);
  for (const wchar_t* titre : {L"X", L"Y", L"Z", L"Vo"}) liste.addColumn(titre, 20.0, ui::Align::Right);
}

void CDlgCalcCanevas::onInit() { rafraichir(); }

void CDlgCalcCanevas::rafraichir() {
  liste.clear();
  for (const pointACalculer& p : veltora::canevas()) {
    liste.addRow({p.nom, texteCanevas(p.X), texteCanevas(p.Y), texteCanevas(p.Z), texteCanevas(p.vo)});
  }
}

void CDlgCalcCanevas::ajouterSaisie() {
  placerDansCanevas({station.text(), x.text(), y.text(), z.text(), vo.text()});
  rafraichir();
}

void CDlgCalcCanevas::supprimerChoisis() {
  const std::vector<int> rangs = liste.selection();
  for (auto rang = rangs.rbegin(); rang != rangs.rend(); ++rang) veltora::canevas().RemoveAt(*rang);
  rafraichir();
}

void CDlgCalcCanevas::importerTexte() {
  CDlgSaisieTexte saisie(L"Importer", kInviteImport);
  if (saisie.doModal() != ui::kOk) return;
  importerCanevas(saisie.texte.text());
  rafraichir();
}

CDlgCalcObservations::CDlgCalcObservations(ui::Pages* pages) : Page(pages, L"Observations") {
  for (const wchar_t* titre : {L"Station", L"Référence", L"Angle Horizontal", L"Distance Horizontale", L"Dz"})
    liste.addColumn(titre, 20.0);
}

}  // namespace veltora
