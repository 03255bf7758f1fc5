#include "jobs/dresser_planche.h"

#include "base/format.h"
#include "base/text.h"
#include "drafting/sheet/formats_papier.h"
#include "drafting/sheet/planche.h"
#include "jobs/echec.h"
#include "jobs/resultat_points.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace veltora {
namespace {

constexpr double kGrade = std::numbers::pi / 200.0;
constexpr double kJuste = 1e-6;  // drawing units: what reaches no farther out of the frame lies within

demandePlanche planchePour(const demandeDressage& demande) {
  demandePlanche voulue;
  const std::vector<std::string> mots = motsFormats();
  const auto mot = std::find(mots.begin(), mots.end(), base::toUtf8(demande.format));
  voulue.papier = tailleFormat(static_cast<int>(mot - mots.begin()));
  voulue.echelle = demande.echelle / 1000.0;
  voulue.margePapier = demande.marge;
  voulue.positionCartouche = demande.emplacement;
  voulue.modeCarroyage = static_cast<demandePlanche::Carroyage>(demande.carroyage);
  voulue.espacementX = voulue.espacementY = demande.pas;
  voulue.tailleCroisillons = demande.croix;
  voulue.hauteurTexte = demande.texte;
  voulue.decimales = demande.decimales;
  for (const auto& [etiquette, texte] : demande.attributs) voulue.attributs.push_back({etiquette, texte});
  return voulue;
}

/// The file as given, else in the folder of title blocks.
bool ouvrirCartouche(const std::wstring& nom, fichierCartouche& cartouche, resultatDressage& resultat) {
  if (nom.empty()) return true;
  const AcDbHostApplicationServices& services = *acdbHostApplicationServices();
  std::wstring chemin = services.findFile(nom);
  for (const wchar_t* suite : {L"", L".dwg"})
    if (chemin.empty()) chemin = services.findFile(dossierCartouches() + L"/" + nom + suite);
  if (chemin.empty()) return echec(resultat, L"cartouche « " + nom + L" » introuvable");
  std::wstring raison;
  return lireCartouche(chemin, cartouche, raison) || echec(resultat, L"cartouche illisible : " + raison);
}

/// How far a box reaches out of the frame, on the side where it does so most.
double debord(const planche& feuille, const AcGePoint3d& bas, const AcGePoint3d& haut) {
  const AcGePoint2d* cadre = feuille.cadre();
  const AcGeVector2d cotes[] = {cadre[kBasDroite] - cadre[kBasGauche],
                                cadre[kHautGauche] - cadre[kBasGauche]};
  double plus = 0.0;
  for (const AcGeVector2d& cote : cotes) {
    const double longueur = cote.length();
    for (const AcGePoint2d& coin :
         {AcGePoint2d(bas.x, bas.y), {haut.x, bas.y}, {bas.x, haut.y}, {haut.x, haut.y}}) {
      const double place = (coin - cadre[kBasGauche]).dotProduct(cote) / longueur;
      plus = std::max({plus, -place, place - longueur});
    }
  }
  return plus;
}

void controler(const planche& feuille, const demandePlanche& voulue, resultatDressage& resultat) {
  const ampleurCarroyage ampleur = feuille.ampleur();
  if (ampleur.demesuree()) resultat.remarques.douter(texteDemesure(ampleur));
  if (voulue.modeCarroyage != demandePlanche::kSansCarroyage && !feuille.region())
    resultat.remarques.douter(L"les marges et le cartouche ne laissent pas de place au carroyage");
}

bool dessiner(const planche& feuille, const demandePlanche& voulue, const fichierCartouche& cartouche,
              resultatDressage& resultat) {
  const planche::resultat fait = feuille.dessiner();
  resultat.croix = fait.carroyage.croix;
  if (!fait.cartoucheInsere) return echec(resultat, L"Failed to load block " + cartouche.chemin);
  if (fait.attributs < static_cast<int>(voulue.attributs.size()))
    resultat.remarques.ajouter(L"des attributs donnés ne sont pas du cartouche");
  return !fait.carroyage.interrompu || echec(resultat, kInterrompu);
}

}  // namespace

std::vector<std::string> motsFormats() {
  std::vector<std::string> mots;
  for (int rang = 0; rang < kNombreFormats; ++rang) mots.push_back(base::toUtf8(motFormat(rang)));
  return mots;
}

bool dresserPlanche(const demandeDressage& demande, resultatDressage& resultat) {
  resultat = {};
  AcDbDatabase* const dessin = acdbHostApplicationServices()->workingDatabase();
  if (!dessin) return echec(resultat, kSansProjet);
  retablirFormats();
  const demandePlanche voulue = planchePour(demande);
  if (!(std::min(voulue.papier.x, voulue.papier.y) - 2.0 * voulue.margePapier > 0.0))
    return echec(resultat, L"la marge ne laisse rien du papier");
  fichierCartouche cartouche;
  if (!ouvrirCartouche(demande.cartouche, cartouche, resultat)) return false;
  dessin->updateExt();
  const AcGePoint3d bas = dessin->extmin();
  const AcGePoint3d haut = dessin->extmax();
  const bool vide = AcDbObjectPointer<AcDbBlockTableRecord>(dessin->modelSpaceId())->entities().empty();
  if (vide && !demande.point)
    return echec(resultat, L"le dessin est vide : rien sur quoi centrer la planche ; donnez --point");
  const AcGePoint2d point = demande.point ? AcGePoint2d(demande.point->first, demande.point->second)
                                          : AcGePoint2d((bas.x + haut.x) / 2.0, (bas.y + haut.y) / 2.0);
  const planche feuille(voulue, cartouche, point, !demande.point, demande.orientation * kGrade);
  resultat.x = feuille.origine().x;
  resultat.y = feuille.origine().y;
  if (const double reste = debord(feuille, bas, haut); !vide && reste > kJuste)
    resultat.remarques.ajouter(base::formater(L"le plan dépasse du cadre de %.2f", reste));
  controler(feuille, voulue, resultat);
  resultat.retenu = resultat.remarques.douteuses() && !demande.malgreDoutes;
  return resultat.retenu || dessiner(feuille, voulue, cartouche, resultat);
}

}  // namespace veltora
