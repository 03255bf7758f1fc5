#include "core/installation.h"

#include "base/text.h"

#include <cstdlib>
#include <optional>
#include <system_error>

#include <unistd.h>

namespace veltora {
namespace fs = std::filesystem;
namespace {

struct Installation {
  std::optional<fs::path> dossier;
  std::optional<fs::path> donnees;
  bool aRemplir = false;  ///< receives what it lacks of the shipped data
};

Installation& etat() {
  static Installation installation;
  return installation;
}

std::optional<fs::path> variable(const char* nom) {
  const char* valeur = std::getenv(nom);
  if (!valeur || !*valeur) return std::nullopt;
  return fs::path(valeur);
}

/// share/veltora beside the folder of the running program; empty when the system does not tell where it runs.
fs::path partageDuProgramme() {
  std::error_code erreur;
  const fs::path programme = fs::read_symlink("/proc/self/exe", erreur);
  if (erreur) return {};
  return programme.parent_path().parent_path() / "share" / "veltora";
}

bool estInscriptible(const fs::path& dossier) {
  std::error_code erreur;
  return fs::is_directory(dossier, erreur) && ::access(dossier.c_str(), W_OK | X_OK) == 0;
}

bool creer(const fs::path& dossier) {
  std::error_code erreur;
  fs::create_directories(dossier, erreur);
  return estInscriptible(dossier);
}

fs::path dossierUtilisateur() {
  // A relative XDG_DATA_HOME is to be ignored, as its own rules say.
  if (const auto donnees = variable("XDG_DATA_HOME"); donnees && donnees->is_absolute())
    return *donnees / "veltora";
  if (const auto maison = variable("HOME")) return *maison / ".local" / "share" / "veltora";
  return {};
}

/// Copies a sub-folder beside its place and renames it, so that it is there whole or not at all.
void copierDossier(const fs::path& source, const fs::path& cible) {
  std::error_code erreur;
  const fs::path provisoire = cible.string() + ".tmp" + std::to_string(::getpid());
  fs::copy(source, provisoire, fs::copy_options::recursive, erreur);
  if (!erreur) fs::rename(provisoire, cible, erreur);
  if (erreur) {
    std::error_code ignoree;
    fs::remove_all(provisoire, ignoree);
  }
}

void remplir() {
  const Installation& installation = etat();
  if (!installation.aRemplir || !installation.dossier || installation.dossier->empty()) return;
  const fs::path donnees = installation.donnees ? *installation.donnees : partageDuProgramme();
  std::error_code erreur;
  for (fs::directory_iterator it(donnees, erreur), fin; !erreur && it != fin; it.increment(erreur)) {
    std::error_code ignoree;
    const fs::path cible = *installation.dossier / it->path().filename();
    if (it->is_directory(ignoree) && !fs::exists(cible, ignoree)) copierDossier(it->path(), cible);
  }
}

void trouver() {
  Installation& installation = etat();
  const fs::path partage = partageDuProgramme();
  installation.aRemplir = true;
  if (const auto choisi = variable("VELTORA_INSTALLATION"); choisi && creer(fs::absolute(*choisi))) {
    installation.dossier = fs::absolute(*choisi);
  } else if (!partage.empty() && estInscriptible(partage)) {
    installation.dossier = partage;
    installation.aRemplir = false;
  } else {
    const fs::path utilisateur = dossierUtilisateur();
    if (!utilisateur.empty() && creer(utilisateur)) {
      installation.dossier = utilisateur;
    } else {
      // Nothing can be written: what was shipped is read where it lies.
      std::error_code erreur;
      installation.dossier = fs::is_directory(partage, erreur) ? partage : fs::path();
      installation.aRemplir = false;
    }
  }
}

}  // namespace

fs::path dossierInstallation() {
  if (!etat().dossier) {
    trouver();
    remplir();
  }
  return *etat().dossier;
}

void setDossierInstallation(const fs::path& dossier) {
  etat().aRemplir = false;
  etat().dossier = dossier.empty() ? std::nullopt : std::optional(dossier);
}

void setDossierDonnees(const fs::path& dossier) {
  etat().donnees = dossier;
  remplir();
}

std::wstring cheminInstallation(std::wstring_view fichier, std::wstring_view sousDossier) {
  std::wstring chemin = base::trimRight(base::fromUtf8(dossierInstallation().string()), L"\\/") + L'\\';
  if (!sousDossier.empty()) (chemin += sousDossier) += L'\\';
  return chemin += fichier;
}

std::wstring completerChemin(std::wstring_view chemin) {
  const bool complet = chemin.find(L':') != std::wstring_view::npos || chemin.starts_with(L'/');
  return complet ? std::wstring(chemin) : cheminInstallation(chemin);
}

fs::path cheminPlateforme(std::wstring_view chemin) {
  std::string octets = base::toUtf8(chemin);
  for (char& c : octets) {
    if (c == '\\') c = '/';
  }
  return octets;
}

}  // namespace veltora
