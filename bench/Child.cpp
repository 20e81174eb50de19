// SPDX-License-Identifier: MIT
#include "bench/Child.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>

namespace bench {

namespace {

// Parses the lines as they arrive: the first run of digits of each is its key.
class LineSums {
 public:
  void Add(const char* text, std::size_t size) {
    for (std::size_t i = 0; i < size; ++i)
      Add(text[i]);
  }
  std::size_t lines = 0;
  std::int64_t keySum = 0;

 private:
  void Add(char character) {
    const bool digit = character >= '0' && character <= '9';
    if (digit && !done_) {
      key_ = 10 * key_ + (character - '0');
      begun_ = true;
    } else if (begun_) {
      done_ = true;
    }
    if (character != '\n') return;
    ++lines;
    keySum += key_;
    key_ = 0;
    begun_ = done_ = false;
  }

  std::int64_t key_ = 0;
  bool begun_ = false;
  bool done_ = false;
};

double Milliseconds(const timeval& time) {
  return 1000.0 * static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1000.0;
}

[[noreturn]] void Become(const std::vector<std::string>& words, int output) {
  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (const std::string& word : words)
    arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  dup2(output, STDOUT_FILENO);
  execvp(arguments[0], arguments.data());
  _exit(127);
}

}  // namespace

ChildRun RunChild(const std::vector<std::string>& words) {
  const auto begin = std::chrono::steady_clock::now();
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) return {};
  const pid_t child = fork();
  if (child == 0) Become(words, ends[1]);
  close(ends[1]);
  LineSums sums;
  std::array<char, 1 << 16> block;
  for (ssize_t count; (count = read(ends[0], block.data(), block.size())) > 0;)
    sums.Add(block.data(), static_cast<std::size_t>(count));
  close(ends[0]);
  int status = 0;
  rusage usage{};
  if (child < 0 || wait4(child, &status, 0, &usage) != child || status != 0) return {};
  const std::chrono::duration<double, std::milli> wall = std::chrono::steady_clock::now() - begin;
  return {sums.lines, sums.keySum, Milliseconds(usage.ru_utime) + Milliseconds(usage.ru_stime), wall.count(),
          static_cast<double>(usage.ru_maxrss) / 1024};
}

}  // namespace bench
