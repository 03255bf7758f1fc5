#include "jobs/dialogue_fichier.h"

#include "base/files.h"
#include "base/paths.h"
#include "calc/traverse/polygonale_lue.h"
#include "jobs/genre_fichier.h"

#include <array>

namespace veltora {
namespace {

struct Travail {
  genreFichier genre;
  const wchar_t* terminaison;
  const wchar_t* commande;
  const wchar_t* ligne;
};

constexpr const wchar_t* kOuverte = L"CORRPOLOUVERTE";
constexpr std::array<Travail, 5> kTravaux = {{
    {genreFichier::obs, L"obs", L"CORRPOLFERMEE", L"[Charger]"},
    {genreFichier::mc, L"mc", L"CORRMCARRES", L"[Données]"},
    {genreFichier::xyz, L"xyz", L"COORDSXYZ", L"[Charger ...]"},
    {genreFichier::gsi, L"gsi", L"IMPORTGSI", L"[Fichier/...]"},
    {genreFichier::gkf, L"gkf", L"COMPENSER", L"[Choisir le réseau]"},
}};

const Travail* travailDe(genreFichier genre, const std::wstring& fin) {
  for (const Travail& travail : kTravaux)
    if (travail.genre == genre) return &travail;
  // What is surely something else is not read under a name that promises otherwise.
  const bool douteux = genre == genreFichier::inconnu || genre == genreFichier::xml;
  for (const Travail& travail : kTravaux)
    if (douteux && fin == travail.terminaison) return &travail;
  return nullptr;
}

bool estOuverte(const std::string& octets) {
  base::Remarques remarques;
  const auto lue = lirePolygonale(octets, remarques);
  return lue && lue->ouverte();
}

}  // namespace

std::optional<dialogueFichier> dialoguePour(const std::filesystem::path& fichier, std::wstring& raison) {
  const std::wstring nom = base::texteDuChemin(fichier);
  const auto octets = base::lireFichier(fichier);
  if (!octets) {
    raison = L"« " + nom + L" » ne peut pas être lu.";
    return std::nullopt;
  }
  const genreFichier genre = reconnaitreGenre(*octets);
  const Travail* const travail = travailDe(genre, base::terminaison(fichier));
  if (!travail) {
    raison = refusDuGenre(nom, *octets, genreFichier::obs);
    if (raison.empty()) raison = L"« " + nom + L" » : aucune boîte ne lit ce fichier.";
    return std::nullopt;
  }
  const bool ouverte = travail->genre == genreFichier::obs && estOuverte(*octets);
  return dialogueFichier{ouverte ? kOuverte : travail->commande, travail->ligne};
}

}  // namespace veltora
