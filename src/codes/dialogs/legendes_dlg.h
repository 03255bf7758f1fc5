#pragma once

#include "codes/legend/legende.h"
#include "ui/dialog.h"

#include <vector>

namespace veltora {

/// Which blocks a legend shows, and its sizes. After OK the caller takes `choisies` and `demande`.
class VELTORA_API CTableLegendes : public ui::Dialog {
public:
  /// @param lignes  the blocks with their descriptions; they outlive the dialog
  explicit CTableLegendes(const std::vector<ligneLegende>& lignes);
  /// The lines that are checked.
  [[nodiscard]] std::vector<ligneLegende> choisies() const;
  [[nodiscard]] demandeLegende demande() const;
  void onOk() override;

  ui::List liste{this, L"Blocs utilisés dans le dessin:"};
  ui::Group selection{this, L"Sélectionner:"};
  ui::Button tous{&selection, L"Tous", [this] { cocher([](int) { return true; }); }};
  ui::Button utilises{&selection, L"Utilisés", [this] { cocherUtilises(); }};
  ui::Button inverser{&selection, L"Inverser",
                      [this] { cocher([this](int rang) { return !liste.checked(rang); }); }};
  ui::Button aucun{&selection, L"Aucun", [this] { cocher([](int) { return false; }); }};
  ui::NumberField tailleTextes{this, L"Taille des textes", 1.0};
  ui::NumberField distanceLignes{this, L"Distance entre lignes", 1.0};
  ui::NumberField tailleBlocs{this, L"Taille des blocs", 1.0};
  ui::CheckBox legendeLayers{this, L"Créer une légende pour les layers"};
  ui::NumberField longueurTrait{this, L"Longueur du trait", 2.5};
  ui::CheckBox grouper{this, L"Grouper les éléments de la légende"};
  ui::Button ok{this, L"OK", ui::Button::Role::Ok};
  ui::Button annuler{this, L"Annuler", ui::Button::Role::Cancel};

protected:
  void onInit() override;

private:
  void cocher(const std::function<bool(int rang)>& voulue);
  void cocherUtilises();

  const std::vector<ligneLegende>& m_lignes;
};

/// Shows the dialog on the blocks of the drawing, asks where, and draws the legend.
VELTORA_API void tableLegendes();

}  // namespace veltora
