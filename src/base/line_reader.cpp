// SPDX-License-Identifier: MIT
#include "base/line_reader.h"

#include <cstring>
#include <new>
#include <optional>
#include <span>
#include <utility>

namespace Cradle {
namespace {

constexpr std::size_t kBufferSize = 65536;  // most files need one read and one for their end

}  // namespace

LineReader::LineReader(const std::string& path)
    : file_(path),
      capacity_(kBufferSize),
      buffer_(std::make_unique_for_overwrite<Array>(kBufferSize)) {}

bool LineReader::next() {
  std::size_t searched = 0;  // how much of the rest is known to hold no line feed
  do {
    const char* const rest = buffer_.get() + begin_;
    const std::size_t size = end_ - begin_;
    const void* const feed = std::memchr(rest + searched, '\n', size - searched);
    if (feed != nullptr) {
      line_ = {rest, static_cast<const char*>(feed)};
      begin_ += line_.size() + 1;
      return true;
    }
    searched = size;
  } while (readMore());
  line_ = {buffer_.get() + begin_, failed() ? 0 : searched};
  begin_ = end_;
  return !line_.empty();
}

// Reads behind the rest. False at the end and on failure.
bool LineReader::readMore() {
  if (state_ != State::Reading) {
    return false;
  }
  const std::optional<std::size_t> count =
      makeRoom() ? file_.read({buffer_.get() + end_, capacity_ - end_}) : std::nullopt;
  if (!count) {
    state_ = State::Failed;
  } else if (*count == 0) {
    state_ = State::AtEnd;
  }
  end_ += count.value_or(0);
  return state_ == State::Reading;
}

// Moves the rest to the front, of a larger buffer where it fills this one. False without memory.
bool LineReader::makeRoom() {
  const std::size_t size = end_ - begin_;
  if (size < capacity_) {
    std::memmove(buffer_.get(), buffer_.get() + begin_, size);
  } else {
    std::unique_ptr<Array> larger(new (std::nothrow) char[2 * capacity_]);
    if (!larger) {
      return false;
    }
    std::memcpy(larger.get(), buffer_.get(), size);
    buffer_ = std::move(larger);
    capacity_ *= 2;
  }
  begin_ = 0;
  end_ = size;
  return true;
}

}  // namespace Cradle
