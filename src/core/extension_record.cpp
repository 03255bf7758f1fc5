#include "core/extension_record.h"

#include "arx/db/dbdict.h"
#include "arx/db/dbmain.h"

#include <memory>

namespace veltora {

bool storeRecord(AcDbObject& owner, const AcString& key, const chaineResbuf& values) {
  auto record = std::make_unique<AcDbXrecord>();
  const bool held = !values.tete || record->setFromRbChain(*values.tete, owner.database()) == Acad::eOk;
  return held && storeRecord(owner, key, std::move(record));
}

bool storeRecord(AcDbObject& owner, const AcString& key, std::unique_ptr<AcDbXrecord> record) {
  owner.createExtensionDictionary();  // an existing one is no error
  const AcDbObjectPointer<AcDbDictionary> dictionary(owner.extensionDictionary(), AcDb::kForWrite);
  if (dictionary.openStatus() != Acad::eOk) return false;
  record->setXlateReferences(true);
  AcDbObjectId id;
  if (dictionary->setAt(key.c_str(), record.get(), id) != Acad::eOk) return false;
  record.release()->close();
  return true;
}

resbuf* storedRecord(const AcDbObject& owner, const AcString& key) {
  const AcDbObjectPointer<AcDbDictionary> dictionary(owner.extensionDictionary());
  if (dictionary.openStatus() != Acad::eOk) return nullptr;
  AcDbXrecord* record = nullptr;
  if (dictionary->getAt(key.c_str(), record) != Acad::eOk) return nullptr;
  resbuf* values = nullptr;
  record->rbChain(&values, owner.database());
  record->close();
  return values;
}

}  // namespace veltora
