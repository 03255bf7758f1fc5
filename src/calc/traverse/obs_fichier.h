#pragma once

#include "base/export.h"
#include "calc/traverse/obs_polygonale.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// What the files of closed and open traverses have in common. A file is lines of Windows-1252 text; the
/// number of tokens of a line tells what it is: 2 a keyword and its word, 4 a row, 10 five keys and their
/// values.
namespace veltora {

/// Something that the reader passed over or guessed. The reading goes on after the system's rules; a caller
/// that has someone to tell, tells him.
struct remarqueObs {
  enum class Genre {
    ligneIgnoree,        ///< number of tokens that means nothing, or an unknown keyword
    cleIgnoree,          ///< unknown key of a pair
    uniteInconnue,       ///< taken as grades
    nivellementInconnu,  ///< taken as "aucun"
    nombreIllisible,     ///< read as its longest numeric prefix, 0.0 for none
    ligneTropLongue      ///< cut behind 1024 bytes
  };
  int ligne = 0;  ///< from 1
  Genre genre = Genre::ligneIgnoree;
  std::wstring texte;  ///< the token or the line
};

/// A remark as a French sentence without its file ("ligne 12 : ...").
VELTORA_API std::wstring texteRemarque(const remarqueObs& remarque);

/// What every traverse file holds.
struct donneesObs {
  int modeAngle = 0;        ///< 0 grades, 1 degres, 2 radians
  int modeNivellement = 0;  ///< 0 aucun, 1 simple, 2 distance, 3 racine
  std::vector<ligneObs> lignes;
};

using jetonsObs = std::vector<std::wstring>;

/// What a kind of traverse adds. Both give true when they know the line; numbers go through
/// `lecteurObs::nombre`.
class lecteurObs {
public:
  virtual ~lecteurObs() = default;
  /// Reads all lines into `donnees`, whose rows are emptied first; the modes stay when the file does not name
  /// them.
  void lire(std::string_view octets, donneesObs& donnees);
  [[nodiscard]] const std::vector<remarqueObs>& remarques() const { return m_remarques; }

protected:
  /// A line of two tokens other than unit and mode. @return false when it means nothing
  /// @param cle the first four letters at most, in capitals
  virtual bool motCle(const std::wstring& cle, const std::wstring& valeur);
  /// Five pairs of key and value.
  virtual void paires(const jetonsObs& jetons) = 0;

  double nombre(const std::wstring& jeton);
  void remarquer(remarqueObs::Genre genre, std::wstring_view texte);

private:
  void lireJetons(const jetonsObs& jetons, std::wstring_view ligne, donneesObs& donnees);
  void lireDeuxJetons(const jetonsObs& jetons, std::wstring_view ligne, donneesObs& donnees);

  std::vector<remarqueObs> m_remarques;
  int m_ligne = 0;
};

/// Calls `recevoir` with each line, without its CR LF or LF end.
VELTORA_API void parcourirLignes(std::string_view octets,
                                 const std::function<void(std::string_view)>& recevoir);

/// Pieces of a file to write, Windows-1252, appended to `sortie`.
void ecrireLigneFichier(std::string& sortie, std::wstring_view ligne);
void ecrireUniteAngles(std::string& sortie, int modeAngle);
void ecrireModeNivellement(std::string& sortie, int modeNivellement);
void ecrireRangee(std::string& sortie, const ligneObs& ligne);

}  // namespace veltora
