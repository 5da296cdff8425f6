#include "base/status_line.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string>

namespace qendor {

namespace {

// Whether a status line stands on the terminal now. The line belongs to
// the process, as the terminal does; only the driver's thread draws it.
bool g_shown = false;

void writeAll(const std::string& text) {
  std::fflush(stderr);
  for (size_t done = 0; done < text.size();) {
    const ssize_t put = write(STDERR_FILENO, text.data() + done, text.size() - done);
    if (put < 0 && errno == EINTR) continue;
    if (put <= 0) return;
    done += static_cast<size_t>(put);
  }
}

// Back to the line's start, and the rest of it erased after what is written.
const char kReturn[] = "\r";
const char kEraseRest[] = "\x1b[K";

}  // namespace

bool statusLineWanted() {
  static const bool wanted = isatty(STDERR_FILENO) == 1;
  return wanted;
}

void drawStatusLine(std::string_view text) {
  if (!statusLineWanted()) return;
  writeAll(std::string(kReturn) + std::string(text) + kEraseRest);
  g_shown = true;
}

void clearStatusLine() {
  if (!g_shown) return;
  writeAll(std::string(kReturn) + kEraseRest);
  g_shown = false;
}

}  // namespace qendor
