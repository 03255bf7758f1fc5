#include "points/dialogs/import_dessin_dlg.h"

#include "arx/db/dbattr.h"
#include "arx/db/dbmain.h"
#include "arx/ed/acedads.h"
#include "core/picking.h"
#include "points/liste_points_du_dessin.h"

#include <optional>

namespace veltora {
namespace {

/// The tag of an attribute that the user points at; nothing for anything else.
std::optional<AcString> designerAttribut(const ACHAR* invite) {
  ads_name nom = {0, 0};
  ads_point point = {0, 0, 0};
  ads_matrix matrice;
  AcDbObjectId id;
  if (acedNEntSelP(invite, nom, point, 0, matrice, nullptr) != RTNORM ||
      acdbGetObjectId(id, nom) != Acad::eOk)
    return std::nullopt;
  const AcDbObjectPointer<AcDbAttribute> attribut(id);
  if (attribut.openStatus() != Acad::eOk) return std::nullopt;
  return attribut->tag();
}

/// The same, and a message for what is no attribute.
std::optional<AcString> exigerAttribut(const ACHAR* invite) {
  auto etiquette = designerAttribut(invite);
  if (!etiquette) acutPrintf(L"\nCe n'est pas un attribut");
  return etiquette;
}

/// Position of a one-line text that the user points at; nothing for anything else.
std::optional<AcGePoint3d> designerTexte(const ACHAR* invite) {
  AcDbObjectId id;
  pickEntity(invite, id);
  const AcDbObjectPointer<AcDbText> texte(id);
  if (texte.openStatus() != Acad::eOk) return std::nullopt;
  return texte->position();
}

}  // namespace

CParamImportPntsDuDessin::CParamImportPntsDuDessin() : Dialog(L"Importation") {
  configurer.beside(blocsAttributs);
  textes.onChange = [this] { activerDecalage(); };
}

using DialogueImport = CParamImportPntsDuDessin;
const std::array<DialogueImport::caseSource, kNombreSources> DialogueImport::cases{{
    {&DialogueImport::polylines, kSourcePolylines},
    {&DialogueImport::polylines3d, kSourcePolylines3d},
    {&DialogueImport::polylines2d, kSourcePolylines2dAnciennes},
    {&DialogueImport::lignes, kSourceLignes},
    {&DialogueImport::maillages, kSourceMaillages},
    {&DialogueImport::facettes, kSourceFaces},
    {&DialogueImport::polyfaces, kSourcePolyfaces},
    {&DialogueImport::blocsVeltora, kSourceBlocs},
    {&DialogueImport::blocs3d, kSourceInsertions},
    {&DialogueImport::blocsAttributs, kSourceBlocsAttributs},
    {&DialogueImport::pointsHote, kSourcePoints},
    {&DialogueImport::textes, kSourceTextes},
}};

parametresImport CParamImportPntsDuDessin::parametres() const {
  parametresImport lus;
  for (const caseSource& source : cases)
    if ((this->*source.controle).checked()) lus.masque |= source.drapeau;
  lus.etiquetteNumero = m_numero;
  lus.etiquetteAltitude = m_altitude;
  lus.etiquetteCode = m_code;
  lus.decalage = {decalageX.value(), decalageY.value()};
  return lus;
}

void CParamImportPntsDuDessin::cocher(bool coche) {
  for (const caseSource& source : cases) (this->*source.controle).setChecked(coche);
  activerDecalage();
}

void CParamImportPntsDuDessin::activerDecalage() {
  decalageX.enable(textes.checked());
  decalageY.enable(textes.checked());
  prelever.enable(textes.checked());
}

void CParamImportPntsDuDessin::choisirEtiquettes() {
  const ui::HiddenDialog cache(*this);
  const auto numero = exigerAttribut(L"\nSelectionnez le numero:");
  const auto altitude = numero ? exigerAttribut(L"\nSelectionnez l'altitude:") : std::nullopt;
  if (!altitude) return;
  m_numero = *numero;
  m_altitude = *altitude;
  m_code = designerAttribut(L"\nSelectionnez un modele de code de point s'il y a lieu:").value_or(AcString());
}

void CParamImportPntsDuDessin::preleverDecalage() {
  const ui::HiddenDialog cache(*this);
  const auto texte = designerTexte(L"\nSelectionnez l'altitude:");
  if (!texte) return;
  const ads_point base = {texte->x, texte->y, texte->z};
  ads_point point = {0, 0, 0};
  if (acedGetPoint(base, L"\nPosition du point", point) != RTNORM) return;
  decalageX.setValue(point[0] - base[0]);
  decalageY.setValue(point[1] - base[1]);
}

bool importerPointsDuDessin(listePointsDuDessin& table) {
  CParamImportPntsDuDessin dialogue;
  if (dialogue.doModal() != ui::kOk) return false;
  parametresImport parametres = dialogue.parametres();
  if (parametres.masque == 0) return false;
  table.importFromDrawing(parametres.masque, parametres.etiquetteNumero, parametres.etiquetteAltitude,
                          parametres.etiquetteCode, parametres.decalage);
  return true;
}

}  // namespace veltora
