// Edits, undoes, saves and chooses as the bytes say: the index must find what a walk over all entities finds.
#include "fuzz/fuzz.h"

#include "support/choice_trial.h"

void fuzz(std::string_view bytes) { require(ChoiceTrial(bytes.substr(0, 4096)).run().empty()); }
