#pragma once

#include "codes/table_codification.h"
#include "ui/dialog.h"

namespace veltora {

/// Lists the codes: new, edit by double click, delete. Changes the table at once; the file is the caller's.
class VELTORA_API CDlgTabCodification : public ui::Dialog {
public:
  explicit CDlgTabCodification(tableCodification& table);

  ui::Button nouveau{this, L"Nouveau"};
  ui::Button supprimer{this, L"Supprimer"};
  ui::Button fermer{this, L"Fermer", ui::Button::Role::Cancel};
  ui::List liste{this};

protected:
  void onInit() override;

private:
  void ajouterCode();
  void modifierCode(int rang);
  void supprimerCodes();

  tableCodification& m_table;
};

/// Lets the code tables show themselves by these dialogs. The module does it when it is loaded.
VELTORA_API void installerDialoguesCodes();

}  // namespace veltora
