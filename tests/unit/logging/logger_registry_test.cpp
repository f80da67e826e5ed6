// SPDX-License-Identifier: MIT
#include "logging/logger_registry.h"

#include <atomic>
#include <chrono>
#include <fstream>
#include <future>
#include <memory>
#include <mutex>
#include <shared_mutex>
#include <string>
#include <system_error>
#include <thread>

#include <gtest/gtest.h>
#include <unistd.h>

#include "logging/logger_config.h"
#include "support/empty_logger_registry.h"

namespace Cradle::Parser::Logging {
namespace {

using Testing::EmptyLoggerRegistry;

class Registry : public ::testing::Test {
 protected:
  static std::string identities() {
    std::string text;
    for (const auto& logger : loggerRegistry().loggers) {
      text += std::string(logger->ident()) + " ";
    }
    return text;
  }

  EmptyLoggerRegistry registry_;
};

TEST_F(Registry, ListsTheLoggersInTheOrderOfTheirCreation) {
  for (const char* const ident : {"z.2", "a.1", "m.3"}) {
    LoggerConfig::create(ident, LoggerConfig::LogError);
  }
  EXPECT_EQ(identities(), "z.2 a.1 m.3 ");
}

TEST_F(Registry, ListsALoggerOnce) {
  for (const char* const ident : {"a.1", "a.2", "a.1"}) {
    LoggerConfig::create(ident, LoggerConfig::LogCritical);
  }
  EXPECT_EQ(identities(), "a.1 a.2 ");
}

TEST_F(Registry, KeepsALoggerThatNobodyElseHolds) {
  const std::weak_ptr<LoggerConfig> logger = LoggerConfig::create("a.1", LoggerConfig::LogCritical);
  EXPECT_FALSE(logger.expired());
  EXPECT_EQ(LoggerConfig::find("a.1"), logger.lock());
}

// Locking

constexpr std::chrono::milliseconds kLongEnoughToFinish{50};
constexpr std::chrono::seconds kFarTooLong{10};

bool isBlocked(std::future<void>& action) {
  return action.wait_for(kLongEnoughToFinish) == std::future_status::timeout;
}

bool finishes(std::future<void>& action) {
  return action.wait_for(kFarTooLong) == std::future_status::ready;
}

void search() {
  LoggerConfig::find("a.1");
}

void configure() {
  LoggerConfig::configure(nullptr);
}

void add() {
  LoggerConfig::create("a.1", LoggerConfig::LogCritical);
}

TEST_F(Registry, IsNotSearchedWhileItIsWritten) {
  std::unique_lock writing(loggerRegistry().mutex);
  std::future<void> searching = std::async(std::launch::async, search);
  EXPECT_TRUE(isBlocked(searching));
  writing.unlock();
  EXPECT_TRUE(finishes(searching));
}

TEST_F(Registry, IsNotWrittenWhileItIsRead) {
  std::shared_lock reading(loggerRegistry().mutex);
  std::future<void> adding = std::async(std::launch::async, add);
  EXPECT_TRUE(isBlocked(adding));
  reading.unlock();
  EXPECT_TRUE(finishes(adding));
  EXPECT_EQ(identities(), "a.1 ");
}

// A thread that adds a logger. Its number is known once it has begun.
struct Adder {
  Adder()
      : adding(std::async(std::launch::async, [this] {
          thread = gettid();
          add();
        })) {}

  // Whether the thread sleeps, as it does when it waits for a lock.
  bool sleeps() const {
    std::ifstream file("/proc/self/task/" + std::to_string(thread) + "/stat");
    std::string stat;
    std::getline(file, stat);
    const std::size_t name = stat.rfind(')');
    return name != std::string::npos && stat.compare(name, 3, ") S") == 0;
  }

  std::atomic<pid_t> thread{0};
  std::future<void> adding;
};

TEST_F(Registry, GetsTwoLoggersOfOneIdentityWhereBothLookedBeforeEitherWrote) {
  std::shared_lock reading(loggerRegistry().mutex);
  Adder first;
  Adder second;
  const auto deadline = std::chrono::steady_clock::now() + kFarTooLong;
  while (!(first.sleeps() && second.sleeps()) && std::chrono::steady_clock::now() < deadline) {
    std::this_thread::yield();
  }
  EXPECT_EQ(identities(), "");
  EXPECT_TRUE(first.sleeps() && second.sleeps());
  reading.unlock();
  EXPECT_TRUE(finishes(first.adding));
  EXPECT_TRUE(finishes(second.adding));
  EXPECT_EQ(identities(), "a.1 a.1 ");
}

TEST_F(Registry, IsSearchedAndConfiguredWhileOthersReadIt) {
  std::shared_lock reading(loggerRegistry().mutex);
  std::future<void> searching = std::async(std::launch::async, search);
  std::future<void> configuring = std::async(std::launch::async, configure);
  EXPECT_TRUE(finishes(searching));
  EXPECT_TRUE(finishes(configuring));
  reading.unlock();
}

TEST_F(Registry, IsNotConfiguredWhileItIsWritten) {
  std::unique_lock writing(loggerRegistry().mutex);
  std::future<void> configuring = std::async(std::launch::async, configure);
  EXPECT_TRUE(isBlocked(configuring));
  writing.unlock();
  EXPECT_TRUE(finishes(configuring));
}

// Failures

TEST_F(Registry, IsNotSearchedByTheOneWhoWritesIt) {
  const std::unique_lock writing(loggerRegistry().mutex);
  EXPECT_THROW(search(), std::system_error);
}

}  // namespace
}  // namespace Cradle::Parser::Logging
