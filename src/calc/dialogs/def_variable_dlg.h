#pragma once

#include "calc/table_variables.h"
#include "ui/dialog.h"

namespace veltora {

/// One variable of the weight formulas: a new one, or value and comment of one that exists.
class VELTORA_API CDefVariable : public ui::Dialog {
public:
  /// A new variable. OK with an empty name, or one that exists, keeps the dialog open.
  explicit CDefVariable(tableVariables& variables);
  /// The variable at `index`, whose name stays. An index outside raises `std::invalid_argument`.
  CDefVariable(tableVariables& variables, int index);

  ui::TextField nom{this, L"Nom:"};
  ui::TextField valeur{this, L"Valeur:"};
  ui::TextField commentaire{this, L"Commentaire:"};
  ui::Button ok{this, L"OK", ui::Button::Role::Ok};
  ui::Button annuler{this, L"Cancel", ui::Button::Role::Cancel};

  /// Puts the variable into the table.
  void onOk() override;

private:
  tableVariables& m_variables;
  int m_index = -1;  ///< -1 for a new variable
};

}  // namespace veltora
