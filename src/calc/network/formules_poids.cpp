#include "calc/network/formules_poids.h"

#include "base/text.h"
#include "calc/angles.h"
#include "core/veltora_serializer.h"

namespace veltora {
namespace {

constexpr int kMagie = 12345;
constexpr double kNonDefinie = -999.0;
constexpr int kSysteme = 1;

bool lireTexte(VeltoraSerializer& fichier, std::string& texte) {
  CString large;
  if (!fichier.readString(large)) return false;
  texte = base::narrow(large);
  return true;
}

}  // namespace

formulesPoids::formulesPoids() { reinitialiserVariables(); }

void formulesPoids::reinitialiser() {
  angles = gisements = distances = "1.0";
  quatrieme.clear();
  reinitialiserVariables();
}

void formulesPoids::reinitialiserVariables() {
  vider();
  definir("Ang", kNonDefinie, base::narrow(L"Angle mesuré en grades"), kSysteme);
  definir("d1", kNonDefinie, base::narrow(L"Distance station - Point visé"), kSysteme);
  definir("d2", kNonDefinie, base::narrow(L"Distance station - Référence"), kSysteme);
  definir("d3", kNonDefinie, base::narrow(L"Distance Point visé - Référence"), kSysteme);
}

void formulesPoids::compiler() {
  m_angles.analyser(angles);
  m_gisements.analyser(gisements);
  m_distances.analyser(distances);
  m_quatrieme.analyser(quatrieme);
}

double formulesPoids::poidsAngle(double d1, double d2, double d3, double angleRadians) {
  definir("ang", angleRadians * 200.0 / kPi);
  definir("d1", d1);
  definir("d2", d2);
  definir("d3", d3);
  // Deliberate (poids-gisements): both kinds of angle go through the bearings formula; the angles text only
  // serves the trial in the dialog.
  return m_gisements.evaluer(*this, true);
}

double formulesPoids::poidsGisement(double d1, double angleRadians) {
  definir("ang", angleRadians * 200.0 / kPi);
  definir("d1", d1);
  return m_gisements.evaluer(*this, true);
}

double formulesPoids::poidsDistance(double d1) {
  definir("d1", d1);
  return m_distances.evaluer(*this, true);
}

bool formulesPoids::lire(VeltoraSerializer& fichier) {
  int magie = 0;
  if (!fichier.readInt(magie)) return false;
  // The distances stand twice; the second reading replaces the first.
  for (std::string* texte : {&quatrieme, &angles, &gisements, &distances, &distances}) {
    if (!lireTexte(fichier, *texte)) return false;
  }
  int nombreVariables = 0;
  if (!fichier.readInt(nombreVariables)) return false;
  for (int i = 0; i < nombreVariables; ++i) {
    std::string nomVariable;
    std::string commentaireVariable;
    double valeurVariable = 0.0;
    if (!lireTexte(fichier, nomVariable) || !fichier.readDouble(valeurVariable) ||
        !lireTexte(fichier, commentaireVariable)) {
      return false;
    }
    definir(nomVariable, valeurVariable, commentaireVariable, 0);
  }
  return magie == kMagie;
}

}  // namespace veltora
