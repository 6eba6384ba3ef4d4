// Any bytes as a program image. Nothing may crash or hang, and reading stays within the file and within measure.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "results/pe_version.h"
#include "support/bytes_reader.h"
#include "support/pe_image.h"

namespace {

constexpr int kMostReads = 1000;
constexpr std::size_t kMostBytes = 200'000;

}  // namespace

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

// What has become too short to be an image is replaced by a sound one, so no collection of images has to be kept.
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t most, unsigned seed) {
  using namespace tresmor::tests;
  static const std::array<std::string, 3> kSound = {
      PeBytes({1, 2, 3, 40}, PeKind::Pe32), PeBytes({1, 2, 3, 40}, PeKind::Pe32Plus), BuildNe({1, 2, 3, 40}).bytes};
  const std::string& sound = kSound[seed % kSound.size()];
  if (size < 64 && sound.size() <= most) {
    std::copy(sound.begin(), sound.end(), data);
    return sound.size();
  }
  return LLVMFuzzerMutate(data, size, most);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tresmor::tests::BytesReader file(std::string(data, data + size));
  const auto info = tresmor::ReadFixedFileInfo(file);
  if (file.readOutside || file.reads > kMostReads || file.bytesRead > kMostBytes) std::abort();
  if (info && tresmor::VersionText(*info).size() < 9) std::abort();  // "1.02.0000"
  return 0;
}
