#pragma once

#include "arx/adesk.h"
#include "base/export.h"
#include "base/uncopyable.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace veltora {

/// The text that follows in a count on the letters A to Z: empty gives "A", "AZ" gives "BA", "Z" gives "AA".
/// A last character other than "Z" moves up by one character code, whatever it is: "B1" gives "B2".
VELTORA_API std::wstring successeurLettres(std::wstring_view texte);

/// Hands out names made of a prefix, a running part and a suffix.
class VELTORA_API numeroteur : private Uncopyable {
public:
  /// The next name; moves on.
  virtual AcString suivant() = 0;
  virtual void incrementerSuffixe() { suffixe = successeurLettres(suffixe); }
  virtual void incrementerPrefixe() { prefixe = successeurLettres(prefixe); }
  /// Leaves one name out.
  virtual void avancer() = 0;
  virtual ~numeroteur() = default;

  AcString prefixe;
  AcString suffixe;

protected:
  numeroteur() = default;
};

/// The running part is an integer. Beyond the largest one it goes on at the smallest.
class VELTORA_API numeroteurEntier : public numeroteur {
public:
  /// Sets everything but `depart`.
  void initialiser(const AcString& nouveauPrefixe, int numeroDepart, const AcString& nouveauSuffixe,
                   int nouveauPas);

  AcString suivant() override;
  void incrementerSuffixe() override;  ///< the number returns to `depart`, likewise with the prefix
  void incrementerPrefixe() override;
  // Deliberate (avancer-sans-pas): by one, whatever the step is.
  void avancer() override { ajouter(1); }
  /// The next number. @param puisAvancer  goes on by 1 afterwards
  virtual int numero(bool puisAvancer);

  std::int32_t courant = 1;  ///< the next number
  std::int32_t pas = 1;      ///< from one name to the next
  std::int32_t depart = 1;   ///< where the count begins again when prefix or suffix change

private:
  void ajouter(std::int32_t nombre);
};

/// "%s%d%s" of prefix, start + rang, suffix: the name of a row when a whole table is numbered anew.
VELTORA_API AcString nomNumerote(const AcString& prefixe, int depart, std::size_t rang,
                                 const AcString& suffixe);

}  // namespace veltora
