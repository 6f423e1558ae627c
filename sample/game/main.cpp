// varnhold.exe: a stand-in for the game that the sample installation belongs to. It does, in small,
// what the editor asks the game for.
#include <filesystem>

#include "platform/console.h"
#include "sample/game/game_commands.h"

int main(int argc, char** argv) {
  return mw::sample::RunGame(mw::ConsoleWords(argc, argv), std::filesystem::current_path());
}
