#pragma once

namespace veltora::base {

/// A number from 1 on that is not taken while the one before it is: the first free one where the taken ones
/// follow each other. Asks a few times only, however many are taken.
template <class Taken>
int freeNumber(Taken taken) {
  int free = 1;
  while (taken(free)) free *= 2;
  for (int used = free / 2; free - used > 1;) {
    const int middle = used + (free - used) / 2;
    (taken(middle) ? used : free) = middle;
  }
  return free;
}

}  // namespace veltora::base
