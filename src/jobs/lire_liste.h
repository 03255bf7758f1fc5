#pragma once

#include "base/export.h"
#include "jobs/resultat_points.h"
#include "points/exchange/lecture_liste.h"

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

/// A list of coordinates read for a job, whatever form it has.
namespace veltora {

/// What a list was taken for.
struct apercuListe {
  std::wstring fichier;  ///< as the user knows it
  formeListe forme;
  std::wstring description;                       ///< of the form, French
  std::vector<std::wstring> roles;                ///< of the columns, by the words of the options
  std::vector<std::vector<std::wstring>> lignes;  ///< the first five with points, field by field
};

/// What is to be done once a list was shown.
enum class suiteListe { kContinuer, kRelire, kAbandonner };
/// Shows what a list was taken for; may change the options, and then wants it read again.
using montrerListe = std::function<suiteListe(const apercuListe&, optionsListe&)>;

struct demandeLectureListe {
  std::filesystem::path fichier;
  optionsListe options;
  montrerListe montrer = {};  ///< null: nobody is shown anything
};

/// Takes the columns from the words of the options; see `lireColonnes`.
VELTORA_API bool nommerColonnes(std::wstring_view texte, optionsListe& options, std::wstring& raison);

/// Reads the points of a file. Without options, a name that ends in ".xyz", or a content of that form, has
/// the list read word by word as `tableObsXYZ` does; what looks wrong in it is a doubt. Any other list is
/// recognised and shown, and what it leaves open is a doubt.
/// @return false with `erreur` set: the file cannot be read or holds no point, or the user does not want it
bool lireListePoints(const demandeLectureListe& demande, listeLue& liste, resultatPoints& resultat);

/// What looks wrong in a file that is read word by word as an `.xyz` list, for the drawing with its tables:
/// doubts, each with the options of one call that would read it otherwise.
/// @param nom  of the file, as the user knows it
VELTORA_API base::Remarques doutesXyz(std::wstring_view nom, std::string_view octets);

}  // namespace veltora
