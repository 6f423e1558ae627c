#include "objects/entity_scripts.h"

namespace mw {

void ReadGameModeFiles() {}
void WriteGameModeFiles() {}

}  // namespace mw
