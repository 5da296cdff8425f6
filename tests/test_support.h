// Helpers shared by the tests: a fresh run, temporary folders and files.
#pragma once

#include <string>

namespace qendor {
namespace test {

// A temporary folder removed with its contents when the object goes.
class TempDir {
 public:
  TempDir();
  ~TempDir();
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  const std::string& path() const { return path_; }
  // path() + "/" + name
  std::string file(const std::string& name) const;
  // Writes `content` byte for byte to path() + "/" + name, creating folders.
  std::string write(const std::string& name, const std::string& content) const;

 private:
  std::string path_;
};

// The whole content of a file; empty when it cannot be read.
std::string readFile(const std::string& path);

bool fileExists(const std::string& path);

}  // namespace test
}  // namespace qendor
