#include "arx/lisp/lispfiles.h"

#include "arx/ed/edroutines.h"
#include "arx/lisp/lispinterp.h"
#include "arx/lisp/lispopenfile.h"
#include "arx/lisp/lispprinter.h"
#include "arx/lisp/lisptexts.h"
#include "base/files.h"
#include "base/paths.h"
#include "base/text.h"

#include <cstdlib>

namespace base = veltora::base;

namespace aclisp {

void flushFiles(Interpreter& in) {
  std::vector<std::weak_ptr<OpenFile>> living;
  for (const std::weak_ptr<OpenFile>& weak : in.openFiles()) {
    const std::shared_ptr<OpenFile> file = weak.lock();
    if (!file || file->closed()) continue;
    if (!file->flush()) in.print(L"\nUn fichier ouvert n'a pas pu être écrit.\n");
    living.push_back(weak);
  }
  in.openFiles().swap(living);
}

Value loadFile(Interpreter& in, const std::wstring& path) {
  constexpr int kDepth = 100;
  const std::filesystem::path file = base::cheminDuTexte(path);
  const std::optional<std::string> bytes = base::lireFichier(file);
  if (!bytes) in.fail(L"échec de LOAD : " + path);
  if (in.loading >= kDepth) in.fail(L"chargements imbriqués sans fin : " + path);
  const int before = in.loading++;
  try {
    Value value = in.evalText(decodeText(*bytes), base::fromUtf8(file.filename().string()));
    in.loading = before;
    return value;
  } catch (...) {
    in.loading = before;
    throw;
  }
}

namespace {

/// Names of routines come with the folder marks of another system.
std::wstring slashed(std::wstring name) {
  for (wchar_t& c : name)
    if (c == L'\\') c = L'/';
  return name;
}

/// Fails where files are closed to routines.
void demandFile(Interpreter& in, const std::wstring& name) {
  if (!acedRoutineMayReach(name)) in.fail(L"les fichiers sont fermés aux routines : " + name);
}

std::wstring find(Interpreter& in, const std::wstring& name) {
  if (!in.host().findFile || name.empty()) return {};
  const std::wstring found = in.host().findFile(name);
  return found.empty() && name.find(L'\\') != std::wstring::npos ? in.host().findFile(slashed(name)) : found;
}

OpenFile& fileOf(Args& a, std::size_t i) {
  if (!a[i].is(Kind::kFile)) a.in.failType(L"streamp:", a[i]);
  OpenFile& file = *static_cast<const FileHandle*>(a[i].object())->file;
  if (file.closed()) a.in.fail(L"fichier fermé");
  return file;
}

void output(Args& a, std::size_t i, const std::wstring& text) {
  if (!a.has(i)) {
    a.in.print(text);
    return;
  }
  OpenFile& file = fileOf(a, i);
  if (file.reading()) a.in.fail(L"fichier ouvert en lecture");
  if (!file.write(text)) a.in.fail(L"fichier trop gros");
}

Value princFunction(Args& a) {
  if (a.size() == 0) return a.in.nothing();
  output(a, 1, printed(a[0], false));
  return a[0];
}

Value prin1Function(Args& a) {
  if (a.size() == 0) return a.in.nothing();
  output(a, 1, printed(a[0], true));
  return a[0];
}

Value printFunction(Args& a) {
  if (a.size() == 0) return a.in.nothing();
  output(a, 1, L"\n" + printed(a[0], true) + L" ");
  return a[0];
}

Value promptFunction(Args& a) {
  a.in.print(a.text(0));
  return {};
}

Value terpriFunction(Args& a) {
  a.in.print(L"\n");
  return {};
}

Value writeLine(Args& a) {
  output(a, 1, a.text(0) + L"\n");
  return a[0];
}

Value writeCharacter(Args& a) {
  const wchar_t c = characterOfCode(a.integer(0));
  if (c == L'\0') a.in.fail(L"code de caractère incorrect");
  output(a, 1, std::wstring(1, c));
  return a[0];
}

Value readLineFunction(Args& a) {
  std::optional<std::wstring> line;
  if (a.has(0)) {
    OpenFile& file = fileOf(a, 0);
    if (!file.reading()) a.in.fail(L"fichier ouvert en écriture");
    line = file.readLine();
  } else if (a.in.host().readLine) {
    line = a.in.host().readLine(L"");
  }
  return line ? Value::text(std::move(*line)) : Value();
}

Value readCharacter(Args& a) {
  if (a.has(0)) {
    OpenFile& file = fileOf(a, 0);
    if (!file.reading()) a.in.fail(L"fichier ouvert en écriture");
    const std::optional<wchar_t> c = file.readCharacter();
    return c ? Value::integer(codeOfCharacter(*c)) : Value();
  }
  const std::optional<std::wstring> line = a.in.host().readLine ? a.in.host().readLine(L"") : std::nullopt;
  if (!line) return {};
  return Value::integer(line->empty() ? 10 : codeOfCharacter(line->front()));
}

/// nil when the file cannot be opened.
Value openFunction(Args& a) {
  demandFile(a.in, a.text(0));
  const std::wstring mode = base::toLower(a.text(1));
  const std::wstring encoding = a.has(2) ? base::toLower(a.text(2)) : L"";
  OpenFile::Mode how = OpenFile::Mode::kRead;
  if (mode == L"w")
    how = OpenFile::Mode::kWrite;
  else if (mode == L"a")
    how = OpenFile::Mode::kAppend;
  else if (mode != L"r")
    a.in.fail(L"mode d'ouverture incorrect : " + a.text(1));
  OpenFile::Encoding bytes = OpenFile::Encoding::kAnsi;
  if (encoding == L"utf8") bytes = OpenFile::Encoding::kUtf8;
  if (encoding == L"utf8-bom") bytes = OpenFile::Encoding::kUtf8WithMark;
  flushFiles(a.in);  // what was just written can be read
  const std::filesystem::path path = base::cheminDuTexte(slashed(a.text(0)));
  std::optional<OpenFile> file = OpenFile::open(path, how, bytes);
  if (!file) return {};
  auto shared = std::make_shared<OpenFile>(std::move(*file));
  if (!shared->reading()) a.in.openFiles().push_back(shared);
  return Value::adopt(new FileHandle(std::move(shared)));
}

Value closeFunction(Args& a) {
  if (!fileOf(a, 0).close()) a.in.fail(L"le fichier n'a pas pu être écrit");
  return {};
}

Value findfileFunction(Args& a) {
  demandFile(a.in, a.text(0));
  std::wstring path = find(a.in, a.text(0));
  return path.empty() ? Value() : Value::text(std::move(path));
}

/// Value of what was loaded; the second argument when the file is nowhere.
Value loadFunction(Args& a) {
  const std::wstring& name = a.text(0);
  demandFile(a.in, name);
  std::wstring path;
  const std::size_t bare = name.find_last_of(L"/\\") + 1;  // 0 without a folder
  if (name.find(L'.', bare) == std::wstring::npos) path = find(a.in, name + L".lsp");
  if (path.empty()) path = find(a.in, name);
  if (!path.empty()) return loadFile(a.in, path);
  if (a.size() > 1) return a[1];
  a.in.fail(L"échec de LOAD : \"" + name + L"\"");
}

Value getenvFunction(Args& a) {
  demandFile(a.in, a.text(0));
  const char* const value = std::getenv(base::toUtf8(a.text(0)).c_str());
  return value ? Value::text(base::fromUtf8(value)) : Value();
}

Value deleteFile(Args& a) {
  demandFile(a.in, a.text(0));
  std::error_code error;
  const std::filesystem::path path = base::cheminDuTexte(slashed(a.text(0)));
  const bool gone = std::filesystem::is_regular_file(path, error) && std::filesystem::remove(path, error);
  return a.in.truth(gone);
}

Value fileSize(Args& a) {
  demandFile(a.in, a.text(0));
  std::error_code error;
  const std::filesystem::path path = base::cheminDuTexte(slashed(a.text(0)));
  if (std::filesystem::is_directory(path, error)) return Value::integer(0);
  const auto size = std::filesystem::file_size(path, error);
  if (error) return {};
  return size <= INT32_MAX ? Value::integer(static_cast<std::int32_t>(size))
                           : Value::real(static_cast<double>(size));
}

std::filesystem::path pathOf(Args& a) { return base::cheminDuTexte(slashed(a.text(0))); }
Value fileBase(Args& a) { return Value::text(base::fromUtf8(pathOf(a).stem().string())); }

Value fileFolder(Args& a) {
  const std::string folder = pathOf(a).parent_path().string();
  return folder.empty() ? Value() : Value::text(base::fromUtf8(folder));
}

Value fileExtension(Args& a) {
  const std::string extension = pathOf(a).extension().string();
  return extension.empty() ? Value() : Value::text(base::fromUtf8(extension));
}

constexpr Subr kFiles[] = {
    function(L"PRINC", princFunction, 0, 2),
    function(L"PRIN1", prin1Function, 0, 2),
    function(L"PRINT", printFunction, 0, 2),
    function(L"PROMPT", promptFunction, 1, 1),
    function(L"TERPRI", terpriFunction, 0, 0),
    function(L"WRITE-LINE", writeLine, 1, 2),
    function(L"WRITE-CHAR", writeCharacter, 1, 2),
    function(L"READ-LINE", readLineFunction, 0, 1),
    function(L"READ-CHAR", readCharacter, 0, 1),
    function(L"OPEN", openFunction, 2, 3),
    function(L"CLOSE", closeFunction, 1, 1),
    function(L"FINDFILE", findfileFunction, 1, 1),
    function(L"LOAD", loadFunction, 1, 2),
    function(L"GETENV", getenvFunction, 1, 1),
    function(L"VL-FILE-DELETE", deleteFile, 1, 1),
    function(L"VL-FILE-SIZE", fileSize, 1, 1),
    function(L"VL-FILENAME-BASE", fileBase, 1, 1),
    function(L"VL-FILENAME-DIRECTORY", fileFolder, 1, 1),
    function(L"VL-FILENAME-EXTENSION", fileExtension, 1, 1),
};

}  // namespace

std::span<const Subr> fileFunctions() { return kFiles; }

}  // namespace aclisp
