// The bundled scenarios end to end: each copied into a folder of its own
// and run by the program, for tests that compare what options add.
#pragma once

#include <filesystem>
#include <regex>
#include <string>
#include <utility>
#include <vector>

#include "tests/test_support.h"

namespace qendor {
namespace test {

// A folder to run in: the scenario's files, its verification files in "out".
struct Scenario {
  std::string name;
  std::string source;  // below the source tree
  std::string info;
  std::string log;
  std::string context;
  std::string verification;  // folder of .ver files below `source`
};

const Scenario kScenarios[] = {
    {"example", "examples", "shop.info", "results.log", "Shop.Checkout", "verification"},
    {"short example", "examples/short", "short.info", "results.log", "Shop.Cart", "verification"},
    {"shop scenario", "tests/scenarios/shop", "shop.info", "results.log", "Pkg.Ctx", "out"},
    {"half-edited scenario", "tests/scenarios/halfedit", "half.info", "results.log", "Pkg.Half",
     "out"},
    {"explained example", "examples/explain", "explain.info", "results.log", "Shop.Returns",
     "verification"},
};

using Documents = std::vector<std::pair<std::string, std::string>>;

// A scenario copied into a folder of its own, its verification files in "out".
class ScenarioRun {
 public:
  explicit ScenarioRun(const Scenario& setup) : setup_(setup) {
    std::filesystem::copy(std::string(QENDOR_SOURCE_DIR) + "/" + setup.source, dir_.path(),
                          std::filesystem::copy_options::recursive);
    std::filesystem::create_directories(dir_.file("out"));
    if (setup.verification == "out") return;  // already in place
    for (const auto& entry : std::filesystem::directory_iterator(dir_.file(setup.verification))) {
      if (entry.path().extension() == ".ver") {
        std::filesystem::copy_file(entry.path(),
                                   dir_.file("out/" + entry.path().filename().string()),
                                   std::filesystem::copy_options::overwrite_existing);
      }
    }
  }

  // The documents of a run with `extra` options, by file name, with the
  // header's time masked; then standard output.
  Documents documents(const std::vector<std::string>& extra, int& status,
                      const std::string& which = "-tcontext", std::string name = "") {
    if (name.empty()) name = setup_.context;
    std::vector<std::string> args = {"-infofile",     setup_.info, "-resultfile", setup_.log,
                                     "-outdirectory", "out",       which,         name};
    args.insert(args.begin() + 2, extra.begin(), extra.end());
    const ProgramOutcome outcome = runProgram(QENDOR_BINARY, args, dir_.path(), "/nonexistent");
    status = outcome.status;
    Documents documents;
    for (const std::string& file : filesIn(dir_.file("out"))) {
      if (std::filesystem::path(file).extension() != ".xml") continue;
      documents.emplace_back(file, masked(readFile(dir_.file("out/" + file))));
    }
    documents.emplace_back("(stdout)", outcome.out);
    return documents;
  }

  std::string path(const std::string& name) const { return dir_.file(name); }

  static std::string masked(const std::string& xml) {
    static const std::regex time(" time=\"[^\"]*\"");
    return std::regex_replace(xml, time, " time=\"*\"");
  }

 private:
  Scenario setup_;
  TempDir dir_;
};

}  // namespace test
}  // namespace qendor
