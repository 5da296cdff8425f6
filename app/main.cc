#include <cstdio>

#include "app/entry.h"

int main(int argc, char** argv) {
  int status = qendor::runQendor(argc, argv);
  std::fflush(stdout);
  return status;
}
