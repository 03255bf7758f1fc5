#pragma once

#include "arx/db/dbid.h"
#include "ui/dialog.h"

namespace veltora {

/// The description of a block, seen and changed.
class VELTORA_API CDlgCommentaireBlock : public ui::Dialog {
public:
  CDlgCommentaireBlock();

  ui::Label nom{this, L"Nom du block:"};
  ui::Button choisir{this, L"Choisir", [this] { choisirBloc(); }};
  ui::Label tailleX{this, L"Taille X"};
  ui::Label tailleY{this, L"Taille Y"};
  ui::ComboBox description{this, L"Description"};  ///< the ones found, or another typed
  ui::Button modifier{this, L"Modifier", [this] { ecrire(); }};
  ui::Button fermer{this, L"Fermer", ui::Button::Role::Cancel};

private:
  void choisirBloc();
  void ecrire();
  void montrer();

  AcDbObjectId m_bloc;
};

}  // namespace veltora
