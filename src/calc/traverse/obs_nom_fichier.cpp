#include "calc/traverse/obs_nom_fichier.h"

#include "base/text.h"

namespace veltora {

std::wstring nomFichierObs(std::wstring_view choisi, int filtre) {
  // Only the file's own name is put in lower case: where case counts, a folder exists in its own spelling
  // alone.
  const std::size_t barre = choisi.rfind(L'/');
  const std::size_t debut = barre == std::wstring_view::npos ? 0 : barre + 1;
  std::wstring nom = base::toLower(choisi.substr(debut));
  const std::wstring_view fin = filtre == 1 ? L".obs" : filtre == 4 ? L".txt" : L".";
  if (!nom.ends_with(fin)) nom += fin;
  if (nom.find(L'.') == std::wstring::npos) nom += L".obs";
  return std::wstring(choisi.substr(0, debut)) + nom;
}

}  // namespace veltora
