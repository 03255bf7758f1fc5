#include "calc/adjustment/facteurs_par_blocs.h"

#include <Eigen/OrderingMethods>
#include <algorithm>
#include <cmath>
#include <utility>

namespace veltora {
namespace {

constexpr int kLargeurMax = 64;  // columns of a block; no sum over them is split by the library

/// As long as it lives, products of large matrices are cut for caches of these sizes instead of the
/// machine's.
class cachesFixes {
public:
  cachesFixes() { Eigen::setCpuCacheSizes(32 * 1024, 512 * 1024, 4 * 1024 * 1024); }
  ~cachesFixes() { Eigen::setCpuCacheSizes(m_proche, m_moyen, m_lointain); }
  cachesFixes(const cachesFixes&) = delete;
  cachesFixes& operator=(const cachesFixes&) = delete;

private:
  std::ptrdiff_t m_proche = Eigen::l1CacheSize();
  std::ptrdiff_t m_moyen = Eigen::l2CacheSize();
  std::ptrdiff_t m_lointain = Eigen::l3CacheSize();
};

std::size_t en(int i) { return static_cast<std::size_t>(i); }

/// The column that each one is eliminated into first, -1 for none (Liu 1986, A compact row storage scheme for
/// Cholesky factors using elimination trees).
std::vector<int> arbreElimination(const FacteursParBlocs::Matrice& C, const std::vector<int>& ordre,
                                  const std::vector<int>& rangs) {
  std::vector<int> parents(ordre.size(), -1);
  std::vector<int> racines(ordre.size(), -1);
  for (int j = 0; j < static_cast<int>(ordre.size()); ++j) {
    for (FacteursParBlocs::Matrice::InnerIterator it(C, ordre[en(j)]); it; ++it) {
      int i = rangs[en(static_cast<int>(it.row()))];
      while (i >= 0 && i < j) {
        const int suivant = std::exchange(racines[en(i)], j);
        if (suivant < 0) parents[en(i)] = j;
        i = suivant;
      }
    }
  }
  return parents;
}

/// The vertices of a forest, each behind its children.
std::vector<int> enfantsDabord(const std::vector<int>& parents) {
  const int n = static_cast<int>(parents.size());
  std::vector<int> enfant(parents.size(), -1);
  std::vector<int> frere(parents.size(), -1);
  std::vector<int> pile;
  for (int j = n - 1; j >= 0; --j) {
    if (parents[en(j)] < 0) continue;
    frere[en(j)] = enfant[en(parents[en(j)])];
    enfant[en(parents[en(j)])] = j;
  }
  std::vector<int> suite;
  for (int racine = 0; racine < n; ++racine) {
    if (parents[en(racine)] < 0) pile.push_back(racine);
    while (!pile.empty()) {
      const int j = pile.back();
      if (const int e = std::exchange(enfant[en(j)], -1); e >= 0) {
        pile.push_back(e);
        continue;
      }
      pile.pop_back();
      suite.push_back(j);
      if (frere[en(j)] >= 0) pile.push_back(frere[en(j)]);
    }
  }
  return suite;
}

/// Rows of each column of L below its diagonal, ascending.
std::vector<std::vector<int>> lignesDeL(const FacteursParBlocs::Matrice& C, const std::vector<int>& ordre,
                                        const std::vector<int>& rangs, const std::vector<int>& parents) {
  std::vector<std::vector<int>> lignes(ordre.size());
  std::vector<std::vector<int>> enfants(ordre.size());
  std::vector<int> vu(ordre.size(), -1);
  for (int j = 0; j < static_cast<int>(ordre.size()); ++j) {
    std::vector<int>& l = lignes[en(j)];
    const auto noter = [&](int i) {
      if (i > j && std::exchange(vu[en(i)], j) != j) l.push_back(i);
    };
    for (FacteursParBlocs::Matrice::InnerIterator it(C, ordre[en(j)]); it; ++it)
      noter(rangs[en(static_cast<int>(it.row()))]);
    for (const int e : enfants[en(j)])
      for (const int i : lignes[en(e)]) noter(i);
    std::sort(l.begin(), l.end());
    if (parents[en(j)] >= 0) enfants[en(parents[en(j)])].push_back(j);
  }
  return lignes;
}

/// Columns of L that become one block, and the zeros that it holds besides their elements.
struct groupeDeColonnes {
  int debut = 0;
  int fin = 0;
  double zeros = 0.0;
};

/// Whether two groups, the second one behind the first and its parent, are better one: few zeros more for
/// their size.
bool reunir(const groupeDeColonnes& a, groupeDeColonnes& b, std::size_t dessousA, std::size_t dessousB) {
  const double largeurA = a.fin - a.debut;
  const double largeurB = b.fin - b.debut;
  const double largeur = largeurA + largeurB;
  const double zeros = a.zeros + b.zeros +
                       largeurA * (largeurB + static_cast<double>(dessousB) - static_cast<double>(dessousA));
  const double taille = 0.5 * largeur * (largeur + 1.0) + largeur * static_cast<double>(dessousB);
  const double part = zeros / taille;
  const bool bon =
      largeur <= 4 || (largeur <= 16 && part < 0.8) || (largeur <= 48 && part < 0.1) || part < 0.05;
  if (bon) b = {a.debut, b.fin, zeros};
  return bon;
}

}  // namespace

void FacteursParBlocs::analyser(const Matrice& N) {
  m_blocs.clear();
  m_Z.clear();
  ordonner(N);
  placerValeurs(N);
}

void FacteursParBlocs::ordonner(const Matrice& N) {
  const Matrice C = N.selfadjointView<Eigen::Lower>();
  Eigen::PermutationMatrix<Eigen::Dynamic, Eigen::Dynamic, int> permutation;
  Eigen::AMDOrdering<int>()(C, permutation);
  const auto n = static_cast<std::size_t>(N.cols());
  m_ordre.assign(permutation.indices().data(), permutation.indices().data() + n);
  m_rangs.resize(n);
  const auto numeroter = [&] {
    for (std::size_t k = 0; k < n; ++k) m_rangs[en(m_ordre[k])] = static_cast<int>(k);
  };
  numeroter();
  std::vector<int> parents = arbreElimination(C, m_ordre, m_rangs);
  const std::vector<int> suite = enfantsDabord(parents);
  std::vector<int> ordre;
  for (const int k : suite) ordre.push_back(m_ordre[en(k)]);
  m_ordre = std::move(ordre);
  numeroter();
  parents = arbreElimination(C, m_ordre, m_rangs);
  std::vector<std::vector<int>> lignes = lignesDeL(C, m_ordre, m_rangs, parents);
  formerBlocs(parents, lignes);
}

void FacteursParBlocs::formerBlocs(const std::vector<int>& parents,
                                   const std::vector<std::vector<int>>& lignes) {
  const int n = static_cast<int>(parents.size());
  std::vector<groupeDeColonnes> egales;
  for (int j = 0; j < n; ++j) {
    if (j > 0 && parents[en(j - 1)] == j && lignes[en(j - 1)].size() == lignes[en(j)].size() + 1)
      egales.back().fin = j + 1;
    else
      egales.push_back({j, j + 1, 0.0});
  }
  const auto dessous = [&](const groupeDeColonnes& g) { return lignes[en(g.fin - 1)].size(); };
  std::vector<groupeDeColonnes> groupes;  // from the last to the first
  for (auto g = egales.rbegin(); g != egales.rend(); ++g) {
    const bool enfant =
        !groupes.empty() && parents[en(g->fin - 1)] >= 0 && parents[en(g->fin - 1)] < groupes.back().fin;
    if (!enfant || !reunir(*g, groupes.back(), dessous(*g), dessous(groupes.back()))) groupes.push_back(*g);
  }
  m_blocDe.assign(parents.size(), 0);
  for (auto g = groupes.rbegin(); g != groupes.rend(); ++g)
    for (int debut = g->debut; debut < g->fin; debut += kLargeurMax)
      ajouterBloc(debut, g->fin, lignes[en(g->fin - 1)]);
  lierBlocs();
}

/// Of the columns of a group the first ones from `debut` on, as many as a block holds.
void FacteursParBlocs::ajouterBloc(int debut, int finDuGroupe, const std::vector<int>& lignes) {
  bloc s;
  s.debut = debut;
  s.largeur = std::min(kLargeurMax, finDuGroupe - debut);
  for (int j = debut + s.largeur; j < finDuGroupe; ++j) s.lignes.push_back(j);
  s.lignes.insert(s.lignes.end(), lignes.begin(), lignes.end());
  if (!m_blocs.empty()) {
    const bloc& precedent = m_blocs.back();
    s.valeurs = precedent.valeurs + en(precedent.hauteur()) * en(precedent.largeur);
  }
  for (int j = debut; j < debut + s.largeur; ++j) m_blocDe[en(j)] = static_cast<int>(m_blocs.size());
  m_blocs.push_back(std::move(s));
}

void FacteursParBlocs::lierBlocs() {
  for (bloc& s : m_blocs) {
    if (s.lignes.empty()) continue;
    s.parent = m_blocDe[en(s.lignes.front())];
    const bloc& p = m_blocs[en(s.parent)];
    auto ligne = p.lignes.begin();
    for (const int i : s.lignes) {
      if (i < p.debut + p.largeur) {
        s.places.push_back(i - p.debut);
        continue;
      }
      ligne = std::lower_bound(ligne, p.lignes.end(), i);
      s.places.push_back(p.largeur + static_cast<int>(ligne - p.lignes.begin()));
    }
  }
}

std::size_t FacteursParBlocs::place(const bloc& s, int i, int j) const {
  if (i < s.debut + s.largeur) return s.valeurs + en(j - s.debut) * en(s.hauteur()) + en(i - s.debut);
  const auto ligne = std::lower_bound(s.lignes.begin(), s.lignes.end(), i);
  if (ligne == s.lignes.end() || *ligne != i) return kNulle;
  return s.valeurs + en(j - s.debut) * en(s.hauteur()) + en(s.largeur) +
         static_cast<std::size_t>(ligne - s.lignes.begin());
}

void FacteursParBlocs::placerValeurs(const Matrice& N) {
  m_places.clear();
  for (int colonne = 0; colonne < N.outerSize(); ++colonne) {
    for (Matrice::InnerIterator it(N, colonne); it; ++it) {
      const auto [j, i] = std::minmax({rang(colonne), rang(static_cast<int>(it.row()))});
      m_places.push_back(place(m_blocs[en(m_blocDe[en(j)])], i, j));
    }
  }
}

bool FacteursParBlocs::factoriser(const Matrice& N) {
  const cachesFixes fixes;
  m_Z.clear();
  m_D.resize(N.cols());
  const bloc& dernier = m_blocs.back();
  m_L.assign(dernier.valeurs + en(dernier.hauteur()) * en(dernier.largeur), 0.0);
  for (std::size_t k = 0; k < m_places.size(); ++k) m_L[m_places[k]] += N.valuePtr()[k];
  // What the eliminated columns leave for the rows below, of each block until its parent takes it.
  std::vector<Eigen::MatrixXd> restes(m_blocs.size());
  bool bon = true;
  for (std::size_t k = 0; k < m_blocs.size(); ++k) {
    const bloc& s = m_blocs[k];
    Bloc L(m_L.data() + s.valeurs, s.hauteur(), s.largeur);
    bon = eliminer(s, L) && bon;
    const Eigen::Index bas = s.hauteur() - s.largeur;
    if (bas == 0) continue;
    Eigen::MatrixXd& reste = restes[k];
    if (reste.size() == 0) reste.setZero(bas, bas);
    const Eigen::MatrixXd LD = L.bottomRows(bas) * m_D.segment(s.debut, s.largeur).asDiagonal();
    reste.triangularView<Eigen::Lower>() -= LD * L.bottomRows(bas).transpose();
    donnerAuParent(s, reste, restes[en(s.parent)]);
    reste.resize(0, 0);
  }
  return bon;
}

/// Adds what a block leaves to the values of its parent, and to what that one will leave.
void FacteursParBlocs::donnerAuParent(const bloc& s, const Eigen::MatrixXd& reste,
                                      Eigen::MatrixXd& duParent) {
  const bloc& p = m_blocs[en(s.parent)];
  const Eigen::Index bas = p.hauteur() - p.largeur;
  if (duParent.size() == 0) duParent.setZero(bas, bas);
  for (std::size_t c = 0; c < s.places.size(); ++c) {
    const int colonne = s.places[c];
    double* const cible =
        colonne < p.largeur
            ? m_L.data() + p.valeurs + en(colonne) * en(p.hauteur())
            : duParent.data() + en(colonne - p.largeur) * static_cast<std::size_t>(bas) - p.largeur;
    const double* const source = reste.data() + c * s.places.size();
    for (std::size_t i = c; i < s.places.size(); ++i) cible[s.places[i]] += source[i];
  }
}

/// The columns of one block, to which all before them have given.
bool FacteursParBlocs::eliminer(const bloc& s, Bloc& L) {
  bool bon = true;
  auto D = m_D.segment(s.debut, s.largeur);
  for (int j = 0; j < s.largeur; ++j) {
    const int suite = s.largeur - j;
    auto colonne = L.col(j).segment(j, suite);
    if (j > 0) colonne -= L.block(j, 0, suite, j) * (L.row(j).head(j).transpose().cwiseProduct(D.head(j)));
    D[j] = colonne[0];
    const bool tenu = D[j] == 0.0 || !std::isfinite(D[j]);
    if (tenu) {
      bon = false;
      colonne.setZero();
    } else {
      colonne /= D[j];
    }
    colonne[0] = 1.0;
  }
  const Eigen::Index bas = s.hauteur() - s.largeur;
  if (bas == 0) return bon;
  auto dessous = L.bottomRows(bas);
  L.topRows(s.largeur).triangularView<Eigen::UnitLower>().transpose().solveInPlace<Eigen::OnTheRight>(
      dessous);
  for (int j = 0; j < s.largeur; ++j) {
    if (D[j] == 0.0 || !std::isfinite(D[j]))
      dessous.col(j).setZero();
    else
      dessous.col(j) /= D[j];
  }
  return bon;
}

Eigen::MatrixXd FacteursParBlocs::permuter(const Eigen::MatrixXd& b) const {
  Eigen::MatrixXd x(b.rows(), b.cols());
  for (Eigen::Index k = 0; k < b.rows(); ++k) x.row(k) = b.row(m_ordre[static_cast<std::size_t>(k)]);
  return x;
}

/// x = L^-1 x; what is 0 in a block gives nothing on.
void FacteursParBlocs::avancer(Eigen::MatrixXd& x) const {
  for (const bloc& s : m_blocs) {
    auto haut = x.middleRows(s.debut, s.largeur);
    if (haut.isZero(0.0)) continue;
    const BlocConstant L = valeurs(s);
    L.topRows(s.largeur).triangularView<Eigen::UnitLower>().solveInPlace(haut);
    if (s.lignes.empty()) continue;
    const Eigen::MatrixXd part = L.bottomRows(s.hauteur() - s.largeur) * haut;
    for (std::size_t i = 0; i < s.lignes.size(); ++i)
      x.row(s.lignes[i]) -= part.row(static_cast<Eigen::Index>(i));
  }
}

/// x = L^-T x
void FacteursParBlocs::reculer(Eigen::MatrixXd& x) const {
  Eigen::MatrixXd dessous;
  for (auto s = m_blocs.rbegin(); s != m_blocs.rend(); ++s) {
    auto haut = x.middleRows(s->debut, s->largeur);
    const BlocConstant L = valeurs(*s);
    if (!s->lignes.empty()) {
      dessous.resize(s->hauteur() - s->largeur, x.cols());
      for (std::size_t i = 0; i < s->lignes.size(); ++i)
        dessous.row(static_cast<Eigen::Index>(i)) = x.row(s->lignes[i]);
      haut -= L.bottomRows(dessous.rows()).transpose() * dessous;
    }
    L.topRows(s->largeur).triangularView<Eigen::UnitLower>().transpose().solveInPlace(haut);
  }
}

Eigen::MatrixXd FacteursParBlocs::resoudre(const Eigen::MatrixXd& b) const {
  const cachesFixes fixes;
  Eigen::MatrixXd x = permuter(b);
  avancer(x);
  x.array().colwise() /= m_D.array();
  reculer(x);
  Eigen::MatrixXd resultat(x.rows(), x.cols());
  for (Eigen::Index k = 0; k < x.rows(); ++k) resultat.row(m_ordre[static_cast<std::size_t>(k)]) = x.row(k);
  return resultat;
}

Eigen::MatrixXd FacteursParBlocs::formeInverse(const Eigen::MatrixXd& b) const {
  const cachesFixes fixes;
  Eigen::MatrixXd x = permuter(b);
  avancer(x);
  return x.transpose() * m_D.cwiseInverse().asDiagonal() * x;
}

void FacteursParBlocs::inverser() {
  const cachesFixes fixes;
  m_Z.assign(m_L.size(), 0.0);
  // The inverse over columns and rows of each block, lower half, as long as children wait for it.
  std::vector<Eigen::MatrixXd> carres(m_blocs.size());
  std::vector<int> attendus(m_blocs.size(), 0);
  for (const bloc& s : m_blocs)
    if (s.parent >= 0) ++attendus[en(s.parent)];
  for (std::size_t k = m_blocs.size(); k-- > 0;) {
    const bloc& s = m_blocs[k];
    const Eigen::MatrixXd aucun;
    inverserBloc(s, s.parent < 0 ? aucun : carres[en(s.parent)], carres[k]);
    Bloc(m_Z.data() + s.valeurs, s.hauteur(), s.largeur) = carres[k].leftCols(s.largeur);
    if (attendus[k] == 0) carres[k].resize(0, 0);
    if (s.parent >= 0 && --attendus[en(s.parent)] == 0) carres[en(s.parent)].resize(0, 0);
  }
}

/// With G = L21 L11^-1 and Z22 from the parent: Z21 = -Z22 G, Z11 = (L11 D L11^T)^-1 - G^T Z21.
void FacteursParBlocs::inverserBloc(const bloc& s, const Eigen::MatrixXd& duParent,
                                    Eigen::MatrixXd& Z) const {
  const Eigen::Index n = s.largeur;
  const Eigen::Index bas = s.hauteur() - n;
  const BlocConstant L = valeurs(s);
  const auto coin = L.topRows(n).triangularView<Eigen::UnitLower>();
  Z.setZero(n + bas, n + bas);
  for (Eigen::Index c = 0; c < bas; ++c)
    for (Eigen::Index i = c; i < bas; ++i)
      Z(n + i, n + c) =
          duParent(s.places[static_cast<std::size_t>(i)], s.places[static_cast<std::size_t>(c)]);
  Eigen::MatrixXd W = Eigen::MatrixXd::Identity(n, n);
  coin.solveInPlace(W);
  Z.topLeftCorner(n, n) = W.transpose() * m_D.segment(s.debut, n).cwiseInverse().asDiagonal() * W;
  if (bas == 0) return;
  const Eigen::MatrixXd G = L.bottomRows(bas) * W;
  Z.bottomLeftCorner(bas, n) = -(Z.bottomRightCorner(bas, bas).selfadjointView<Eigen::Lower>() * G);
  Z.topLeftCorner(n, n) -= G.transpose() * Z.bottomLeftCorner(bas, n);
}

double FacteursParBlocs::inverse(int i, int j) const {
  const auto [a, b] = std::minmax({rang(i), rang(j)});
  const std::size_t k = place(m_blocs[en(m_blocDe[en(a)])], b, a);
  return k == kNulle ? 0.0 : m_Z[k];
}

}  // namespace veltora
