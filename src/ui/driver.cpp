#include "ui/driver.h"

#include "base/text.h"
#include "ui/progress.h"

#include <utility>

namespace veltora::ui {
namespace {

Driver*& current() {
  static Driver* installed = nullptr;
  return installed;
}

}  // namespace

std::vector<MessageButton> buttonsOf(Buttons buttons) {
  switch (buttons) {
    case Buttons::OkCancel:
      return {{L"OK", kOk}, {L"Annuler", kCancel}};
    case Buttons::YesNo:
      return {{L"Oui", kYes}, {L"Non", kNo}};
    case Buttons::YesNoCancel:
      return {{L"Oui", kYes}, {L"Non", kNo}, {L"Annuler", kCancel}};
    case Buttons::Ok:
      break;
  }
  return {{L"OK", kOk}};
}

NoDriver::NoDriver(const std::wstring& title)
    : std::runtime_error("Aucun pilote de dialogue n'est installé : « " + base::toUtf8(title) +
                         " » ne peut pas être affiché.") {}

Driver* driver() { return current(); }

Driver* setDriver(Driver* driver) {
  base::setPortSuivi(driver);
  return std::exchange(current(), driver);
}

std::unique_ptr<base::AfficheurSuivi> Driver::ouvrirSuivi() {
  oublierArret();
  return std::make_unique<DialogueSuivi>();
}

int messageBox(const std::wstring& text, const std::wstring& title, Buttons buttons) {
  if (!driver()) throw NoDriver(title.empty() ? text : title);
  return driver()->messageBox(text, title, buttons);
}

std::optional<base::FileAnswer> chooseFile(const base::FileRequest& request) {
  if (!driver()) throw NoDriver(request.title.empty() ? L"Choix d'un fichier" : request.title);
  return driver()->chooseFile(request);
}

void copyToClipboard(const std::wstring& text) {
  if (!driver()) throw NoDriver(L"Presse-papier");
  driver()->copyText(text);
}

}  // namespace veltora::ui
