// One line at the bottom of standard error that shows how a run goes, drawn
// over and over in place, when standard error is a terminal. Whoever writes
// a message to standard error clears it first, so that the message starts
// on an empty line; the next drawing puts the line back below it.
#pragma once

#include <string_view>

namespace qendor {

// True when standard error is a terminal (asked once per process): only
// then is a status line ever drawn.
bool statusLineWanted();

// Replaces the status line by `text` (one line, no line break). Does
// nothing when statusLineWanted() is false.
void drawStatusLine(std::string_view text);

// Erases the status line when one is shown; nothing is written otherwise.
void clearStatusLine();

}  // namespace qendor
