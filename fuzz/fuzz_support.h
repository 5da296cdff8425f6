// What the fuzz targets share: a scratch folder reused for every input, the
// split of one input into several files, and the checks on what was written.
#pragma once

#include <libxml/parser.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace qendor {
namespace fuzz {

// One folder for the whole fuzzing process, emptied between inputs.
inline const std::string& scratch() {
  // Kept alive until the exit handler below has removed the folder.
  static const std::string* const path = [] {
    std::string pattern = (std::filesystem::temp_directory_path() / "qendor-fuzz-XXXXXX").string();
    if (!mkdtemp(pattern.data())) std::abort();
    auto* made = new std::string(pattern);
    std::atexit([] {
      std::error_code ignored;
      std::filesystem::remove_all(scratch(), ignored);
    });
    return made;
  }();
  return *path;
}

inline void clearScratch() {
  std::error_code ignored;
  for (const auto& entry : std::filesystem::directory_iterator(scratch(), ignored)) {
    std::filesystem::remove_all(entry.path(), ignored);
  }
}

inline std::string writeFile(const std::string& name, std::string_view content) {
  const std::string path = scratch() + "/" + name;
  std::filesystem::create_directories(std::filesystem::path(path).parent_path());
  std::ofstream out(path, std::ios::binary);
  out.write(content.data(), static_cast<std::streamsize>(content.size()));
  return path;
}

// The input cut at each line "@@" into at most `parts` pieces; missing pieces
// are empty.
inline std::vector<std::string_view> splitInput(const uint8_t* data, size_t size, size_t parts) {
  std::string_view rest(reinterpret_cast<const char*>(data), size);
  std::vector<std::string_view> pieces;
  while (pieces.size() + 1 < parts) {
    const size_t cut = rest.find("\n@@\n");
    if (cut == std::string_view::npos) break;
    pieces.push_back(rest.substr(0, cut));
    rest.remove_prefix(cut + 4);
  }
  pieces.push_back(rest);
  pieces.resize(parts);
  return pieces;
}

// Lines of `text` without their line feeds.
inline std::vector<std::string> lines(std::string_view text) {
  std::vector<std::string> result;
  while (!text.empty()) {
    const size_t end = text.find('\n');
    result.emplace_back(text.substr(0, end));
    if (end == std::string_view::npos) break;
    text.remove_prefix(end + 1);
  }
  return result;
}

// Aborts unless `path` parses with libxml2's default limits, as xmllint and
// xsltproc read it.
inline void requireWellFormed(const std::string& path) {
  xmlDoc* doc =
      xmlReadFile(path.c_str(), nullptr, XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING);
  if (!doc) {
    std::fprintf(stderr, "not well-formed: %s\n", path.c_str());
    std::abort();
  }
  xmlFreeDoc(doc);
}

// Diagnostics on standard output would only slow the fuzzer down.
inline void quietStdout() {
  if (!std::freopen("/dev/null", "w", stdout)) std::abort();
}

}  // namespace fuzz
}  // namespace qendor
