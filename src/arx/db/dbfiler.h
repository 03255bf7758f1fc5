#pragma once

#include "arx/db/dbid.h"
#include "arx/db/dbrarely.h"
#include "arx/db/dbshorttext.h"
#include "arx/db/dxftags.h"
#include "arx/ge/gepoint.h"

#include <boost/container/small_vector.hpp>

#include <functional>
#include <memory>
#include <span>
#include <vector>

class AcDbDatabase;

/// Groups of one object that the host does not model, kept by the subclass section in which they stood.
struct DxfExtra {
  std::string subclass;  ///< empty for groups in front of the first subclass marker
  DxfTagText tags;
  bool whole = false;  ///< a section that no class entered, to be written with its marker
};

/// Reads the groups of one object. The groups of its subclass sections are offered in turn; what a class does
/// not take it hands to `keep`, and sections that no class enters are kept whole: nothing is lost. An
/// embedded object (101) is kept with its section and not offered. Without any marker, as in old files, every
/// `enter` offers the groups that nobody took so far.
class ARX_API AcDbDxfReader {
public:
  /// @param tags the object's groups behind its type, without handle, owner, reactors, dictionary and xdata
  AcDbDxfReader(std::span<const DxfTag> tags, AcDbDatabase& database);

  /// Moves to the next section with this marker that was not entered yet. @return false when there is none
  bool enter(std::string_view subclass);
  /// Whether `enter` would find a marker; false without any marker.
  [[nodiscard]] bool hasSection(std::string_view subclass) const;
  /// Moves to the next group of the section. @return false at its end
  bool next();
  /// The group code that comes next in the section without moving to it, -1 at its end.
  [[nodiscard]] int peek() const;

  [[nodiscard]] int code() const { return m_tag.code; }
  [[nodiscard]] std::string_view text() const { return m_tag.value; }
  /// The value as text, with "\U+hhhh" resolved.
  [[nodiscard]] std::wstring wide() const;
  /// Puts the same into a text without making a string when it is plain.
  template <unsigned Inline>
  void wide(AcDbShortText<Inline>& text) const {
    if (!text.assignPlain(m_tag.value)) text.assign(wide());
  }
  /// A value that is no number raises DxfError with its line, likewise the next ones.
  [[nodiscard]] double real() const;
  [[nodiscard]] int integer() const;
  [[nodiscard]] bool flag() const { return integer() != 0; }
  /// The stub of the handle is made when the handle was not met yet; "0" gives the null id.
  [[nodiscard]] AcDbObjectId id() const;
  /// Takes the group when it is a coordinate of the point whose x has this code (x, +10 y, +20 z).
  bool coordinate(int firstCode, AcGePoint3d& point) const;
  bool coordinate(int firstCode, AcGeVector3d& vector) const;
  /// The same for one of the rare fields of an object.
  template <class Fields, class Triple>
  bool coordinate(int firstCode, AcDbRarely<Fields>& fields, Triple Fields::*field) const {
    Triple value = (*fields).*field;
    if (!coordinate(firstCode, value)) return false;
    fields.set(field, value);
    return true;
  }
  /// Records of symbol tables by name; a missing one is made with default properties.
  [[nodiscard]] AcDbObjectId layer() const;
  [[nodiscard]] AcDbObjectId linetype() const;
  [[nodiscard]] AcDbObjectId textStyle() const;
  [[nodiscard]] AcDbObjectId block() const;
  [[nodiscard]] AcDbDatabase& database() const { return m_database; }

  /// All groups from the start in their order, markers included; nothing remains for the sections.
  DxfTagText takeAll();
  /// Keeps the present group for writing back.
  void keep();
  /// What was kept, sections that were never entered included. Ends the reading.
  std::vector<DxfExtra> takeExtras();

private:
  struct Section {
    std::string_view name;
    std::size_t begin;
    std::size_t end;
    bool entered = false;
  };
  void keepRest();
  DxfTagText& extraOf(std::string_view subclass);
  std::span<const DxfTag> m_tags;
  std::vector<DxfTag> m_untaken;  // without markers: what was kept so far, offered to the next class
  std::vector<DxfTag> m_offered;
  bool m_plain = false;
  AcDbDatabase& m_database;
  boost::container::small_vector<Section, 6> m_sections;
  std::vector<DxfExtra> m_extras;
  DxfTag m_tag;
  std::size_t m_next = 0;
  std::size_t m_end = 0;
  std::size_t m_section = 0;
};

/// Writes groups as file text into a buffer, handing it on to a sink when it is full.
class ARX_API AcDbDxfWriter {
public:
  using Sink = std::function<void(std::string_view)>;
  explicit AcDbDxfWriter(Sink sink);
  ~AcDbDxfWriter();
  AcDbDxfWriter(const AcDbDxfWriter&) = delete;
  AcDbDxfWriter& operator=(const AcDbDxfWriter&) = delete;

  void text(int code, std::string_view value);
  /// Line ends and control characters are written in the file's escaped form (^J, ^M...).
  void wide(int code, std::wstring_view value);
  /// The shortest text that reads back as the same number; a value that is not finite is written as 0.0.
  void real(int code, double value);
  void integer(int code, Adesk::Int64 value);
  void flag(int code, bool value) { integer(code, value ? 1 : 0); }
  void handle(int code, AcDbHandle value);
  /// The handle of the object, "0" for the null id and for an object that is erased.
  void id(int code, AcDbObjectId value);
  void point(int firstCode, const AcGePoint3d& value);
  void point2d(int firstCode, double x, double y);
  void vector(int firstCode, const AcGeVector3d& value) { point(firstCode, {value.x, value.y, value.z}); }
  /// Only when it differs from +Z, as drawing files leave it out otherwise.
  void normal(const AcGeVector3d& value);
  /// Marker of a subclass; groups kept in it follow with `extras`.
  void subclass(std::string_view name) { text(100, name); }
  /// Groups kept as they were; references to erased objects become 0. With a null database nothing is looked
  /// up.
  void kept(const DxfTagText& tags, AcDbDatabase* database);
  void raw(std::string_view fileText);
  void flush();

private:
  /// Where so many bytes may be written.
  char* room(std::size_t size);
  /// Ends a line that was written there.
  void ends(char* end);
  void longText(int code, std::string_view value);
  Sink m_sink;
  std::unique_ptr<char[]> m_buffer;
  std::size_t m_used = 0;
};
