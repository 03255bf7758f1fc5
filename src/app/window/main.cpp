#include "app/window/session.h"

#include "app/session/call_files.h"
#include "app/session/french_arguments.h"
#include "app/session/output.h"
#include "app/window/french.h"
#include "app/window/screen.h"
#include "base/passing_file.h"

#include <CLI/CLI.hpp>
#include <QApplication>
#include <exception>

namespace {

using namespace veltora::app;

/// What is thrown while an event is handled cannot pass through the toolkit: it is told, and the session goes
/// on.
class Application : public QApplication {
public:
  using QApplication::QApplication;
  bool notify(QObject* receiver, QEvent* event) override {
    try {
      return QApplication::notify(receiver, event);
    } catch (const std::exception& error) {
      printError(std::string("erreur inattendue : ") + error.what());
    }
    return false;
  }
};

bool readCall(int argc, char** argv, WindowCall& call, int& status) {
  CLI::App app(
      "Veltora : topographie dans le dessin, dans une fenêtre.\n"
      "Les commandes sont celles du programme de terminal.",
      "veltora-fenetre");
  toFrench(app);
  app.set_version_flag("--version", std::string("veltora-fenetre ") + VELTORA_VERSION, "Affiche la version");
  app.add_option("fichiers", call.drawings,
                 "Dessins à ouvrir, un par onglet ; observations à reprendre (.obs, .mc, .xyz, .gsi)")
      ->type_name("FICHIER");
  app.add_option("--script", call.script,
                 "Lit les lignes de ce fichier au lieu de la fenêtre, puis se termine")
      ->type_name("FICHIER");
  app.add_option("--commande", call.lines, "Exécute une ligne, puis se termine ; peut être répété")
      ->type_name("LIGNE")
      ->expected(1)
      ->take_all();
  app.add_option("--sortie", call.output, "Enregistre le dessin à la fin")->type_name("DESSIN");
  app.add_option("--image", call.image, "Écrit à la fin une image de la fenêtre (.png)")->type_name("IMAGE");
  declareFiles(app)
      .reads(call.script)
      .writes(call.output, FileKind::kDrawing)
      .writes(call.image, FileKind::kPlan);
  return parse(app, argc, argv, status);
}

int run(int argc, char** argv) {
  int status = kSuccess;
  WindowCall call;
  if (!readCall(argc, argv, call, status)) return status;
  if (!screenIsThere()) {
    printError(
        std::string("aucun écran n'est accessible, la fenêtre ne peut pas s'ouvrir ; dans une session "
                    "graphique, ou avec le programme de terminal : veltora"));
    return kFailure;
  }
  // Options of the toolkit are none of the program's.
  int count = 1;
  Application application(count, argv);
  speakFrench();
  status = runWindow(call);
  return outputWritten() ? status : kFailure;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    veltora::base::surveillerSignaux();
    return run(argc, argv);
  } catch (const std::exception& error) {
    printError(std::string("erreur inattendue : ") + error.what());
    return kFailure;
  }
}
