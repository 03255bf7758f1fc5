#pragma once

#include "base/export.h"
#include "core/resbuf_serializer.h"

#include <memory>

class AcDbObject;
class AcDbXrecord;

/// Values kept with an object of the drawing, in a record of its extension dictionary.
namespace veltora {

/// Puts the chain, or an empty record, in place of what stood under the key.
/// @param owner  open for writing, of a drawing; gets an extension dictionary when it has none
/// @return false when the drawing refuses
VELTORA_API bool storeRecord(AcDbObject& owner, const AcString& key, const chaineResbuf& values);
/// The same with a record that is in no drawing yet.
VELTORA_API bool storeRecord(AcDbObject& owner, const AcString& key, std::unique_ptr<AcDbXrecord> record);

/// What stands under the key; the caller owns it. Null for nothing. @param owner  open
VELTORA_API resbuf* storedRecord(const AcDbObject& owner, const AcString& key);

}  // namespace veltora
