#pragma once

#include "points/projets_topo.h"
#include "ui/dialog.h"

namespace veltora {

/// The point tables of the drawing: made, merged, removed, renamed, one of them made current. Removing a
/// table leaves its blocks in the drawing.
class VELTORA_API CTabListePoints : public ui::Dialog {
public:
  explicit CTabListePoints(projetsTopo& projet);

  ui::Label courante{this, L"Table courante :"};
  ui::List liste{this};
  ui::TextField nom{this, L"Nom"};
  ui::Button creer{this, L"Créer", [this] { creerTable(); }};
  ui::Button fusionner{this, L"Fusionner", [this] { fusionnerTables(); }};
  ui::Button supprimer{this, L"Supprimer", [this] { supprimerTables(); }};
  ui::Button renommer{this, L"Renommer", [this] { renommerTable(); }};
  ui::Button courant{this, L"Courant", [this] { rendreCourante(); }};
  ui::Button fermer{this, L"Fermer", ui::Button::Role::Cancel};

protected:
  void onInit() override { remplir(); }

private:
  void remplir();
  void creerTable();
  void fusionnerTables();
  void supprimerTables();
  void renommerTable();
  void rendreCourante();
  /// The only selected row; -1 after a message.
  [[nodiscard]] int seuleChoisie() const;

  projetsTopo& m_projet;
};

/// Shows the dialog on the installed project; nothing without one.
VELTORA_API void gererLeves();

}  // namespace veltora
