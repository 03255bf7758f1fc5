#pragma once

#include "base/console.h"
#include "jobs/lire_liste.h"

namespace veltora::app {

/// Shows on standard output what a list of coordinates was taken for, its first rows under their columns, and
/// has a person at a terminal confirm it, answer what it leaves open, or give the columns; without anybody
/// the job goes on and decides by what is open.
/// @param source  outlives the viewer
montrerListe listViewer(base::LineSource& source);

}  // namespace veltora::app
