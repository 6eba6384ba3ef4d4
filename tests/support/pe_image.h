// Builds small program images with version resources.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tresmor::tests {

// Little-endian numbers into bytes that are there.
void Put16(std::string& bytes, std::size_t at, std::uint16_t value);
void Put32(std::string& bytes, std::size_t at, std::uint32_t value);

// Four parts of a version, as VS_FIXEDFILEINFO keeps them.
struct FourParts {
  std::uint16_t a = 0, b = 0, c = 0, d = 0;
};

enum class PeKind { Pe32, Pe32Plus };

struct PeImage {
  PeKind kind = PeKind::Pe32;
  int sectionsBefore = 1;  // in front of the one with the resources
  int sectionsAfter = 1;
  int namedTypes = 0;  // types of resources that have names in place of numbers
  std::vector<std::uint32_t> typesBefore = {3};
  std::vector<std::uint32_t> typesAfter = {24};
  // Version resources: those of one name each, by language.
  std::vector<std::vector<FourParts>> versions = {{{1, 2, 3, 40}}};
  std::string overlay;  // behind all that the headers tell of
};

// Where the parts of an image stand in the file, to damage them.
struct BuiltImage {
  std::string bytes;
  std::size_t peHeader = 0;
  std::size_t optionalHeader = 0;
  std::size_t sections = 0;
  std::size_t resourceSection = 0;  // its header
  std::size_t root = 0;             // directory of types
  std::size_t versionEntry = 0;     // entry of the version type there
  std::size_t names = 0;            // directory of that type
  std::size_t languages = 0;        // directory of the first name
  std::size_t dataEntry = 0;        // of the first language
  std::size_t resource = 0;         // the first version resource
  std::size_t needed = 0;           // bytes up to the end of what tells its version
};

BuiltImage Build(const PeImage& image);
inline std::string PeBytes(FourParts version, PeKind kind = PeKind::Pe32) {
  PeImage image;
  image.kind = kind;
  image.versions = {{version}};
  return Build(image).bytes;
}

// A 16-bit image with other resources in front of its version resource.
struct BuiltNeImage {
  std::string bytes;
  std::size_t table = 0;     // of resources
  std::size_t type = 0;      // entry of the version type there
  std::size_t resource = 0;  // the version resource
  std::size_t needed = 0;
};
BuiltNeImage BuildNe(FourParts version);

}  // namespace tresmor::tests
