// Catches what is written to a stream while it lives, and leaves the stream in a good state.
#pragma once

#include <ostream>
#include <sstream>
#include <string>

namespace Cradle::Testing {

class StreamCapture {
 public:
  explicit StreamCapture(std::ostream& stream)
      : stream_(stream), previous_(stream.rdbuf(text_.rdbuf())) {}
  ~StreamCapture() { stream_.rdbuf(previous_); }
  StreamCapture(const StreamCapture&) = delete;
  StreamCapture& operator=(const StreamCapture&) = delete;

  std::string text() const { return text_.str(); }

  // What was written since the last call.
  std::string take() {
    std::string taken = text_.str();
    text_.str("");
    return taken;
  }

 private:
  std::ostringstream text_;
  std::ostream& stream_;
  std::streambuf* previous_;
};

}  // namespace Cradle::Testing
