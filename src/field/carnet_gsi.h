#pragma once

#include "base/remarque.h"
#include "field/mots_gsi.h"
#include "field/table_obs_rayonnees.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// A field book from its bytes into the table.
namespace veltora {

/// The lines of a file in Windows-1252, without their ends.
class VELTORA_API carnetGSI {
public:
  [[nodiscard]] std::size_t nombreLignes() const { return m_fins.size(); }
  /// @param i  below `nombreLignes()`
  [[nodiscard]] std::string_view ligne(std::size_t i) const;
  /// How many characters they have together.
  [[nodiscard]] std::size_t taille() const { return m_texte.size(); }
  void reserver(std::size_t taille) { m_texte.reserve(taille); }
  void ajouter(std::string_view ligne);
  /// All lines, each ended by CR LF.
  [[nodiscard]] std::wstring brut() const;
  base::Remarques remarques;  ///< lines of which a part was cut off

private:
  std::string m_texte;              ///< all lines, one behind the other
  std::vector<std::size_t> m_fins;  ///< where each ends in it
};

/// Cuts the bytes of a file into lines, whatever ends them; a line is cut behind `kLigneGsiMax` characters or
/// in front of a zero byte.
VELTORA_API carnetGSI lireCarnet(std::string_view octets);

/// Enters what one decoded line says into the table of the process: a sighting (first word 11), or with the
/// rules of code blocks a station (41). A line that opens otherwise says nothing.
/// @param numeroLigne  of the line in the file
VELTORA_API void interpreterLigneGSI(etatLectureGSI& etat, std::uint32_t numeroLigne, const ligneGSI& mots);

/// The lines of one file, read one after the other.
class VELTORA_API analyseGSI {
public:
  /// Makes room for the lines of a book and their text.
  static void preparer(const carnetGSI& carnet, std::string& detail);
  /// Decodes a line, enters it into the table and adds its text, ended by `fin`, to `detail` when it has any,
  /// in Windows-1252.
  /// @return as `decoderLigneGSI`
  int lire(std::string_view ligne, std::string& detail, std::string_view fin);
  /// Of the line read last.
  [[nodiscard]] const ligneGSI& mots() const { return m_mots; }

private:
  etatLectureGSI m_etat;
  ligneGSI m_mots;
  std::uint32_t m_numero = 0;
};

}  // namespace veltora
