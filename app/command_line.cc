#include "app/command_line.h"

#include <clocale>
#include <cstring>
#include <string>

#include "base/paths.h"
#include "base/run_settings.h"

namespace qendor {

const char kUsageLine[] =
    "qendor -infofile <infofile> -resultfile <resultfile> -outdirectory <outdirectory> "
    "[-tcontext <testContext> | -tcase <testCase>] "
    "[- language <ENU | CHS | CHT | KOR | JPN>]";

namespace {

// The stylesheets lie beside the program: its directory is its own path cut
// before the first "qendor" in it (the whole path when there is none).
std::string programDirectoryOf(const char* argv0) {
  std::string path = normalisePath(argv0);
  size_t at = path.find("qendor");
  if (at != std::string::npos) path.erase(at);
  return path;
}

void setLanguage(const char* value) {
  struct Language {
    const char* name;
    int number;
    const char* locale;  // for the time text of the report header; may not exist
  };
  static const Language kLanguages[] = {
      {"ENU", kEnu, nullptr},
      {"CHS", kChs, "chinese-simplified"},
      {"CHT", kCht, "chinese-traditional"},
      {"KOR", kKor, "korean"},
      {"JPN", kJpn, "japanese"},
  };
  for (const Language& language : kLanguages) {
    if (std::strcmp(value, language.name) != 0) continue;
    run().reportLanguage = language.number;
    if (language.locale) std::setlocale(LC_TIME, language.locale);
    return;
  }
}

// "xsltproc" or "builtin"; any other value leaves the renderer as it is.
void setRenderer(const char* value) {
  if (std::strcmp(value, "xsltproc") == 0) run().htmlRenderer = HtmlRenderer::kXsltproc;
  if (std::strcmp(value, "builtin") == 0) run().htmlRenderer = HtmlRenderer::kBuiltin;
}

}  // namespace

bool parseCommandLine(int argc, char** argv) {
  RunSettings& r = run();
  r.programDirectory = programDirectoryOf(argc > 0 ? argv[0] : nullptr);

  // Seven arguments is the least that can succeed; below that no option is read.
  if (argc >= 8) {
    for (int i = 1; i < argc;) {
      const char* option = argv[i];
      // An option standing last has no value and counts as not given.
      const char* value = i + 1 < argc ? argv[i + 1] : nullptr;
      bool known = true;
      if (std::strcmp(option, "-infofile") == 0) {
        if (value) r.infoFile = value;
      } else if (std::strcmp(option, "-resultfile") == 0) {
        if (value) r.resultFile = value;
      } else if (std::strcmp(option, "-outdirectory") == 0) {
        if (value) r.outDirectory = value;
      } else if (std::strcmp(option, "-tcontext") == 0) {
        if (value) r.testContextName = value;
      } else if (std::strcmp(option, "-tcase") == 0) {
        if (value) r.testCaseName = value;
      } else if (std::strcmp(option, "-language") == 0) {
        if (value) setLanguage(value);
      } else if (std::strcmp(option, "-render") == 0) {
        if (value) setRenderer(value);
      } else if (std::strcmp(option, "-history") == 0) {
        if (value) r.historyDirectory = value;
      } else if (std::strcmp(option, "-junit") == 0) {
        if (value) r.junitFile = value;
      } else if (std::strcmp(option, "-index") == 0) {
        r.index = true;
        i += 1;  // takes no value
        continue;
      } else if (std::strcmp(option, "-explain") == 0) {
        r.explain = true;
        i += 1;  // takes no value
        continue;
      } else if (std::strcmp(option, "-coverage") == 0) {
        r.coverage = true;
        i += 1;  // takes no value
        continue;
      } else {
        known = false;
      }
      i += known ? 2 : 1;
    }
  }
  return r.infoFile && r.resultFile && r.outDirectory &&
         (!r.testContextName.empty() || !r.testCaseName.empty());
}

}  // namespace qendor
