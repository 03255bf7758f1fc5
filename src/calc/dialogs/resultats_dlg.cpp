#include "calc/dialogs/resultats_dlg.h"

#include "base/text.h"
#include "ui/driver.h"

namespace veltora {

resultPolygo::resultPolygo(const htmlDocument& document)
    : Dialog(L"Résultats des calculs"), m_document(document) {}

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
  copie.setFichier(base::toUtf8(choix->path), htmlDocument::word);
  if (choix->path.size() < 3) copie.format = htmlDocument::simple;
  if (copie.ecrire()) ui::messageBox(L"Le fichier " + choix->path + L" a été crée ! ");
}

void montrerRapport(htmlDocument& document) {
  document.ecrire();
  resultPolygo dialogue(document);
  dialogue.nomFichier = base::fromUtf8(document.nomFichier);
  dialogue.doModal();
}

}  // namespace veltora
