#pragma once

#include "arx/db/dbid.h"
#include "terrain/terrain.h"
#include "ui/dialog.h"

class AcDbDatabase;

namespace veltora::terrain {

/// The terrains of a drawing: made, made current, taken away.
class DlgMnt : public ui::Dialog {
public:
  explicit DlgMnt(AcDbDatabase& dessin);

  ui::Label courant{this, L"Terrain courant :"};
  ui::List liste{this, L"Terrains du dessin", ui::List::Selection::Single};
  ui::Button rendreCourant{this, L"Rendre courant", [this] { choisir(); }};
  ui::Button supprimer{this, L"Supprimer", [this] { oter(); }};
  ui::Group nouveau{this, L"Nouveau terrain"};
  ui::TextField nom{&nouveau, L"Nom", L"Terrain"};
  ui::CheckBox table{&nouveau, L"Points de la table courante", true};
  ui::TextField codes{&nouveau, L"Codes (vide : tous)"};
  ui::Button entites{&nouveau, L"Points et lignes 3D du dessin <",
                     [this] { selectionner(m_entites, nbEntites); }};
  ui::Label nbEntites{&nouveau, L"", L"Entités choisies : 0"};
  ui::Button lignes{&nouveau, L"Lignes de rupture <", [this] { selectionner(m_lignes, nbLignes); }};
  ui::Label nbLignes{&nouveau, L"", L"Entités choisies : 0"};
  ui::Button limite{&nouveau, L"Limite extérieure <", [this] { selectionner(m_limite, nbLimite); }};
  ui::Label nbLimite{&nouveau, L"", L"Entités choisies : 0"};
  ui::Button faces{&nouveau, L"Faces 3D du dessin <", [this] { selectionner(m_faces, nbFaces); }};
  ui::Label nbFaces{&nouveau, L"", L"Entités choisies : 0"};
  ui::NumberField arete{&nouveau, L"Plus longue arête (0 : sans)", 0.0};
  ui::Button creer{&nouveau, L"Créer", [this] { faire(); }};
  ui::Button fermer{this, L"Fermer", ui::Button::Role::Cancel};

protected:
  void onInit() override { remplir(); }

private:
  using Entites = std::vector<AcDbObjectId>;
  void remplir();
  void selectionner(Entites& ids, ui::Label& nombre);
  void choisir();
  void oter();
  void faire();
  /// The terrain of the chosen row; null after a message.
  [[nodiscard]] Terrain* choisi();

  AcDbDatabase& m_dessin;
  Entites m_entites;
  Entites m_lignes;
  Entites m_limite;
  Entites m_faces;
};

}  // namespace veltora::terrain
