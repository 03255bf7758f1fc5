#include "stakeout/saisir_obstacles.h"

#include "arx/db/dbblockref.h"
#include "arx/db/dbcurve.h"
#include "arx/ed/acedads.h"
#include "base/format.h"
#include "base/text.h"
#include "core/picking.h"
#include "stakeout/marques_implantation.h"

#include <memory>
#include <utility>

namespace veltora {
namespace {

struct mesuresObstacles {
  double hauteurLigne = 2.0;
  double hauteurPoint = 2.0;
  double rayon = 2.0;
};

mesuresObstacles& mesures() {
  static mesuresObstacles commun;
  return commun;
}

class saisieObstacles : private Uncopyable {
public:
  explicit saisieObstacles(projetImplantation& projet) : m_projet(projet) {}

  /// One turn of the prompt. @return false when the user leaves it
  bool demander() {
    mesuresObstacles& m = mesures();
    double& hauteur = m_enLigne ? m.hauteurLigne : m.hauteurPoint;
    double lue = hauteur;
    acedInitGet(0, m_enLigne ? L"POnctuel Annuler Redessiner Couleur Quitter"
                             : L"Lignes Annuler Redessiner Couleur Quitter");
    const std::wstring invite =
        base::formater(m_enLigne ? L"\nPOnctuels / Annuler / Redessiner / Couleur / Quitter / Hauteur des "
                                   L"obstacles [ %.3f ]"
                                 : L"\nLignes / Annuler / Redessiner / Couleur / Quitter / Hauteur des "
                                   L"obstacles [ %.3f ]",
                       hauteur);
    const int resultat = acedGetDist(nullptr, invite.c_str(), &lue);
    if (resultat == RTKWORD) return suivre(typedText());
    if (resultat != RTNORM && resultat != RTNONE) return false;
    if (resultat == RTNORM && lue == 0.0) return true;
    hauteur = lue;
    m_enLigne ? choisirLignes() : choisirPoints();
    return true;
  }
  void redessiner() {
    acedRedraw(nullptr, 0);
    for (const obstacleImplantation* obstacle : m_projet.obstacles) obstacle->surligner(m_couleur);
  }

private:
  bool suivre(const std::wstring& mot) {
    constexpr int kDerniereCouleur = 7;
    if (base::equalNoCase(mot, L"Quitter")) return false;
    if (base::equalNoCase(mot, L"POnctuel")) m_enLigne = false;
    if (base::equalNoCase(mot, L"Lignes")) m_enLigne = true;
    if (base::equalNoCase(mot, L"Couleur")) m_couleur = m_couleur % kDerniereCouleur + 1;
    if (base::equalNoCase(mot, L"Couleur") || base::equalNoCase(mot, L"Redessiner")) redessiner();
    if (base::equalNoCase(mot, L"Annuler")) retirer();
    return true;
  }

  void retirer() {
    while (m_projet.obstacles.GetSize() > 0) {
      AcDbObjectId id;
      acedInitGet(0, L"Tous Selection");
      const int resultat =
          pickEntity(L"\nTous/ Selection / element a ne plus considerer comme obstacle:", id);
      std::vector<AcDbObjectId> entites{id};
      if (resultat == RTERROR) continue;
      if (resultat == RTKWORD) entites = base::equalNoCase(typedText(), L"Tous") ? tous() : choix();
      if (resultat != RTKWORD && resultat != RTNORM) break;
      retirer(entites);
    }
  }
  void retirer(const std::vector<AcDbObjectId>& entites) {
    int refuses = 0;
    for (const AcDbObjectId& id : entites) {
      const bool etait = m_projet.obstacleSurObjet(id) != nullptr;
      if (etait && !m_projet.retirerObstacle(id)) ++refuses;
    }
    if (refuses > 0) acutPrintf(L"\nCalque verrouillé : %d obstacle(s) gardé(s).", refuses);
    redessiner();
  }
  [[nodiscard]] std::vector<AcDbObjectId> tous() const {
    std::vector<AcDbObjectId> entites;
    for (const obstacleImplantation* obstacle : m_projet.obstacles) entites.push_back(obstacle->objet);
    return entites;
  }
  static std::vector<AcDbObjectId> choix() {
    std::vector<AcDbObjectId> entites;
    selectEntities(nullptr, acutBuildList(1001, kXDataObstacles, RTNONE), entites);
    return entites;
  }

  /// Asks for entities until the user leaves. @param travail  what is done with each
  template <class Entite, class Travail>
  static void pourChaque(const ACHAR* invite, const wchar_t* refus, Travail travail) {
    AcDbObjectId id;
    AcGePoint3d ou;
    for (Answer reponse = pickEntityOrLeave(invite, id, ou); reponse != Answer::kEnd;
         reponse = pickEntityOrLeave(invite, id, ou)) {
      if (reponse == Answer::kAgain) continue;
      if (AcDbObjectPointer<Entite>(id).openStatus() == Acad::eOk)
        travail(id);
      else
        acedPrompt(refus);
    }
  }

  void choisirLignes() {
    pourChaque<AcDbCurve>(L"\nElement :", L"\nCet élément n'est pas une courbe.",
                          [this](const AcDbObjectId& id) {
                            if (const obstacleImplantation* connu = m_projet.obstacleSurObjet(id))
                              return connu->surligner(m_couleur);
                            auto obstacle = std::make_unique<obstacleLineaireImplantation>();
                            obstacle->objet = id;
                            obstacle->hauteur = mesures().hauteurLigne;
                            ajouter(std::move(obstacle));
                          });
  }

  void choisirPoints() {
    pourChaque<AcDbBlockReference>(L"\nBlock :", L"\nCet élément n'est pas un bloc.",
                                   [this](const AcDbObjectId& id) { choisirBloc(id); });
  }

  void choisirBloc(const AcDbObjectId& id) {
    if (const obstacleImplantation* connu = m_projet.obstacleSurObjet(id)) return connu->surligner(m_couleur);
    const AcGePoint3d insertion = AcDbObjectPointer<AcDbBlockReference>(id)->position();
    const ads_point depuis = {insertion.x, insertion.y, insertion.z};
    AcGeVector3d decalage;
    double& rayon = mesures().rayon;
    for (bool pose = false; !pose;) {
      double lu = rayon;
      acedInitGet(RSG_NOZERO + RSG_NONEG, L"Position");
      const std::wstring invite = base::formater(L"\nPosition / Indiquez la taille [%.2f]: ", rayon);
      const int resultat = acedGetDist(depuis, invite.c_str(), &lu);
      if (resultat != RTNORM && resultat != RTNONE && resultat != RTKWORD) return;
      if (resultat == RTNORM) rayon = lu;
      ads_point lieu = {0.0, 0.0, 0.0};
      if (resultat == RTKWORD && acedGetPoint(depuis, L"\n", lieu) == RTNORM)
        decalage = AcGePoint3d(lieu[0], lieu[1], insertion.z) - insertion;
      pose = resultat != RTKWORD;
    }
    marquer(id, decalage);
    appliquerAuxAutres(id, decalage);
  }

  void appliquerAuxAutres(const AcDbObjectId& modele, const AcGeVector3d& decalage) {
    std::wstring mot;
    acedInitGet(0, L"Oui Non");
    if (acedGetKword(L"\nAppliquer les parametres aux blocs indentiques (Oui / Non) [Non]", mot) != RTNORM ||
        !base::equalNoCase(mot, L"Oui"))
      return;
    std::vector<AcDbObjectId> entites;
    selectEntities(nullptr, acutBuildList(0, L"INSERT", RTNONE), entites);
    for (const AcDbObjectId& id : entites)
      if (id != modele && (!m_projet.obstacleSurObjet(id) || m_projet.retirerObstacle(id)))
        marquer(id, decalage);
  }

  void marquer(const AcDbObjectId& id, const AcGeVector3d& decalage) {
    AcDbObjectPointer<AcDbBlockReference> bloc(id);
    if (bloc.openStatus() != Acad::eOk) return;
    auto obstacle = std::make_unique<obstaclePonctuelImplantation>();
    obstacle->objet = id;
    obstacle->hauteur = mesures().hauteurPoint;
    obstacle->rayon = mesures().rayon;
    obstacle->x = bloc->position().x + decalage.x;
    obstacle->y = bloc->position().y + decalage.y;
    bloc.close();
    ajouter(std::move(obstacle));
  }

  void ajouter(std::unique_ptr<obstacleImplantation> obstacle) {
    if (!obstacle->ecrireMarque()) {
      acutPrintf(L"\nCalque verrouillé : l'élément n'est pas marqué.");
      return;
    }
    obstacle->surligner(m_couleur);
    m_projet.obstacles.Add(obstacle.release());
  }

  projetImplantation& m_projet;
  bool m_enLigne = true;
  int m_couleur = 1;
};

}  // namespace

void saisirObstacles(projetImplantation& projet) {
  saisieObstacles saisie(projet);
  while (saisie.demander()) {
  }
  acedRedraw(nullptr, 0);
}

}  // namespace veltora
