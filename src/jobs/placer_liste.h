#pragma once

#include "jobs/resultat_points.h"
#include "points/exchange/lecture_liste.h"

#include <string>

/// The points of a list that was read or computed, placed on the installed project and the working drawing.
namespace veltora {

/// Names that a point does not hold whole, and those that stand twice.
void remarquerNoms(const listeLue& liste, base::Remarques& remarques);

/// Places the points as blocks, with their observations, and enters them in the table. A point of the table
/// that bears a name of the list is replaced; within the list the same name may stand twice. Points without a
/// name get the numbers behind the largest one. A list that names tables has them made, and the one that it
/// calls current becomes so. Texts in place of codes are looked up among the labels; a new one gets a free
/// code, and the code table is saved.
/// @param table  made when missing; empty for the current one, or those that the list names
/// @return false with `erreur` set when a block is missing or the user stops it; the points placed so far
/// stay
bool placerListe(const std::wstring& table, listeLue& liste, resultatPoints& resultat);

}  // namespace veltora
