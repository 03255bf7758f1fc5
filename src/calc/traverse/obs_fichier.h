#pragma once

#include "base/remarque.h"
#include "calc/traverse/obs_polygonale.h"

#include <string>
#include <string_view>
#include <vector>

/// What the files of closed and open traverses have in common. The number of tokens of a line tells what it
/// is: 2 a keyword and its word, 4 a row, 10 five keys and their values.
namespace veltora {

/// What every traverse file holds.
struct donneesObs {
  int modeAngle = 0;        ///< 0 grades, 1 degres, 2 radians
  int modeNivellement = 0;  ///< 0 aucun, 1 simple, 2 distance, 3 racine
  std::vector<ligneObs> lignes;
};

using jetonsObs = std::vector<std::wstring>;

/// What a kind of traverse adds. Both give true when they know the line;
/// numbers go through `lecteurObs::nombre`.
class lecteurObs {
public:
  virtual ~lecteurObs() = default;
  /// Reads all lines into `donnees`, whose rows are emptied first; the modes stay when the file does not name
  /// them.
  void lire(std::string_view octets, donneesObs& donnees);
  /// What was passed over or guessed, in order of the lines.
  [[nodiscard]] const base::Remarques& remarques() const { return m_remarques; }

protected:
  /// A line of two tokens other than unit and mode. @return false when it means nothing
  /// @param cle the first four letters at most, in capitals
  virtual bool motCle(const std::wstring& cle, const std::wstring& valeur);
  /// Five pairs of key and value.
  virtual void paires(const jetonsObs& jetons) = 0;

  double nombre(const std::wstring& jeton);
  /// On the line in progress.
  void remarquer(std::wstring texte);
  void remarquerIgnoree(std::wstring_view ligne);
  void remarquerCle(const std::wstring& cle) { remarquer(L"clé inconnue « " + cle + L" », ignorée"); }
  /// Doubts the line of a station that gives no X, Y, Z or bearing; its five pairs have room for them.
  void douterManquantes(const jetonsObs& jetons);

private:
  void lireJetons(const jetonsObs& jetons, std::wstring_view ligne, donneesObs& donnees);
  void douterIgnoree(const jetonsObs& jetons, std::wstring_view ligne);
  void douterMilliers(const std::wstring& distance, const std::wstring& dz);
  void lireDeuxJetons(const jetonsObs& jetons, std::wstring_view ligne, donneesObs& donnees);

  base::Remarques m_remarques;
  int m_ligne = 0;
};

/// Pieces of a file to write, Windows-1252, appended to `sortie`.
void ecrireLigneFichier(std::string& sortie, std::wstring_view ligne);
void ecrireUniteAngles(std::string& sortie, int modeAngle);
void ecrireModeNivellement(std::string& sortie, int modeNivellement);
void ecrireRangee(std::string& sortie, const ligneObs& ligne);

/// Filters of the file dialog of traverse files, the first in force.
inline constexpr const wchar_t* kFiltreObs = L"Observations|*.obs|Sans extension|*.|Tous|*.*|Text|*.TXT";

/// The name under which a traverse is saved: the file's own name in lower case, with the ending that goes
/// with the filter: ".obs" for the first, ".txt" for the fourth, a point for the others, each unless it is
/// there; and ".obs" when there is no point at all by then.
/// @param choisi the path that the user chose
/// @param filtre from 1
VELTORA_API std::wstring nomFichierObs(std::wstring_view choisi, int filtre);

}  // namespace veltora
