#include "ui/script_line.h"

#include "base/console.h"
#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"
#include "ui/kinds.h"

#include <algorithm>
#include <numeric>
#include <optional>

namespace veltora::ui {
namespace {

constexpr std::size_t kNamesInMessage = 30;

[[noreturn]] void refuse(const std::wstring& message) { throw base::ScriptError{base::toUtf8(message)}; }

std::wstring guillemets(std::wstring_view text) { return L"« " + base::trim(text) + L" »"; }

std::wstring join(const std::vector<std::wstring>& texts) {
  std::wstring result;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    if (i == kNamesInMessage) return result + L", …";
    result += (i ? L", " : L"") + texts[i];
  }
  return result;
}

using Accepts = bool (*)(const Target&);

/// A frame itself goes before the radio buttons that it names.
bool isAnything(const Target& target) { return !target.byFrame; }

/// "Légende = valeur" and "[Légende]".
struct Forms {
  bool settable;
  bool pressable;
};

Forms formsOf(const Target& target) {
  const Forms set{true, false};
  const Forms pressed{false, true};
  const Forms neither{false, false};
  return visit(
      *target.control, [&](const TextField*) { return set; }, [&](const ComboBox*) { return set; },
      [&](const Pages*) { return set; },
      [&](const RadioGroup*) {
        return Forms{true, target.item >= 0};
      },
      [&](const CheckBox* check) {
        return Forms{true, target.item < 0 || (target.item == 1) == check->checked()};
      },
      [&](const Menu*) {
        return Forms{false, target.entry != nullptr};
      },
      [&](const Button*) { return pressed; }, [&](const Page*) { return pressed; },
      [&](const Preview*) { return pressed; }, [&](const Group*) { return neither; },
      [&](const Label*) { return neither; }, [&](const List*) { return neither; },
      [&](const ProgressBar*) { return neither; }, [&](const WebView*) { return neither; });
}

bool isSettable(const Target& target) { return formsOf(target).settable; }

bool isPressable(const Target& target) { return formsOf(target).pressable; }

bool isList(const Target& target) { return dynamic_cast<const List*>(target.control); }

/// Finds what the parts of one line name.
class Finder {
public:
  explicit Finder(const Dialog& dialog) : m_dialog(dialog), m_targets(targetsOf(dialog)) {}

  [[nodiscard]] bool knows(std::wstring_view name, Accepts accepts) const {
    return std::any_of(m_targets.begin(), m_targets.end(),
                       [&](const Target& t) { return accepts(t) && isNamed(t, name); });
  }

  /// The one target of that name; what is in view goes before what is not.
  [[nodiscard]] const Target& only(std::wstring_view name, Accepts accepts, const std::wstring& form) const {
    std::vector<const Target*> found;
    for (const Target& t : m_targets) {
      if (accepts(t) && isNamed(t, name)) found.push_back(&t);
    }
    if (found.empty()) failUnknown(name, accepts, form);
    const auto hidden = [](const Target* t) { return !t->inView(); };
    if (found.size() > 1 && !std::all_of(found.begin(), found.end(), hidden)) std::erase_if(found, hidden);
    if (found.size() == 1) return *found.front();
    std::vector<std::wstring> paths;
    for (const Target* t : found) paths.push_back(t->path());
    refuse(guillemets(name) + L" désigne plusieurs éléments de " + guillemets(m_dialog.title()) + L" : " +
           join(paths) + L".");
  }

  /// The name, with its scope when another target bears it too.
  [[nodiscard]] std::wstring distinctName(const Target& t) const {
    const auto twin = [&t](const Target& other) { return &other != &t && other.name == t.name; };
    return std::any_of(m_targets.begin(), m_targets.end(), twin) ? t.path() : t.name;
  }
  [[nodiscard]] const std::vector<Target>& targets() const { return m_targets; }

  [[noreturn]] void failUnknown(std::wstring_view name, Accepts accepts, const std::wstring& form) const {
    std::vector<std::wstring> names;
    for (const Target& t : m_targets) {
      if (accepts(t) && t.inView()) names.push_back(distinctName(t));
    }
    const std::wstring expected =
        names.empty() ? L"rien de tel dans cette boîte" : form + L" avec " + join(names);
    refuse(guillemets(name) + L" ne désigne rien dans " + guillemets(m_dialog.title()) + L". Attendu : " +
           expected + L".");
  }

private:
  const Dialog& m_dialog;
  std::vector<Target> m_targets;
};

/// Brings the pages in front that the control lies on. @return false when the focus was held back
bool bringToFront(Hand& hand, const Control& control) {
  Control* outer = control.parent() ? control.parent()->asControl() : nullptr;
  if (!outer) return true;
  if (!bringToFront(hand, *outer)) return false;
  const auto* page = dynamic_cast<const Page*>(outer);
  return !page || page->inFront() || hand.choose(page->pages(), page->pages().indexOf(*page));
}

/// Refuses what the user could not reach. @return false when the focus was held back on the way
bool reach(Hand& hand, const Target& target) {
  if (!target.control->shown()) refuse(guillemets(target.path()) + L" est masqué.");
  if (!target.control->usable()) refuse(guillemets(target.path()) + L" est désactivé.");
  if (target.entry && !target.entry->enabled()) refuse(guillemets(target.path()) + L" est désactivé.");
  return bringToFront(hand, *target.control);
}

/// Index of a choice by its text, by "#" and its number from 1, or by the beginning of one text only.
std::optional<int> choice(const std::vector<std::wstring>& items, const std::wstring& value,
                          bool byBeginning) {
  const std::wstring wanted = comparable(value);
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (comparable(items[i]) == wanted) return static_cast<int>(i);
  }
  if (value.size() > 1 && value[0] == L'#') {
    const int number = base::lireEntier(std::wstring_view(value).substr(1));
    if (number >= 1 && static_cast<std::size_t>(number) <= items.size()) return number - 1;
  }
  std::optional<int> found;
  for (std::size_t i = 0; byBeginning && !wanted.empty() && i < items.size(); ++i) {
    if (!comparable(items[i]).starts_with(wanted)) continue;
    if (found) return std::nullopt;
    found = static_cast<int>(i);
  }
  return found;
}

int choiceOrFail(const Target& target, const std::vector<std::wstring>& items, const std::wstring& value) {
  const std::optional<int> found = choice(items, value, true);
  if (found) return *found;
  std::vector<std::wstring> names;
  for (const std::wstring& item : items) names.push_back(plainText(item));
  refuse(guillemets(value) + L" n'est pas un choix de " + guillemets(target.path()) + L". Attendu : " +
         join(names) + L".");
}

bool yesOrNo(const Target& target, const std::wstring& value) {
  const std::wstring text = comparable(value);
  if (text == L"oui" || text == L"o" || text == L"1") return true;
  if (text == L"non" || text == L"n" || text == L"0") return false;
  refuse(guillemets(value) + L" ne convient pas à " + guillemets(target.path()) + L". Attendu : oui ou non.");
}

/// The text of a value: quotation marks around it keep outer blanks, "\n" in a text area is a line end.
std::wstring typedText(const TextField& field, std::wstring value) {
  if (value.size() > 1 && value.front() == L'"' && value.back() == L'"')
    value = value.substr(1, value.size() - 2);
  if (!field.multiline()) return value;
  std::wstring text;
  for (std::size_t i = 0; i < value.size(); ++i) {
    const wchar_t next = i + 1 < value.size() ? value[i + 1] : L'\0';
    if (value[i] != L'\\' || (next != L'n' && next != L'\\'))
      text += value[i];
    else
      text += value[++i] == L'n' ? L'\n' : L'\\';
  }
  return text;
}

bool setField(Hand& hand, const Target& target, TextField& field, const std::wstring& value) {
  if (field.readOnly()) refuse(guillemets(target.path()) + L" est en lecture seule.");
  return hand.type(field, typedText(field, value));
}

bool setCombo(Hand& hand, const Target& target, ComboBox& combo, const std::wstring& value) {
  std::vector<std::wstring> items;
  for (int i = 0; i < combo.count(); ++i) items.push_back(combo.item(i));
  if (!combo.editable()) return hand.choose(combo, choiceOrFail(target, items, value));
  const std::optional<int> found = choice(items, value, false);
  return found ? hand.choose(combo, *found) : hand.type(combo, value);
}

bool setRadio(Hand& hand, const Target& target, RadioGroup& radio, const std::wstring& value) {
  int index = target.item;
  if (index < 0)
    index = choiceOrFail(target, radio.items(), value);
  else if (!yesOrNo(target, value))
    refuse(guillemets(target.path()) + L" ne se décoche pas : choisissez un autre bouton.");
  if (!radio.itemEnabled(index))
    refuse(guillemets(radio.items()[static_cast<std::size_t>(index)]) + L" est désactivé.");
  return hand.choose(radio, index);
}

bool setPages(Hand& hand, const Target& target, Pages& pages, const std::wstring& value) {
  std::vector<std::wstring> captions;
  for (int i = 0; i < pages.count(); ++i) captions.push_back(pages.page(i)->caption());
  return hand.choose(pages, choiceOrFail(target, captions, value));
}

/// "Légende = valeur".
bool assign(Hand& hand, const Target& target, const std::wstring& value) {
  if (!reach(hand, target)) return false;
  if (auto* field = dynamic_cast<TextField*>(target.control)) return setField(hand, target, *field, value);
  if (auto* combo = dynamic_cast<ComboBox*>(target.control)) return setCombo(hand, target, *combo, value);
  if (auto* radio = dynamic_cast<RadioGroup*>(target.control)) return setRadio(hand, target, *radio, value);
  if (auto* pages = dynamic_cast<Pages*>(target.control)) return setPages(hand, target, *pages, value);
  auto& check = dynamic_cast<CheckBox&>(*target.control);
  // Of a push-like box, the caption of the released state says the contrary.
  return hand.set(check, yesOrNo(target, value) == (target.item != 0));
}

/// "[Légende]".
bool press(Hand& hand, const Target& target) {
  if (!reach(hand, target)) return false;
  if (target.entry) return hand.press(dynamic_cast<Menu&>(*target.control), *target.entry);
  if (auto* button = dynamic_cast<Button*>(target.control)) return hand.press(*button);
  if (auto* check = dynamic_cast<CheckBox*>(target.control)) return hand.toggle(*check);
  if (auto* radio = dynamic_cast<RadioGroup*>(target.control)) return setRadio(hand, target, *radio, L"oui");
  if (auto* page = dynamic_cast<Page*>(target.control))
    return hand.choose(page->pages(), page->pages().indexOf(*page));
  return hand.press(dynamic_cast<Preview&>(*target.control));
}

/// A row number of a script, from 1.
int rowNumber(const Target& target, const List& list, const std::wstring& text) {
  const bool digits = !text.empty() && text.find_first_not_of(L"0123456789") == std::wstring::npos;
  if (!digits)
    refuse(guillemets(text) + L" n'est pas un numéro de ligne de " + guillemets(target.path()) + L".");
  const int number = base::lireEntier(text);
  if (number >= 1 && number <= list.rowCount()) return number - 1;
  refuse(base::formater(std::wstring(L"%s n'a pas de ligne %s (lignes : %d)."), guillemets(target.path()),
                        text, list.rowCount()));
}

/// Rows as a script gives them: "*", or numbers and ranges ("2-5") between blanks or commas; in order, each
/// once.
std::vector<int> rowNumbers(const Target& target, const List& list, std::wstring_view text) {
  std::vector<int> rows;
  if (base::trim(text) == L"*") {
    rows.resize(static_cast<std::size_t>(list.rowCount()));
    std::iota(rows.begin(), rows.end(), 0);
    return rows;
  }
  std::vector<bool> taken(static_cast<std::size_t>(list.rowCount()), false);
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t first = text.find_first_not_of(L" \t,", at);
    if (first == std::wstring_view::npos) break;
    at = std::min(text.find_first_of(L" \t,", first), text.size());
    const std::wstring token(text.substr(first, at - first));
    const std::size_t dash = token.find(L'-');
    const int low = rowNumber(target, list, token.substr(0, dash));
    const int high = dash == std::wstring::npos ? low : rowNumber(target, list, token.substr(dash + 1));
    for (int row = low; row <= high; ++row) {
      if (!taken[static_cast<std::size_t>(row)]) rows.push_back(row);
      taken[static_cast<std::size_t>(row)] = true;
    }
  }
  return rows;
}

/// "Liste: 1 3".
bool selectRows(Hand& hand, const Target& target, std::wstring_view text) {
  auto& list = dynamic_cast<List&>(*target.control);
  const std::vector<int> rows = rowNumbers(target, list, text);
  const bool single = list.selectionMode() == List::Selection::Single;
  if (single && rows.size() > 1) refuse(guillemets(target.path()) + L" n'accepte qu'une ligne à la fois.");
  if (!reach(hand, target)) return false;
  return base::trim(text) == L"*" && !single ? hand.selectAll(list) : hand.select(list, rows);
}

/// "Liste [1 3] = oui".
bool checkRows(Hand& hand, const Target& target, std::wstring_view text, const std::wstring& value) {
  auto& list = dynamic_cast<List&>(*target.control);
  if (!list.checkBoxes()) refuse(guillemets(target.path()) + L" n'a pas de cases à cocher.");
  const std::vector<int> rows = rowNumbers(target, list, text);
  const bool checked = yesOrNo(target, value);
  if (!reach(hand, target)) return false;
  bool done = true;
  for (const int row : rows) done = hand.check(list, row, checked) && done;
  return done;
}

/// The column of a title, or of a number from 1.
int columnNumber(const Target& target, const List& list, std::wstring_view text) {
  std::vector<std::wstring> captions;
  for (const List::Column& column : list.columns()) captions.push_back(column.caption);
  const std::wstring wanted = base::trim(text);
  std::optional<int> found = choice(captions, wanted, false);
  if (!found) found = choice(captions, L"#" + wanted, false);
  if (!found) {
    refuse(guillemets(target.path()) + L" n'a pas de colonne " + guillemets(text) + L". Attendu : " +
           join(captions) + L".");
  }
  return *found;
}

/// "Liste ^ Colonne".
bool clickColumn(Hand& hand, const Target& target, std::wstring_view text) {
  auto& list = dynamic_cast<List&>(*target.control);
  const int column = columnNumber(target, list, text);
  return reach(hand, target) && hand.clickColumn(list, column);
}

/// "Liste 2 ^ Colonne = texte".
bool editCell(Hand& hand, const Target& target, std::wstring_view rowText, std::wstring_view columnText,
              const std::wstring& value) {
  auto& list = dynamic_cast<List&>(*target.control);
  const int row = rowNumber(target, list, std::wstring(rowText));
  const int column = columnNumber(target, list, columnText);
  if (!list.editable(column))
    refuse(L"La colonne " + guillemets(columnText) + L" de " + guillemets(target.path()) +
           L" ne se modifie pas.");
  return reach(hand, target) && hand.edit(list, row, column, value);
}

/// Places of a sign in a line, in order or from the end, that leave something in front.
std::vector<std::size_t> places(std::wstring_view line, wchar_t sign) {
  std::vector<std::size_t> found;
  for (std::size_t at = line.find(sign, 1); at != std::wstring_view::npos && at < 300;
       at = line.find(sign, at + 1))
    found.push_back(at);
  return found;
}

/// "Légende = valeur", "Liste 2 ^ Colonne = texte" and "Liste [1 3] = oui". Captions may hold "=" too: the
/// first sign that has a name in front.
std::optional<bool> tryAssign(Hand& hand, const Finder& find, std::wstring_view line) {
  const std::vector<std::size_t> signs = places(line, L'=');
  for (const std::size_t at : signs) {
    const std::wstring left = base::trim(line.substr(0, at));
    const std::wstring value = base::trim(line.substr(at + 1));
    if (find.knows(left, isSettable))
      return assign(hand, find.only(left, isSettable, L"« Légende = valeur »"), value);
    const std::size_t sign = left.rfind(L'^');
    if (sign != std::wstring::npos) {
      const std::wstring cell = base::trim(left.substr(0, sign));
      const std::size_t blank = cell.find_last_of(L" \t");
      if (blank != std::wstring::npos && find.knows(cell.substr(0, blank), isList))
        return editCell(hand, find.only(cell.substr(0, blank), isList, {}), cell.substr(blank + 1),
                        left.substr(sign + 1), value);
    }
    const std::size_t bracket = left.rfind(L'[');
    if (bracket == std::wstring_view::npos || left.back() != L']' ||
        !find.knows(left.substr(0, bracket), isList))
      continue;
    const Target& list = find.only(left.substr(0, bracket), isList, {});
    return checkRows(hand, list, std::wstring_view(left).substr(bracket + 1, left.size() - bracket - 2),
                     value);
  }
  if (signs.empty()) return std::nullopt;
  const std::wstring left = base::trim(line.substr(0, signs.front()));
  if (find.knows(left, isAnything)) refuse(guillemets(left) + L" ne reçoit pas de valeur.");
  find.failUnknown(left, isSettable, L"« Légende = valeur »");
}

/// "Liste 2 !", "Liste ^ Colonne", "Liste: 1 3".
std::optional<bool> tryList(Hand& hand, const Finder& find, std::wstring_view line) {
  if (line.back() == L'!') {
    const std::wstring text = base::trim(line.substr(0, line.size() - 1));
    const std::size_t blank = text.find_last_of(L" \t");
    if (blank != std::wstring_view::npos && find.knows(text.substr(0, blank), isList)) {
      const Target& target = find.only(text.substr(0, blank), isList, {});
      auto& list = dynamic_cast<List&>(*target.control);
      const int row = rowNumber(target, list, text.substr(blank + 1));
      return reach(hand, target) && hand.doubleClick(list, row);
    }
  }
  for (const std::size_t at : places(line, L'^')) {
    if (find.knows(line.substr(0, at), isList)) {
      return clickColumn(hand, find.only(line.substr(0, at), isList, {}), line.substr(at + 1));
    }
  }
  for (const std::size_t at : places(line, L':')) {
    if (find.knows(line.substr(0, at), isList)) {
      return selectRows(hand, find.only(line.substr(0, at), isList, {}), line.substr(at + 1));
    }
  }
  return std::nullopt;
}

/// What can stand behind "Légende = "; nothing for a text.
std::vector<std::wstring> valuesOf(const Control& control) {
  std::vector<std::wstring> values;
  if (const auto* combo = dynamic_cast<const ComboBox*>(&control))
    for (int i = 0; i < combo->count(); ++i) values.push_back(plainText(combo->item(i)));
  if (const auto* pages = dynamic_cast<const Pages*>(&control))
    for (int i = 0; i < pages->count(); ++i) values.push_back(pages->page(i)->plainCaption());
  if (const auto* radio = dynamic_cast<const RadioGroup*>(&control))
    for (const std::wstring& item : radio->items()) values.push_back(plainText(item));
  if (dynamic_cast<const CheckBox*>(&control)) values = {L"oui", L"non"};
  return values;
}

/// A radio button or a state of a push-like box is pressed, a read-only field only read.
bool isFilledIn(const Target& target) {
  const auto* field = dynamic_cast<const TextField*>(target.control);
  return isSettable(target) && target.item < 0 && !(field && field->readOnly());
}

}  // namespace

std::vector<std::wstring> possibleLines(const Dialog& dialog) {
  const Finder find(dialog);
  std::vector<std::wstring> lines;
  for (const Target& target : find.targets()) {
    if (!target.inView() || !target.control->usable() || (target.entry && !target.entry->enabled())) continue;
    const std::wstring name = find.distinctName(target);
    if (isPressable(target)) lines.push_back(L"[" + name + L"]");
    if (isList(target)) lines.push_back(name + L": ");
    if (!isFilledIn(target)) continue;
    lines.push_back(name + L" = ");
    for (const std::wstring& value : valuesOf(*target.control)) lines.push_back(name + L" = " + value);
  }
  return lines;
}

LineResult applyLine(Dialog& dialog, std::wstring_view line, Hand& hand) {
  const Finder find(dialog);
  if (line.front() == L'[' && line.back() == L']') {
    const std::wstring_view name = line.substr(1, line.size() - 2);
    return {press(hand, find.only(name, isPressable, L"« [Légende] »")), nullptr};
  }
  if (line.back() == L'?') {
    const std::wstring_view name = line.substr(0, line.size() - 1);
    if (find.knows(name, isAnything)) return {true, find.only(name, isAnything, {}).control};
  }
  std::optional<bool> done = tryList(hand, find, line);
  if (!done) done = tryAssign(hand, find, line);
  if (done) return {*done, nullptr};
  refuse(
      L"Ligne incomprise dans " + guillemets(dialog.title()) + L" : " + guillemets(line) +
      L". Attendu : « Légende = valeur », « [Bouton] », « Liste: 1 3 », « Liste 2 ! », « Liste ^ Colonne », "
      L"« Liste 2 ^ Colonne = texte » ou « ? ».");
}

}  // namespace veltora::ui
