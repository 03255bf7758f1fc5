#include "calc/traverse/obs_fermee.h"

#include "base/format.h"
#include "base/text.h"

namespace veltora {
namespace {

class lecteurFermee : public lecteurObs {
public:
  explicit lecteurFermee(polygonaleFermeeObs& donnees) : m_donnees(donnees) {}

protected:
  void paires(const jetonsObs& jetons) override {
    for (std::size_t i = 0; i + 1 < jetons.size(); i += 2) paire(jetons[i], jetons[i + 1]);
    douterManquantes(jetons);
  }

private:
  void paire(const std::wstring& cle, const std::wstring& valeur) {
    switch (base::toUpper(cle.front())) {
      case L'N':
        m_donnees.nom = valeur;
        break;
      case L'X':
        m_donnees.x = nombre(valeur);
        break;
      case L'Y':
        m_donnees.y = nombre(valeur);
        break;
      case L'Z':
        m_donnees.z = nombre(valeur);
        break;
      case L'G':
        m_donnees.vo = nombre(valeur);
        break;
      default:
        remarquerCle(cle);
    }
  }

  polygonaleFermeeObs& m_donnees;
};

}  // namespace

base::Remarques lireObsFermee(std::string_view octets, polygonaleFermeeObs& donnees) {
  donnees.nom.clear();
  donnees.x = donnees.y = donnees.z = donnees.vo = 0.0;
  lecteurFermee lecteur(donnees);
  lecteur.lire(octets, donnees);
  return lecteur.remarques();
}

std::string ecrireObsFermee(const polygonaleFermeeObs& donnees) {
  std::string sortie;
  ecrireLigneFichier(sortie, L"* Fichier de données pour calcul de polygonale Fermée\n");
  ecrireLigneFichier(sortie, L"* Station de depart");
  ecrireLigneFichier(sortie,
                     base::formater(L"\nNom=\"%s\" X= %.5f Y= %.5f Z= %.5f Gis= %.5f", donnees.nom.c_str(),
                                    donnees.x, donnees.y, donnees.z, donnees.vo));
  ecrireUniteAngles(sortie, donnees.modeAngle);
  ecrireModeNivellement(sortie, donnees.modeNivellement);
  ecrireLigneFichier(sortie, L"* Données de la polygonale");
  ecrireLigneFichier(sortie, L"* Nom Station\t\tAngle\t\tDistance\t\tDz");
  for (const ligneObs& ligne : donnees.lignes) ecrireRangee(sortie, ligne);
  return sortie;
}

}  // namespace veltora
