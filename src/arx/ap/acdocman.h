#pragma once

#include "arx/ap/acdoc.h"
#include "arx/rx/rxclass.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

/// Is told what happens to documents; a module derives from it and overrides what it needs.
class ARX_API AcApDocManagerReactor : public AcRxObject {
  ACRX_DECLARE_MEMBERS(AcApDocManagerReactor)
public:
  virtual void documentCreateStarted(AcApDocument*) {}
  /// Database and names are set; modules have not had `kLoadDwgMsg` yet.
  virtual void documentCreated(AcApDocument*) {}
  /// Still whole; modules have had `kUnloadDwgMsg`.
  virtual void documentToBeDestroyed(AcApDocument*) {}
  virtual void documentDestroyed(const ACHAR* /*fileName*/) {}
  virtual void documentCreateCanceled(AcApDocument*) {}
  virtual void documentToBeActivated(AcApDocument*) {}
  virtual void documentActivated(AcApDocument*) {}
  virtual void documentToBeDeactivated(AcApDocument*) {}
  virtual void documentBecameCurrent(AcApDocument*) {}
  /// Also after each save.
  virtual void documentTitleUpdated(AcApDocument*) {}
  /// Whether a module keeps data of the document that would be lost with it: the next save puts them in the
  /// file.
  [[nodiscard]] virtual bool holdsUnsavedData(AcApDocument*) const { return false; }
};

/// Walk over the open documents, in order of opening.
class ARX_API AcApDocumentIterator {
public:
  explicit AcApDocumentIterator(std::vector<AcApDocument*> documents) : m_documents(std::move(documents)) {}
  [[nodiscard]] bool done() const { return m_at >= m_documents.size(); }
  void step() { ++m_at; }
  [[nodiscard]] AcApDocument* document() const { return done() ? nullptr : m_documents[m_at]; }

private:
  std::vector<AcApDocument*> m_documents;
  std::size_t m_at = 0;
};

/// All open documents. One of them is current: its database is the working database and its LISP functions
/// are those that are called.
class ARX_API AcApDocManager : public AcRxObject {
  ACRX_DECLARE_MEMBERS(AcApDocManager)
public:
  AcApDocManager();
  ~AcApDocManager() override;
  AcApDocManager(const AcApDocManager&) = delete;
  AcApDocManager& operator=(const AcApDocManager&) = delete;

  /// Null while none is open.
  [[nodiscard]] AcApDocument* curDocument() const { return m_current; }
  [[nodiscard]] AcApDocument* mdiActiveDocument() const { return m_current; }
  [[nodiscard]] int documentCount() const { return static_cast<int>(m_documents.size()); }
  /// The caller deletes the iterator.
  [[nodiscard]] AcApDocumentIterator* newAcApDocumentIterator() const;
  [[nodiscard]] AcApDocument* document(const AcDbDatabase* database) const;
  /// True when closing the document would lose something: of the drawing or of a module.
  [[nodiscard]] bool isModified(AcApDocument* document) const;

  /// Makes an empty drawing and activates it. @param templateName a drawing to start from, null or "" for
  /// none
  /// @param message why it failed, in French
  Acad::ErrorStatus appContextNewDocument(const ACHAR* templateName = nullptr,
                                          std::wstring* message = nullptr);
  /// Opens a drawing and activates it; one that is open already is only activated. On failure all stays as it
  /// was.
  Acad::ErrorStatus appContextOpenDocument(const ACHAR* fileName, std::wstring* message = nullptr);
  /// Opens a copy that was kept aside in place of a drawing's file, as changes of it that are not saved.
  /// @param fileName  the drawing, whose own document is closed when it has no changes, and the copy refused
  ///                  when it has; "" for one that was never saved  @param state  of that file at the copy
  Acad::ErrorStatus appContextRecoverDocument(const ACHAR* copy, const ACHAR* fileName,
                                              const veltora::base::EtatFichier& state,
                                              std::wstring* message = nullptr);
  /// `eInvalidInput` for a document that is not open.
  Acad::ErrorStatus activateDocument(AcApDocument* document);
  Acad::ErrorStatus setCurDocument(AcApDocument* document) { return activateDocument(document); }
  /// Closes without saving. The document opened before it becomes current; none when it was the last.
  Acad::ErrorStatus closeDocument(AcApDocument* document);
  /// Sends `kSaveMsg` to the modules with the document current, then writes it and takes the name over. The
  /// former document is current again afterwards. A file that another session has open is left to it. One
  /// that somebody else wrote since it was read is replaced only when the user at an interactive source
  /// agrees; else the save fails.
  Acad::ErrorStatus saveDocument(AcApDocument* document, const ACHAR* fileName,
                                 std::wstring* message = nullptr);
  /// Sends `kPreQuitMsg` and `kQuitMsg`, closes all documents and unloads all modules. For the end of the
  /// process: the memory of the drawings stays taken until then.
  void quit();

  /// Not owned; a reactor that is added twice is told once.
  void addReactor(AcApDocManagerReactor* reactor);
  void removeReactor(AcApDocManagerReactor* reactor);

private:
  std::unique_ptr<AcApDocument> take(AcApDocument* document);
  AcApDocument* adopt(std::unique_ptr<AcApDocument> document);
  void makeCurrent(AcApDocument* document);
  void tell(void (AcApDocManagerReactor::*event)(AcApDocument*), AcApDocument* document);
  void claim(AcApDocument* document);
  bool mayWrite(AcApDocument& document, const std::wstring& path, veltora::base::NoteUsage& claimed,
                std::wstring* message) const;
  void moduleLoaded(const std::wstring& module);
  void moduleUnloading(const std::wstring& module);
  void sendInDocument(AcApDocument* document, const std::function<void()>& work);
  std::wstring freshTitle();

  std::vector<std::unique_ptr<AcApDocument>> m_documents;
  AcApDocument* m_current = nullptr;
  std::vector<AcApDocManagerReactor*> m_reactors;
  int m_titles = 0;
};

ARX_API AcApDocManager* acDocManagerPtr();
#define acDocManager acDocManagerPtr()
/// The current document, null for none.
ARX_API AcApDocument* curDoc();
