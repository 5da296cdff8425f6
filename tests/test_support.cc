#include "tests/test_support.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include <stdlib.h>

namespace qendor {
namespace test {

namespace fs = std::filesystem;

TempDir::TempDir() {
  std::string pattern = (fs::temp_directory_path() / "qendor-test-XXXXXX").string();
  if (!mkdtemp(pattern.data())) throw std::runtime_error("mkdtemp failed");
  path_ = pattern;
}

TempDir::~TempDir() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

std::string TempDir::file(const std::string& name) const { return path_ + "/" + name; }

std::string TempDir::write(const std::string& name, const std::string& content) const {
  std::string path = file(name);
  fs::create_directories(fs::path(path).parent_path());
  std::ofstream out(path, std::ios::binary);
  out << content;
  return path;
}

std::string readFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream content;
  content << in.rdbuf();
  return content.str();
}

bool fileExists(const std::string& path) {
  std::error_code ignored;
  return fs::exists(path, ignored);
}

}  // namespace test
}  // namespace qendor
