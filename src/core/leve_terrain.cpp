#include "core/leve_terrain.h"

#include "base/text.h"

namespace veltora {

std::wstring cleNomLeve(std::wstring_view nom) {
  const std::wstring net = base::toUpper(base::trim(nom));
  const std::size_t debut = net.find_first_not_of(L"0.");
  if (debut != std::wstring::npos) return net.substr(debut);
  return net.empty() ? net : L"0";
}

}  // namespace veltora
