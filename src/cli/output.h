// Where findings are printed to.
#pragma once

#include <cstdio>
#include <exception>
#include <string>
#include <string_view>

namespace tresmor {

// Writing failed; `error` is the errno of it.
struct WriteFailure : std::exception {
  explicit WriteFailure(int number) : error(number) {}
  const char* what() const noexcept override { return "writing failed"; }
  int error;
};

// Gathers what is written into large pieces.
class Output {
 public:
  explicit Output(std::FILE* file) : file_(file) {}
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;

  // Throws WriteFailure, maybe later than for the text that failed.
  void Write(std::string_view text);
  void Write(char character) { Write(std::string_view(&character, 1)); }
  // Throws WriteFailure. What was not flushed at the end is not written.
  void Flush();

 private:
  std::FILE* file_;
  std::string buffer_;
};

}  // namespace tresmor
