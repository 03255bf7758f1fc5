#include "app/session/program.h"

#include "app/session/call_files.h"
#include "app/session/output.h"
#include "arx/ap/apsession.h"
#include "arx/ed/edports.h"
#include "arx/lisp/host/aclisp.h"
#include "arx/rx/rxdlinkr.h"
#include "base/files.h"
#include "base/passing_file.h"
#include "base/paths.h"
#include "base/text.h"

#include <dlfcn.h>
#include <unistd.h>
#include <atomic>
#include <csignal>
#include <cstdio>
#include <filesystem>

namespace veltora::app {
namespace {

constexpr const wchar_t* kModule = L"veltora.arx";
constexpr const wchar_t* kSibling = L"QRAL-ARX2021-64BITS.arx";  ///< terrain services, where it was built

/// The folder of the libraries that the program runs with: its own, or that of an installed tree.
std::filesystem::path folderOfLibraries() {
  Dl_info found = {};
  if (dladdr(reinterpret_cast<const void*>(&acrxDynamicLinkerPtr), &found) == 0 || !found.dli_fname)
    return {};
  return std::filesystem::path(found.dli_fname).parent_path();
}

AcEdAnswer hostAnswer(int answer) {
  switch (answer) {
    case ui::kOk:
      return AcEdAnswer::kOk;
    case ui::kYes:
      return AcEdAnswer::kYes;
    case ui::kNo:
      return AcEdAnswer::kNo;
    default:
      return AcEdAnswer::kCancel;
  }
}

ui::Buttons buttonsOf(AcEdButtons buttons) {
  switch (buttons) {
    case AcEdButtons::kOkCancel:
      return ui::Buttons::OkCancel;
    case AcEdButtons::kYesNo:
      return ui::Buttons::YesNo;
    case AcEdButtons::kYesNoCancel:
      return ui::Buttons::YesNoCancel;
    default:
      return ui::Buttons::Ok;
  }
}

/// Ctrl-C asks the job in progress to stop; a second one ends the program, should the first find no listener.
/// While the user types it cancels the prompt.
void onInterrupt(int) {
  ui::Driver* driver = ui::driver();
  if (driver && TerminalSource::cancel()) return;
  if (!driver || driver->arretDemande()) {
    base::effacerPassagers();
    ::_exit(128 + SIGINT);
  }
  driver->requestStop();
}

Program::DriverMaker& driverMaker() {
  static Program::DriverMaker maker = [](base::LineSource& source,
                                         base::OutputSink& sink) -> std::unique_ptr<ui::Driver> {
    return std::make_unique<ui::ScriptDriver>(source, sink);
  };
  return maker;
}

}  // namespace

void Program::useDriver(DriverMaker maker) { driverMaker() = maker; }

Program::Program(base::LineSource& source)
    : m_source(source), m_output(m_standard), m_driver(driverMaker()(source, m_standard)) {
  connect();
}

Program::Program(base::LineSource& source, base::OutputSink& sink, std::unique_ptr<ui::Driver> driver)
    : m_source(source), m_output(sink), m_driver(std::move(driver)) {
  connect();
}

Program::~Program() {
  acDocManager->quit();
  m_projects.reset();
  std::signal(SIGINT, SIG_DFL);
  ui::setDriver(nullptr);
  acedPorts() = {};
}

void Program::connect() {
  AcEdPorts& ports = acedPorts();
  ports.source = &m_source;
  ports.sink = &m_output;
  ports.fileChooser = m_driver.get();
  ports.messageBox = [this](const std::wstring& text, const std::wstring& title, AcEdButtons buttons) {
    return hostAnswer(m_driver->messageBox(text, title, buttonsOf(buttons)));
  };
  aclispInstall();
  ui::setDriver(m_driver.get());
  std::signal(SIGINT, onInterrupt);
  m_projects = std::make_unique<DocumentProjects>();
}

bool Program::load() {
  std::wstring message;
  if (!acrxDynamicLinker->loadModule(kModule, false, &message)) {
    printError(message);
    return false;
  }
  const std::filesystem::path sibling = folderOfLibraries() / kSibling;
  std::error_code error;
  if (std::filesystem::exists(sibling, error) &&
      !acrxDynamicLinker->loadModule(base::texteDuChemin(sibling).c_str(), false, &message))
    printError(message);
  return true;
}

bool Program::open(const std::string& drawing) {
  std::wstring message;
  const Acad::ErrorStatus status =
      drawing.empty() ? acDocManager->appContextNewDocument(nullptr, &message)
                      : acDocManager->appContextOpenDocument(base::texteDuChemin(drawing).c_str(), &message);
  if (status != Acad::eOk) printError(message);
  return status == Acad::eOk;
}

bool Program::run() {
  return run([this](AcApSession& session) {
    session.run();
    m_quit = session.quitRequested();
    return true;
  });
}

bool Program::run(const std::string& line) {
  return run([&line](AcApSession& session) { return session.runLine(base::fromUtf8(line)); });
}

bool Program::show(const std::function<void()>& dialog) {
  return run([&dialog](AcApSession&) { return dialog(), true; });
}

template <class Work>
bool Program::run(Work work) {
  AcApSession session;
  try {
    return work(session);
  } catch (const base::ScriptError& error) {
    const std::string position = m_source.position();
    printError(position.empty() ? error.message : position + " : " + error.message);
    return false;
  }
}

void Program::tellUnsaved() const {
  if (m_quit) return;
  const std::unique_ptr<AcApDocumentIterator> documents(acDocManager->newAcApDocumentIterator());
  for (; !documents->done(); documents->step()) {
    AcApDocument* const document = documents->document();
    if (acDocManager->isModified(document))
      printError(std::wstring(document->docTitle()) + L" : des modifications ne sont pas enregistrées");
  }
}

bool Program::saveClipboard(const std::string& file) const {
  std::string reason = "rien n'a été copié, « " + file + " » n'est pas écrit";
  const auto* const driver = dynamic_cast<const ui::ScriptDriver*>(m_driver.get());
  if (driver && driver->clipboard() &&
      base::remplacerFichier(file, base::toUtf8(*driver->clipboard()), &reason))
    return true;
  printError(reason);
  return false;
}

bool Program::save(const std::string& output) {
  AcApDocument* document = curDoc();
  std::wstring message;
  if (!document) {
    printError("aucun dessin n'est ouvert, rien à enregistrer sous \"" + output + "\"");
    return false;
  }
  const std::filesystem::path written = writtenDrawing(output);
  if (acDocManager->saveDocument(document, base::texteDuChemin(output).c_str(), &message) != Acad::eOk) {
    printError(message);
    return false;
  }
  if (written != output) print("\nDessin enregistré : " + written.string() + "\n");
  return true;
}

}  // namespace veltora::app
