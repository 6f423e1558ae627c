#include "app/shell.h"

#include "app/keys.h"
#include "app/operations.h"

namespace mw {

Shell shell;
Operations operations;
HeldInput heldInput;

}  // namespace mw
