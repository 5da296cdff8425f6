#include "report/file_output.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <utility>

#include "base/status_line.h"

namespace qendor {

void reportUnwritten(const std::string& path, int error) {
  reportUnwritten(path, std::strerror(error));
}

void reportUnwritten(const std::string& path, std::string_view reason) {
  clearStatusLine();
  std::fprintf(stderr, "qendor: %s: %.*s\n", path.c_str(), static_cast<int>(reason.size()),
               reason.data());
}

FileOutput::FileOutput(std::string path, Mode mode) : path_(std::move(path)), mode_(mode) {}

FileOutput::~FileOutput() {
  abandon();
}

bool FileOutput::open() {
  if (fd_ >= 0) return true;
  error_ = 0;
  if (mode_ == Mode::kInPlace) {
    written_ = path_;
    fd_ = ::open(written_.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  } else {
    // A name of our own beside the file, so that the rename stays on its
    // file system; one left by an earlier process of the same number is
    // not reused.
    const std::string stem = path_ + "." + std::to_string(getpid()) + ".";
    for (int attempt = 0; attempt < 100 && fd_ < 0; ++attempt) {
      written_ = stem + std::to_string(attempt) + ".tmp";
      fd_ = ::open(written_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
      if (fd_ < 0 && errno != EEXIST) break;
    }
  }
  if (fd_ < 0) {
    error_ = errno;
    written_.clear();
    return false;
  }
  return true;
}

bool FileOutput::write(std::string_view bytes) {
  if (fd_ < 0 || error_ != 0) return false;
  while (!bytes.empty()) {
    const ssize_t put = ::write(fd_, bytes.data(), bytes.size());
    if (put < 0 && errno == EINTR) continue;
    if (put < 0) {
      error_ = errno;
      return false;
    }
    // A write that takes nothing would take nothing the next time either.
    if (put == 0) {
      error_ = EIO;
      return false;
    }
    bytes.remove_prefix(static_cast<size_t>(put));
  }
  return true;
}

bool FileOutput::finish() {
  if (fd_ < 0) {
    if (error_ == 0) error_ = EBADF;
    abandon();
    return false;
  }
  // Replacing a file is worth its name only when the new bytes are on the
  // disk before the old ones go.
  if (error_ == 0 && mode_ == Mode::kReplace && fsync(fd_) != 0) error_ = errno;
  // Some file systems report a lost write only when the file is closed. On
  // Linux a close that is interrupted has closed the file all the same.
  if (::close(fd_) != 0 && errno != EINTR && error_ == 0) error_ = errno;
  fd_ = -1;
  if (error_ == 0 && mode_ == Mode::kReplace && std::rename(written_.c_str(), path_.c_str()) != 0) {
    error_ = errno;
  }
  if (error_ != 0) {
    abandon();
    return false;
  }
  written_.clear();
  return true;
}

void FileOutput::abandon() {
  if (fd_ >= 0) {
    ::close(fd_);
    fd_ = -1;
  }
  if (!written_.empty()) {
    ::unlink(written_.c_str());
    written_.clear();
  }
}

bool writeWholeFile(const std::string& path, std::string_view bytes, FileOutput::Mode mode) {
  FileOutput output(path, mode);
  if (!output.open()) {
    reportUnwritten(path, output.error());
    return false;
  }
  output.write(bytes);
  if (output.finish()) return true;
  reportUnwritten(path, output.error());
  return false;
}

}  // namespace qendor
