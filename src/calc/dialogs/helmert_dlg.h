#pragma once

#include "calc/helmert/helmert.h"
#include "ui/dialog.h"

namespace veltora {

/// The plane similarity between two systems: pairs are picked in the drawing, the result is shown, reported
/// and applied to entities.
class VELTORA_API CHelmertDLG : public ui::Dialog {
public:
  CHelmertDLG();

  ui::Group donnees{this, L"Données"};
  ui::List liste{&donnees};
  ui::Button ajouterPoints{&donnees, L"Ajouter points", [this] { prendrePoints(); }};
  ui::Button ajouterPolyline{&donnees, L"Ajouter polyline", [this] { prendrePolylines(); }};
  ui::Button supprimer{&donnees, L"Supprimer", [this] { supprimerChoisis(); }};
  ui::Button toutEffacer{&donnees, L"Tout effacer", [this] { effacer(); }};
  ui::Group transformation{this, L"Transformation"};
  ui::Label deplX{&transformation, L"Depl.X"};
  ui::Label deplY{&transformation, L"Depll. Y"};  // sic
  ui::Label a{&transformation, L"A"};
  ui::Label b{&transformation, L"B"};
  ui::Label rotation{&transformation, L"Rotation (gr)"};
  ui::Label echelle{&transformation, L"Fact.Echelle"};
  ui::Label emq{&transformation, L"E.M.Q"};
  ui::Group resultats{this, L"Résultats"};
  ui::Button calculer{&resultats, L"Calculer et afficher les résultats", [this] { montrerResultats(); }};
  ui::Button appliquer{&resultats, L"Appliquer à une SELECTION", [this] { appliquerSelection(); }};
  ui::Button fermer{this, L"Fermer", ui::Button::Role::Cancel};

  /// Adds pairs and shows the new result.
  void ajouter(const couplesHelmert& nouveaux);
  [[nodiscard]] const couplesHelmert& couples() const { return m_couples; }

private:
  void prendrePoints();
  void prendrePolylines();
  void supprimerChoisis();
  void effacer();
  void montrerResultats();
  void appliquerSelection();
  void rafraichir();
  void rafraichirResultats();

  couplesHelmert m_couples;
};

}  // namespace veltora
