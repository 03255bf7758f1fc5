#include "codes/dialogs/commentaire_bloc_dlg.h"

#include "arx/db/dbblockref.h"
#include "arx/db/dbmain.h"
#include "arx/db/dbmtext.h"
#include "arx/db/dbtext.h"
#include "arx/ed/acedads.h"
#include "base/format.h"
#include "codes/legend/description_bloc.h"
#include "core/picking.h"
#include "ui/driver.h"

namespace veltora {
namespace {

/// The block definition of a reference that the user picks; null when he leaves.
AcDbObjectId designerBloc() {
  for (;;) {
    AcDbObjectId id;
    AcGePoint3d designe;
    const Answer reponse = pickEntityOrLeave(L"\nSelectionnez un block", id, designe);
    if (reponse == Answer::kEnd) return AcDbObjectId::kNull;
    const AcDbObjectPointer<AcDbBlockReference> reference(id);
    if (reponse == Answer::kGiven && reference.openStatus() == Acad::eOk)
      return reference->blockTableRecord();
  }
}

/// What a text of the drawing says; empty for anything else.
std::wstring designerTexte() {
  AcDbObjectId id;
  if (pickEntity(L"\nCommentaire:", id) != RTNORM) return {};
  if (const AcDbObjectPointer<AcDbText> texte(id); texte.openStatus() == Acad::eOk)
    return texte->textString();
  const AcDbObjectPointer<AcDbMText> paragraphe(id);
  return paragraphe.openStatus() == Acad::eOk ? std::wstring(paragraphe->contents()) : std::wstring();
}

}  // namespace

CDlgCommentaireBlock::CDlgCommentaireBlock() : Dialog(L"Infos block") { description.setEditable(); }

void CDlgCommentaireBlock::choisirBloc() {
  const ui::HiddenDialog cache(*this);
  const AcDbObjectId bloc = designerBloc();
  if (bloc.isNull()) return;
  const std::wstring proposee = designerTexte();
  m_bloc = bloc;
  montrer();
  if (!proposee.empty()) description.setText(proposee);
}

void CDlgCommentaireBlock::ecrire() {
  if (m_bloc.isNull() || description.text().empty()) return;
  if (!decrireBloc(m_bloc, description.text())) ui::messageBox(L"Le dessin refuse cette description");
  montrer();
}

void CDlgCommentaireBlock::montrer() {
  const AcDbObjectPointer<AcDbBlockTableRecord> definition(m_bloc);
  if (definition.openStatus() != Acad::eOk) return;
  nom.setText(definition->name());
  AcDbExtents boite;
  const bool visible = AcDbBlockReference(AcGePoint3d(), m_bloc).getGeomExtents(boite) == Acad::eOk;
  const auto taille = [visible](double bas, double haut) {
    return visible ? base::formater(L"%f", haut - bas) : std::wstring();
  };
  tailleX.setText(taille(boite.minPoint().x, boite.maxPoint().x));
  tailleY.setText(taille(boite.minPoint().y, boite.maxPoint().y));
  description.clear();
  for (const std::wstring& texte : descriptionsBloc(m_bloc)) description.addItem(texte);
  if (description.count() > 0)
    description.setIndex(0);
  else
    description.setText({});
}

}  // namespace veltora
