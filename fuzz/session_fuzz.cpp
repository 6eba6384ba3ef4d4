// Any bytes as a session.
#include <cstddef>
#include <cstdint>
#include <string>

#include "persist/session_world.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  tresmor::tests::LoadAnything(std::string(bytes, bytes + count));
  return 0;
}
