#include "arx/ap/acdocman.h"

#include "arx/dxf/dxffile.h"
#include "arx/ed/acutads.h"
#include "arx/ed/edports.h"
#include "arx/ed/edselect.h"
#include "arx/ed/edvars.h"
#include "arx/rx/rxdlinkr.h"
#include "base/paths.h"
#include "base/text.h"

#include <algorithm>
#include <exception>

namespace base = veltora::base;
namespace fs = std::filesystem;

ACRX_DEFINE_MEMBERS(AcApDocManagerReactor, AcRxObject, nullptr, nullptr)
ACRX_DEFINE_MEMBERS(AcApDocManager, AcRxObject, nullptr, nullptr)

namespace {

/// The one name of the file that serves a drawing's name: whatever road leads to it, "x.dwg" among them.
std::wstring servingPath(const std::wstring& fileName, bool forWriting) {
  const fs::path serving = dxfServingFile(base::cheminDuTexte(fileName), forWriting);
  return base::texteDuChemin(base::cheminComplet(serving));
}

std::unique_ptr<AcDbDatabase> readDrawing(const std::wstring& fileName, Acad::ErrorStatus& status,
                                          std::wstring* message) {
  auto database = std::make_unique<AcDbDatabase>(false);
  status = database->readDwgFile(fileName.c_str(), message);
  if (status != Acad::eOk) return nullptr;
  database->undoLog().clear();
  database->setModified(false);
  return database;
}

/// Lets the user decide on a file that another session wrote. @return false to leave it
bool mayReplaceForeign(const std::wstring& path) {
  const base::LineSource* const source = acedPorts().source;
  if (!source || !source->interactive()) return false;
  const std::wstring question =
      path + L" a été enregistré par une autre session depuis sa lecture.\nRemplacer ce qu'elle a écrit ?";
  return acedMessageBox(question, L"Enregistrement", AcEdButtons::kYesNo) == AcEdAnswer::kYes;
}

/// A module's trouble with one message must not cost the user the drawing: it is told and passed by.
void guarded(const std::function<void()>& work) {
  try {
    work();
  } catch (const std::exception& error) {
    acutPrintf(L"\nErreur dans un module : %s\n", base::fromUtf8(error.what()));
  }
}

}  // namespace

AcApDocManager::AcApDocManager() {
  acrxDynamicLinker->setListeners([this](const std::wstring& module) { moduleLoaded(module); },
                                  [this](const std::wstring& module) { moduleUnloading(module); });
}

AcApDocManager::~AcApDocManager() = default;

AcApDocumentIterator* AcApDocManager::newAcApDocumentIterator() const {
  std::vector<AcApDocument*> open;
  for (const auto& document : m_documents) open.push_back(document.get());
  return new AcApDocumentIterator(std::move(open));
}

bool AcApDocManager::isModified(AcApDocument* document) const {
  return document->isModified() ||
         std::any_of(m_reactors.begin(), m_reactors.end(), [document](const AcApDocManagerReactor* reactor) {
           return reactor->holdsUnsavedData(document);
         });
}

AcApDocument* AcApDocManager::document(const AcDbDatabase* database) const {
  for (const auto& document : m_documents) {
    if (document->database() == database) return document.get();
  }
  return nullptr;
}

void AcApDocManager::tell(void (AcApDocManagerReactor::*event)(AcApDocument*), AcApDocument* document) {
  // A reactor may take itself or another off the list.
  const std::vector<AcApDocManagerReactor*> listeners = m_reactors;
  for (AcApDocManagerReactor* reactor : listeners) {
    if (std::find(m_reactors.begin(), m_reactors.end(), reactor) == m_reactors.end()) continue;
    guarded([&] { (reactor->*event)(document); });
  }
}

void AcApDocManager::makeCurrent(AcApDocument* document) {
  m_current = document;
  acdbHostApplicationServices()->setWorkingDatabase(document ? document->database() : nullptr);
  acedSetLispFunctions(document ? &document->lispFunctions() : nullptr);
  acedSetDocumentName(document ? document->fileName() : L"", document ? document->docTitle() : L"");
}

/// Works for a moment in a document that need not be the current one, without telling the reactors.
void AcApDocManager::sendInDocument(AcApDocument* document, const std::function<void()>& work) {
  struct Back {
    AcApDocManager& manager;
    AcApDocument* former;
    ~Back() { manager.makeCurrent(former); }
  };
  const Back back{*this, m_current};
  makeCurrent(document);
  guarded(work);
}

void AcApDocManager::moduleLoaded(const std::wstring& module) {
  for (const auto& document : m_documents) {
    sendInDocument(document.get(), [&] { acrxDynamicLinker->send(module.c_str(), AcRx::kLoadDwgMsg); });
  }
}

void AcApDocManager::moduleUnloading(const std::wstring& module) {
  for (const auto& document : m_documents) {
    sendInDocument(document.get(), [&] { acrxDynamicLinker->send(module.c_str(), AcRx::kUnloadDwgMsg); });
    document->lispFunctions().undefineAll(module);
  }
}

std::wstring AcApDocManager::freshTitle() { return L"Dessin" + std::to_wstring(++m_titles); }

AcApDocument* AcApDocManager::adopt(std::unique_ptr<AcApDocument> document) {
  AcApDocument* const adopted = m_documents.emplace_back(std::move(document)).get();
  tell(&AcApDocManagerReactor::documentCreateStarted, adopted);
  tell(&AcApDocManagerReactor::documentCreated, adopted);
  activateDocument(adopted);
  guarded([] { acrxDynamicLinker->broadcast(AcRx::kLoadDwgMsg); });
  return adopted;
}

Acad::ErrorStatus AcApDocManager::appContextNewDocument(const ACHAR* templateName, std::wstring* message) {
  Acad::ErrorStatus status = Acad::eOk;
  std::unique_ptr<AcDbDatabase> database;
  if (templateName && *templateName) {
    database = readDrawing(templateName, status, message);
    if (!database) return status;
  } else {
    database = std::make_unique<AcDbDatabase>(true);
    database->undoLog().clear();
    database->setModified(false);
  }
  adopt(std::make_unique<AcApDocument>(std::move(database), freshTitle()));
  return Acad::eOk;
}

Acad::ErrorStatus AcApDocManager::appContextOpenDocument(const ACHAR* fileName, std::wstring* message) {
  if (!fileName || !*fileName) {
    if (message) *message = L"Aucun nom de fichier.";
    return Acad::eInvalidInput;
  }
  const std::wstring path = servingPath(fileName, false);
  for (const auto& document : m_documents) {
    if (document->fileName() == path) return activateDocument(document.get());
  }
  Acad::ErrorStatus status = Acad::eOk;
  const base::EtatFichier state = base::etatFichier(base::cheminDuTexte(path));
  std::unique_ptr<AcDbDatabase> database = readDrawing(path, status, message);
  if (!database) return status;
  auto document = std::make_unique<AcApDocument>(std::move(database), std::wstring());
  document->setFileName(path);
  document->noteFile(state);
  claim(adopt(std::move(document)));
  return Acad::eOk;
}

Acad::ErrorStatus AcApDocManager::appContextRecoverDocument(const ACHAR* copy, const ACHAR* fileName,
                                                            const base::EtatFichier& state,
                                                            std::wstring* message) {
  const std::wstring path = fileName && *fileName ? servingPath(fileName, false) : std::wstring();
  AcApDocument* former = nullptr;
  for (const auto& document : m_documents)
    if (!path.empty() && document->fileName() == path) former = document.get();
  if (former && isModified(former)) {
    if (message)
      *message = L"« " + path + L" » est ouvert, avec des changements qui ne sont pas enregistrés.";
    return Acad::eFileAccessErr;
  }
  Acad::ErrorStatus status = Acad::eOk;
  std::unique_ptr<AcDbDatabase> database = readDrawing(copy, status, message);
  if (!database) return status;
  if (former) take(former);
  auto document = std::make_unique<AcApDocument>(std::move(database), path.empty() ? freshTitle() : L"");
  document->setRecovered();
  document->noteFile(state);
  if (!path.empty()) document->setFileName(path);
  AcApDocument* const adopted = adopt(std::move(document));
  if (!path.empty()) claim(adopted);
  adopted->database()->setModified(true);
  return Acad::eOk;
}

void AcApDocManager::claim(AcApDocument* document) {
  const std::wstring others = document->claimFile();
  if (others.empty()) return;
  acutPrintf(L"\nAttention, %s.\n", others);
  if (document->isReadOnly())
    acutPrintf(L"Il est ouvert en lecture seule : ses changements s'enregistrent sous un autre nom.\n");
}

Acad::ErrorStatus AcApDocManager::activateDocument(AcApDocument* wanted) {
  if (!wanted || document(wanted->database()) != wanted) return Acad::eInvalidInput;
  if (wanted == m_current) return Acad::eOk;
  if (m_current) tell(&AcApDocManagerReactor::documentToBeDeactivated, m_current);
  tell(&AcApDocManagerReactor::documentToBeActivated, wanted);
  makeCurrent(wanted);
  tell(&AcApDocManagerReactor::documentBecameCurrent, wanted);
  tell(&AcApDocManagerReactor::documentActivated, wanted);
  return Acad::eOk;
}

/// Takes a document off the list, as everybody who is told of it learns; null when it is not open.
std::unique_ptr<AcApDocument> AcApDocManager::take(AcApDocument* closing) {
  const auto at = std::find_if(m_documents.begin(), m_documents.end(),
                               [&](const auto& document) { return document.get() == closing; });
  if (at == m_documents.end()) return nullptr;
  sendInDocument(closing, [] { acrxDynamicLinker->broadcast(AcRx::kUnloadDwgMsg); });
  tell(&AcApDocManagerReactor::documentToBeDestroyed, closing);
  acedForgetDatabase(closing->database());
  const bool wasCurrent = m_current == closing;
  std::unique_ptr<AcApDocument> gone = std::move(*at);
  m_documents.erase(at);
  if (wasCurrent) {
    makeCurrent(nullptr);
    if (!m_documents.empty()) activateDocument(m_documents.back().get());
  }
  const std::wstring name = gone->fileName();
  const std::vector<AcApDocManagerReactor*> listeners = m_reactors;
  for (AcApDocManagerReactor* reactor : listeners) guarded([&] { reactor->documentDestroyed(name.c_str()); });
  return gone;
}

Acad::ErrorStatus AcApDocManager::closeDocument(AcApDocument* document) {
  return take(document) ? Acad::eOk : Acad::eInvalidInput;
}

/// Whether a file may be replaced as far as other sessions go. @param claimed  gets the note of another file
bool AcApDocManager::mayWrite(AcApDocument& saved, const std::wstring& path, base::NoteUsage& claimed,
                              std::wstring* message) const {
  std::wstring others;
  if (saved.fileName() != path) {
    others = base::fromUtf8(claimed.poser(base::cheminDuTexte(path)));
    if (claimed.enVigueur()) return true;
  } else {
    if (saved.isReadOnly()) others = saved.claimFile();  // whoever had it may be gone
    if (!saved.isReadOnly()) others.clear();
  }
  if (!others.empty()) {
    if (message)
      *message =
          L"« " + path + L" » : " + others + L" ; il reste tel quel. Un autre nom garde les deux dessins.";
    return false;
  }
  if (saved.fileName() != path || !saved.fileChanged() || mayReplaceForeign(path)) return true;
  if (message)
    *message =
        L"« " + path +
        L" » a été enregistré par une autre session depuis sa lecture ; il reste tel quel. Un autre nom"
        L" garde les deux dessins.";
  return false;
}

Acad::ErrorStatus AcApDocManager::saveDocument(AcApDocument* saved, const ACHAR* fileName,
                                               std::wstring* message) {
  if (!saved || document(saved->database()) != saved) return Acad::eInvalidInput;
  if (!fileName || !*fileName) {
    if (message) *message = L"Aucun nom de fichier.";
    return Acad::eInvalidInput;
  }
  const std::wstring path = servingPath(fileName, true);
  const bool sameFile = saved->fileName() == path;
  base::NoteUsage claimed;
  if (!mayWrite(*saved, path, claimed, message)) return Acad::eFileAccessErr;
  // What the modules put into the drawing is one step, or part of the command that saves.
  saved->startUndoMark(L"QSAVE");
  sendInDocument(saved, [] { acrxDynamicLinker->broadcast(AcRx::kSaveMsg); });
  saved->endUndoMark();
  const Acad::ErrorStatus status = saved->database()->saveAs(path.c_str(), message);
  if (status != Acad::eOk) return status;
  saved->setFileName(path);
  saved->noteFile(base::etatFichier(base::cheminDuTexte(path)));
  saved->database()->setModified(false);
  if (!sameFile) saved->takeClaim(std::move(claimed));
  if (saved == m_current) makeCurrent(saved);
  tell(&AcApDocManagerReactor::documentTitleUpdated, saved);
  return Acad::eOk;
}

void AcApDocManager::quit() {
  guarded([] { acrxDynamicLinker->broadcast(AcRx::kPreQuitMsg); });
  guarded([] { acrxDynamicLinker->broadcast(AcRx::kQuitMsg); });
  while (!m_documents.empty()) take(m_documents.back().get())->leaveDatabase();
  acrxDynamicLinker->unloadAll();
}

void AcApDocManager::addReactor(AcApDocManagerReactor* reactor) {
  if (reactor && std::find(m_reactors.begin(), m_reactors.end(), reactor) == m_reactors.end())
    m_reactors.push_back(reactor);
}

void AcApDocManager::removeReactor(AcApDocManagerReactor* reactor) { std::erase(m_reactors, reactor); }

AcApDocManager* acDocManagerPtr() {
  // Never destroyed: reactors of modules take themselves off while the program ends.
  static auto* const manager = new AcApDocManager;
  return manager;
}

AcApDocument* curDoc() { return acDocManager->curDocument(); }

namespace {
// Modules may be loaded before anybody asks for the manager, which tells them about documents.
[[maybe_unused]] const bool g_ready = acDocManagerPtr() != nullptr;
}  // namespace
