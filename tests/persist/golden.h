// Sessions that were written by hand.
#pragma once

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace tresmor::tests {

inline std::string Golden(const std::string& name) {
  std::ifstream file(TRESMOR_GOLDEN + name, std::ios::binary);
  if (!file) throw std::runtime_error("no golden file " + name);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace tresmor::tests
