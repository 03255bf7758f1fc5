#include "app/programme.h"
#include "app/travaux.h"

#include <exception>

int main(int argc, char** argv) {
  using namespace veltora::app;
  Demande demande;
  int statut = kSucces;
  try {
    if (!lireArguments(argc, argv, demande, statut)) return statut;
    switch (demande.travail) {
      case Demande::Travail::kPolygonale:
        return travailPolygonale(demande);
      case Demande::Travail::kHelmert:
        return travailHelmert(demande);
      case Demande::Travail::kReseau:
        return travailReseau(demande);
      case Demande::Travail::kPoints:
        return travailPoints(demande);
      case Demande::Travail::kImporter:
        return travailImporter(demande);
      case Demande::Travail::kExporter:
        return travailExporter(demande);
      case Demande::Travail::kLisp:
        return travailLisp(demande);
      default:
        return travailSession(demande);
    }
  } catch (const std::exception& error) {
    direErreur(std::string("erreur inattendue : ") + error.what());
    return kEchec;
  }
}
