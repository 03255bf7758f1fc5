#include "core/empreinte_serializer.h"

#include <bit>
#include <cstdint>
#include <functional>

namespace veltora {

int EmpreinteSerializer::writeAcString(const AcString& text) {
  meler(text.size());
  return meler(std::hash<std::wstring_view>()(text));
}

int EmpreinteSerializer::writeObjectId(const AcDbObjectId& id) {
  return meler(std::bit_cast<std::uintptr_t>(id.stub()));
}

int EmpreinteSerializer::writeDouble(const double& value) {
  return meler(std::bit_cast<std::uint64_t>(value));
}

int EmpreinteSerializer::writeBytes(const void* bytes, int length) {
  if (length < 0) return 0;
  meler(length);
  const auto size = static_cast<std::size_t>(length);
  return meler(std::hash<std::string_view>()({static_cast<const char*>(bytes), size}));
}

}  // namespace veltora
