#pragma once

#include "base/uncopyable.h"
#include "calc/automate_lexical.h"
#include "calc/table_variables.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace veltora {

/// One node of a formula's tree.
struct noeudFormule {
  enum Genre : signed char {
    kAucun = 0,
    kAddition = 1,
    kSoustraction = 2,
    kMultiplication = 3,
    kDivision = 4,
    kPuissance = 5,
    kVariableOpposee = 6,
    kVariable = 7,
    kConstante = 8
  };
  Genre genre = kAucun;
  std::string nom;  ///< of a variable, as typed
  double valeur = 0.0;
  std::unique_ptr<noeudFormule> gauche;
  std::unique_ptr<noeudFormule> droite;
  int indexVariable = -1;  ///< place in the table of variables, -1 while unknown
};

/// A formula typed by the user: text to tree, tree to value, tree to text.
///
/// Chains lean to the right: "a-b-c" is a-(b-c), "a/b/c" is a/(b/c). A sign in front of a bracket is dropped.
/// Formulas nested or chained deeper than `kProfondeurMax` do not parse.
class formule : private Uncopyable {
public:
  static constexpr int kProfondeurMax = 2000;

  formule();
  /// @param texte  Windows-1252; blanks and tabs are ignored
  /// @return true when the whole text parsed; the tree is kept in either case, as far as it got
  bool analyser(std::string_view texte);
  /// @return the value, 0.0 with no tree. Unknown names count as 0
  /// @param memoriserIndex  keeps the places of the variables in the nodes, for later calls with the same
  /// table
  double evaluer(const tableVariables& variables, bool memoriserIndex);
  /// Appends the fully bracketed form, or sets the text to "Erreur !!!" when there is no tree.
  void imprimer(std::string& texte) const;
  /// Appends the name of every variable, depth first, duplicates kept.
  void listerVariables(std::vector<std::string>& liste) const;

private:
  using Noeud = std::unique_ptr<noeudFormule>;
  bool expression(Noeud& noeud);
  bool terme(Noeud& noeud);
  bool puissance(Noeud& noeud);
  bool facteur(Noeud& noeud);
  bool operande(Noeud& noeud, bool negatif);
  /// A chain of operands joined by two operators of one rank.
  bool chaine(Noeud& noeud, bool (formule::*rang)(Noeud&), const char* operateurs,
              noeudFormule::Genre premier, noeudFormule::Genre second);
  [[nodiscard]] char courant() const { return m_position < m_texte.size() ? m_texte[m_position] : '\0'; }

  automateLexical m_nombres;
  automateLexical m_noms;
  Noeud m_racine;
  std::string m_texte;
  std::size_t m_position = 0;
  int m_profondeur = 0;
};

}  // namespace veltora
