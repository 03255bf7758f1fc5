#include "arx/ap/acdoc.h"

#include "base/paths.h"
#include "base/text.h"

#include <utility>

ACRX_DEFINE_MEMBERS(AcApDocument, AcRxObject, nullptr, nullptr)

AcApDocument::AcApDocument(std::unique_ptr<AcDbDatabase> database, std::wstring title)
    : m_database(std::move(database)), m_title(std::move(title)) {}

AcApDocument::~AcApDocument() = default;

void AcApDocument::setFileName(const std::wstring& fileName) {
  namespace base = veltora::base;
  m_fileName = fileName;
  m_title = base::texteDuChemin(base::cheminDuTexte(fileName).filename());
}

bool AcApDocument::fileChanged() const {
  const auto state = veltora::base::etatFichier(veltora::base::cheminDuTexte(m_fileName));
  return state.present && m_fileState.present && !(state == m_fileState);
}

std::wstring AcApDocument::claimFile() {
  const std::string told = m_usage.poser(veltora::base::cheminDuTexte(m_fileName));
  m_readOnly = !told.empty() && !m_usage.enVigueur();
  return veltora::base::fromUtf8(told);
}

void AcApDocument::takeClaim(veltora::base::NoteUsage claim) {
  m_usage = std::move(claim);
  m_readOnly = false;
}

void AcApDocument::startUndoMark(const ACHAR* name) { m_database->undoLog().begin(name ? name : L""); }

void AcApDocument::endUndoMark() { m_database->undoLog().end(); }
