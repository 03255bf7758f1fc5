#include "calc/dialogs/choisir_sortie.h"

#include "base/paths.h"
#include "ui/driver.h"

#include <algorithm>

namespace veltora {

std::optional<std::wstring> choisirSortie(const wchar_t* filtre, const wchar_t* extension,
                                          const std::vector<std::filesystem::path>& lus) {
  base::FileRequest choix;
  choix.filter = filtre;
  choix.extension = extension;
  choix.save = true;
  choix.confirmOverwrite = true;
  const auto reponse = ui::chooseFile(choix);
  if (!reponse) return {};
  const std::filesystem::path fichier = base::cheminDuTexte(reponse->path);
  if (std::none_of(lus.begin(), lus.end(),
                   [&](const auto& lu) { return !lu.empty() && base::memeFichier(lu, fichier); }))
    return reponse->path;
  ui::messageBox(L"« " + reponse->path + L" » est lu par ce calcul : choisissez un autre nom.",
                 L"Erreur de données");
  return {};
}

}  // namespace veltora
