#include "arx/dxf/dxfsource.h"

#include "base/files.h"
#include "base/text.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <iconv.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// One character of Windows-1252 as UTF-8.
void appendAnsi(std::string& text, char byte) {
  text += veltora::base::toUtf8(veltora::base::widen(std::string_view(&byte, 1)));
}

std::string upperAscii(std::string_view text) {
  std::string result(text);
  for (char& c : result) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  return result;
}

/// Length of the well-formed UTF-8 sequence at the start, 0 when there is none.
std::size_t sequenceLength(std::string_view bytes) {
  const auto lead = static_cast<unsigned char>(bytes[0]);
  const std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  return bytes.size() >= length && veltora::base::isUtf8(bytes.substr(0, length)) ? length : 0;
}

}  // namespace

std::size_t DxfMemorySource::read(char* to, std::size_t room) {
  const std::size_t count = std::min(room, m_text.size() - m_at);
  if (count) std::memcpy(to, m_text.data() + m_at, count);
  m_at += count;
  return count;
}

DxfFileSource::DxfFileSource(const std::filesystem::path& path) {
  // A pipe without a writer would be waited for, a device read without end.
  m_descriptor = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  struct stat info {};
  if (m_descriptor >= 0 && (::fstat(m_descriptor, &info) != 0 || !S_ISREG(info.st_mode))) {
    ::close(m_descriptor);
    m_descriptor = -1;
  }
}

DxfFileSource::~DxfFileSource() {
  if (m_descriptor >= 0) ::close(m_descriptor);
}

std::size_t DxfFileSource::read(char* to, std::size_t room) {
  for (;;) {
    const ssize_t got = ::read(m_descriptor, to, room);
    if (got >= 0) return static_cast<std::size_t>(got);
    if (errno != EINTR) throw DxfError{0, "lecture impossible : " + veltora::base::raisonSysteme(errno)};
  }
}

std::size_t DxfFileSource::size() const {
  struct stat info {};
  return ::fstat(m_descriptor, &info) == 0 && info.st_size > 0 ? static_cast<std::size_t>(info.st_size) : 0;
}

void DxfFileSource::restart() {
  if (::lseek(m_descriptor, 0, SEEK_SET) != 0) throw DxfError{0, "le fichier ne peut pas être relu"};
}

std::string dxfCodePageName(std::string_view codePage) {
  static constexpr std::array<std::pair<std::string_view, const char*>, 9> kNamed = {
      {{"ASCII", "CP1252"},
       {"BIG5", "BIG5"},
       {"GB2312", "GB18030"},
       {"JOHAB", "JOHAB"},
       {"KSC5601", "CP949"},
       {"KSC-5601", "CP949"},
       {"MACINTOSH", "MACINTOSH"},
       {"MAC-ROMAN", "MACINTOSH"},
       {"UTF-8", "UTF-8"}}};
  const std::string name = upperAscii(veltora::base::trim(codePage));
  for (const auto& [page, converter] : kNamed) {
    if (name == page) return converter;
  }
  const auto digitsBehind = [&](std::string_view prefix) -> std::string {
    if (name.rfind(prefix, 0) != 0) return {};
    std::string rest = name.substr(prefix.size());
    if (!rest.empty() && rest[0] == '_') rest.erase(0, 1);
    return !rest.empty() && rest.find_first_not_of("0123456789") == std::string::npos ? rest : std::string();
  };
  if (const std::string page = digitsBehind("ANSI"); !page.empty()) return "CP" + page;
  if (const std::string page = digitsBehind("DOS"); !page.empty()) return "CP" + page;
  if (const std::string part = digitsBehind("ISO8859-"); !part.empty()) return "ISO-8859-" + part;
  return {};
}

std::string dxfFromCodePage(std::string_view bytes, const std::string& codePage) {
  const std::string name = dxfCodePageName(codePage);
  const iconv_t converter =
      name.empty() ? reinterpret_cast<iconv_t>(-1) : ::iconv_open("UTF-8", name.c_str());
  if (converter == reinterpret_cast<iconv_t>(-1)) return veltora::base::toUtf8(veltora::base::widen(bytes));
  std::string result;
  std::string input(bytes);
  char* in = input.data();
  std::size_t left = input.size();
  char piece[4096];
  while (left > 0) {
    char* out = piece;
    std::size_t room = sizeof piece;
    const std::size_t done = ::iconv(converter, &in, &left, &out, &room);
    result.append(piece, sizeof piece - room);
    if (done != static_cast<std::size_t>(-1) || errno == E2BIG) continue;
    appendAnsi(result, *in);
    ++in;
    --left;
  }
  ::iconv_close(converter);
  return result;
}

std::string dxfRepairUtf8(std::string_view bytes) {
  std::string result;
  result.reserve(bytes.size());
  while (!bytes.empty()) {
    const std::size_t length = sequenceLength(bytes);
    if (length == 0) {
      appendAnsi(result, bytes[0]);
    } else {
      result += bytes.substr(0, length);
    }
    bytes.remove_prefix(length ? length : 1);
  }
  return result;
}
