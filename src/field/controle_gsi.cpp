#include "field/controle_gsi.h"

#include "base/format.h"
#include "base/text.h"

#include <algorithm>
#include <bitset>
#include <string>

namespace veltora {
namespace {

/// Horizontal directions that no result shows.
constexpr int kDirectionSansEmploi = 25;

constexpr const wchar_t* kPhrases[] = {
    L"signes moins non lus, ces valeurs comptent comme positives",
    L"mots sexagésimaux (unité 4), faux dès qu'il y a des minutes",
    L"mots en pieds (unité 1), divisés et non multipliés par 0.3048",
    L"mots d'unité 5, laissés dans leur échelle",
    L"mots d'unité 7, convertis comme le mot précédent de leur ligne",
    L"mots d'unité inconnue, lus avec 3 décimales sans conversion",
    L"mots dont l'unité ne va pas : un angle en mètres, une longueur en grades ou en degrés",
    L"mots dont les données ne sont pas un nombre entier",
    L"mots qui se répètent dans leur ligne, seul le dernier compte"};

bool estAngle(int indexMot) { return indexMot == 21 || indexMot == 22; }
bool estBlanc(std::string_view texte) { return texte.find_first_not_of(" \t\r") == std::string_view::npos; }

/// "12 (lignes 3, 5, 9)".
std::wstring texteDe(const rencontresGSI& r) {
  std::vector<std::wstring> numeros;
  for (const int ligne : r.lignes) numeros.push_back(std::to_wstring(ligne));
  return base::formater(L"%d (%s %s)", static_cast<int>(r.nombre), r.lignes.size() > 1 ? L"lignes" : L"ligne",
                        base::enumerer(numeros));
}

}  // namespace

void rencontresGSI::noter(int ligne) {
  ++nombre;
  // One more than is told, so that the telling shows that there are more.
  if (lignes.size() <= base::Remarques::kCitees && (lignes.empty() || lignes.back() != ligne))
    lignes.push_back(ligne);
}

void controleGSI::voir(int numero, std::string_view ligne, const ligneGSI& mots, bool propre) {
  const formeGSI forme(ligne);
  m_mots += mots.size();
  std::bitset<256> vus;
  for (std::size_t i = 0; i < mots.size(); ++i) {
    const motGSI& mot = mots[i];
    if (vus[mot.indexMot] && (mot.genre == motGSI::kNumerique || mot.indexMot == motGSI::kNom))
      m_cas[kRepete].noter(numero);
    vus.set(mot.indexMot);
    voirMot(numero, mot, ligne[forme.debut + i * forme.mot + formeGSI::kSigne]);
  }
  if (!mots.empty()) voirLigne(numero, mots);
  if (!propre) voirArret(numero, ligne, mots.size());
}

void controleGSI::voirMot(int numero, const motGSI& mot, char signe) {
  if (mot.indexMot == kDirectionSansEmploi) return;
  if (signe == '-') m_cas[kSigne].noter(numero);
  if (mot.genre == motGSI::kNumerique) voirNumerique(numero, mot);
}

void controleGSI::voirNumerique(int numero, const motGSI& mot) {
  const char unite = mot.infos[formeGSI::kUnite - formeGSI::kInfos];
  const auto noter = [&](Cas cas, bool vrai) {
    if (vrai) m_cas[cas].noter(numero);
  };
  noter(kSexagesimal, unite == '4');
  noter(kPieds, unite == '1');
  noter(kUnite5, unite == '5');
  noter(kUnite7, unite == '7');
  noter(kUniteInconnue, unite < '0' || unite > '8');
  const bool metrique = unite == '0' || unite == '1' || unite == '6' || unite == '8';
  const bool angulaire = unite >= '2' && unite <= '4';
  noter(kUniteAutre, estAngle(mot.indexMot) ? metrique : angulaire);
  noter(kDonnees, std::string_view(mot.texte).find_first_not_of("0123456789") != std::string_view::npos);
}

void controleGSI::voirLigne(int numero, const ligneGSI& mots) {
  const int premier = mots[0].indexMot;
  const auto sansEmploi = [](const motGSI& mot) {
    return mot.indexMot != motGSI::kNom &&
           (mot.genre != motGSI::kNumerique || mot.indexMot == kDirectionSansEmploi);
  };
  if (premier == motGSI::kNom) {
    ++m_visees;
    for (const motGSI& mot : mots) {
      if (!sansEmploi(mot)) continue;
      ++m_sansEmploi;
      m_indicesSansEmploi.insert(mot.indexMot);
    }
  } else if (premier == motGSI::kBlocCode) {
    ++m_blocsCode;
  } else {
    m_autres.noter(numero);
    m_autresMesures = m_autresMesures || !std::all_of(mots.begin(), mots.end(), sansEmploi);
  }
}

void controleGSI::voirArret(int numero, std::string_view ligne, std::size_t lus) {
  const formeGSI forme(ligne);
  ligne = ligne.substr(0, std::min(ligne.find('\0'), kLigneGsiMax));
  const std::string_view reste = ligne.substr(forme.debut + lus * forme.mot);
  const std::wstring ou = lus == 0 ? std::wstring(L"rien n'y est lu")
                                   : base::formater(L"lue jusqu'au mot %d", static_cast<int>(lus));
  const std::wstring indice = base::widen(reste.substr(0, 2));
  if (estBlanc(reste)) return m_arrets.ajouter(numero, ou + L", des blancs la terminent");
  if (indice.find_first_not_of(L"0123456789") != std::wstring::npos)
    return m_arrets.douter(numero, ou + L", « " + indice + L" » n'est pas un indice de mot");
  if (reste.size() + 1 == forme.mot)
    return m_arrets.douter(
        numero, L"le dernier mot, d'indice " + indice + L", est perdu : il lui manque le blanc qui le ferme");
  m_arrets.douter(numero,
                  base::formater(L"le dernier mot, d'indice %s, est perdu : %d caractères sur %d", indice,
                                 static_cast<int>(reste.size()), static_cast<int>(forme.mot)));
}

void controleGSI::remarquer(base::Remarques& remarques) const {
  remarques.citer(m_arrets, [](int reste) {
    return base::formater(L"… et %d autres lignes où la lecture s'est arrêtée", reste);
  });
  for (std::size_t cas = 0; cas < kNombreCas; ++cas)
    if (m_cas[cas].nombre > 0) remarques.douter(kPhrases[cas] + (L" : " + texteDe(m_cas[cas])));
  if (m_autres.nombre > 0) {
    const std::wstring phrase =
        L"lignes sans effet, elles ne commencent ni par 11 ni par 41 : " + texteDe(m_autres);
    if (m_autresMesures)
      remarques.douter(phrase);
    else
      remarques.ajouter(phrase);
  }
  if (m_blocsCode > 0)
    remarques.ajouter(base::formater(L"blocs de code (41), montrés dans le détail seulement : %d",
                                     static_cast<int>(m_blocsCode)));
  if (m_sansEmploi > 0) {
    std::vector<std::wstring> indices;
    for (const int indice : m_indicesSansEmploi) indices.push_back(std::to_wstring(indice));
    remarques.ajouter(base::formater(L"mots des visées montrés dans le détail seulement (indices %s) : %d",
                                     base::enumerer(indices), static_cast<int>(m_sansEmploi)));
  }
}

}  // namespace veltora
