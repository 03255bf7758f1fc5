#include "calc/dialogs/resultats_dlg.h"

#include "arx/ed/acutads.h"
#include "base/paths.h"
#include "base/text.h"
#include "ui/driver.h"

#include <filesystem>
#include <utility>

namespace veltora {
namespace {

/// Takes away a temporary report that is shown no longer, with the empty file that reserved its name.
void retirer(const std::string& rapport) {
  if (rapport.empty()) return;
  std::error_code ignoree;
  std::filesystem::remove(rapport, ignoree);
  std::filesystem::remove(std::filesystem::path(rapport).replace_extension(), ignoree);
}

}  // namespace

resultPolygo::resultPolygo(const htmlDocument& document)
    : Dialog(L"Résultats des calculs"), m_document(document) {}

DlgRapport::DlgRapport(std::wstring nomFichier)
    : Dialog(L"Résultats des calculs"), m_nomFichier(std::move(nomFichier)) {}

void resultPolygo::enregistrer() {
  base::FileRequest demande;
  demande.extension = L"doc";
  demande.filter = L"Fichier Word (.DOC)|*.doc|Fichier HTML(.htm)|*.htm; *.html||";
  demande.save = true;
  demande.confirmOverwrite = true;
  const auto choix = ui::chooseFile(demande);
  if (!choix) return;
  htmlDocument copie = m_document;
  // Deliberate (toujours-word): the Word form whatever the extension, ".htm" included.
  copie.setFichier(base::cheminDuTexte(choix->path).native(), htmlDocument::word);
  if (choix->path.size() < 3) copie.format = htmlDocument::simple;
  std::string raison;
  if (copie.ecrire(&raison))
    ui::messageBox(L"Le fichier " + choix->path + L" a été crée ! ");
  else
    ui::messageBox(base::fromUtf8(raison));
}

void montrerRapport(htmlDocument& document) {
  static std::string precedent;
  std::string raison;
  if (!document.ecrire(&raison)) {
    acutPrintf(L"\n%s", base::fromUtf8(raison));
  } else if (document.fichierTemporaire) {
    retirer(precedent);
    precedent = document.nomFichier;
  }
  resultPolygo dialogue(document);
  dialogue.nomFichier = base::fromUtf8(document.nomFichier);
  dialogue.doModal();
}

}  // namespace veltora
