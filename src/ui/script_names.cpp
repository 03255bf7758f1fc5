#include "ui/script_names.h"

#include <algorithm>

namespace veltora::ui {
namespace {

/// Longer texts are no names; keeps the search for "/" short on whatever a script holds.
constexpr std::size_t kLongestName = 300;

void addEntries(std::vector<Target>& targets, Menu& menu,
                const std::vector<std::unique_ptr<Menu::Entry>>& entries,
                const std::vector<std::wstring>& scopes) {
  for (const auto& entry : entries) {
    if (entry->separator()) continue;
    const std::wstring name = readableText(entry->caption());
    if (entry->entries().empty()) {
      targets.push_back({&menu, -1, entry.get(), name, scopes});
      continue;
    }
    std::vector<std::wstring> inner = scopes;
    inner.push_back(name);
    addEntries(targets, menu, entry->entries(), inner);
  }
}

void addControl(std::vector<Target>& targets, Control& control, std::vector<std::wstring> scopes) {
  const std::vector<std::wstring> names = control.names();
  if (Control* neighbour = control.neighbour()) scopes.push_back(neighbour->names().front());
  for (std::size_t i = 0; i < names.size(); ++i) {
    targets.push_back({&control, names.size() > 1 ? static_cast<int>(i) : -1, nullptr, names[i], scopes});
  }
  if (!control.plainCaption().empty()) scopes.push_back(names.front());
  if (const auto* radio = dynamic_cast<RadioGroup*>(&control)) {
    Control* const frame = control.parent() ? control.parent()->asControl() : nullptr;
    if (control.plainCaption().empty() && dynamic_cast<Group*>(frame) && !frame->plainCaption().empty()) {
      const std::vector<std::wstring> outer(scopes.begin(), scopes.end() - 1);
      targets.push_back({&control, -1, nullptr, frame->names().front(), outer, true});
    }
    for (std::size_t i = 0; i < radio->items().size(); ++i) {
      targets.push_back({&control, static_cast<int>(i), nullptr, readableText(radio->items()[i]), scopes});
    }
  }
  if (auto* menu = dynamic_cast<Menu*>(&control)) addEntries(targets, *menu, menu->entries(), scopes);
}

void addAll(std::vector<Target>& targets, const Container& container,
            const std::vector<std::wstring>& scopes) {
  for (Control* control : container.controls()) {
    addControl(targets, *control, scopes);
    const auto* inner = dynamic_cast<const Container*>(control);
    if (!inner) continue;
    std::vector<std::wstring> innerScopes = scopes;
    if (!control->plainCaption().empty()) innerScopes.push_back(control->names().front());
    addAll(targets, *inner, innerScopes);
  }
}

/// True when `text` is the names of some of the scopes from `first` on, in order, joined by "/".
bool inScopes(std::wstring_view text, const std::vector<std::wstring>& scopes, std::size_t first) {
  for (std::size_t i = first; i < scopes.size(); ++i) {
    const std::wstring scope = comparable(scopes[i]);
    if (comparable(text) == scope) return true;
    for (std::size_t at = text.find(L'/'); at != std::wstring_view::npos; at = text.find(L'/', at + 1)) {
      if (comparable(text.substr(0, at)) == scope && inScopes(text.substr(at + 1), scopes, i + 1))
        return true;
    }
  }
  return false;
}

}  // namespace

std::wstring Target::path() const { return scopes.empty() ? name : scopes.back() + L"/" + name; }

bool Target::inView() const {
  for (const Control* c = control; c; c = c->parent() ? c->parent()->asControl() : nullptr) {
    const auto* page = dynamic_cast<const Page*>(c);
    if (!c->visible() || (page && c != control && !page->inFront())) return false;
  }
  return true;
}

std::vector<Target> targetsOf(const Container& container) {
  std::vector<Target> targets;
  addAll(targets, container, {});
  return targets;
}

bool isNamed(const Target& target, std::wstring_view text) {
  if (text.size() > kLongestName) return false;
  const std::wstring name = comparable(target.name);
  if (name.empty()) return false;
  if (comparable(text) == name) return true;
  for (std::size_t at = text.find(L'/'); at != std::wstring_view::npos; at = text.find(L'/', at + 1)) {
    if (comparable(text.substr(at + 1)) == name && inScopes(text.substr(0, at), target.scopes, 0))
      return true;
  }
  return false;
}

}  // namespace veltora::ui
