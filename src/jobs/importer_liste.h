#pragma once

#include "base/export.h"
#include "jobs/lire_liste.h"

#include <string>

/// A list of coordinates placed in one call, on the installed project and the working drawing.
namespace veltora {

struct demandeImportListe {
  std::filesystem::path fichier;
  std::wstring table;  ///< takes the points, made when missing; empty for the current one, or those that
                       ///< the list names
  bool malgreDoutes = false;  ///< place even what is doubtful
  optionsListe options = {};  ///< how the file is to be read
  montrerListe montrer = {};  ///< shows what it was taken for; null: nobody is shown anything
};

/// Places the points of a list as blocks, with their observations, and enters them in the table. A point of
/// the table that bears a name of the list is replaced; within the list the same name may stand twice. Points
/// without a name get the numbers behind the largest one. A list that names tables has them made, and the
/// one that it calls current becomes so. Texts in place of codes are looked up among the labels; a new one
/// gets a free code, and the code table is saved.
/// @return false with `erreur` set, nothing changed: no project, the file cannot be read or holds no point;
/// also when the user stops it, and then the points placed so far stay
VELTORA_API bool importerListe(const demandeImportListe& demande, resultatPoints& resultat);

}  // namespace veltora
