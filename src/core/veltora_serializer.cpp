#include "core/veltora_serializer.h"

namespace veltora {

int VeltoraSerializer::writeBool(bool value) { return writeInt(value ? 1 : 0); }

int VeltoraSerializer::readBool(bool& value) {
  int stored = 0;
  if (!readInt(stored)) return 0;
  value = stored != 0;
  return stored == 0 || stored == 1 ? 1 : 0;
}

}  // namespace veltora
