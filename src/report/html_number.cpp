#include "report/html_number.h"

#include "base/format.h"

#include <algorithm>

namespace veltora {

std::string texteNombre(double valeur, int decimales) {
  return base::formater("%.*f", std::clamp(decimales, 0, 99), valeur);
}

}  // namespace veltora
