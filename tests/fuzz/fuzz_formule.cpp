// Parses any bytes as a formula, evaluates it in both ways and prints it: the printed form of a whole tree is
// a formula that prints the same.
#include "fuzz/fuzz.h"

#include "calc/formule.h"

#include <bit>

using namespace veltora;

namespace {

std::uint64_t bits(double value) { return std::bit_cast<std::uint64_t>(value); }

/// The printed form nests deeper than the formula does; a longer one may not parse.
constexpr std::size_t kPrintedMax = 1000;

}  // namespace

void fuzz(std::string_view bytes) {
  tableVariables variables;
  variables.definir("d1", 12.5);
  variables.definir("d2", -3.0);
  variables.definir("ang", 0.0);
  formule tree;
  const bool whole = tree.analyser(bytes);
  const std::uint64_t value = bits(tree.evaluer(variables, false));
  require(bits(tree.evaluer(variables, true)) == value);  // fills the places of the names
  require(bits(tree.evaluer(variables, true)) == value);  // uses them
  std::vector<std::string> names;
  tree.listerVariables(names);
  for (const std::string& name : names) require(!name.empty());
  std::string printed;
  tree.imprimer(printed);
  require(!printed.empty());
  // An overflowing number prints as "inf", which reads as a name.
  const bool readable =
      printed.find_first_of("#!") == std::string::npos && printed.find("inf") == std::string::npos;
  if (!whole || !readable || printed.size() > kPrintedMax) return;
  formule again;
  require(again.analyser(printed));
  std::string printedAgain;
  again.imprimer(printedAgain);
  require(printedAgain == printed);
}
