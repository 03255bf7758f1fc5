#pragma once

#include "drafting/sheet/planche.h"
#include "ui/dialog.h"

#include <string>

namespace veltora {

/// What a sheet holds: paper, scale, title block, grid. After OK the caller takes `demande` and `cartouche`.
class VELTORA_API CDlgCartouche : public ui::Dialog {
public:
  CDlgCartouche();
  /// The drawing that was chosen; none when no title block is wanted.
  [[nodiscard]] const fichierCartouche& cartouche() const { return m_cartouche; }
  [[nodiscard]] demandePlanche demande() const;
  void onOk() override;

  double facteurCartouche = 1.0;  ///< scale of the title block on paper; no control sets it

  ui::Label fichier{this, L"Fichier Cartouche"};
  ui::Button parcourir{this, L"...", [this] { choisirCartouche(); }};
  ui::Button effacer{this, L"X", [this] { effacerCartouche(); }};
  ui::Label dimensions{this};
  ui::NumberField largeurCartouche{this, L"Largeur", 210.0};
  ui::CheckBox lierProportions{this, L"<=>", true};
  ui::NumberField hauteurCartouche{this, L"Hauteur", 100.0};
  ui::RadioGroup positionCartouche{
      this, L"Emplacement du cartouche", {L"Bas gauche", L"Bas droite", L"Haut gauche", L"Haut droite"}};
  ui::ComboBox indexFormat{this, L"Format du papier"};
  ui::Label unSur{this, L"", L"1 /"};
  ui::ComboBox echelleTexte{this,
                            L"Echelle",
                            {L"10000", L"5000", L"2500", L"2000", L"1000", L"500", L"400", L"250", L"200",
                             L"100", L"50", L"20", L"10"}};
  ui::NumberField margePapier{this, L"Marge papier (mm)", 10.0};
  ui::RadioGroup modeCarroyage{
      this,
      L"Carrroyage",  // sic
      {L"Pas de carroyage. Le carroyage sera ajouté plus tard", L"Occuper tout l'espace vide restant",
       L" Ne pas carroyer a coté du cartouche"}};  // sic
  ui::Preview imageMode{this};
  ui::NumberField espacementX{this, L"Espacement  X ", 100.0};
  ui::NumberField espacementY{this, L"Espacement Y", 100.0};
  ui::NumberField tailleCroisillons{this, L"Taille Croisillons (mm)", 5.0};
  ui::NumberField hauteurTexte{this, L"Haut. txt (mm)", 2.5};
  ui::ComboBox styleTexte{this, L"Style "};
  ui::ComboBox modeleFormat{this, L"Modele", {L"100", L"100.0", L"100.00", L"100.000", L"100.0000"}};
  ui::Button ok{this, L"OK", ui::Button::Role::Ok};
  ui::Button annuler{this, L"Annuler", ui::Button::Role::Cancel};

protected:
  void onInit() override;

private:
  void choisirCartouche();
  void effacerCartouche();
  void activerCartouche();
  void montrerCarroyage();
  void quitterEchelle();
  void quitterCote(ui::NumberField& cote, double etendue, ui::NumberField& autre, double autreEtendue);
  [[nodiscard]] double denominateur() const;

  fichierCartouche m_cartouche;
};

/// Shows the dialog, asks where the sheet goes, and draws it.
VELTORA_API void creerPlanche();

}  // namespace veltora
