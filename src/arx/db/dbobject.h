#pragma once

#include "arx/db/dbfiler.h"
#include "arx/db/dbid.h"
#include "arx/db/dbpooled.h"
#include "arx/db/resbuf.h"
#include "arx/gi/gidrawable.h"

#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

class AcDbUndoLog;
class AcGeMatrix3d;

/// Root of everything that lives in a drawing.
///
/// An object is owned by its database once it was added; until then by its maker. It is opened with a mode
/// through `acdbOpenObject` or the scoped pointer classes and closed again; setters refuse with
/// `eNotOpenForWrite` when a resident object is not open for writing (but while a file is read, with undo
/// recording off, the mode is not asked). The first change in an undo step keeps a snapshot.
class ARX_API AcDbObject : public AcGiDrawable, public AcDbPooled {
  ACRX_DECLARE_MEMBERS(AcDbObject)
public:
  ~AcDbObject() override;

  [[nodiscard]] AcDbObjectId objectId() const { return AcDbObjectId(m_stub); }
  [[nodiscard]] AcDbObjectId id() const override { return objectId(); }
  [[nodiscard]] AcDbHandle handle() const { return objectId().handle(); }
  [[nodiscard]] AcDbDatabase* database() const { return objectId().database(); }
  [[nodiscard]] AcDbObjectId ownerId() const { return m_owner; }
  Acad::ErrorStatus setOwnerId(AcDbObjectId owner);

  [[nodiscard]] bool isErased() const { return m_stub && m_stub->erased; }
  [[nodiscard]] bool isReadEnabled() const { return !m_stub || m_stub->readers > 0 || m_stub->writer; }
  [[nodiscard]] bool isWriteEnabled() const { return !m_stub || m_stub->writer; }
  /// To be called by every setter before it changes anything: checks the mode and keeps the undo snapshot.
  Acad::ErrorStatus assertWriteEnabled();

  Acad::ErrorStatus upgradeOpen();
  Acad::ErrorStatus downgradeOpen();
  Acad::ErrorStatus close();
  /// Sets or clears the erased state; sub-entities follow. `eWasErased` when it is erased already,
  /// `eNotApplicable` when an object to be restored is not erased, `eNotInDatabase` for one without a
  /// drawing. Erasing takes along the extension dictionary, the entries of a dictionary and the entities of a
  /// block.
  virtual Acad::ErrorStatus erase(bool erasing = true);

  /// Null id when there is none.
  [[nodiscard]] AcDbObjectId extensionDictionary() const;
  /// `eAlreadyInDb` when there is one; needs a resident object open for writing.
  Acad::ErrorStatus createExtensionDictionary();
  Acad::ErrorStatus releaseExtensionDictionary();
  void setExtensionDictionary(AcDbObjectId dictionary);  ///< for readers of files

  /// Chain of the extended data: of one application (1001 item first), or of all for null; null when there is
  /// none. The caller releases it.
  [[nodiscard]] resbuf* xData(const ACHAR* application = nullptr) const;
  /// Replaces the data of the applications named by the 1001 items of the chain; an application without
  /// further items loses its data. Nothing is changed by `eRegappIdNotFound` (an application is not
  /// registered in a resident object's database) and by `eInvalidInput`: no 1001 in front, a code that
  /// extended data do not have, braces that do not pair, a binary item above 127 bytes, or more than 16383
  /// bytes for the whole object.
  Acad::ErrorStatus setXData(const resbuf* chain);
  [[nodiscard]] bool hasXData(const ACHAR* application) const;
  /// What a map of space does to the extended data: to positions, displacements and directions in the world
  /// (1011, 1012, 1013), distances and factors (1041, 1042).
  Acad::ErrorStatus xDataTransformBy(const AcGeMatrix3d& matrix);
  [[nodiscard]] const DxfTagText& xDataTags() const;  ///< as in the file
  void setXDataTags(const DxfTagText& tags);          ///< whole groups; for readers of files, new objects

  /// Persistent reactors, as handles.
  [[nodiscard]] std::vector<AcDbObjectId> reactors() const;
  void addPersistentReactor(AcDbObjectId reactor);
  void removePersistentReactor(AcDbObjectId reactor);

  /// Reads all groups of the object: handle, owner, groups in braces, fields, xdata.
  void dxfIn(std::span<const DxfTag> tags, AcDbDatabase& database);
  /// Writes the type, the common groups, the fields, what was kept, the xdata.
  void dxfOut(AcDbDxfWriter& out) const;
  /// Fields of the class; a subclass first calls its parent's.
  virtual void dxfInFields(AcDbDxfReader& in);
  virtual void dxfOutFields(AcDbDxfWriter& out) const;
  /// Name in the file; that of the class unless the object is of a kind that the host does not model.
  [[nodiscard]] virtual std::string_view dxfName() const;

  /// Objects that are owned part by part and written behind this one (attributes, vertices), in order.
  [[nodiscard]] virtual std::vector<AcDbObjectId> subObjects() const { return {}; }
  /// Objects that are erased with this one and come back with it, in order: the parts, the entries that a
  /// dictionary owns, the entities of a block. The extension dictionary, which goes along too, is not told.
  [[nodiscard]] virtual std::vector<AcDbObjectId> ownedObjects() const { return subObjects(); }
  /// References that this object holds, for walks over what a copy needs: calls `visit` on each id in place,
  /// owner and extension dictionary excluded. References inside kept groups are visited too and replaced when
  /// changed.
  virtual void visitReferences(const std::function<void(AcDbObjectId&)>& visit);

  /// An exact copy without place in a database, owned by the caller; sub-objects are not copied.
  [[nodiscard]] virtual AcDbObject* cloneAlone() const = 0;
  /// State for undo: a copy that keeps identity, and the exchange of state with such a copy.
  [[nodiscard]] virtual std::unique_ptr<AcDbObject> snapshot() const = 0;
  virtual void exchangeState(AcDbObject& other) = 0;

protected:
  AcDbObject();
  AcDbObject(const AcDbObject& other);
  AcDbObject& operator=(const AcDbObject&) = delete;
  /// Sets a field of an object that is open for writing; the status otherwise, and nothing changed.
  template <class Value>
  Acad::ErrorStatus change(Value& field, const std::type_identity_t<Value>& value) {
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk) field = value;
    return status;
  }
  /// Groups that stand between the type and the handle.
  virtual void dxfOutHead(AcDbDxfWriter& out) const;
  /// Whether the fields are kept as file text, in which handles name objects.
  [[nodiscard]] virtual bool isFileText() const { return false; }
  /// Groups kept in a section, to be called at its end by `dxfOutFields`.
  void writeExtras(AcDbDxfWriter& out, std::string_view subclass) const;
  void exchangeBase(AcDbObject& other);
  /// Turns a copy into one without place in a database: owner, extension dictionary and reactors stay behind.
  /// Handles in kept groups go on naming objects of the original's database until `visitReferences` has
  /// replaced them.
  void forgetIdentity();
  /// Sets the erased state of an object and of all that belongs to it, without regard to open modes; noted
  /// for undo.
  static void markErased(AcDbObjectId id, bool erased);
  [[nodiscard]] bool hasExtras(std::string_view subclass) const;
  /// Groups that no class took, by section.
  [[nodiscard]] const std::vector<DxfExtra>& keptSections() const;
  void setKeptSections(std::vector<DxfExtra> sections);
  /// Offers the references in file text to a visitor and writes back those that it replaced.
  void visitTags(DxfTagText& tags, const std::function<void(AcDbObjectId&)>& visit);

private:
  friend class AcDbDatabase;
  struct Rare;  // xdata, extension dictionary, reactors, kept groups: few objects have any
  Rare& rare();
  std::vector<DxfTag> sortOut(std::span<const DxfTag> tags, int handleCode, AcDbDatabase& database);
  void dxfInBraces(std::span<const DxfTag> tags, AcDbDatabase& database);
  void dxfOutBraces(AcDbDxfWriter& out) const;
  AcDbStub* m_stub = nullptr;
  AcDbObjectId m_owner;
  std::unique_ptr<Rare> m_rare;
};

/// In the class, behind ACRX_DECLARE_MEMBERS: copies for undo and for cloning.
#define ACDB_DECLARE_COPY(CLASS)                                        \
public:                                                                 \
  [[nodiscard]] AcDbObject* cloneAlone() const override {               \
    auto* copy = new CLASS(*this);                                      \
    copy->forgetIdentity();                                             \
    return copy;                                                        \
  }                                                                     \
  [[nodiscard]] std::unique_ptr<AcDbObject> snapshot() const override { \
    return std::unique_ptr<AcDbObject>(new CLASS(*this));               \
  }                                                                     \
  void exchangeState(AcDbObject& other) override { exchangeFields(static_cast<CLASS&>(other)); }

/// Defines `isA`, `desc` and a factory of a concrete class of the database.
#define ACDB_DEFINE_MEMBERS(CLASS, PARENT, DXFNAME) \
  ACRX_DEFINE_MEMBERS(CLASS, PARENT, DXFNAME, [] { return static_cast<AcRxObject*>(new CLASS); })

/// Opens an object. On failure the pointer is null: `eNullObjectId`, `eUnknownHandle` (nothing in memory),
/// `eWasErased` unless `openErased`, `eWasOpenForWrite` / `eWasOpenForRead` when the modes clash.
ARX_API Acad::ErrorStatus acdbOpenObject(AcDbObject*& object, AcDbObjectId id,
                                         AcDb::OpenMode mode = AcDb::kForRead, bool openErased = false);

/// The same for one class; `eNotThatKindOfClass` when the object is of another.
template <class T>
Acad::ErrorStatus acdbOpenObject(T*& object, AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead,
                                 bool openErased = false) {
  object = nullptr;
  AcDbObject* any = nullptr;
  const Acad::ErrorStatus status = acdbOpenObject(any, id, mode, openErased);
  if (status != Acad::eOk) return status;
  object = T::cast(any);
  if (object) return Acad::eOk;
  any->close();
  return Acad::eNotThatKindOfClass;
}

/// Scoped opening: closes on leaving the scope.
template <class T>
class AcDbObjectPointer {
public:
  AcDbObjectPointer() = default;
  explicit AcDbObjectPointer(AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead, bool openErased = false) {
    open(id, mode, openErased);
  }
  ~AcDbObjectPointer() { close(); }
  AcDbObjectPointer(const AcDbObjectPointer&) = delete;
  AcDbObjectPointer& operator=(const AcDbObjectPointer&) = delete;
  AcDbObjectPointer(AcDbObjectPointer&& other) noexcept
      : m_object(std::exchange(other.m_object, nullptr)), m_status(other.m_status) {}

  Acad::ErrorStatus open(AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead, bool openErased = false) {
    close();
    return m_status = acdbOpenObject(m_object, id, mode, openErased);
  }
  void close() {
    if (m_object) m_object->close();
    m_object = nullptr;
    m_status = Acad::eNullObjectPointer;
  }
  [[nodiscard]] Acad::ErrorStatus openStatus() const { return m_status; }
  [[nodiscard]] T* object() const { return m_object; }
  T* operator->() const { return m_object; }
  T& operator*() const { return *m_object; }
  operator T*() const { return m_object; }

private:
  T* m_object = nullptr;
  Acad::ErrorStatus m_status = Acad::eNullObjectPointer;
};

/// Conversions between ids and the names of the command-line layer; `eInvalidInput` for a name that names
/// nothing.
ARX_API Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& id, const ads_name name);
ARX_API Acad::ErrorStatus acdbGetAdsName(ads_name& name, AcDbObjectId id);
