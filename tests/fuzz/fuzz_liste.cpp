// Reads any bytes as a list of coordinates of any form, with every answer to what it leaves open.
#include "fuzz/fuzz.h"

#include "points/exchange/lecture_liste.h"
#include "points/exchange/verifier_xyz.h"

#include <cmath>

using namespace veltora;

namespace {

void read(std::string_view bytes, const optionsListe& options) {
  const reperesListe landmarks{rectangleDe({{1000.0, 5000.0}, {1200.0, 5300.0}}), {}};
  const formeListe form = reconnaitreListe(bytes, options, landmarks);
  if (!form.trouvee()) return;
  const listeLue list = lireListe(bytes, form);
  for (const ligneListe& line : list.lignes) {
    require(std::isfinite(line.point.x) && std::isfinite(line.point.y) && std::isfinite(line.point.z));
    require(line.table < static_cast<int>(list.tables.size()));
    require(line.libelle < static_cast<int>(list.libelles.size()));
  }
  require(premieresLignes(bytes, form, 5).size() <= 5);
  if (!options.aucune()) return;
  for (const questionListe& question : form.questions)
    for (const questionListe::reponse& answer : question.reponses) read(bytes, answer.options);
}

}  // namespace

void fuzz(std::string_view bytes) {
  read(bytes, {});
  for (const char separator : {';', ',', '\t', ' '})
    read(bytes, {{}, separator, bytes.size() % 2 ? ',' : '.', true});
  formeXyz(bytes);
  verifierXyz(bytes, {});
}
