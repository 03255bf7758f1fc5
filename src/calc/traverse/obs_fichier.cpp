#include "calc/traverse/obs_fichier.h"

#include "base/lines/line_reader.h"
#include "base/numbers.h"
#include "base/remarque.h"
#include "base/text.h"
#include "calc/angles.h"
#include "calc/obs_jetons.h"
#include "calc/traverse/nivellement.h"
#include "core/nombre_suspect.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace veltora {
namespace {

/// Words of a row, and of the line of a known station.
constexpr std::size_t kJetonsLigne = 4;

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

void lecteurObs::lire(std::string_view octets, donneesObs& donnees) {
  donnees.lignes.clear();
  m_remarques = {};
  base::LineReader lignes(octets, kLongueurLigneObs);
  while (lignes.next()) {
    m_ligne = lignes.number();
    const std::wstring texte = lignes.wide();
    const auto coupe = lignes.cut();
    if (coupe && !texte.starts_with(L'*')) m_remarques.ajouter(*coupe);
    lireJetons(decouperLigneObs(texte), texte, donnees);
  }
}

void lecteurObs::lireJetons(const jetonsObs& jetons, std::wstring_view ligne, donneesObs& donnees) {
  switch (jetons.size()) {
    case 0:
      return;
    case 2:
      return lireDeuxJetons(jetons, ligne, donnees);
    case kJetonsLigne:
      donnees.lignes.push_back({jetons[0], jetons[1], jetons[2], jetons[3], m_ligne});
      // The cells stay text: only to remark. A sign for "not measured" in place of a height is no doubt.
      for (std::size_t i = 1; i + 1 < jetons.size(); ++i) nombre(jetons[i]);
      if (jetons[3].find_first_of(L"0123456789") != std::wstring::npos)
        nombre(jetons[3]);
      else
        remarquer(L"dénivelée « " + jetons[3] + L" » lue comme 0.0");
      douterMilliers(jetons[2], jetons[3]);
      return;
    case kJetonsStation:
      return paires(jetons);
    default:
      douterIgnoree(jetons, ligne);
  }
}

/// Nothing is taken from the line: told with the numbers that look like the reason.
void lecteurObs::douterIgnoree(const jetonsObs& jetons, std::wstring_view ligne) {
  std::wstring raison;
  for (const std::wstring& jeton : jetons)
    if (raison.empty()) raison = raisonNombre(jeton);
  if (milliersSepares(jetons, kJetonsLigne) ||
      (jetons.size() > kJetonsStation && milliersSepares(jetons, kJetonsStation)))
    raison = kRaisonMilliers;
  if (raison.empty()) return remarquerIgnoree(ligne);
  m_remarques.douter(m_ligne, L"ignorée, « " + std::wstring(ligne) + L" » : " + raison);
}

void lecteurObs::douterManquantes(const jetonsObs& jetons) {
  std::vector<std::wstring> manquantes;
  for (const wchar_t* nom : {L"X", L"Y", L"Z", L"Gis"}) {
    bool donnee = false;
    for (std::size_t i = 0; i < jetons.size(); i += 2) donnee |= base::toUpper(jetons[i].front()) == *nom;
    if (!donnee) manquantes.emplace_back(nom);
  }
  if (manquantes.empty()) return;
  m_remarques.douter(m_ligne, L"la ligne de la station ne donne pas " + base::enumerer(manquantes) +
                                  L" : 0, ou la valeur d'une ligne d'avant, en tient lieu");
}

/// Of a row without height difference whose length takes two words, the second one stands where the height
/// difference does: larger than a length that is its thousands.
void lecteurObs::douterMilliers(const std::wstring& distance, const std::wstring& dz) {
  if (!milliersSepares(distance, dz) || base::lireReel(dz) <= base::lireReel(distance)) return;
  m_remarques.douter(m_ligne, L"distance « " + distance + L" » et dénivelée « " + dz +
                                  L" » : sans doute des " + kRaisonMilliers);
}

void lecteurObs::lireDeuxJetons(const jetonsObs& jetons, std::wstring_view ligne, donneesObs& donnees) {
  const std::wstring cle = base::toUpper(std::wstring_view(jetons[0]).substr(0, 4));
  if (cle == L"ANGL") {
    const int unite = uniteDeLettre(initiale(jetons[1]));
    if (unite < 0) remarquer(L"unité d'angle inconnue « " + jetons[1] + L" », lue comme grades");
    donnees.modeAngle = std::max(unite, 0);
  } else if (cle == L"NIVE") {
    const int mode = nivellementDeLettre(initiale(jetons[1]));
    if (mode < 0) remarquer(L"mode de nivellement inconnu « " + jetons[1] + L" », lu comme aucun");
    donnees.modeNivellement = std::max(mode, 0);
  } else if (!motCle(cle, jetons[1])) {
    remarquerIgnoree(ligne);
  }
}

bool lecteurObs::motCle(const std::wstring& /*cle*/, const std::wstring& /*valeur*/) { return false; }

double lecteurObs::nombre(const std::wstring& jeton) {
  const double lu = base::lireReel(jeton);
  double exact = 0.0;
  if (base::lireReelExact(base::narrow(jeton), exact)) return lu;
  const std::wstring raison = raisonNombre(jeton);
  m_remarques.douter(m_ligne, L"nombre illisible « " + jeton + L" », lu comme " +
                                  base::widen(base::ecrireReel(lu)) +
                                  (raison.empty() ? L"" : L" : " + raison));
  return lu;
}

void lecteurObs::remarquer(std::wstring texte) { m_remarques.ajouter(m_ligne, std::move(texte)); }

void lecteurObs::remarquerIgnoree(std::wstring_view ligne) {
  m_remarques.omettre(m_ligne, L"ignorée, « " + std::wstring(ligne) + L" »");
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

std::wstring nomFichierObs(std::wstring_view choisi, int filtre) {
  // Only the file's own name is put in lower case: where case counts, a folder exists in its own spelling
  // alone.
  const std::size_t barre = choisi.rfind(L'/');
  const std::size_t debut = barre == std::wstring_view::npos ? 0 : barre + 1;
  std::wstring nom = base::toLower(choisi.substr(debut));
  const std::wstring_view fin = filtre == 1 ? L".obs" : filtre == 4 ? L".txt" : L".";
  if (!nom.ends_with(fin)) nom += fin;
  if (nom.find(L'.') == std::wstring::npos) nom += L".obs";
  return std::wstring(choisi.substr(0, debut)) + nom;
}

}  // namespace veltora
