// Reads any bytes as a traverse file, writes and reads them again, and computes with what was read.
#include "fuzz/fuzz.h"

#include "calc/traverse/obs_fermee.h"
#include "calc/traverse/polygonale_fermee.h"
#include "report/html_document.h"

using namespace veltora;

void fuzz(std::string_view bytes) {
  polygonaleFermeeObs obs;
  for (const base::Remarque& remarque : lireObsFermee(bytes, obs)) {
    require(!remarque.texte.empty());
  }
  // What was read can be written and read again.
  polygonaleFermeeObs relues;
  lireObsFermee(ecrireObsFermee(obs), relues);

  lignesPolygonale lignes = lireLignes(obs.lignes);
  base::CArray<double> X, Y, Z;
  htmlDocument rapport;
  const int retour = calculerPolygonaleFermee(obs.nom, obs.x, obs.y, obs.z, obs.vo, obs.modeNivellement,
                                              obs.modeAngle, lignes, X, Y, Z, &rapport, false, false);
  if ((retour != 0) != (lignes.size() >= 2)) std::abort();
  if (retour && (X.size() != lignes.size() || Y.size() != X.size() || Z.size() != X.size())) std::abort();
  verifierPolygonaleFermee(obs.nom, obs.x, obs.y, obs.z, obs.vo, lignes, obs.modeAngle,
                           [](const std::wstring&, const std::wstring&) {});
}
