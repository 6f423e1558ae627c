// What the mod's four content archives hold.
#pragma once

#include <vector>

#include "sample/archive_writer.h"

namespace mw::sample {

std::vector<Member> ObjectMembers();
std::vector<Member> StandardMeshMembers();
std::vector<Member> TreeMeshMembers();
std::vector<Member> TextureMembers();

}  // namespace mw::sample
