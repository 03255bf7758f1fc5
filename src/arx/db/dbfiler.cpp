#include "arx/db/dbfiler.h"

#include "arx/db/dbmain.h"
#include "arx/db/dxfquote.h"

#include <algorithm>
#include <charconv>

namespace {

constexpr std::size_t kBufferSize = std::size_t{256} << 10;
constexpr std::size_t kShortGroup = 64;  // a group code with a number or a short text
constexpr std::size_t kLongestCode = 16;

bool startsEmbeddedObject(const DxfTag& tag) { return tag.code == 101; }

[[noreturn]] void refuse(const DxfTag& tag, const char* expected) {
  throw DxfError{tag.line, "valeur « " + dxfQuote(tag.value) + " » du groupe " + std::to_string(tag.code) +
                               " : " + expected + " attendu"};
}

}  // namespace

AcDbDxfReader::AcDbDxfReader(std::span<const DxfTag> tags, AcDbDatabase& database)
    : m_tags(tags), m_database(database) {
  std::size_t begin = 0;
  std::string_view name;
  for (std::size_t i = 0; i < tags.size(); ++i) {
    if (tags[i].code != 100) continue;
    m_sections.push_back({name, begin, i});
    name = tags[i].value;
    begin = i + 1;
  }
  m_sections.push_back({name, begin, tags.size()});
  m_plain = m_sections.size() == 1;
  m_section = m_sections.size();
  if (m_plain) m_untaken.assign(tags.begin(), tags.end());
}

DxfTagText& AcDbDxfReader::extraOf(std::string_view subclass) {
  for (DxfExtra& extra : m_extras) {
    if (!extra.whole && extra.subclass == subclass) return extra.tags;
  }
  m_extras.push_back({std::string(subclass), {}, false});
  return m_extras.back().tags;
}

void AcDbDxfReader::keepRest() {
  if (m_plain) {
    m_untaken.insert(m_untaken.end(), m_offered.begin() + static_cast<std::ptrdiff_t>(m_next),
                     m_offered.end());
    m_offered.clear();
    m_next = m_end = 0;
    return;
  }
  if (m_next >= m_end) return;
  DxfTagText& extra = extraOf(m_sections[m_section].name);
  for (; m_next < m_end; ++m_next) extra.append(m_tags[m_next].code, m_tags[m_next].value);
}

bool AcDbDxfReader::enter(std::string_view subclass) {
  keepRest();
  if (m_plain) {
    m_offered = std::move(m_untaken);
    m_untaken.clear();
    m_next = 0;
    m_end = m_offered.size();
    return true;
  }
  for (std::size_t i = 0; i < m_sections.size(); ++i) {
    Section& section = m_sections[i];
    if (section.entered || section.name != subclass) continue;
    section.entered = true;
    m_section = i;
    m_next = section.begin;
    m_end = section.end;
    return true;
  }
  return false;
}

bool AcDbDxfReader::hasSection(std::string_view subclass) const {
  if (m_plain) return false;
  for (const Section& section : m_sections) {
    if (!section.entered && section.name == subclass) return true;
  }
  return false;
}

bool AcDbDxfReader::next() {
  if (m_next >= m_end) return false;
  if (m_plain) {
    m_tag = m_offered[m_next++];
    return true;
  }
  if (startsEmbeddedObject(m_tags[m_next])) {
    keepRest();
    return false;
  }
  m_tag = m_tags[m_next++];
  return true;
}

int AcDbDxfReader::peek() const {
  if (m_next >= m_end) return -1;
  const DxfTag& tag = m_plain ? m_offered[m_next] : m_tags[m_next];
  return !m_plain && startsEmbeddedObject(tag) ? -1 : tag.code;
}

std::wstring AcDbDxfReader::wide() const { return dxfToWide(m_tag.value); }

double AcDbDxfReader::real() const {
  double value = 0.0;
  if (!dxfParseReal(m_tag.value, value)) refuse(m_tag, "nombre");
  return value;
}

int AcDbDxfReader::integer() const {
  Adesk::Int64 value = 0;
  if (!dxfParseInteger(m_tag.value, value)) refuse(m_tag, "nombre entier");
  // Some programs write 32-bit patterns without sign.
  if (value < INT32_MIN || value > UINT32_MAX) refuse(m_tag, "nombre entier");
  return static_cast<int>(static_cast<Adesk::UInt32>(value));
}

AcDbObjectId AcDbDxfReader::id() const {
  Adesk::UInt64 handle = 0;
  if (!dxfParseHandle(m_tag.value, handle)) refuse(m_tag, "identifiant hexadécimal");
  return handle ? m_database.idOf(handle) : AcDbObjectId();
}

bool AcDbDxfReader::coordinate(int firstCode, AcGePoint3d& point) const {
  const int offset = m_tag.code - firstCode;
  if (offset == 0)
    point.x = real();
  else if (offset == 10)
    point.y = real();
  else if (offset == 20)
    point.z = real();
  else
    return false;
  return true;
}

bool AcDbDxfReader::coordinate(int firstCode, AcGeVector3d& vector) const {
  AcGePoint3d point{vector.x, vector.y, vector.z};
  if (!coordinate(firstCode, point)) return false;
  vector = point.asVector();
  return true;
}

AcDbObjectId AcDbDxfReader::layer() const { return m_database.recordOfText("LAYER", text()); }
AcDbObjectId AcDbDxfReader::linetype() const { return m_database.recordOfText("LTYPE", text()); }
AcDbObjectId AcDbDxfReader::textStyle() const { return m_database.recordOfText("STYLE", text()); }
AcDbObjectId AcDbDxfReader::block() const { return m_database.recordOfText("BLOCK_RECORD", text()); }

DxfTagText AcDbDxfReader::takeAll() {
  DxfTagText all;
  for (const DxfTag& tag : m_tags) all.append(tag.code, tag.value);
  for (Section& section : m_sections) section.entered = true;
  m_untaken.clear();
  m_offered.clear();
  m_next = m_end = 0;
  return all;
}

void AcDbDxfReader::keep() {
  if (m_plain) {
    m_untaken.push_back(m_tag);
  } else if (m_section < m_sections.size()) {
    extraOf(m_sections[m_section].name).append(m_tag.code, m_tag.value);
  }
}

std::vector<DxfExtra> AcDbDxfReader::takeExtras() {
  keepRest();
  for (const DxfTag& tag : m_untaken) extraOf({}).append(tag.code, tag.value);
  m_untaken.clear();
  for (const Section& section : m_sections) {
    if (section.entered || m_plain) continue;
    if (section.begin == 0 && section.end == 0) continue;  // nothing in front of the first marker
    const bool marked = section.begin > 0;
    DxfExtra extra{std::string(section.name), {}, marked};
    if (marked) extra.tags.append(100, section.name);
    for (std::size_t i = section.begin; i < section.end; ++i)
      extra.tags.append(m_tags[i].code, m_tags[i].value);
    m_extras.push_back(std::move(extra));
  }
  m_sections.clear();
  m_next = m_end = 0;
  for (DxfExtra& extra : m_extras) extra.tags.shrink();
  return std::move(m_extras);
}

AcDbDxfWriter::AcDbDxfWriter(Sink sink)
    : m_sink(std::move(sink)), m_buffer(std::make_unique_for_overwrite<char[]>(kBufferSize)) {}

AcDbDxfWriter::~AcDbDxfWriter() {
  try {
    flush();
  } catch (...) {  // a destructor cannot report; whoever must know calls flush before
  }
}

char* AcDbDxfWriter::room(std::size_t size) {
  if (m_used + size > kBufferSize) flush();
  return m_buffer.get() + m_used;
}

void AcDbDxfWriter::ends(char* end) {
  *end++ = '\n';
  m_used = static_cast<std::size_t>(end - m_buffer.get());
}

void AcDbDxfWriter::text(int groupCode, std::string_view value) {
  const auto isLineEnd = [](char c) { return c == '\n' || c == '\r'; };
  const bool isShort = value.size() < kShortGroup - kLongestCode;
  if (!isShort || std::ranges::any_of(value, isLineEnd)) return longText(groupCode, value);
  ends(std::ranges::copy(value, dxfPutCode(room(kShortGroup), groupCode)).out);
}

void AcDbDxfWriter::longText(int groupCode, std::string_view value) {
  std::string line;
  dxfAppendValue(line, value);
  char* const at = room(kShortGroup);
  m_used += static_cast<std::size_t>(dxfPutCode(at, groupCode) - at);
  raw(line);
}

void AcDbDxfWriter::wide(int groupCode, std::wstring_view value) {
  // Most names and texts are short and need no escape.
  char plain[64];
  const bool isPlain = value.size() <= sizeof plain && std::ranges::all_of(value, [](wchar_t c) {
                         return c >= 0x20 && c < 0x7F && c != L'^';
                       });
  if (!isPlain) return text(groupCode, dxfFromWide(value));
  std::ranges::transform(value, plain, [](wchar_t c) { return static_cast<char>(c); });
  text(groupCode, {plain, value.size()});
}

void AcDbDxfWriter::real(int groupCode, double value) {
  char* const at = dxfPutCode(room(kShortGroup), groupCode);
  ends(at + dxfFormatReal(at, value));
}

void AcDbDxfWriter::integer(int groupCode, Adesk::Int64 value) {
  char* const at = dxfPutCode(room(kShortGroup), groupCode);
  ends(std::to_chars(at, at + 24, value).ptr);
}

void AcDbDxfWriter::handle(int groupCode, AcDbHandle value) {
  ends(dxfPutHandle(dxfPutCode(room(kShortGroup), groupCode), value));
}

void AcDbDxfWriter::id(int groupCode, AcDbObjectId value) {
  handle(groupCode, value.isErased() ? AcDbHandle() : value.handle());
}

void AcDbDxfWriter::point(int firstCode, const AcGePoint3d& value) {
  real(firstCode, value.x);
  real(firstCode + 10, value.y);
  real(firstCode + 20, value.z);
}

void AcDbDxfWriter::point2d(int firstCode, double x, double y) {
  real(firstCode, x);
  real(firstCode + 10, y);
}

void AcDbDxfWriter::normal(const AcGeVector3d& value) {
  if (value != AcGeVector3d::kZAxis) vector(210, value);
}

void AcDbDxfWriter::kept(const DxfTagText& tags, AcDbDatabase* database) {
  if (!database) return raw(tags.text());
  DxfTagText::Cursor cursor = tags.tags();
  for (DxfTag tag; cursor.next(tag);) {
    Adesk::UInt64 value = 0;
    if (dxfKind(tag.code) != DxfKind::kPointer || !dxfParseHandle(tag.value, value)) {
      text(tag.code, tag.value);
      continue;
    }
    AcDbObjectId known;
    const bool dead = database->getAcDbObjectId(known, false, value) == Acad::eOk && known.isErased();
    handle(tag.code, dead ? 0 : value);  // in the one form of handles: others may compare them as texts
  }
}

void AcDbDxfWriter::raw(std::string_view fileText) {
  char* const at = room(fileText.size());
  if (fileText.size() > kBufferSize) return m_sink(fileText);
  std::ranges::copy(fileText, at);
  m_used += fileText.size();
}

void AcDbDxfWriter::flush() {
  if (m_used == 0) return;
  m_sink({m_buffer.get(), m_used});
  m_used = 0;
}
