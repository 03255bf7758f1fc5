#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The words of a line of a field book with their signs, in metres and grades.
namespace veltora {

struct motLeve {
  int indice = 0;
  char unite = '.';   ///< its character in the file
  std::string texte;  ///< the data without outer blanks and leading zeros, in Windows-1252
  double valeur = 0.0;
  bool lisible =
      true;  ///< false when a measure's data are no number, or of a unit that measures nothing like it
};

/// @param ligne  in Windows-1252, without its end  @param entiere  false when a word was lost at the end
std::vector<motLeve> motsLeve(std::string_view ligne, bool& entiere);

}  // namespace veltora
