#pragma once

#include "points/exchange/import_dessin.h"
#include "ui/dialog.h"

#include <array>

namespace veltora {

class listePointsDuDessin;

/// What is imported from the drawing: the kinds of entities, the tags of foreign blocks, the offset from an
/// altitude text to its point. After OK the caller takes `parametres`.
class VELTORA_API CParamImportPntsDuDessin : public ui::Dialog {
public:
  CParamImportPntsDuDessin();
  /// What the controls tell.
  [[nodiscard]] parametresImport parametres() const;

  ui::Group courbes{this, L"Courbes"};
  ui::CheckBox polylines{&courbes, L"Importer Polylines 2D", true};
  ui::CheckBox polylines3d{&courbes, L"Importer Polylignes 3D", true};
  ui::CheckBox polylines2d{&courbes, L"Importer polylines 2d (anciennes polylines)", true};
  ui::CheckBox lignes{&courbes, L"Importer extrémités des lignes", true};
  ui::Group objets3d{this, L"Objets 3D"};
  ui::CheckBox maillages{&objets3d, L"Importer Maillages 3D", true};
  ui::CheckBox facettes{&objets3d, L"Importer facettes 3D", true};
  ui::CheckBox polyfaces{&objets3d, L"Importer Maillages de facettes (POLYFACEMESH)", true};
  ui::Group blocs{this, L"Blocs"};
  ui::CheckBox blocsVeltora{&blocs, L"Importer Blocs Veltora", true};
  ui::CheckBox blocs3d{&blocs, L"Importer Blocs en 3D", true};
  ui::CheckBox blocsAttributs{&blocs, L"Importer blocs avec attributs", true};
  ui::Button configurer{&blocs, L"configurer", [this] { choisirEtiquettes(); }};
  ui::Group points{this, L"Points"};
  ui::CheckBox pointsHote{&points, L"Importer Points", true};
  ui::CheckBox textes{&points, L"Importer textes", true};
  ui::NumberField decalageX{&points, L"Decalage X"};
  ui::NumberField decalageY{&points, L"Decalaye Y"};  // sic
  ui::Button prelever{&points, L"Prélever", [this] { preleverDecalage(); }};
  ui::Button tous{this, L"&Tous", [this] { cocher(true); }};
  ui::Button aucun{this, L"&Aucun", [this] { cocher(false); }};
  ui::Button ok{this, L"OK", ui::Button::Role::Ok};
  ui::Button annuler{this, L"Annuler", ui::Button::Role::Cancel};

private:
  struct caseSource {
    ui::CheckBox CParamImportPntsDuDessin::*controle;
    int drapeau;
  };
  static const std::array<caseSource, kNombreSources> cases;
  void cocher(bool coche);
  void activerDecalage();
  void choisirEtiquettes();
  void preleverDecalage();

  AcString m_numero = parametresImport().etiquetteNumero;
  AcString m_altitude = parametresImport().etiquetteAltitude;
  AcString m_code;
};

/// Shows the dialog and imports what the user then selects. @return false, nothing imported, when he cancels
/// the dialog or leaves every source out
VELTORA_API bool importerPointsDuDessin(listePointsDuDessin& table);

}  // namespace veltora
