#include "calc/automate_lexical.h"

#include <algorithm>

namespace veltora {

void automateLexical::ajouterEtatFinal(int etat) {
  if (std::find(m_finaux.begin(), m_finaux.end(), etat) == m_finaux.end()) m_finaux.push_back(etat);
}

void automateLexical::ajouterTransition(int source, char bas, char haut, int cible) {
  const auto a = static_cast<signed char>(bas);
  const auto b = static_cast<signed char>(haut);
  m_transitions.push_back({source, std::min(a, b), std::max(a, b), cible});
}

int automateLexical::suivant(int etat, signed char caractere) const {
  for (const etatAutomate& transition : m_transitions) {
    if (transition.source == etat && caractere >= transition.bas && caractere <= transition.haut)
      return transition.cible;
  }
  return -1;
}

bool automateLexical::lire(std::string_view texte, std::size_t& position, std::string& jeton) const {
  jeton.clear();
  int etat = 0;
  for (; position < texte.size(); ++position) {
    char c = texte[position];
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    const int cible = suivant(etat, static_cast<signed char>(c));
    if (cible < 0) break;
    etat = cible;
    jeton.push_back(texte[position]);
  }
  return std::find(m_finaux.begin(), m_finaux.end(), etat) != m_finaux.end();
}

automateLexical automateLexical::nombres() {
  automateLexical a;
  // State 3, just behind the point, is not accepting: "1." is no number of a formula.
  for (const int etat : {2, 4, 7}) a.ajouterEtatFinal(etat);
  for (const int etat : {0, 1}) {
    a.ajouterTransition(etat, '+', '+', 1);
    a.ajouterTransition(etat, '-', '-', 1);
    a.ajouterTransition(etat, '.', '.', 8);
    a.ajouterTransition(etat, '0', '9', 2);
  }
  a.ajouterTransition(2, '0', '9', 2);
  a.ajouterTransition(2, '.', '.', 3);
  a.ajouterTransition(2, 'E', 'E', 5);
  a.ajouterTransition(3, '0', '9', 4);
  a.ajouterTransition(4, '0', '9', 4);
  a.ajouterTransition(4, 'E', 'E', 5);
  a.ajouterTransition(5, '+', '+', 6);
  a.ajouterTransition(5, '-', '-', 6);
  for (const int etat : {5, 6, 7}) a.ajouterTransition(etat, '0', '9', 7);
  a.ajouterTransition(8, '0', '9', 4);
  return a;
}

automateLexical automateLexical::identificateurs() {
  automateLexical a;
  a.ajouterEtatFinal(1);
  a.ajouterTransition(0, 'A', 'Z', 1);
  a.ajouterTransition(1, 'A', 'Z', 1);
  a.ajouterTransition(1, '0', '9', 1);
  return a;
}

}  // namespace veltora
