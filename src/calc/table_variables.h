#pragma once

#include <string>
#include <unordered_map>
#include <vector>

namespace veltora {

/// Named values for formulas. Names compare ignoring case and are stored in lower case; entries are never
/// removed by an evaluation, so that an index stays valid. Texts are Windows-1252.
class tableVariables {
public:
  /// @return the index, or -1
  [[nodiscard]] int chercher(const std::string& nom) const;
  /// A name that exists changes only its value; a new one is appended with its comment and flag.
  void definir(const std::string& nom, double valeur, const std::string& commentaire = {}, int systeme = 0);
  /// Removes an entry; later ones move up. An index outside raises `std::invalid_argument`.
  void supprimer(int index);
  void vider();

  [[nodiscard]] int nombre() const { return static_cast<int>(m_noms.size()); }
  /// An index outside raises `std::invalid_argument`, likewise below.
  [[nodiscard]] const std::string& nom(int index) const { return m_noms[verifie(index)]; }
  [[nodiscard]] const std::string& commentaire(int index) const { return m_commentaires[verifie(index)]; }
  [[nodiscard]] double valeur(int index) const { return m_valeurs[verifie(index)]; }
  void setValeur(int index, double valeur) { m_valeurs[verifie(index)] = valeur; }
  void setCommentaire(int index, const std::string& texte) { m_commentaires[verifie(index)] = texte; }
  [[nodiscard]] bool systeme(int index) const { return m_systeme[verifie(index)] != 0; }

private:
  [[nodiscard]] std::size_t verifie(int index) const;
  std::vector<std::string> m_noms;
  std::vector<std::string> m_commentaires;
  std::vector<double> m_valeurs;
  std::vector<int> m_systeme;
  std::unordered_map<std::string, int> m_index;
};

}  // namespace veltora
