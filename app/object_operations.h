// Connects the shell with the objects house: static objects, entities and the Object Mapper.
#pragma once

namespace mw {

void ConnectObjectOperations();

}  // namespace mw
