#include "points/exchange/colonnes_liste.h"

#include "base/text.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace veltora {
namespace {

using enum roleColonne;

struct motRole {
  const wchar_t* mot;
  roleColonne role;
};

constexpr motRole kMots[] = {{L"-", kIgnoree},
                             {L"numero", kNumero},
                             {L"x", kX},
                             {L"y", kY},
                             {L"z", kZ},
                             {L"code", kCode},
                             {L"obs", kObservation},
                             {L"table", kTable},
                             {L"courante", kCourante}};

/// Titles without case, accents and units. "n" is decided by its neighbours.
constexpr motRole kTitres[] = {{L"numero", kNumero},
                               {L"num", kNumero},
                               {L"no", kNumero},
                               {L"n", kNumero},
                               {L"nom", kNumero},
                               {L"name", kNumero},
                               {L"point", kNumero},
                               {L"points", kNumero},
                               {L"pt", kNumero},
                               {L"pts", kNumero},
                               {L"id", kNumero},
                               {L"ident", kNumero},
                               {L"identifiant", kNumero},
                               {L"matricule", kNumero},
                               {L"mat", kNumero},
                               {L"station", kNumero},
                               {L"numpt", kNumero},
                               {L"num point", kNumero},
                               {L"numero point", kNumero},
                               {L"n point", kNumero},
                               {L"nom point", kNumero},
                               {L"no point", kNumero},
                               {L"point id", kNumero},
                               {L"numero du point", kNumero},
                               {L"x", kX},
                               {L"e", kX},
                               {L"est", kX},
                               {L"east", kX},
                               {L"easting", kX},
                               {L"abscisse", kX},
                               {L"coord x", kX},
                               {L"y", kY},
                               {L"nord", kY},
                               {L"north", kY},
                               {L"northing", kY},
                               {L"ordonnee", kY},
                               {L"coord y", kY},
                               {L"z", kZ},
                               {L"alt", kZ},
                               {L"altitude", kZ},
                               {L"h", kZ},
                               {L"cote", kZ},
                               {L"elev", kZ},
                               {L"elevation", kZ},
                               {L"height", kZ},
                               {L"alti", kZ},
                               {L"coord z", kZ},
                               {L"code", kCode},
                               {L"codes", kCode},
                               {L"codif", kCode},
                               {L"codification", kCode},
                               {L"nature", kCode},
                               {L"type", kCode},
                               {L"code point", kCode},
                               {L"libelle", kCode},
                               {L"obs", kObservation},
                               {L"observation", kObservation},
                               {L"observations", kObservation},
                               {L"remarque", kObservation},
                               {L"remarques", kObservation},
                               {L"commentaire", kObservation},
                               {L"commentaires", kObservation},
                               {L"note", kObservation},
                               {L"notes", kObservation},
                               {L"description", kObservation},
                               {L"desc", kObservation},
                               {L"designation", kObservation},
                               {L"table", kTable},
                               {L"courante", kCourante}};

/// Words behind X, Y, Z, E, N that name a system or a unit.
constexpr std::wstring_view kSystemes[] = {L"m",     L"l93", L"lambert93", L"rgf93",   L"rgf", L"ngf",
                                           L"ign69", L"utm", L"local",     L"lambert", L"93"};

constexpr std::wstring_view kGeographiques[] = {L"longitude", L"latitude", L"lon", L"lat", L"long", L"lng"};

/// What a letter counts as in a title: itself without accent; a blank for what parts words.
wchar_t lettreTitre(wchar_t lettre) {
  constexpr std::wstring_view kAccents = L"àâäéèêëîïôöùûüç°º";
  constexpr std::wstring_view kSimples = L"aaaeeeeiioouuucoo";
  const wchar_t petite = base::toLower(lettre);
  if (const std::size_t rang = kAccents.find(petite); rang != std::wstring_view::npos) return kSimples[rang];
  constexpr std::wstring_view kBlancs = L"\t_.:#*'\"/\u00A0-";
  return kBlancs.find(petite) == std::wstring_view::npos ? petite : L' ';
}

/// A title as the table writes it: what stands between brackets is a unit.
std::wstring titreNu(std::wstring_view titre) {
  std::wstring nu;
  for (const wchar_t lettre : titre.substr(0, titre.find_first_of(L"([")))
    if (const wchar_t sienne = lettreTitre(lettre); sienne != L' ' || (!nu.empty() && nu.back() != L' '))
      nu += sienne;
  return base::trim(nu, L" ");
}

template <class Table>
bool contient(const Table& table, std::wstring_view mot) {
  return std::find(std::begin(table), std::end(table), mot) != std::end(table);
}

roleColonne chercherTitre(std::wstring_view titre) {
  for (const motRole& m : kTitres)
    if (titre == m.mot) return m.role;
  return kIgnoree;
}

/// The role of a title; behind X, Y, Z, E and N the name of a system may follow ("X L93", "Y CC49").
roleColonne roleDuTitre(const std::wstring& titre) {
  if (const roleColonne role = chercherTitre(titre); role != kIgnoree) return role;
  const std::size_t blanc = std::min(titre.find(L' '), titre.size());
  const std::wstring premier = titre.substr(0, blanc);
  const std::wstring reste = base::trim(titre.substr(blanc), L" ");
  const bool systeme = contient(kSystemes, reste) || reste.starts_with(L"cc");
  const roleColonne role = systeme ? chercherTitre(premier) : kIgnoree;
  return role == kX || role == kY || role == kZ ? role : kIgnoree;
}

}  // namespace

std::wstring nomRole(roleColonne role) {
  const auto trouve =
      std::find_if(std::begin(kMots), std::end(kMots), [role](const motRole& m) { return m.role == role; });
  return trouve->mot;
}

std::wstring texteColonnes(const std::vector<roleColonne>& colonnes) {
  std::wstring texte;
  for (const roleColonne role : colonnes) texte += (texte.empty() ? L"" : L",") + nomRole(role);
  return texte;
}

bool lireColonnes(std::wstring_view texte, std::vector<roleColonne>& colonnes, std::wstring& raison) {
  std::vector<roleColonne> lues;
  const auto echec = [&raison](std::wstring pourquoi) {
    raison = std::move(pourquoi);
    return false;
  };
  for (std::size_t debut = 0; debut <= texte.size();) {
    const std::size_t fin = std::min(texte.find(L',', debut), texte.size());
    const std::wstring mot = base::toLower(base::trim(texte.substr(debut, fin - debut)));
    const auto trouve =
        std::find_if(std::begin(kMots), std::end(kMots), [&mot](const motRole& m) { return mot == m.mot; });
    if (trouve == std::end(kMots))
      return echec(L"colonne inconnue « " + mot +
                   L" » : numero, x, y, z, code, obs, table, courante, ou - pour " +
                   L"une colonne à laisser");
    if (trouve->role != kIgnoree && std::find(lues.begin(), lues.end(), trouve->role) != lues.end())
      return echec(L"la colonne « " + mot + L" » est donnée deux fois");
    lues.push_back(trouve->role);
    debut = fin + 1;
  }
  for (const roleColonne role : {kX, kY})
    if (std::find(lues.begin(), lues.end(), role) == lues.end())
      return echec(L"il manque la colonne « " + nomRole(role) + L" »");
  colonnes = std::move(lues);
  return true;
}

std::wstring texteOptions(const optionsListe& options) {
  std::wstring texte;
  const auto ajouter = [&texte](const std::wstring& option) {
    texte += (texte.empty() ? L"" : L" ") + option;
  };
  const auto nomSeparateur = [](char separateur) {
    return separateur == '\t'  ? std::wstring(L"tabulation")
           : separateur == ' ' ? std::wstring(L"blancs")
                               : std::wstring{L'"', static_cast<wchar_t>(separateur), L'"'};
  };
  if (!options.colonnes.empty()) ajouter(L"--colonnes " + texteColonnes(options.colonnes));
  if (options.separateur) ajouter(L"--separateur " + nomSeparateur(options.separateur));
  if (options.decimale)
    ajouter(std::wstring(L"--decimale \"") + static_cast<wchar_t>(options.decimale) + L'"');
  if (options.codesTexte) ajouter(L"--codes-texte");
  return texte;
}

titresListe lireTitres(const std::vector<std::wstring>& titres) {
  titresListe lus;
  std::vector<std::wstring> nus;
  for (const std::wstring& titre : titres) nus.push_back(titreNu(titre));
  const auto porte = [&nus](roleColonne role) {
    return std::any_of(nus.begin(), nus.end(),
                       [role](const std::wstring& nu) { return roleDuTitre(nu) == role; });
  };
  // "N" is the northing where nothing else is, beside an easting.
  const bool nord = porte(kX) && !porte(kY);
  for (std::size_t i = 0; i < nus.size(); ++i) {
    lus.geographiques = lus.geographiques || contient(kGeographiques, nus[i]);
    roleColonne role = roleDuTitre(nus[i]);
    if (nord && (nus[i] == L"n" || nus[i].starts_with(L"n cc") || nus[i] == L"n l93")) role = kY;
    if (role != kIgnoree && std::find(lus.roles.begin(), lus.roles.end(), role) != lus.roles.end()) {
      lus.repetes.push_back(static_cast<int>(i));
      role = kIgnoree;
    }
    lus.reconnus += role != kIgnoree ? 1 : 0;
    lus.roles.push_back(role);
  }
  return lus;
}

}  // namespace veltora
