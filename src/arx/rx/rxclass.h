#pragma once

#include "arx/adesk.h"

#include <string_view>

class AcRxObject;

/// Descriptor of a class of the host: its name, its name in drawing files, its parent, and how to make an
/// object. Descriptors are made at first use of `desc()` and live until the program ends.
class ARX_API AcRxClass {
public:
  using Factory = AcRxObject* (*)();

  /// Registers itself under both names, so that readers find it; `factory` is null for an abstract class.
  AcRxClass(const ACHAR* name, const char* dxfName, AcRxClass* parent, Factory factory);

  [[nodiscard]] const ACHAR* name() const { return m_name; }
  /// Name in drawing files ("INSERT"), or null for a class that is never written under its own name.
  [[nodiscard]] const char* dxfName() const { return m_dxfName; }
  [[nodiscard]] AcRxClass* myParent() const { return m_parent; }
  [[nodiscard]] bool isDerivedFrom(const AcRxClass* other) const;
  /// A class registered so far (one whose `desc()` was called), by its name or by its name in drawing files;
  /// null when there is none.
  static AcRxClass* findByName(std::wstring_view name);
  static AcRxClass* findByDxfName(std::string_view dxfName);
  /// A new object owned by the caller, null for an abstract class.
  [[nodiscard]] AcRxObject* create() const { return m_factory ? m_factory() : nullptr; }

private:
  const ACHAR* m_name;
  const char* m_dxfName;
  AcRxClass* m_parent;
  Factory m_factory;
};

/// Root of the host's class tree.
class ARX_API AcRxObject {
public:
  virtual ~AcRxObject() = default;
  [[nodiscard]] virtual AcRxClass* isA() const { return desc(); }
  static AcRxClass* desc();
  [[nodiscard]] bool isKindOf(const AcRxClass* other) const { return isA()->isDerivedFrom(other); }

protected:
  AcRxObject() = default;
  AcRxObject(const AcRxObject&) = default;
  AcRxObject& operator=(const AcRxObject&) = default;
};

/// In the class: declares `isA`, `desc` and `cast`.
#define ACRX_DECLARE_MEMBERS(CLASS)                                                                          \
public:                                                                                                      \
  [[nodiscard]] AcRxClass* isA() const override;                                                             \
  static AcRxClass* desc();                                                                                  \
  static CLASS* cast(const AcRxObject* object) {                                                             \
    return object && object->isKindOf(CLASS::desc()) ? const_cast<CLASS*>(static_cast<const CLASS*>(object)) \
                                                     : nullptr;                                              \
  }

/// In the source: defines them; FACTORY is null or a function that makes an object.
#define ACRX_DEFINE_MEMBERS(CLASS, PARENT, DXFNAME, FACTORY)                                          \
  AcRxClass* CLASS::isA() const { return CLASS::desc(); }                                             \
  AcRxClass* CLASS::desc() {                                                                          \
    static AcRxClass* const descriptor = new AcRxClass(L"" #CLASS, DXFNAME, PARENT::desc(), FACTORY); \
    return descriptor;                                                                                \
  }
