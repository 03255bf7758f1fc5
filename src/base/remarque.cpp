#include "base/remarque.h"

#include "base/format.h"

#include <algorithm>

namespace veltora::base {
namespace {

std::wstring etDePlus(std::size_t nombre) { return formater(L"… et %d de plus", static_cast<int>(nombre)); }

}  // namespace

std::wstring Remarque::phrase() const {
  const std::wstring marque = douteuse ? L"à vérifier : " : L"";
  const std::wstring lieu = ligne > 0 ? formater(L"ligne %d : ", ligne) : std::wstring();
  return marque + (fichier.empty() ? lieu : fichier + L", " + lieu) + texte;
}

void Remarques::ajouter(Remarque remarque) {
  if (remarque.ligneOmise) ++m_omises;
  if (remarque.douteuse) m_douteuses = true;
  if (m_nombre++ < kGardees) m_gardees.push_back(std::move(remarque));
}

void Remarques::omettre(int ligne, std::wstring texte) {
  Remarque remarque(std::move(texte), ligne);
  remarque.ligneOmise = true;
  ajouter(std::move(remarque));
}

void Remarques::douter(int ligne, std::wstring texte) {
  Remarque remarque(std::move(texte), ligne);
  remarque.douteuse = true;
  ajouter(std::move(remarque));
}

void Remarques::ajouter(const Remarques& autres) {
  const std::size_t comptees = autres.m_nombre - autres.m_gardees.size();
  const std::size_t omises = m_omises + autres.m_omises;
  for (const Remarque& remarque : autres) ajouter(remarque);
  m_nombre += comptees;
  m_omises = omises;
  m_douteuses = m_douteuses || autres.m_douteuses;
}

void Remarques::ajouterGroupees(const Remarques& autres) {
  Remarques reste;
  std::vector<std::wstring> numeros;
  for (const Remarque& remarque : autres) {
    if (remarque.ligneOmise)
      numeros.push_back(std::to_wstring(remarque.ligne));
    else
      reste.ajouter(remarque);
  }
  reste.m_nombre = autres.m_nombre - autres.m_omises;
  reste.m_douteuses = autres.m_douteuses;
  ajouter(reste);
  if (autres.m_omises == 0) return;
  const wchar_t* format = autres.m_omises > 1 ? L"%d lignes ignorées : %s" : L"%d ligne ignorée : %s";
  ajouter(formater(format, static_cast<int>(autres.m_omises), enumerer(numeros)));
}

void Remarques::citer(const Remarques& autres, const std::function<std::wstring(int)>& reste) {
  const std::size_t citees = std::min(autres.m_gardees.size(), kCitees);
  for (std::size_t i = 0; i < citees; ++i) ajouter(autres.m_gardees[i]);
  m_douteuses = m_douteuses || autres.m_douteuses;
  if (autres.m_nombre == citees) return;
  const std::size_t autant = autres.m_nombre - citees;
  ajouter(reste ? reste(static_cast<int>(autant)) : etDePlus(autant));
}

void Remarques::situer(const std::wstring& fichier) {
  for (Remarque& remarque : m_gardees) remarque.fichier = fichier;
}

std::vector<std::wstring> Remarques::phrases() const {
  std::vector<std::wstring> textes;
  for (const Remarque& remarque : m_gardees) textes.push_back(remarque.phrase());
  if (m_nombre > m_gardees.size()) textes.push_back(etDePlus(m_nombre - m_gardees.size()));
  return textes;
}

std::wstring enumerer(const std::vector<std::wstring>& noms) {
  std::wstring texte;
  for (std::size_t i = 0; i < std::min(noms.size(), Remarques::kCitees); ++i)
    texte += (i > 0 ? L", " : L"") + noms[i];
  return noms.size() > Remarques::kCitees ? texte + L"…" : texte;
}

}  // namespace veltora::base
