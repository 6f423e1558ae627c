// Writes the sample game with the program that comes for it, make_sample, and shows how far it is.
#pragma once

#include <string>

#include "app/sample_game.h"

class QWidget;

namespace mw {

// Whether that program lies where this one does.
bool HasSampleGameWriter();

// Into two new folders. The windows stay alive meanwhile; Cancel ends the writing, and then what is
// in the folders is of no use.
SampleGameWriting WriteSampleGame(QWidget* owner, const std::string& game, const std::string& work);

}  // namespace mw
