// Standard output, whose failures must be noticed.
#pragma once

#include <ostream>
#include <streambuf>
#include <string>

namespace tarvane::app {

// Before anything else: a reader that goes away, or a limit on file sizes, is an error of a write and not
// the end of the process; and no file that is opened later takes the place of a closed standard stream. On
// Windows lines end as they do elsewhere, in a line feed, and a console shows UTF-8 until the program ends.
void prepare_standard_streams();

// Whether standard output, or standard error, is a terminal that knows marks of colour.
bool output_on_terminal();
bool errors_on_terminal();

// What a command writes, kept until it is flushed. After a failure nothing more is written.
class StandardOutput : private std::streambuf {
  public:
    StandardOutput() : text(this) {}

    std::ostream& stream() { return text; }
    // The exit status of a command that would end with `status`: 141, as of a process that SIGPIPE ends,
    // when the reader has gone; at least 2, with a message, when the output could not be written.
    int finish(int status);

  private:
    int_type overflow(int_type character) override;
    std::streamsize xsputn(const char* from, std::streamsize count) override;
    int sync() override;
    void write_out();

    std::string waiting;
    bool written = false; // something was written
    int failure = 0;      // the first one, an errno
    std::ostream text;
};

} // namespace tarvane::app
