#include "app/programme.h"

#include "arx/ap/apsession.h"
#include "arx/ed/edports.h"
#include "arx/lisp/aclisp.h"
#include "arx/rx/rxdlinkr.h"
#include "base/text.h"

#include <unistd.h>
#include <atomic>
#include <csignal>
#include <cstdio>
#include <filesystem>

namespace veltora::app {
namespace {

constexpr const wchar_t* kModule = L"veltora.arx";

std::filesystem::path dossierProgramme() {
  std::error_code error;
  return std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
}

AcEdAnswer reponseHote(int answer) {
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

ui::Buttons boutons(AcEdButtons buttons) {
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
void surInterruption(int) {
  ui::Driver* driver = ui::driver();
  if (driver && TerminalSource::cancel()) return;
  if (!driver || driver->arretDemande()) ::_exit(128 + SIGINT);
  driver->requestStop();
}

}  // namespace

void direErreur(const std::string& message) { std::fprintf(stderr, "veltora : %s\n", message.c_str()); }
void direErreur(const std::wstring& message) { direErreur(base::toUtf8(base::trim(message, L"\r\n \t"))); }

Programme::Programme(base::LineSource& source) : m_source(source), m_driver(source, m_sortie) {
  brancher();
  ui::setDriver(&m_driver);
  std::signal(SIGINT, surInterruption);
  m_projets = std::make_unique<ProjetsDocuments>();
}

Programme::~Programme() {
  acDocManager->quit();
  m_projets.reset();
  std::signal(SIGINT, SIG_DFL);
  ui::setDriver(nullptr);
  acedPorts() = {};
}

void Programme::brancher() {
  AcEdPorts& ports = acedPorts();
  ports.source = &m_source;
  ports.sink = &m_sortie;
  ports.fileChooser = &m_driver;
  ports.messageBox = [this](const std::wstring& text, const std::wstring& title, AcEdButtons buttons) {
    return reponseHote(m_driver.messageBox(text, title, boutons(buttons)));
  };
  aclispInstall();
}

bool Programme::charger() {
  std::wstring message;
  const std::filesystem::path path = dossierProgramme() / kModule;
  if (acrxDynamicLinker->loadModule(base::fromUtf8(path.string()).c_str(), false, &message)) return true;
  direErreur(message);
  return false;
}

bool Programme::ouvrir(const std::string& dessin) {
  std::wstring message;
  const Acad::ErrorStatus status =
      dessin.empty() ? acDocManager->appContextNewDocument(nullptr, &message)
                     : acDocManager->appContextOpenDocument(base::fromUtf8(dessin).c_str(), &message);
  if (status != Acad::eOk) direErreur(message);
  return status == Acad::eOk;
}

bool Programme::executer() {
  return executer([](AcApSession& session) {
    session.run();
    return true;
  });
}

bool Programme::executer(const std::string& ligne) {
  return executer([&ligne](AcApSession& session) { return session.runLine(base::fromUtf8(ligne)); });
}

template <class Travail>
bool Programme::executer(Travail travail) {
  AcApSession session;
  try {
    return travail(session);
  } catch (const base::ScriptError& error) {
    const std::string position = m_source.position();
    direErreur(position.empty() ? error.message : position + " : " + error.message);
    return false;
  }
}

bool Programme::enregistrer(const std::string& sortie) {
  AcApDocument* document = curDoc();
  std::wstring message;
  if (!document) {
    direErreur("aucun dessin n'est ouvert, rien à enregistrer sous \"" + sortie + "\"");
    return false;
  }
  if (acDocManager->saveDocument(document, base::fromUtf8(sortie).c_str(), &message) == Acad::eOk)
    return true;
  direErreur(message);
  return false;
}

}  // namespace veltora::app
