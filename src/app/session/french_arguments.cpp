#include "app/session/french_arguments.h"

#include "app/session/call_files.h"
#include "app/session/output.h"

#include <CLI/CLI.hpp>
#include <iostream>

namespace veltora::app {
namespace {

/// "Could not convert: --option = value" of a number that is none.
std::string inFrenchConversion(const std::string& text) {
  const std::size_t name = text.find("--");
  const std::size_t equal = text.find(" = ", name);
  if (name == std::string::npos || equal == std::string::npos)
    return "valeur refusée : un nombre est attendu";
  return "valeur refusée : " + text.substr(name, equal - name) + " : « " + text.substr(equal + 3) +
         " » n'est pas un nombre";
}

std::string inFrench(const CLI::ParseError& error) {
  const std::string text = error.what();
  if (dynamic_cast<const CLI::ExtrasError*>(&error)) {
    return "argument inattendu : " +
           text.substr(text.find(": ") == std::string::npos ? 0 : text.find(": ") + 2);
  }
  if (dynamic_cast<const CLI::RequiresError*>(&error))
    return "options incomplètes : " + text.substr(text.rfind(' ') + 1) + " manque";
  if (dynamic_cast<const CLI::ExcludesError*>(&error))
    return "options incompatibles : " + text.substr(0, text.find(' ')) + " et " +
           text.substr(text.rfind(' ') + 1);
  const std::string name = text.substr(0, text.find_first_of(": "));
  if (dynamic_cast<const CLI::RequiredError*>(&error)) return "argument obligatoire manquant : " + name;
  if (dynamic_cast<const CLI::ArgumentMismatch*>(&error)) return "valeur manquante ou en trop : " + name;
  if (dynamic_cast<const CLI::ConversionError*>(&error)) return inFrenchConversion(text);
  if (dynamic_cast<const CLI::ValidationError*>(&error)) {
    const std::size_t reason = text.find(": « ");  // of our own checks
    return "valeur refusée : " + name + (reason == std::string::npos ? "" : " " + text.substr(reason));
  }
  return "arguments refusés : " + text;
}

}  // namespace

void toFrench(CLI::App& app) {
  const auto formatter = app.get_formatter();
  formatter->label("Usage", "Utilisation");
  formatter->label("OPTIONS", "OPTIONS");
  formatter->label("Needs", "avec");
  formatter->label("Excludes", "sans");
  formatter->label("SUBCOMMAND", "TRAVAIL");
  formatter->label("SUBCOMMANDS", "TRAVAIL");
  formatter->label("Positionals", "Arguments");
  formatter->label("REQUIRED", "(obligatoire)");
  formatter->label("TEXT", "TEXTE");
  formatter->label("INT", "ENTIER");
  formatter->label("Options", "Options");
  app.set_help_flag("-h,--help", "Affiche cette aide");
}

bool parse(CLI::App& app, int argc, char** argv, int& status) {
  try {
    app.parse(argc, argv);
    return true;
  } catch (const CLI::Success& done) {
    status = app.exit(done, std::cout, std::cerr) == 0 ? kSuccess : kBadCall;
  } catch (const BadCall& error) {
    printError(std::string(error.what()));
    status = kBadCall;
  } catch (const CLI::ParseError& error) {
    printError(inFrench(error) + "\nEssayez « " + app.get_name() + " --help ».");
    status = kBadCall;
  }
  return false;
}

}  // namespace veltora::app
