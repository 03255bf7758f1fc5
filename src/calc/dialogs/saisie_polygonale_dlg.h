#pragma once

#include "calc/traverse/obs_polygonale.h"
#include "calc/traverse/polygonale.h"
#include "ui/dialog.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

/// What the two traverse dialogs share.
namespace veltora {

/// The words of units and levelling modes, the first of each in force.
void preparerModes(ui::ComboBox& angles, ui::ComboBox& nivellement);
/// The four columns of a traverse list.
void preparerListe(ui::List& liste);
void ajouterLigne(ui::List& liste, const ligneObs& ligne);
/// In place of the rows that stand there.
void montrerLignes(ui::List& liste, const std::vector<ligneObs>& lignes);
/// Removes the selected row, else the last one; nothing is selected afterwards.
void enleverLigne(ui::List& liste);
[[nodiscard]] std::vector<ligneObs> lignesDe(const ui::List& liste);

/// False after a message when a list has fewer than two rows.
[[nodiscard]] bool donneesSuffisantes(const ui::List& liste);

/// False after a message when stations cannot be placed.
[[nodiscard]] bool placables(const std::vector<stationCalculee>& stations, bool altitudes);

/// Asks for a traverse file to read; nothing when the user cancels.
[[nodiscard]] std::optional<std::filesystem::path> choisirObsALire();
/// Asks for a traverse file to write, its name put in order.
[[nodiscard]] std::optional<std::filesystem::path> choisirObsAEcrire();
/// Gives the content to `lire`; a file that cannot be opened is passed over in silence, an
/// exception becomes a message.
void lireObs(const std::filesystem::path& chemin, const std::function<void(const std::string& octets)>& lire);
/// Writes the content; a failure becomes the same message.
void ecrireObs(const std::filesystem::path& chemin, const std::function<std::string()>& contenu);

}  // namespace veltora
