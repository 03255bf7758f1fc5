#pragma once

#include "base/export.h"

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

/// What a reader or a job tells the user while it goes on.
namespace veltora::base {

/// One thing to tell: where it was met, and a French sentence on what was left out, guessed or looks wrong,
/// and why.
struct VELTORA_API Remarque {
  explicit Remarque(std::wstring phraseSeule, int numeroLigne = 0)
      : texte(std::move(phraseSeule)), ligne(numeroLigne) {}

  std::wstring texte;       ///< without the place, capital and full stop
  int ligne;                ///< of the file, from 1; 0 for what belongs to no line
  bool ligneOmise = false;  ///< nothing was taken from the line
  bool douteuse = false;    ///< the results are to be doubted
  std::wstring fichier;     ///< as the user knows it; empty for none

  /// "leve.obs, ligne 12 : ...", as far as the place is known; behind "à vérifier : " what is doubtful.
  [[nodiscard]] std::wstring phrase() const;
};

/// Remarks in the order in which they were made. Behind the first `kGardees` they are only counted, so that a
/// file of another kind does not fill the memory.
class VELTORA_API Remarques {
public:
  /// How many of one kind are told one by one where there may be many.
  static constexpr std::size_t kCitees = 20;
  static constexpr std::size_t kGardees = 10000;

  void ajouter(Remarque remarque);
  void ajouter(std::wstring texte) { ajouter(Remarque(std::move(texte))); }
  void ajouter(int ligne, std::wstring texte) { ajouter(Remarque(std::move(texte), ligne)); }
  /// On a line from which nothing was taken.
  void omettre(int ligne, std::wstring texte);
  /// Something that makes the results doubtful.
  void douter(std::wstring texte) { douter(0, std::move(texte)); }
  void douter(int ligne, std::wstring texte);
  void ajouter(const Remarques& autres);
  /// The same, but one remark for all lines that were left out: "12 lignes ignorées : 3, 7, 9".
  void ajouterGroupees(const Remarques& autres);
  /// Adds the first `kCitees` of them, then one that tells how many more there are.
  /// @param reste  makes that sentence; "… et 5 de plus" without one
  void citer(const Remarques& autres, const std::function<std::wstring(int)>& reste = {});
  /// All remarks so far were met in this file.
  void situer(const std::wstring& fichier);

  [[nodiscard]] bool empty() const { return m_nombre == 0; }
  /// Whether one of them makes the results doubtful, those that are only counted included.
  [[nodiscard]] bool douteuses() const { return m_douteuses; }
  /// How many were made, the counted ones included.
  [[nodiscard]] std::size_t nombre() const { return m_nombre; }
  [[nodiscard]] auto begin() const { return m_gardees.begin(); }
  [[nodiscard]] auto end() const { return m_gardees.end(); }
  /// The sentences with their places.
  [[nodiscard]] std::vector<std::wstring> phrases() const;

private:
  std::vector<Remarque> m_gardees;
  std::size_t m_nombre = 0;
  std::size_t m_omises = 0;  ///< of them, those on lines that were left out
  bool m_douteuses = false;
};

/// "A, B, C": the first `Remarques::kCitees` of a list within a sentence, then "…" when there are more.
VELTORA_API std::wstring enumerer(const std::vector<std::wstring>& noms);

}  // namespace veltora::base
