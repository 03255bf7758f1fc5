#pragma once

#include "arx/db/dbobject.h"

#include <unordered_map>

class AcDbDictionaryIterator;

/// Named references to objects. Keys compare ignoring case and keep their spelling and order.
class ARX_API AcDbDictionary : public AcDbObject {
  ACRX_DECLARE_MEMBERS(AcDbDictionary)
  ACDB_DECLARE_COPY(AcDbDictionary)
public:
  AcDbDictionary() = default;
  [[nodiscard]] std::string_view dxfName() const override {
    return m_withDefault ? "ACDBDICTIONARYWDFLT" : "DICTIONARY";
  }
  Acad::ErrorStatus getAt(const ACHAR* key, AcDbObjectId& id) const;
  /// Opens the entry when it is of class T.
  template <class T>
  Acad::ErrorStatus getAt(const ACHAR* key, T*& object, AcDb::OpenMode mode = AcDb::kForRead) const {
    AcDbObjectId id;
    object = nullptr;
    const Acad::ErrorStatus status = getAt(key, id);
    return status == Acad::eOk ? acdbOpenObject(object, id, mode) : status;
  }
  [[nodiscard]] bool has(const ACHAR* key) const;
  /// Enters an object, which the database owns from then on and which is left open for writing; a former
  /// entry of the key is erased.
  Acad::ErrorStatus setAt(const ACHAR* key, AcDbObject* object, AcDbObjectId& id);
  /// Removes the entry; the object is erased when the dictionary owns its entries.
  Acad::ErrorStatus remove(const ACHAR* key);
  [[nodiscard]] std::size_t numEntries() const;
  /// Live entries in order; deleted by the caller.
  [[nodiscard]] AcDbDictionaryIterator* newIterator() const;
  [[nodiscard]] bool isTreatElementsAsHard() const { return m_hard; }
  Acad::ErrorStatus setTreatElementsAsHard(bool hard);
  /// For readers of files: an entry whose object the database holds already.
  void enter(const AcString& key, AcDbObjectId id);
  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;
  void visitReferences(const std::function<void(AcDbObjectId&)>& visit) override;
  [[nodiscard]] std::vector<AcDbObjectId> ownedObjects() const override;

  struct Entry {
    AcString key;
    AcDbObjectId id;
    int code = 350;  ///< kind of reference in the file, 350 soft owner or 360 hard owner
  };
  [[nodiscard]] const std::vector<Entry>& entries() const { return m_entries; }

protected:
  void exchangeFields(AcDbDictionary& other);

private:
  void takeEntries(AcDbDxfReader& in);
  [[nodiscard]] std::size_t find(const ACHAR* key) const;
  void removeAt(std::size_t at);
  std::vector<Entry> m_entries;
  mutable std::unordered_map<std::wstring, std::size_t>
      m_places;  // by lower-case key; rebuilt after a removal
  mutable bool m_placesValid = true;
  bool m_hard = false;
  int m_merge = 1;
  bool m_withDefault = false;  // ACDBDICTIONARYWDFLT
  AcDbObjectId m_default;
};

class ARX_API AcDbDictionaryIterator {
public:
  explicit AcDbDictionaryIterator(std::vector<AcDbDictionary::Entry> entries)
      : m_entries(std::move(entries)) {}
  [[nodiscard]] bool done() const { return m_at >= m_entries.size(); }
  bool next() { return ++m_at < m_entries.size(); }
  [[nodiscard]] const ACHAR* name() const { return m_entries[m_at].key.c_str(); }
  [[nodiscard]] AcDbObjectId objectId() const { return m_entries[m_at].id; }

private:
  std::vector<AcDbDictionary::Entry> m_entries;
  std::size_t m_at = 0;
};

/// A chain of typed values stored under a key. Held compactly as file text; a reference to an object that is
/// erased is written as 0 and reads as null.
class ARX_API AcDbXrecord : public AcDbObject {
  ACRX_DECLARE_MEMBERS(AcDbXrecord)
  ACDB_DECLARE_COPY(AcDbXrecord)
public:
  AcDbXrecord() = default;
  /// The caller releases the chain; null for an empty record. Group codes as stored; references by name,
  /// those that point at nothing as the null name.
  Acad::ErrorStatus rbChain(resbuf** chain, AcDbDatabase* database = nullptr) const;
  /// `eInvalidInput`, nothing changed, when an item has a code that an xrecord cannot hold.
  Acad::ErrorStatus setFromRbChain(const resbuf& chain, AcDbDatabase* database = nullptr);
  /// Adds items behind those that it has, likewise.
  Acad::ErrorStatus appendRbChain(const resbuf& chain);
  /// Makes room for that many bytes of file text.
  void reserve(std::size_t bytes) { m_tags.reserve(bytes); }
  Acad::ErrorStatus setEmpty();
  [[nodiscard]] bool isXlateReferences() const { return m_xlate; }
  Acad::ErrorStatus setXlateReferences(bool translate);
  [[nodiscard]] const DxfTagText& tags() const { return m_tags; }
  Acad::ErrorStatus setTags(DxfTagText tags);
  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;
  void visitReferences(const std::function<void(AcDbObjectId&)>& visit) override;

protected:
  [[nodiscard]] bool isFileText() const override { return true; }
  void exchangeFields(AcDbXrecord& other);

private:
  DxfTagText m_tags;
  int m_cloning = 1;
  bool m_xlate = false;
};

/// A named set of entities.
class ARX_API AcDbGroup : public AcDbObject {
  ACRX_DECLARE_MEMBERS(AcDbGroup)
  ACDB_DECLARE_COPY(AcDbGroup)
public:
  AcDbGroup() = default;
  explicit AcDbGroup(const ACHAR* description) : m_description(description) {}
  Acad::ErrorStatus append(AcDbObjectId id);
  /// Many at once, in time that grows with their number alone. Null ids and those that it holds are passed
  /// over.
  Acad::ErrorStatus append(const std::vector<AcDbObjectId>& ids);
  Acad::ErrorStatus remove(AcDbObjectId id);
  [[nodiscard]] const std::vector<AcDbObjectId>& allEntityIds() const { return m_ids; }
  [[nodiscard]] std::size_t numEntities() const { return m_ids.size(); }
  [[nodiscard]] bool isSelectable() const { return m_selectable; }
  Acad::ErrorStatus setSelectable(bool selectable);
  Acad::ErrorStatus setAnonymous();
  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;
  void visitReferences(const std::function<void(AcDbObjectId&)>& visit) override;

protected:
  void exchangeFields(AcDbGroup& other);

private:
  AcString m_description;
  bool m_anonymous = false;
  bool m_selectable = true;
  std::vector<AcDbObjectId> m_ids;
};

/// An object that the host does not model, written back as it was read.
class ARX_API AcDbOtherObject : public AcDbObject {
  ACRX_DECLARE_MEMBERS(AcDbOtherObject)
  ACDB_DECLARE_COPY(AcDbOtherObject)
public:
  AcDbOtherObject() = default;
  explicit AcDbOtherObject(std::string type) : m_type(std::move(type)) {}
  [[nodiscard]] std::string_view dxfName() const override { return m_type; }
  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;
  void visitReferences(const std::function<void(AcDbObjectId&)>& visit) override;
  [[nodiscard]] const DxfTagText& tags() const { return m_tags; }
  void setTags(DxfTagText tags) { m_tags = std::move(tags); }

protected:
  [[nodiscard]] bool isFileText() const override { return true; }
  void exchangeFields(AcDbOtherObject& other);

private:
  std::string m_type;
  DxfTagText m_tags;  // subclass markers included, in the order of the file
};
