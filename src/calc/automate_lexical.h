#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace veltora {

/// One transition of an automaton. An empty slot has -1 as source and target.
struct etatAutomate {
  int source = -1;
  signed char bas = 0;   ///< lowest character accepted
  signed char haut = 0;  ///< highest character accepted
  int cible = -1;
};

/// A small automaton that takes one token from a text. The initial state is 0.
class automateLexical {
public:
  void ajouterEtatFinal(int etat);  ///< a state that stands in the list already is not added again
  /// The two characters may come in either order.
  void ajouterTransition(int source, char bas, char haut, int cible);

  /// Takes characters from `position` as long as a transition matches, the first in the order of insertion;
  /// letters match as capitals. There is no backing up: the token is good only when the state reached is
  /// accepting.
  /// @param position moved behind the token, whether good or not  @param jeton the characters as typed
  bool lire(std::string_view texte, std::size_t& position, std::string& jeton) const;

  /// Numbers of formulas: signs, digits, a point, an exponent behind "E".
  static automateLexical nombres();
  /// Names: a letter, then letters and digits.
  static automateLexical identificateurs();

private:
  [[nodiscard]] int suivant(int etat, signed char caractere) const;
  std::vector<int> m_finaux;
  std::vector<etatAutomate> m_transitions;
};

}  // namespace veltora
