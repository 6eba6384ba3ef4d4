#include "support/pe_image.h"

#include <string_view>

namespace tresmor::tests {
namespace {

constexpr std::size_t kPeAt = 0x80;
constexpr std::size_t kSectionAlignment = 0x1000;
constexpr std::size_t kFileAlignment = 0x200;
constexpr std::size_t kFiller = 0x60;  // bytes of a section that doesn't matter
constexpr std::uint32_t kSubdirectory = 0x80000000;
constexpr std::size_t kFixedInfo = 52;

std::uint32_t U32(std::size_t value) { return static_cast<std::uint32_t>(value); }
std::uint16_t U16(std::size_t value) { return static_cast<std::uint16_t>(value); }

void AlignTo(std::string& bytes, std::size_t unit) { bytes.resize((bytes.size() + unit - 1) / unit * unit); }
void Append16(std::string& bytes, std::size_t value) {
  bytes.resize(bytes.size() + 2);
  Put16(bytes, bytes.size() - 2, U16(value));
}
void Append32(std::string& bytes, std::size_t value) {
  bytes.resize(bytes.size() + 4);
  Put32(bytes, bytes.size() - 4, U32(value));
}

std::string FixedInfo(const FourParts& version) {
  std::string info;
  Append32(info, 0xFEEF04BD);
  Append32(info, 0x10000);
  Append16(info, version.b);
  Append16(info, version.a);
  Append16(info, version.d);
  Append16(info, version.c);
  Append32(info, 0x00090009);  // the product's version, which nobody wants
  info.resize(kFixedInfo);
  return info;
}

std::string VersionResource(const FourParts& version) {
  std::string resource;
  Append16(resource, 40 + kFixedInfo);
  Append16(resource, kFixedInfo);
  Append16(resource, 0);
  for (const char c : std::string_view("VS_VERSION_INFO")) Append16(resource, static_cast<unsigned char>(c));
  Append16(resource, 0);
  AlignTo(resource, 4);
  return resource + FixedInfo(version);
}

void AppendDirectory(std::string& tree, std::size_t named, std::size_t numbered) {
  Append32(tree, 0);
  Append32(tree, 0x3D3D3D3D);  // when it was made
  Append32(tree, 0);
  Append16(tree, named);
  Append16(tree, numbered);
}

void AppendEntry(std::string& tree, std::size_t id, std::size_t offset) {
  Append32(tree, id);
  Append32(tree, offset);
}

// The section of resources; offsets of the built image are within it.
std::string ResourceTree(const PeImage& image, std::size_t address, BuiltImage& built) {
  const std::size_t named = static_cast<std::size_t>(image.namedTypes);
  const std::size_t types = named + image.typesBefore.size() + 1 + image.typesAfter.size();
  const std::size_t empty = 16 + 8 * types;  // the directory of the types that don't matter
  built.names = empty + 16;
  std::size_t languages = built.names + 16 + 8 * image.versions.size();
  built.languages = languages;

  std::string tree;
  AppendDirectory(tree, named, types - named);
  for (std::size_t i = 0; i < named; ++i) AppendEntry(tree, kSubdirectory | 16, kSubdirectory | empty);
  for (const std::uint32_t type : image.typesBefore) AppendEntry(tree, type, kSubdirectory | empty);
  built.versionEntry = tree.size();
  AppendEntry(tree, 16, kSubdirectory | built.names);
  for (const std::uint32_t type : image.typesAfter) AppendEntry(tree, type, kSubdirectory | empty);
  AppendDirectory(tree, 0, 0);

  AppendDirectory(tree, 0, image.versions.size());
  std::size_t resources = 0;
  for (std::size_t i = 0; i < image.versions.size(); ++i) {
    AppendEntry(tree, i + 1, kSubdirectory | languages);
    languages += 16 + 8 * image.versions[i].size();
    resources += image.versions[i].size();
  }
  built.dataEntry = languages;
  std::size_t entry = built.dataEntry;
  for (const auto& ofName : image.versions) {
    AppendDirectory(tree, 0, ofName.size());
    for (std::size_t i = 0; i < ofName.size(); ++i, entry += 16) AppendEntry(tree, 0x0407 + i, entry);
  }
  built.resource = entry;
  const std::size_t bytes = VersionResource({}).size();
  for (std::size_t i = 0; i < resources; ++i) {
    Append32(tree, address + built.resource + i * bytes);
    Append32(tree, bytes);
    Append32(tree, 0);
    Append32(tree, 0);
  }
  for (const auto& ofName : image.versions) {
    for (const FourParts& version : ofName) tree += VersionResource(version);
  }
  return tree;
}

std::string Headers(const PeImage& image, std::size_t sections, std::size_t address, BuiltImage& built) {
  const bool plus = image.kind == PeKind::Pe32Plus;
  const std::size_t directories = plus ? 112 : 96;
  const std::size_t optionalBytes = directories + 16 * 8;
  built.peHeader = kPeAt;
  built.optionalHeader = kPeAt + 24;
  built.sections = built.optionalHeader + optionalBytes;
  std::string bytes(built.sections + 40 * sections, '\0');
  Put16(bytes, 0, 0x5A4D);
  Put32(bytes, 60, kPeAt);
  Put32(bytes, kPeAt, 0x4550);
  Put16(bytes, kPeAt + 4, plus ? 0x8664 : 0x14C);
  Put16(bytes, kPeAt + 6, U16(sections));
  Put16(bytes, kPeAt + 20, U16(optionalBytes));
  Put16(bytes, built.optionalHeader, plus ? 0x20B : 0x10B);
  Put32(bytes, built.optionalHeader + directories - 4, 16);
  Put32(bytes, built.optionalHeader + directories + 16, U32(address));
  AlignTo(bytes, kFileAlignment);
  return bytes;
}

}  // namespace

void Put16(std::string& bytes, std::size_t at, std::uint16_t value) {
  bytes.at(at) = static_cast<char>(value & 0xFF);
  bytes.at(at + 1) = static_cast<char>(value >> 8);
}

void Put32(std::string& bytes, std::size_t at, std::uint32_t value) {
  Put16(bytes, at, U16(value & 0xFFFF));
  Put16(bytes, at + 2, U16(value >> 16));
}

BuiltImage Build(const PeImage& image) {
  const auto before = static_cast<std::size_t>(image.sectionsBefore);
  const std::size_t sections = before + 1 + static_cast<std::size_t>(image.sectionsAfter);
  const std::size_t address = kSectionAlignment * (before + 1);
  BuiltImage built;
  std::string& bytes = built.bytes;
  bytes = Headers(image, sections, address, built);
  const std::string tree = ResourceTree(image, address, built);
  for (std::size_t i = 0; i < sections; ++i) {
    const std::string content = i == before ? tree : std::string(kFiller, 'x');
    const std::size_t header = built.sections + 40 * i;
    Put32(bytes, header + 8, U32(content.size()));
    Put32(bytes, header + 12, U32(kSectionAlignment * (i + 1)));
    Put32(bytes, header + 16, U32(content.size()));
    Put32(bytes, header + 20, U32(bytes.size()));
    if (i == before) {
      built.resourceSection = header;
      built.root = bytes.size();
    }
    bytes += content;
    AlignTo(bytes, 16);
  }
  for (std::size_t* offset : {&built.versionEntry, &built.names, &built.languages, &built.dataEntry, &built.resource}) {
    *offset += built.root;
  }
  built.needed = built.resource + VersionResource({}).size();
  bytes += image.overlay;
  return built;
}

BuiltNeImage BuildNe(FourParts version) {
  constexpr std::size_t kHeader = 0x40;
  constexpr std::size_t kShift = 4;
  BuiltNeImage built;
  built.table = kHeader + 0x40;
  std::string& bytes = built.bytes;
  bytes.resize(built.table);
  Put16(bytes, 0, 0x5A4D);
  Put32(bytes, 60, kHeader);
  Put16(bytes, kHeader, 0x454E);
  Put16(bytes, kHeader + 36, 0x40);
  Append16(bytes, kShift);
  Append32(bytes, 0x00028003);  // two icons
  bytes.resize(bytes.size() + 4 + 2 * 12, 'i');
  built.type = bytes.size();
  Append32(bytes, 0x00018010);
  Append32(bytes, 0);
  const std::size_t resourceEntry = bytes.size();
  bytes.resize(resourceEntry + 12);
  Append16(bytes, 0);  // the end of the types
  AlignTo(bytes, 1U << kShift);
  built.resource = bytes.size();
  Put16(bytes, resourceEntry, U16(built.resource >> kShift));
  Append16(bytes, 20 + kFixedInfo);
  Append16(bytes, kFixedInfo);
  bytes.append("VS_VERSION_INFO", 16);
  bytes += FixedInfo(version);
  built.needed = bytes.size();
  AlignTo(bytes, 1U << kShift);
  Put16(bytes, resourceEntry + 2, U16((bytes.size() - built.resource) >> kShift));
  return built;
}

}  // namespace tresmor::tests
