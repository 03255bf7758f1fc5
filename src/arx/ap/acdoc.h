#pragma once

#include "arx/db/dbmain.h"
#include "arx/ed/edlisp.h"
#include "base/usage_note.h"

#include <memory>
#include <string>

/// An open drawing: its database, its name, its LISP functions. Made and owned by the document manager.
class ARX_API AcApDocument : public AcRxObject {
  ACRX_DECLARE_MEMBERS(AcApDocument)
public:
  explicit AcApDocument(std::unique_ptr<AcDbDatabase> database, std::wstring title);
  ~AcApDocument() override;
  AcApDocument(const AcApDocument&) = delete;
  AcApDocument& operator=(const AcApDocument&) = delete;

  [[nodiscard]] AcDbDatabase* database() const { return m_database.get(); }
  /// Full path, empty for a drawing that was never saved.
  [[nodiscard]] const ACHAR* fileName() const { return m_fileName.c_str(); }
  /// File name without folder, or "Dessin1" and so on.
  [[nodiscard]] const ACHAR* docTitle() const { return m_title.c_str(); }
  [[nodiscard]] bool isNamedDrawing() const { return !m_fileName.empty(); }
  /// Another session has the file open: it is saved under another name only.
  [[nodiscard]] bool isReadOnly() const { return m_readOnly; }
  /// Read from a copy that was kept aside, in place of its file.
  [[nodiscard]] bool isRecovered() const { return m_recovered; }
  void setRecovered() { m_recovered = true; }
  [[nodiscard]] bool isModified() const { return m_database->isModified(); }
  /// The database outlives the document, until the process ends.
  void leaveDatabase() { AcDbDatabase::leaveToProcessEnd(std::move(m_database)); }
  /// Takes a path over; the title follows.
  void setFileName(const std::wstring& fileName);

  /// The file as this document knows it: to be noted before it is read and after it was written.
  void noteFile(const veltora::base::EtatFichier& state) { m_fileState = state; }
  [[nodiscard]] const veltora::base::EtatFichier& fileState() const { return m_fileState; }
  /// True when somebody else wrote the file since; false when it is gone.
  [[nodiscard]] bool fileChanged() const;
  /// Puts the note beside the file that tells other sessions; read-only when another one's stands there.
  /// @return what the user is to know of them, or ""
  std::wstring claimFile();
  /// Takes over a note that stands beside the file already, or none.
  void takeClaim(veltora::base::NoteUsage claim);

  /// Join all changes up to the matching end in one step of U; nested marks join the outer one. An end
  /// without a start does nothing.
  void startUndoMark(const ACHAR* name = L"Groupe");
  void endUndoMark();

  [[nodiscard]] AcEdLispFunctions& lispFunctions() { return m_functions; }

private:
  std::unique_ptr<AcDbDatabase> m_database;
  std::wstring m_fileName;
  std::wstring m_title;
  veltora::base::EtatFichier m_fileState;
  veltora::base::NoteUsage m_usage;
  bool m_readOnly = false;
  bool m_recovered = false;
  AcEdLispFunctions m_functions;
};
