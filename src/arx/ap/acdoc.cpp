#include "arx/ap/acdoc.h"

#include "base/text.h"

ACRX_DEFINE_MEMBERS(AcApDocument, AcRxObject, nullptr, nullptr)

AcApDocument::AcApDocument(std::unique_ptr<AcDbDatabase> database, std::wstring title)
    : m_database(std::move(database)), m_title(std::move(title)) {}

AcApDocument::~AcApDocument() = default;

void AcApDocument::setFileName(const std::wstring& fileName) {
  namespace base = veltora::base;
  m_fileName = fileName;
  m_title = base::fromUtf8(std::filesystem::path(base::toUtf8(fileName)).filename().string());
}

void AcApDocument::startUndoMark(const ACHAR* name) { m_database->undoLog().begin(name ? name : L""); }

void AcApDocument::endUndoMark() { m_database->undoLog().end(); }
