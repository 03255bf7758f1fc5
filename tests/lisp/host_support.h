#pragma once

#include "arx/ap_support.h"
#include "arx/lisp/host/aclisp.h"

/// A host with an empty drawing, an evaluator, and two commands of its own.
class LispHost : public HostTest {
protected:
  LispHost();
  ~LispHost() override;

  /// As typed at the prompt of a script: printed text and value, or the failure behind "!! ".
  std::string outcome(const std::string& expression);
  /// Lines typed by a person, one after the other, by a session of their own.
  void type(std::initializer_list<const char*> lines);
  /// The same as a script; what stopped it, empty when it ran through.
  std::string script(std::initializer_list<const char*> lines);
  void write(const char* name, const std::string& bytes) const;
};
