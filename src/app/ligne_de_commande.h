#pragma once

#include <string>
#include <vector>

namespace veltora::app {

/// What the program was asked to do.
struct Demande {
  enum class Travail {
    kSession,
    kPolygonale,
    kPoints,
    kHelmert,
    kReseau,
    kImporter,
    kExporter,
    kLisp
  } travail = Travail::kSession;

  // A session.
  std::string dessin;
  std::string script;
  std::vector<std::string> commandes;
  std::string sortie;

  // polygonale
  std::string fichierObs;
  std::string rapport;
  int code = 100;
  bool altitudes = false;
  bool tracerBrute = false;
  bool tracerCompensee = false;

  // helmert
  std::string couples;

  // reseau
  std::string fichierReseau;
  std::string journal;

  // points
  bool csv = false;

  // importer, exporter
  std::string listePoints;
  std::string fichierPoints;
  std::string table;
  std::string tri;
  int codePoints = 0;
  std::vector<std::string> sources;
  std::vector<std::string> etiquettes;  ///< number, altitude, code

  // lisp
  std::string fichierLisp;
};

/// Reads the arguments. Help and version are printed on standard output, errors in French on standard error.
/// @return false when the program ends with `statut` without anything to do
bool lireArguments(int argc, char** argv, Demande& demande, int& statut);

}  // namespace veltora::app
