#include <malloc.h>
#include <signal.h>

#include <cstdio>

#include "app/entry.h"

int main(int argc, char** argv) {
  // Every test case builds an XML tree of thousands of small nodes and frees
  // it again. Kept in glibc's fast bins, those nodes are merged back one by
  // one at the next larger request (a file buffer, a serialised text), which
  // costs more than the allocations themselves; without fast bins the freed
  // memory goes straight back to the ordinary bins.
  mallopt(M_MXFAST, 0);
  // A harness may start us with SIGCHLD ignored; its children would then be
  // reaped by the kernel, and no xsltproc could be waited for.
  signal(SIGCHLD, SIG_DFL);
  // Under a file size limit a write past it would end us (and xsltproc, which
  // inherits this) by a signal; ignored, it fails with an error that is
  // reported like a full disk.
  signal(SIGXFSZ, SIG_IGN);
  int status = qendor::runQendor(argc, argv);
  std::fflush(stdout);
  return status;
}
