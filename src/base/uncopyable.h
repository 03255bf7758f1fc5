#pragma once

namespace veltora {

/// Base of the classes that are neither copied nor moved.
class Uncopyable {
public:
  Uncopyable(const Uncopyable&) = delete;
  Uncopyable& operator=(const Uncopyable&) = delete;

protected:
  Uncopyable() = default;
  ~Uncopyable() = default;
};

}  // namespace veltora
