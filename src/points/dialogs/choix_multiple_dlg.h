#pragma once

#include "ui/dialog.h"

#include <cstdint>
#include <string>
#include <vector>

namespace veltora {

/// Items of a list to be ticked.
class VELTORA_API CMultiChoice : public ui::Dialog {
public:
  /// Both vectors have one length and live longer than the dialog; `coches` is written on OK, 1 or 0.
  CMultiChoice(const std::vector<std::wstring>& textes, std::vector<std::uint16_t>& coches,
               const std::wstring& titre = L"Choisissez", const std::wstring& texte = {});

  ui::Label texte{this};
  ui::List liste{this};
  ui::Button tous{this, L"Tous", [this] { cocher(true); }};
  ui::Button aucun{this, L"Aucun", [this] { cocher(false); }};
  ui::Button inverser{this, L"Inverser", [this] { retourner(); }};
  ui::Button ok{this, L"OK", ui::Button::Role::Ok};
  ui::Button annuler{this, L"Annuler", ui::Button::Role::Cancel};

  void onOk() override;

protected:
  void onInit() override;

private:
  void cocher(bool coche);
  void retourner();

  const std::vector<std::wstring>& m_textes;
  std::vector<std::uint16_t>& m_coches;
};

/// Lets the user tick items. Empty `coches` become all unticked.
/// @param nomElement  what one item is called, in the list's name
/// @return 1 with the ticks on OK; 0, the ticks unchanged, when the user cancels; 0 at once when the lengths
/// differ
VELTORA_API int choisirPlusieurs(const std::vector<std::wstring>& textes, std::vector<std::uint16_t>& coches,
                                 const std::wstring& texte = {}, const std::wstring& titre = L"Choisissez",
                                 const std::wstring& nomElement = L"modele");

}  // namespace veltora
