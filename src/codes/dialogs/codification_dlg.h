#pragma once

#include "codes/table_codification.h"
#include "ui/dialog.h"

namespace veltora {

/// Edits one code. The caller fills it by `remplir`, shows it, and after `ui::kOk` takes what it wants.
class VELTORA_API DlgCodification : public ui::Dialog {
public:
  /// @param table where codes are looked up, and where a new symbol of an existing code goes at once
  /// @param nouveau the code can be typed
  DlgCodification(tableCodification& table, bool nouveau);
  void remplir(const codifPoint& ligne);
  /// Copies layer names, block path, label, size and decimals into the row; not the code.
  void reprendre(codifPoint& ligne) const;
  [[nodiscard]] int codeSaisi() const;

  std::wstring chemin;  ///< of the block drawing

  ui::TextField code{this, L"Code"};
  ui::TextField libelle{this, L"Libellé"};
  ui::TextField layerBlock{this, L"Layer Block"};
  ui::TextField layerNumeros{this, L"Layer Numéros"};
  ui::TextField layerAltitudes{this, L"Layer Altitudes"};
  ui::TextField layerObs{this, L"Layer Obs"};
  ui::TextField layerCode{this, L"Layer Code"};
  ui::NumberField taille{this, L"Taille", 1.0};
  ui::NumberField precision{this, L"Precision Altis", 2, L"%d", ui::NumberField::kInteger};
  ui::Button symbole{this, L"Symbole"};
  ui::Preview apercu{this};
  ui::Label cheminBlock{this};
  ui::Button ok{this, L"OK", ui::Button::Role::Ok};
  ui::Button annuler{this, L"Cancel", ui::Button::Role::Cancel};

  void onOk() override;

protected:
  void onInit() override;

private:
  [[nodiscard]] bool codePossible() const;
  void quitterCode();
  void choisirSymbole();
  void montrerBlock();

  tableCodification& m_table;
  bool m_nouveau;
};

}  // namespace veltora
