#pragma once

#include "base/export.h"

#include <cstdint>
#include <functional>

namespace veltora {

/// A running 32-bit number that identifies objects within one run of the program. It is seeded with the low
/// 32 bits of the clock in seconds at its first use; all bits set means unseeded and is never given.
class VELTORA_API compteurIdentifiants {
public:
  /// The one counter that stake-out objects and field book records share.
  static compteurIdentifiants& commun();

  /// The next identifier, 0 to 0xFFFFFFFE.
  std::uint32_t suivant();
  /// Back to unseeded, with another clock (seconds); an empty one stands for the system's. For tests.
  void reinitialiser(std::function<std::int64_t()> horloge = {});

private:
  static constexpr std::uint32_t kNonInitialise = 0xFFFFFFFFu;
  std::uint32_t m_valeur = kNonInitialise;
  std::function<std::int64_t()> m_horloge;
};

}  // namespace veltora
