#include "arx/ap/commands_files.h"

#include "arx/ap/acdocman.h"
#include "arx/ap/apsession.h"
#include "arx/dxf/dxffile.h"
#include "arx/ed/acutads.h"
#include "arx/ed/edinput.h"
#include "base/paths.h"
#include "base/text.h"

#include <filesystem>

namespace base = veltora::base;
namespace fs = std::filesystem;

namespace {

/// Asks for a drawing's file by the file chooser, or at the prompt without one. Nothing when the user
/// cancels.
std::optional<std::wstring> askDrawingFile(const wchar_t* title, const std::wstring& proposed, bool save) {
  if (acedPorts().fileChooser) {
    base::FileRequest request;
    request.title = title;
    request.defaultName = proposed;
    request.extension = L"dxf";
    request.filter = L"Dessins (*.dxf;*.dwg)|*.dxf;*.dwg|Tous (*.*)|*.*";
    request.save = save;
    request.confirmOverwrite = save;
    request.serving = [save](const std::wstring& name) {
      return base::texteDuChemin(dxfServingFile(base::cheminDuTexte(name), save));
    };
    const auto answer = acedPorts().fileChooser->chooseFile(request);
    return answer ? std::optional(answer->path) : std::nullopt;
  }
  std::wstring path;
  const int status = acedGetString(1, L"\nNom du fichier : ", path);
  if (status != RTNORM || path.empty()) return std::nullopt;
  if (save && !base::cheminDuTexte(path).has_extension()) path += L".dxf";
  return path;
}

/// What went wrong with a file: told, and the end of a script, whose next lines are meant for another
/// drawing.
void refuseFile(const std::wstring& what, const std::wstring& reason) {
  acedRefuse(what + (reason.empty() ? L"." : L" : " + reason));
}

bool saveUnder(AcApDocument& document, const std::wstring& path) {
  std::wstring message;
  document.database()->undoLog().joinFormer();
  if (acDocManager->saveDocument(&document, path.c_str(), &message) != Acad::eOk) {
    refuseFile(L"Enregistrement impossible", message);
    return false;
  }
  acutPrintf(L"\nDessin enregistré : %s\n", document.fileName());
  return true;
}

bool saveAs(AcApDocument& document) {
  const std::wstring proposed = document.isNamedDrawing() ? document.fileName() : document.docTitle();
  const std::optional<std::wstring> path = askDrawingFile(L"Enregistrer le dessin sous", proposed, true);
  return path && saveUnder(document, *path);
}

/// A drawing that another session has open asks for another name, unless that session has gone by now.
bool save(AcApDocument& document) {
  if (!document.isNamedDrawing()) return saveAs(document);
  const base::LineSource* const source = acedPorts().source;
  if (document.isReadOnly() && source && source->interactive()) {
    const std::wstring others = document.claimFile();
    if (document.isReadOnly()) {
      acutPrintf(L"\n%s est en lecture seule, %s. Donnez un autre nom.\n", document.docTitle(), others);
      return saveAs(document);
    }
  }
  return saveUnder(document, document.fileName());
}

/// Lets the user save what would be lost. @return false when the document is to stay open
bool mayClose(AcApDocument& document) {
  if (!acDocManager->isModified(&document)) return true;
  acDocManager->activateDocument(&document);
  const std::wstring question =
      L"Enregistrer les modifications de " + std::wstring(document.docTitle()) + L" ?";
  const AcEdAnswer answer = acedMessageBox(question, L"Fermeture", AcEdButtons::kYesNoCancel);
  if (answer == AcEdAnswer::kYes) return save(document);
  return answer == AcEdAnswer::kNo;
}

std::vector<AcApDocument*> openDocuments() {
  std::vector<AcApDocument*> open;
  const std::unique_ptr<AcApDocumentIterator> documents(acDocManager->newAcApDocumentIterator());
  for (; !documents->done(); documents->step()) open.push_back(documents->document());
  return open;
}

}  // namespace

namespace arx_commands {

void newDrawing() {
  std::wstring message;
  if (acDocManager->appContextNewDocument(nullptr, &message) != Acad::eOk)
    refuseFile(L"Nouveau dessin impossible", message);
}

void openDrawing() {
  const std::optional<std::wstring> path = askDrawingFile(L"Ouvrir un dessin", L"", false);
  if (!path) return;
  std::wstring message;
  if (acDocManager->appContextOpenDocument(path->c_str(), &message) != Acad::eOk)
    refuseFile(L"Ouverture impossible", message);
  else
    acutPrintf(L"\nDessin ouvert : %s\n", curDoc()->fileName());
}

void saveDrawing() {
  if (curDoc()) save(*curDoc());
}

void saveDrawingAs() {
  if (curDoc()) saveAs(*curDoc());
}

void closeDrawing() {
  AcApDocument* const document = curDoc();
  if (document && mayClose(*document)) acDocManager->closeDocument(document);
  if (!curDoc()) acDocManager->appContextNewDocument();
}

void quit() {
  for (AcApDocument* document : openDocuments()) {
    if (!mayClose(*document)) return;
  }
  if (AcApSession::current()) AcApSession::current()->requestQuit();
}

}  // namespace arx_commands
