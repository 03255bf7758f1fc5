#include "drafting/dialogs/cartouche_dlg.h"

#include "arx/db/dbmain.h"
#include "arx/dxf/dxffile.h"
#include "arx/ed/acedads.h"
#include "arx/ed/acutads.h"
#include "base/format.h"
#include "base/numbers.h"
#include "base/paths.h"
#include "base/text.h"
#include "core/drawing_records.h"
#include "core/installation.h"
#include "drafting/dialogs/carroyage_dlg.h"
#include "drafting/sheet/formats_papier.h"
#include "ui/driver.h"

#include <algorithm>
#include <cmath>

namespace veltora {
namespace {

constexpr double kEchelleUsuelle = 1000.0;
constexpr double kPlusPetite = 0.1;           // of a size, mm or drawing units
constexpr double kEtenduePlusPetite = 0.001;  // of a title block whose proportions are kept
constexpr int kFormatUsuel = 9;

std::wstring image(const std::wstring& nom) {
  return base::fromUtf8((dossierInstallation() / "images").string()) + L"/" + nom + L".svg";
}

/// A field that was left holds no sign and is not too small. What is no number stays, for OK to refuse.
void redresser(ui::NumberField& champ) {
  if (!champ.valid()) return;
  const double valeur = std::max(std::abs(champ.value()), kPlusPetite);
  if (valeur != champ.value()) champ.setValue(valeur);
}

/// Where the sheet goes: the point, and whether it is the middle. @return false when the user leaves
bool demanderPoint(ads_point point, bool& milieu) {
  milieu = true;
  for (;;) {
    // Deliberate (planche-mots-cles): each prompt offers as its answer the word of what it asks for already,
    // and that word leads to the other one.
    acedInitGet(RSG_NONULL, milieu ? L"Milieu" : L"Coin");
    const int reponse = acedGetPoint(nullptr,
                                     milieu ? L"Selectionnez le Milieu de la planche / Coin :"
                                            : L"Selectionnez le coin bas gauche de la planche / Milieu :",
                                     point);
    if (reponse != RTKWORD) return reponse == RTNORM;
    milieu = !milieu;
  }
}

}  // namespace

CDlgCartouche::CDlgCartouche() : Dialog(L"Creation de planche") {
  echelleTexte.setEditable();
  echelleTexte.setText(L"1000");
  modeleFormat.setIndex(1);
  positionCartouche.setPictures({image(L"coin_0"), image(L"coin_1"), image(L"coin_2"), image(L"coin_3")});
  for (ui::NumberField* champ : {&margePapier, &espacementX, &espacementY, &tailleCroisillons, &hauteurTexte})
    champ->onLeave = [champ] { redresser(*champ); };
  largeurCartouche.onLeave = [this] {
    quitterCote(largeurCartouche, m_cartouche.largeur(), hauteurCartouche, m_cartouche.hauteur());
  };
  hauteurCartouche.onLeave = [this] {
    quitterCote(hauteurCartouche, m_cartouche.hauteur(), largeurCartouche, m_cartouche.largeur());
  };
  echelleTexte.onLeave = [this] { quitterEchelle(); };
  modeCarroyage.onChange = [this] { montrerCarroyage(); };
  activerCartouche();
  montrerCarroyage();
}

void CDlgCartouche::onInit() {
  retablirFormats();
  const int format = indexFormat.count() == 0 ? kFormatUsuel : indexFormat.index();
  indexFormat.clear();
  for (int rang = 0; rang < kNombreFormats; ++rang) indexFormat.addItem(ligneFormat(rang));
  indexFormat.setIndex(format);
  AcDbDatabase* const dessin = acdbHostApplicationServices()->workingDatabase();
  if (!dessin) return;
  styleTexte.clear();
  const AcDbObjectPointer<AcDbSymbolTable> table(dessin->textStyleTableId());
  for (const AcDbObjectId& id : table->records()) {
    const AcDbObjectPointer<AcDbSymbolTableRecord> style(id);
    if (style.openStatus() != Acad::eOk || style->name().empty()) continue;
    styleTexte.addItem(style->name());
    if (id == dessin->textstyle()) styleTexte.setIndex(styleTexte.count() - 1);
  }
}

void CDlgCartouche::choisirCartouche() {
  base::FileRequest choix;
  choix.title = L"Fichier cartouche";
  choix.filter = L"Fichier dessin (*.dwg)|*.dwg||";
  // Deliberate (cartouche-mc): the extension that is added to a bare name is that of network files.
  choix.extension = L"mc";
  choix.folder = dossierCartouches();
  choix.serving = [](const std::wstring& nom) {
    return base::texteDuChemin(dxfServingFile(base::cheminDuTexte(nom)));
  };
  const auto reponse = ui::chooseFile(choix);
  if (!reponse) return;
  std::wstring raison;
  if (!lireCartouche(reponse->path, m_cartouche, raison)) {
    acutPrintf(L"\n%s", raison);
    ui::messageBox(L"Echec lors de la lecture du fichier cartouche", L"Fichier cartouche");
    return;
  }
  fichier.setText(m_cartouche.chemin);
  dimensions.setText(
      base::formater(L"Largeur : %.2f\nHauteur : %.2f", m_cartouche.largeur(), m_cartouche.hauteur()));
  largeurCartouche.setValue(m_cartouche.largeur());
  hauteurCartouche.setValue(m_cartouche.hauteur());
  activerCartouche();
}

void CDlgCartouche::effacerCartouche() {
  m_cartouche = {};
  fichier.setText(L"");
  dimensions.setText(L"");
  activerCartouche();
}

void CDlgCartouche::activerCartouche() {
  for (ui::Control* champ :
       std::initializer_list<ui::Control*>{&largeurCartouche, &hauteurCartouche, &positionCartouche})
    champ->enable(m_cartouche.present());
}

void CDlgCartouche::montrerCarroyage() {
  const int mode = modeCarroyage.index();
  imageMode.setPath(image(base::formater(L"carroyage_%d", mode)));
  for (ui::Control* champ : std::initializer_list<ui::Control*>{
           &espacementX, &espacementY, &tailleCroisillons, &hauteurTexte, &styleTexte, &modeleFormat})
    champ->show(mode != 0);
}

void CDlgCartouche::quitterEchelle() {
  // A scale that was cleared counts as the usual one.
  if (!base::trim(echelleTexte.text()).empty() && !(denominateur() > 0.0)) setFocus(&echelleTexte);
}

/// The denominator as typed; 0 for what is no number.
double CDlgCartouche::denominateur() const {
  double valeur = 0.0;
  base::lireReelExact(base::toUtf8(base::trim(echelleTexte.text())), valeur);
  return std::isfinite(valeur) ? valeur : 0.0;
}

/// Deliberate (cartouche-cotes): width and height follow each other, and the block that is drawn keeps the
/// size of its file all the same.
void CDlgCartouche::quitterCote(ui::NumberField& cote, double etendue, ui::NumberField& autre,
                                double autreEtendue) {
  if (!cote.valid()) return;
  const bool liees = lierProportions.checked();
  if (liees && cote.value() <= 0.0) cote.setValue(etendue);
  redresser(cote);
  if (!liees) return;
  autre.setValue(cote.value() * std::max(kEtenduePlusPetite, autreEtendue) /
                 std::max(kEtenduePlusPetite, etendue));
  redresser(autre);
}

void CDlgCartouche::onOk() {
  if (!validateFields()) return;
  const demandePlanche lue = demande();
  if (!(std::min(lue.papier.x, lue.papier.y) - 2.0 * lue.margePapier > 0.0)) {
    ui::messageBox(L"La marge ne laisse rien du papier.", title());
    margePapier.setFocus();
    return;
  }
  Dialog::onOk();
}

demandePlanche CDlgCartouche::demande() const {
  demandePlanche lue;
  lue.papier = tailleFormat(indexFormat.index());
  const double denominateurLu = denominateur();
  lue.echelle = (denominateurLu > 0.0 ? denominateurLu : kEchelleUsuelle) / 1000.0;
  lue.margePapier = margePapier.value();
  lue.positionCartouche = positionCartouche.index();
  lue.facteurCartouche = facteurCartouche;
  lue.modeCarroyage = static_cast<demandePlanche::Carroyage>(modeCarroyage.index());
  lue.espacementX = espacementX.value();
  lue.espacementY = espacementY.value();
  lue.tailleCroisillons = tailleCroisillons.value();
  lue.hauteurTexte = hauteurTexte.value();
  if (AcDbDatabase* const dessin = acdbHostApplicationServices()->workingDatabase())
    lue.styleTexte = recordNamed(dessin->textStyleTableId(), styleTexte.text());
  lue.decimales = modeleFormat.index();
  return lue;
}

void creerPlanche() {
  CDlgCartouche dialogue;
  if (dialogue.doModal() != ui::kOk) return;
  ads_point point = {0.0, 0.0, 0.0};
  bool milieu = true;
  if (!demanderPoint(point, milieu)) return;
  double orientation = 0.0;
  const int reponse = acedGetOrient(point, L"\nOrientation de la planche <0.0>", &orientation);
  if (reponse != RTNORM && reponse != RTNONE) return;
  const demandePlanche demande = dialogue.demande();
  const planche feuille(demande, dialogue.cartouche(), {point[0], point[1]}, milieu, orientation);
  if (!accepterAmpleur(feuille.ampleur())) return;
  const planche::resultat fait = feuille.dessiner();
  if (!fait.cartoucheInsere) acedAlert((L"Failed to load block " + dialogue.cartouche().chemin).c_str());
  if (demande.modeCarroyage != demandePlanche::kSansCarroyage && !feuille.region())
    acutPrintf(L"\nLes marges et le cartouche ne laissent pas de place au carroyage.");
}

}  // namespace veltora
