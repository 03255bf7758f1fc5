#pragma once

#include "base/remarque.h"
#include "field/mots_gsi.h"

#include <cstddef>
#include <set>
#include <string_view>
#include <vector>

/// What the reading of a field book passes over without a word: it is told here, since nobody sees it in the
/// results.
namespace veltora {

/// Lines on which something was met, and how often.
struct rencontresGSI {
  std::size_t nombre = 0;
  std::vector<int> lignes;  ///< each once, the first ones only
  void noter(int ligne);
};

class VELTORA_API controleGSI {
public:
  /// @param numero  of the line, from 1  @param mots, propre  what `decoderLigneGSI` made of it
  void voir(int numero, std::string_view ligne, const ligneGSI& mots, bool propre);
  /// Says what was met; doubts where values were read otherwise than they were meant, or lost.
  void remarquer(base::Remarques& remarques) const;
  [[nodiscard]] std::size_t mots() const { return m_mots; }
  [[nodiscard]] std::size_t visees() const { return m_visees; }

private:
  enum Cas { kSigne, kSexagesimal, kPieds, kUnite5, kUnite7, kUniteInconnue, kUniteAutre, kDonnees, kRepete };
  static constexpr std::size_t kNombreCas = 9;

  void voirArret(int numero, std::string_view ligne, std::size_t lus);
  void voirMot(int numero, const motGSI& mot, char signe);
  void voirNumerique(int numero, const motGSI& mot);
  void voirLigne(int numero, const ligneGSI& mots);

  std::size_t m_mots = 0;
  std::size_t m_visees = 0;
  base::Remarques m_arrets;
  rencontresGSI m_cas[kNombreCas];
  rencontresGSI m_autres;        ///< lines that open with neither 11 nor 41
  bool m_autresMesures = false;  ///< one of them holds measures
  std::size_t m_blocsCode = 0;
  std::size_t m_sansEmploi = 0;
  std::set<int> m_indicesSansEmploi;
};

}  // namespace veltora
