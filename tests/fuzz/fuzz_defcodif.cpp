// Reads any bytes as a code file and as the records' text form. What was read is written and read again: the
// same file comes out.
#include "fuzz/fuzz.h"

#include "base/text.h"
#include "codes/flux_texte.h"
#include "codes/table_codification.h"
#include "core/installation.h"
#include "core/xml_champs.h"

using namespace veltora;

namespace {

/// The table of the bytes; without rows when they are no code file.
std::string relire(std::string_view octets) {
  TiXmlDocument lu;
  tableCodification& table = getTableCodification();
  table.viderTable();
  if (analyserXML(lu, octets)) table.lireXML(lu);
  for (const codifPoint& ligne : table.codes) texteAltitude(123.456, ligne.precisionAltitudes);
  TiXmlDocument ecrit;
  table.ecrireXML(ecrit);
  return texteXML(ecrit);
}

}  // namespace

void fuzz(std::string_view bytes) {
  // Nothing is read there and nothing can be written.
  setDossierInstallation("/nonexistent");
  // The first writing settles blanks, characters and decimals; then nothing changes any more.
  const std::string ecrit = relire(relire(bytes));
  if (relire(ecrit) != ecrit) std::abort();

  fluxTexteMemoire flux(base::fromUtf8(bytes));
  codifPoint ligne;
  while (ligne.lireTexte(flux)) {
    if (ligne.code < 1 || ligne.code > 9999 || !(ligne.tailleBlock > 0)) std::abort();
    fluxTexteMemoire sortie;
    ligne.ecrireTexte(sortie);
  }
}
