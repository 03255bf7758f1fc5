#pragma once

#include "arx/adesk.h"
#include "arx/db/dbid.h"
#include "arx/ge/gepoint.h"
#include "base/export.h"

#include <array>
#include <vector>

namespace veltora {

class listePointsDuDessin;

/// One kind of entity from which points are made.
struct sourceImport {
  int drapeau;            ///< bit in the mask of sources
  const wchar_t* classe;  ///< class of the entities offered to the selection
  int code;               ///< of the record in the code table, and of the points unless a block tells another
  const wchar_t* libelle;   ///< of that record
  const wchar_t* nom;       ///< on a command line
  const wchar_t* intitule;  ///< for people
};

enum drapeauSource : int {
  kSourcePolylines2dAnciennes = 0x001,
  kSourceMaillages = 0x002,
  kSourcePolylines3d = 0x004,
  kSourceInsertions = 0x008,
  kSourceBlocs = 0x010,
  kSourceBlocsAttributs = 0x020,
  kSourceFaces = 0x040,
  kSourceLignes = 0x080,
  kSourcePolylines = 0x100,
  kSourcePoints = 0x200,
  kSourcePolyfaces = 0x400,
  kSourceTextes = 0x800,
  kToutesSources = 0xFFF,
};

inline constexpr std::size_t kNombreSources = 12;
/// In the order in which their classes are offered to a selection.
VELTORA_API extern const std::array<sourceImport, kNombreSources> sourcesImport;

/// What an import takes, and how it reads blocks and texts.
struct parametresImport {
  int masque = 0;                       ///< sum of `drapeauSource`
  AcString etiquetteNumero = L"NUMPT";  ///< attributes of `kSourceBlocsAttributs`
  AcString etiquetteAltitude = L"Z";
  AcString etiquetteCode;  ///< empty for none
  AcGeVector2d decalage;   ///< from the position of a one-line text to its point, drawing units
};

/// Points made from each source, in the order of `sourcesImport`, before duplicates are removed.
using comptesImport = std::array<int, kNombreSources>;

/// Turns entities into points at the end of a table, then removes duplicates by place and numbers the points
/// without a name. An entity that cannot be opened is passed over. Except for blocks read by their
/// attributes, an altitude of exactly 0 means none, and such a vertex makes no point. Shows progress; when
/// the user stops it, the points made so far stay.
VELTORA_API comptesImport importerEntites(listePointsDuDessin& table,
                                          const std::vector<AcDbObjectId>& entites,
                                          const parametresImport& parametres);
/// The same with all entities of the model space of the working drawing.
VELTORA_API comptesImport importerToutLeDessin(listePointsDuDessin& table,
                                               const parametresImport& parametres);

/// Lets the user select entities of the classes. @return false when he cancels or nothing was found
VELTORA_API bool listeSelectionObjets(const std::vector<AcString>& classes,
                                      std::vector<AcDbObjectId>& entites);

/// Makes the record of a source's code in the code table when it is missing; one that is there sets
/// `dejaFait`, with which nothing is done any more.
VELTORA_API void enregistrerCodeSource(bool& dejaFait, int code, const wchar_t* libelle);

}  // namespace veltora
