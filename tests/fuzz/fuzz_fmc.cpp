// Reads any bytes as a formula file; what was read is compiled, evaluated and listed.
#include "fuzz/fuzz.h"

#include "base/files.h"
#include "calc/network/formules_poids.h"
#include "core/file_serializer.h"

#include <unistd.h>

using namespace veltora;

namespace {

/// One file a run of the program.
struct Scratch {
  std::string path = base::creerFichierTemporaire(base::dossierTemporaire(), "FMC").string();
  ~Scratch() { unlink(path.c_str()); }
};

}  // namespace

void fuzz(std::string_view bytes) {
  static const Scratch scratch;
  std::FILE* file = std::fopen(scratch.path.c_str(), "wb");
  require(file != nullptr && std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size());
  std::fclose(file);

  constexpr std::string_view magic("i\x39\x30\0\0", 5);
  formulesPoids formulas;
  FileSerializer stream(scratch.path, false);
  const bool good = formulas.lire(stream);
  require(!good || bytes.substr(0, magic.size()) == magic);
  for (const std::string* text :
       {&formulas.quatrieme, &formulas.angles, &formulas.gisements, &formulas.distances})
    require(text->size() <= 255);
  require(formulas.nombre() >= 4);
  for (int i = 0; i < formulas.nombre(); ++i) {
    require(formulas.systeme(i) == (i < 4));
    require(formulas.chercher(formulas.nom(i)) == i);
  }
  formulas.compiler();
  formulas.poidsAngle(1.0, 2.0, 3.0, 0.5);
  formulas.poidsGisement(1.0, 0.5);
  formulas.poidsDistance(0.0);
}
