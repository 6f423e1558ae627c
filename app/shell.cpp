#include "app/shell.h"

#include "app/operations.h"

namespace mw {

Shell shell;
Operations operations;

}  // namespace mw
