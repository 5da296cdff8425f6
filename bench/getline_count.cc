// The input baseline: counts the lines of a file with std::getline, the
// least any reader of the log has to do.
#include <fstream>
#include <iostream>
#include <string>

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: qendor_bench_getline FILE\n";
    return 2;
  }
  std::ifstream in(argv[1], std::ios::binary);
  if (!in) return 1;
  std::string line;
  unsigned long long lines = 0, bytes = 0;
  while (std::getline(in, line)) {
    ++lines;
    bytes += line.size();
  }
  std::cout << lines << " lines " << bytes << " bytes\n";
  return 0;
}
