// Reads any bytes as a formula file; what was read is compiled, evaluated and listed.
#include "base/files.h"
#include "calc/network/formules_poids.h"
#include "core/file_serializer.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include <unistd.h>

using namespace veltora;

namespace {

void require(bool good) {
  if (!good) std::abort();
}

/// One file a run of the program.
struct Scratch {
  std::string path = base::creerFichierTemporaire(base::dossierTemporaire(), "FMC").string();
  ~Scratch() { unlink(path.c_str()); }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const Scratch scratch;
  std::FILE* file = std::fopen(scratch.path.c_str(), "wb");
  require(file != nullptr && std::fwrite(data, 1, size, file) == size);
  std::fclose(file);

  constexpr std::string_view magic("i\x39\x30\0\0", 5);
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
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
  return 0;
}
