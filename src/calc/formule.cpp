#include "calc/formule.h"

#include "base/format.h"
#include "base/numbers.h"

#include <cmath>

namespace veltora {
namespace {

bool estLettre(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool estDebutNombre(char c) { return (c >= '0' && c <= '9') || c == '.'; }

double elever(double base, double exposant) {
  if (base > 0.0) return std::pow(base, exposant);
  // Deliberate (formule-puissance): a negative base gives the reciprocal of the power with the absolute
  // exponent, whatever the exponent's sign; weights typed for it count on this.
  if (base < 0.0 && std::ceil(exposant) == std::floor(exposant))
    return 1.0 / std::pow(base, std::fabs(exposant));
  return 0.0;
}

double variable(noeudFormule& noeud, const tableVariables& variables, bool memoriserIndex) {
  int index = noeud.indexVariable;
  if (index < 0 || index >= variables.nombre()) {
    index = variables.chercher(noeud.nom);
    if (memoriserIndex) noeud.indexVariable = index;
  }
  return index < 0 ? 0.0 : variables.valeur(index);
}

double evaluerNoeud(noeudFormule* noeud, const tableVariables& variables, bool memoriserIndex) {
  if (!noeud) return 0.0;
  const double gauche = evaluerNoeud(noeud->gauche.get(), variables, memoriserIndex);
  const double droite = evaluerNoeud(noeud->droite.get(), variables, memoriserIndex);
  switch (noeud->genre) {
    case noeudFormule::kAddition:
      return droite + gauche;
    case noeudFormule::kSoustraction:
      return gauche - droite;
    case noeudFormule::kMultiplication:
      return droite * gauche;
    case noeudFormule::kDivision:
      return droite == 0.0 ? 0.0 : gauche / droite;
    case noeudFormule::kPuissance:
      return elever(gauche, droite);
    case noeudFormule::kVariableOpposee:
      return -variable(*noeud, variables, memoriserIndex);
    case noeudFormule::kVariable:
      return variable(*noeud, variables, memoriserIndex);
    case noeudFormule::kConstante:
      return noeud->valeur;
    default:
      return 0.0;
  }
}

void imprimerNoeud(const noeudFormule* noeud, std::string& texte) {
  const auto operateur = [&](const char* signe) {
    if (!noeud->gauche || !noeud->droite) {
      texte += "#ERR";
      return;
    }
    texte += "( ";
    imprimerNoeud(noeud->gauche.get(), texte);
    texte += signe;
    imprimerNoeud(noeud->droite.get(), texte);
    texte += " )";
  };
  switch (noeud->genre) {
    case noeudFormule::kAddition:
      return operateur(" + ");
    case noeudFormule::kSoustraction:
      return operateur(" - ");
    case noeudFormule::kMultiplication:
      return operateur(" * ");
    case noeudFormule::kDivision:
      return operateur(" / ");
    case noeudFormule::kPuissance:
      return operateur(" ^ ");
    case noeudFormule::kVariableOpposee:
      texte += "(-" + noeud->nom + ")";
      return;
    case noeudFormule::kVariable:
      texte += noeud->nom;
      return;
    case noeudFormule::kConstante:
      texte += base::formater("%.4f", noeud->valeur);
      return;
    default:
      texte += "#ERR";
  }
}

void listerNoeud(const noeudFormule* noeud, std::vector<std::string>& liste) {
  if (!noeud) return;
  listerNoeud(noeud->gauche.get(), liste);
  listerNoeud(noeud->droite.get(), liste);
  if (noeud->genre == noeudFormule::kVariable || noeud->genre == noeudFormule::kVariableOpposee)
    liste.push_back(noeud->nom);
}

}  // namespace

formule::formule() : m_nombres(automateLexical::nombres()), m_noms(automateLexical::identificateurs()) {}

bool formule::analyser(std::string_view texte) {
  m_racine.reset();
  m_texte.clear();
  for (const char c : texte) {
    if (c != ' ' && c != '\t') m_texte.push_back(c);
  }
  m_position = 0;
  m_profondeur = 0;
  const bool bon = expression(m_racine);
  return bon && m_position == m_texte.size();
}

// Deliberate (formule-penche): chains lean to the right, so that "10-3-2" is 10-(3-2); the printed form shows
// it.
bool formule::chaine(Noeud& noeud, bool (formule::*rang)(Noeud&), const char* operateurs,
                     noeudFormule::Genre premier, noeudFormule::Genre second) {
  if (++m_profondeur > kProfondeurMax) return false;
  bool bon = (this->*rang)(noeud);
  const char c = courant();
  if (bon && c != '\0' && (c == operateurs[0] || c == operateurs[1])) {
    ++m_position;
    auto parent = std::make_unique<noeudFormule>();
    parent->genre = c == operateurs[0] ? premier : second;
    parent->gauche = std::move(noeud);
    noeud = std::move(parent);
    bon = chaine(noeud->droite, rang, operateurs, premier, second);
  }
  --m_profondeur;
  return bon;
}

bool formule::expression(Noeud& noeud) {
  return chaine(noeud, &formule::terme, "+-", noeudFormule::kAddition, noeudFormule::kSoustraction);
}

bool formule::terme(Noeud& noeud) {
  return chaine(noeud, &formule::puissance, "*/", noeudFormule::kMultiplication, noeudFormule::kDivision);
}

bool formule::puissance(Noeud& noeud) {
  return chaine(noeud, &formule::facteur, "^^", noeudFormule::kPuissance, noeudFormule::kPuissance);
}

bool formule::facteur(Noeud& noeud) {
  bool negatif = false;
  for (; courant() == '+' || courant() == '-'; ++m_position) {
    if (courant() == '-') negatif = !negatif;
  }
  if (courant() == '(') {
    // Deliberate (formule-signe): the sign in front of a bracket is dropped, "-(a)" is a.
    ++m_position;
    if (!expression(noeud) || courant() != ')') return false;
    ++m_position;
    return true;
  }
  return operande(noeud, negatif);
}

bool formule::operande(Noeud& noeud, bool negatif) {
  const bool nombre = estDebutNombre(courant());
  if (!nombre && !estLettre(courant())) return true;  // no operand: no node, nothing consumed
  std::string jeton;
  if (!(nombre ? m_nombres : m_noms).lire(m_texte, m_position, jeton)) return false;
  noeud = std::make_unique<noeudFormule>();
  if (nombre) {
    noeud->genre = noeudFormule::kConstante;
    noeud->valeur = negatif ? -base::lireReel(jeton) : base::lireReel(jeton);
  } else {
    noeud->genre = negatif ? noeudFormule::kVariableOpposee : noeudFormule::kVariable;
    noeud->nom = jeton;
  }
  return true;
}

double formule::evaluer(const tableVariables& variables, bool memoriserIndex) {
  return evaluerNoeud(m_racine.get(), variables, memoriserIndex);
}

void formule::imprimer(std::string& texte) const {
  if (m_racine) {
    imprimerNoeud(m_racine.get(), texte);
  } else {
    texte = "Erreur !!!";
  }
}

void formule::listerVariables(std::vector<std::string>& liste) const { listerNoeud(m_racine.get(), liste); }

}  // namespace veltora
