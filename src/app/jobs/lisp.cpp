#include "app/jobs/lisp.h"

#include "app/session/call_files.h"
#include "app/session/output.h"
#include "app/session/program.h"
#include "arx/ed/edroutines.h"
#include "base/text.h"

#include <CLI/CLI.hpp>
#include <memory>

namespace veltora::app {
namespace {

struct Options {
  std::string file;
  std::string drawing;
  std::vector<std::string> lines;
  std::string output;
  bool withoutFiles = false;
};

/// A text as LISP writes it.
std::string quoted(const std::string& text) {
  std::string result = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') result += '\\';
    result += c;
  }
  return result + '"';
}

/// The lines given with the call, then those of the terminal, which answer what a routine asks.
class LispSource : public base::LineSource {
public:
  explicit LispSource(std::vector<std::string> lines) : m_lines("--commande", std::move(lines)) {}
  std::optional<std::string> readLine(const base::Request& request) override {
    return hasLines() ? m_lines.readLine(request) : m_terminal.readLine(request);
  }
  [[nodiscard]] std::string position() const override {
    return m_lines.position().empty() ? m_terminal.position() : m_lines.position();
  }
  [[nodiscard]] bool interactive() const override { return !hasLines() && m_terminal.interactive(); }
  [[nodiscard]] bool hasLines() const { return !m_lines.finished(); }

private:
  LinesSource m_lines;
  TerminalSource m_terminal;
};

int run(const Options& options) {
  LispSource source(options.lines);
  Program program(source);
  if (options.withoutFiles) acedCloseFilesToRoutines(base::fromUtf8(options.file));
  if (!program.load() || !program.open(options.drawing)) return kFailure;
  print("\n");
  bool good = program.run("(load " + quoted(options.file) + ")");
  while (good && source.hasLines()) good = program.run(source.readLine({}).value_or(""));
  print("\n");
  good = good && (options.output.empty() || program.save(options.output));
  program.tellUnsaved();
  return good ? kSuccess : kFailure;
}

}  // namespace

Run declareLisp(CLI::App& sub) {
  const auto options = std::make_shared<Options>();
  sub.add_option("fichier", options->file, "Fichier LISP")->type_name("FICHIER")->required();
  sub.add_option("dessin", options->drawing, "Dessin DXF ; un nouveau dessin sans ce nom")
      ->type_name("DESSIN");
  sub.add_option(
         "--commande", options->lines,
         "Ligne exécutée une fois le fichier chargé, ou réponse à ce qu'il demande ; peut être répété")
      ->type_name("LIGNE")
      ->expected(1)
      ->take_all();
  sub.add_option("--sortie", options->output, "Dessin à enregistrer")->type_name("DESSIN");
  sub.add_flag("--lisp-sans-fichiers", options->withoutFiles,
               "Les routines LISP ne lisent, n'écrivent et n'effacent aucun fichier");
  declareFiles(sub)
      .reads(options->file)
      .reads(options->drawing, FileKind::kDrawing)
      .writes(options->output, FileKind::kDrawing);
  return [options] { return run(*options); };
}

}  // namespace veltora::app
