// Files written completely or not at all. Every write, the flush and the
// close are checked; a file that could not be finished is removed, so that no
// reader ever finds it empty or cut short. Its loss is told on standard error
// as "qendor: <path>: <reason>", by writeWholeFile() or by the caller.
#pragma once

#include <string>
#include <string_view>

namespace qendor {

// Prints "qendor: <path>: <the system's text for error>" and a line break on
// standard error.
void reportUnwritten(const std::string& path, int error);
// The same with the reason as a text.
void reportUnwritten(const std::string& path, std::string_view reason);

// One file being written. Paths are file system paths (already normalised).
class FileOutput {
 public:
  enum class Mode {
    // The file itself is created or emptied and written; a failure removes it.
    kInPlace,
    // The bytes go to a new file beside `path` that finish() renames over it:
    // a reader sees the old content or the whole new one, never a mix, and a
    // failure leaves the old file as it was.
    kReplace,
  };

  explicit FileOutput(std::string path, Mode mode = Mode::kInPlace);
  // An unfinished file is removed without a message.
  ~FileOutput();
  FileOutput(const FileOutput&) = delete;
  FileOutput& operator=(const FileOutput&) = delete;

  // Creates the file (permissions 0666 less the umask). False, with error()
  // set and nothing printed, when it cannot be created.
  bool open();

  // Appends `bytes`. False once any write has failed; the first failure's
  // error is kept and later writes do nothing.
  bool write(std::string_view bytes);

  // Closes the file. True when every byte reached it. Otherwise the file is
  // removed (kReplace: the new one; the old stays), nothing is printed, and
  // error() tells why.
  bool finish();

  // Removes the unfinished file without a message.
  void abandon();

  const std::string& path() const { return path_; }
  // The errno value of the first failure; 0 while there is none.
  int error() const { return error_; }

 private:
  std::string path_;
  Mode mode_;
  std::string written_;  // the file the bytes go to
  int fd_ = -1;
  int error_ = 0;
};

// Writes `bytes` as the whole content of `path`. True when all of them are
// there; otherwise nothing of them is left (see Mode) and reportUnwritten()
// has been printed.
bool writeWholeFile(const std::string& path, std::string_view bytes,
                    FileOutput::Mode mode = FileOutput::Mode::kInPlace);

}  // namespace qendor
