#include "core/config_store.h"

#include "base/files.h"
#include "base/numbers.h"
#include "base/text.h"
#include "core/installation.h"

#include <boost/property_tree/ini_parser.hpp>

#include <charconv>
#include <sstream>

namespace veltora {
namespace pt = boost::property_tree;
namespace {

/// Built each time it is needed; empty without an installation directory.
std::filesystem::path cheminConfig() {
  if (dossierInstallation().empty()) return {};
  return cheminPlateforme(cheminInstallation(L"config.ini"));
}

/// Whole numbers only; the tree's own translator would follow the program's locale.
struct EntierTranslator {
  using internal_type = std::string;
  using external_type = int;
  static boost::optional<int> get_value(const std::string& texte) {
    int valeur = 0;
    const auto [fin, erreur] = std::from_chars(texte.data(), texte.data() + texte.size(), valeur);
    if (erreur != std::errc() || fin != texte.data() + texte.size()) return boost::none;
    return valeur;
  }
};

/// The node of "section.name", split at the first point; null when there is none.
const pt::ptree* chercher(const pt::ptree& arbre, std::string_view cle) {
  const std::size_t point = cle.find('.');
  const auto section = arbre.find(std::string(cle.substr(0, point)));
  if (point == std::string_view::npos) return section == arbre.not_found() ? nullptr : &section->second;
  if (section == arbre.not_found()) return nullptr;
  const auto nom = section->second.find(std::string(cle.substr(point + 1)));
  return nom == section->second.not_found() ? nullptr : &nom->second;
}

template <class T, class Translator>
bool lireNoeud(const pt::ptree& arbre, std::string_view cle, T& valeur, Translator traducteur) {
  const pt::ptree* noeud = chercher(arbre, cle);
  if (!noeud) return false;
  const auto lue = noeud->get_value_optional<T>(traducteur);
  if (lue) valeur = *lue;
  return lue.has_value();
}

/// The child of this name, made when missing.
pt::ptree& enfant(pt::ptree& parent, const std::string& nom) {
  const auto trouve = parent.find(nom);
  if (trouve != parent.not_found()) return trouve->second;
  return parent.push_back({nom, pt::ptree()})->second;
}

}  // namespace

boost::optional<AcGePoint2d> Point2DTranslator::get_value(const std::string& texte) {
  const std::size_t blanc = texte.find(' ');
  if (blanc == std::string::npos) return boost::none;
  AcGePoint2d point;
  const std::string y = base::trim(texte.substr(blanc));
  if (!base::lireReelExact(texte.substr(0, blanc), point.x) || !base::lireReelExact(y, point.y))
    return boost::none;
  return point;
}

boost::optional<std::string> Point2DTranslator::put_value(const AcGePoint2d& point) {
  return base::ecrireReel(point.x) + " " + base::ecrireReel(point.y);
}

ConfigStore& ConfigStore::instance() {
  // Never destroyed: static objects may use it until the very end.
  static ConfigStore& store = *new ConfigStore;
  return store;
}

bool ConfigStore::lire(std::string_view cle, AcGePoint2d& valeur) const {
  return lireNoeud(m_arbre, cle, valeur, Point2DTranslator());
}

bool ConfigStore::lire(std::string_view cle, int& valeur) const {
  return lireNoeud(m_arbre, cle, valeur, EntierTranslator());
}

void ConfigStore::poser(std::string_view cle, const AcGePoint2d& valeur) {
  // Every point has a text form; put_value would throw for one that has none.
  noeudDe(cle).data() = *Point2DTranslator::put_value(valeur);
  m_modifie = true;
}

void ConfigStore::poser(std::string_view cle, int valeur) {
  noeudDe(cle).data() = std::to_string(valeur);
  m_modifie = true;
}

pt::ptree& ConfigStore::noeudDe(std::string_view cle) {
  const std::size_t point = cle.find('.');
  pt::ptree& section = enfant(m_arbre, std::string(cle.substr(0, point)));
  if (point == std::string_view::npos) return section;
  // A key of the top level that bears the section's name would keep the file from being written.
  section.data().clear();
  return enfant(section, std::string(cle.substr(point + 1)));
}

void ConfigStore::sauver() {
  if (!m_modifie) return;
  try {
    std::ostringstream texte;
    pt::write_ini(texte, m_arbre);
    if (const auto chemin = cheminConfig(); !chemin.empty()) base::remplacerFichier(chemin, texte.str());
  } catch (const pt::ini_parser_error&) {
    // A tree that the form cannot hold stays in memory; failing to write is no error.
  }
  m_modifie = false;
}

void ConfigStore::recharger() {
  m_arbre.clear();
  m_modifie = false;
  m_charge = false;
  const auto contenu = base::lireFichier(cheminConfig());
  if (!contenu) return;
  const std::string_view bom = "\xEF\xBB\xBF";
  std::istringstream texte(contenu->starts_with(bom) ? contenu->substr(bom.size()) : *contenu);
  try {
    pt::read_ini(texte, m_arbre);
    m_charge = true;
  } catch (const pt::ini_parser_error&) {
    m_arbre.clear();
  }
}

}  // namespace veltora
