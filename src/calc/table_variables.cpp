#include "calc/table_variables.h"

#include "base/text.h"

#include <stdexcept>

namespace veltora {

int tableVariables::chercher(const std::string& nom) const {
  const auto found = m_index.find(base::toLowerAnsi(nom));
  return found == m_index.end() ? -1 : found->second;
}

void tableVariables::definir(const std::string& nom, double valeur, const std::string& commentaire,
                             int systeme) {
  const std::string cle = base::toLowerAnsi(nom);
  const auto [entry, isNew] = m_index.try_emplace(cle, nombre());
  if (!isNew) {
    m_valeurs[static_cast<std::size_t>(entry->second)] = valeur;
    return;
  }
  m_noms.push_back(cle);
  m_commentaires.push_back(commentaire);
  m_valeurs.push_back(valeur);
  m_systeme.push_back(systeme);
}

void tableVariables::supprimer(int index) {
  const auto at = static_cast<std::ptrdiff_t>(verifie(index));
  m_noms.erase(m_noms.begin() + at);
  m_commentaires.erase(m_commentaires.begin() + at);
  m_valeurs.erase(m_valeurs.begin() + at);
  m_systeme.erase(m_systeme.begin() + at);
  m_index.clear();
  for (int i = 0; i < nombre(); ++i) m_index[m_noms[static_cast<std::size_t>(i)]] = i;
}

void tableVariables::vider() { *this = tableVariables(); }

std::size_t tableVariables::verifie(int index) const {
  if (index < 0 || index >= nombre()) throw std::invalid_argument("variable inconnue");
  return static_cast<std::size_t>(index);
}

}  // namespace veltora
