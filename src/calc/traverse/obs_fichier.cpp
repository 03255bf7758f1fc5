#include "calc/traverse/obs_fichier.h"

#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"
#include "calc/angles.h"
#include "calc/obs_jetons.h"
#include "calc/traverse/nivellement.h"

#include <algorithm>
#include <cstddef>

namespace veltora {
namespace {

/// What a line may hold, in bytes.
constexpr std::size_t kLongueurLigne = 1024;

wchar_t initiale(const std::wstring& mot) { return mot.empty() ? L'\0' : base::toUpper(mot.front()); }

/// @return -1 for a letter that names no unit
int uniteDeLettre(wchar_t lettre) {
  switch (lettre) {
    case L'G':
      return 0;
    case L'D':
      return 1;
    case L'R':
      return 2;
    default:
      return -1;
  }
}

/// @return -1 for a letter that names no mode
int nivellementDeLettre(wchar_t lettre) {
  switch (lettre) {
    case L'A':
      return 0;
    case L'S':
      return 1;
    case L'D':
      return 2;
    case L'R':
      return 3;
    default:
      return -1;
  }
}

}  // namespace

std::wstring texteRemarque(const remarqueObs& remarque) {
  const wchar_t* format = L"";
  switch (remarque.genre) {
    case remarqueObs::Genre::ligneIgnoree:
      format = L"ligne %d : ignorée, « %s »";
      break;
    case remarqueObs::Genre::cleIgnoree:
      format = L"ligne %d : clé inconnue « %s », ignorée";
      break;
    case remarqueObs::Genre::uniteInconnue:
      format = L"ligne %d : unité d'angle inconnue « %s », lue comme grades";
      break;
    case remarqueObs::Genre::nivellementInconnu:
      format = L"ligne %d : mode de nivellement inconnu « %s », lu comme aucun";
      break;
    case remarqueObs::Genre::nombreIllisible:
      return base::formater(std::wstring(L"ligne %d : nombre illisible « %s », lu comme %s"), remarque.ligne,
                            remarque.texte.c_str(),
                            base::widen(base::ecrireReel(base::lireReel(remarque.texte))).c_str());
    case remarqueObs::Genre::ligneTropLongue:
      format = L"ligne %d : coupée après 1024 octets, « %s… »";
      break;
  }
  return base::formater(std::wstring(format), remarque.ligne, remarque.texte.c_str());
}

void parcourirLignes(std::string_view octets, const std::function<void(std::string_view)>& recevoir) {
  while (!octets.empty()) {
    const std::size_t fin = std::min(octets.find('\n'), octets.size());
    std::string_view ligne = octets.substr(0, fin);
    if (fin < octets.size() && !ligne.empty() && ligne.back() == '\r') ligne.remove_suffix(1);
    recevoir(ligne);
    octets.remove_prefix(std::min(fin + 1, octets.size()));
  }
}

void lecteurObs::lire(std::string_view octets, donneesObs& donnees) {
  donnees.lignes.clear();
  m_remarques.clear();
  m_ligne = 0;
  parcourirLignes(octets, [&](std::string_view ligne) {
    ++m_ligne;
    const std::wstring texte = base::widen(ligne.substr(0, kLongueurLigne));
    if (ligne.size() > kLongueurLigne && ligne.front() != '*') {
      remarquer(remarqueObs::Genre::ligneTropLongue, std::wstring_view(texte).substr(0, 40));
    }
    lireJetons(decouperLigneObs(texte), texte, donnees);
  });
}

void lecteurObs::lireJetons(const jetonsObs& jetons, std::wstring_view ligne, donneesObs& donnees) {
  switch (jetons.size()) {
    case 0:
      return;
    case 2:
      return lireDeuxJetons(jetons, ligne, donnees);
    case 4:
      donnees.lignes.push_back({jetons[0], jetons[1], jetons[2], jetons[3]});
      for (std::size_t i = 1; i < jetons.size(); ++i)
        nombre(jetons[i]);  // the cells stay text: only to remark
      return;
    case 10:
      return paires(jetons);
    default:
      remarquer(remarqueObs::Genre::ligneIgnoree, ligne);
  }
}

void lecteurObs::lireDeuxJetons(const jetonsObs& jetons, std::wstring_view ligne, donneesObs& donnees) {
  const std::wstring cle = base::toUpper(std::wstring_view(jetons[0]).substr(0, 4));
  if (cle == L"ANGL") {
    const int unite = uniteDeLettre(initiale(jetons[1]));
    if (unite < 0) remarquer(remarqueObs::Genre::uniteInconnue, jetons[1]);
    donnees.modeAngle = std::max(unite, 0);
  } else if (cle == L"NIVE") {
    const int mode = nivellementDeLettre(initiale(jetons[1]));
    if (mode < 0) remarquer(remarqueObs::Genre::nivellementInconnu, jetons[1]);
    donnees.modeNivellement = std::max(mode, 0);
  } else if (!motCle(cle, jetons[1])) {
    remarquer(remarqueObs::Genre::ligneIgnoree, ligne);
  }
}

bool lecteurObs::motCle(const std::wstring& /*cle*/, const std::wstring& /*valeur*/) { return false; }

double lecteurObs::nombre(const std::wstring& jeton) {
  double exact = 0.0;
  if (!base::lireReelExact(base::narrow(jeton), exact)) remarquer(remarqueObs::Genre::nombreIllisible, jeton);
  return base::lireReel(jeton);
}

void lecteurObs::remarquer(remarqueObs::Genre genre, std::wstring_view texte) {
  m_remarques.push_back({m_ligne, genre, std::wstring(texte)});
}

void ecrireLigneFichier(std::string& sortie, std::wstring_view ligne) {
  sortie.append(base::narrow(ligne)).append("\n");
}

void ecrireUniteAngles(std::string& sortie, int modeAngle) {
  ecrireLigneFichier(sortie, L"* Unités angulaires");
  ecrireLigneFichier(sortie, L"* Syntaxe: ");
  ecrireLigneFichier(sortie, L"* Angles : <unité de mesure des angles>");
  ecrireLigneFichier(sortie, L"* Avec <unité de mesure des angles> qui être :");  // sic
  ecrireLigneFichier(sortie, L"* Grades Degres ou Radians");
  ecrireLigneFichier(sortie, L"\n\nAngles: " + std::wstring(uniteDeMode(modeAngle).motCle));
}

void ecrireModeNivellement(std::string& sortie, int modeNivellement) {
  ecrireLigneFichier(sortie, L"* Mode de calcul du nivellement");
  ecrireLigneFichier(sortie, L"* Syntaxe: ");
  ecrireLigneFichier(sortie, L"* Nivellement: <Mode de nivellement>");
  ecrireLigneFichier(sortie, L"* Avec <Mode de nivellement> qui peut être");
  ecrireLigneFichier(sortie, L"* \taucun\tPour aucune compensation sur les alitutudes");  // sic
  ecrireLigneFichier(sortie, L"* \tsimple\tPour une compensation simple");
  ecrireLigneFichier(sortie,
                     L"* \tdistance\tPour une compensation proportionnelle aux distances entre stations");
  ecrireLigneFichier(sortie, L"* \tracine\tPour une compensation proportionnelle aux racines des distances");
  ecrireLigneFichier(sortie, L"\n\nNivellement: " + std::wstring(motDeNivellement(modeNivellement)));
}

void ecrireRangee(std::string& sortie, const ligneObs& ligne) {
  ecrireLigneFichier(
      sortie, L"\n\"" + ligne.nom + L"\"\t" + ligne.angle + L"\t\t" + ligne.distance + L"\t\t" + ligne.dz);
}

}  // namespace veltora
