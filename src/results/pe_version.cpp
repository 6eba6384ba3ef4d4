#include "results/pe_version.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

#include "search/wait_for_descriptors.h"

namespace tresmor {
namespace {

// An offset in a file is the sum of a few numbers of 32 bits, so it never overflows.
using Offset = std::int64_t;

constexpr std::uint16_t kDosSignature = 0x5A4D;  // "MZ"
constexpr std::uint16_t kNeSignature = 0x454E;   // "NE"
constexpr std::uint32_t kPeSignature = 0x4550;   // "PE" and two zero bytes
constexpr std::uint16_t kPe32 = 0x10B;
constexpr std::uint16_t kPe32Plus = 0x20B;
constexpr std::uint32_t kFixedInfoSignature = 0xFEEF04BD;

constexpr std::uint16_t kVersionType = 16;
constexpr std::uint16_t kNeVersionType = 0x8000 | kVersionType;
constexpr std::uint32_t kSubdirectory = 0x80000000;

// What is looked at of a file that claims more. Real images have a few dozens of each.
constexpr std::size_t kMostSections = 2048;
constexpr std::size_t kMostTypes = 512;

constexpr std::size_t kDosHeaderBytes = 64;
constexpr std::size_t kPeHeaderBytes = 24;
constexpr std::size_t kOptionalHeaderBytes = 136;  // as far as the entry for resources of the longer of the two kinds
constexpr std::size_t kSectionBytes = 40;
constexpr std::size_t kDirectoryBytes = 16;
constexpr std::size_t kEntryBytes = 8;
constexpr std::size_t kDataEntryBytes = 16;
constexpr std::size_t kNeHeaderBytes = 64;
constexpr std::size_t kNeTypeBytes = 8;
constexpr std::size_t kNeResourceBytes = 12;
constexpr std::size_t kFixedInfoBytes = 52;

// Where the fixed part begins in a version resource: behind two or three numbers of 16 bits and the name
// "VS_VERSION_INFO", at a multiple of 4. The name's characters have two bytes, or one in a 16-bit image.
constexpr std::size_t kFixedInfoAt = 40;
constexpr std::size_t kNeFixedInfoAt = 20;

// Little-endian numbers. What lies past the end reads as 0, which nowhere in an image means anything.
class Piece {
 public:
  explicit Piece(std::string bytes) : bytes_(std::move(bytes)) {}

  std::size_t Size() const { return bytes_.size(); }
  std::uint32_t U32(std::size_t at) const {
    return static_cast<std::uint32_t>(U16(at)) | static_cast<std::uint32_t>(U16(at + 2)) << 16;
  }
  std::uint16_t U16(std::size_t at) const { return static_cast<std::uint16_t>(U8(at) | U8(at + 1) << 8); }

 private:
  std::uint8_t U8(std::size_t at) const { return at < bytes_.size() ? static_cast<std::uint8_t>(bytes_[at]) : 0; }

  std::string bytes_;
};

// Empty unless the file has all of it.
Piece Read(FileReader& file, Offset offset, std::size_t length) {
  std::string bytes;
  if (offset > file.Size() - static_cast<Offset>(length)) return Piece(bytes);
  bytes.resize(length);
  if (file.ReadAt(offset, bytes).got < length) bytes.clear();
  return Piece(std::move(bytes));
}

// Of a version resource of `size` bytes at `offset`.
std::optional<VS_FIXEDFILEINFO> ReadInfo(FileReader& file, Offset offset, std::int64_t size, std::size_t infoAt) {
  const std::size_t needed = infoAt + kFixedInfoBytes;
  if (size < static_cast<std::int64_t>(needed)) return std::nullopt;
  const Piece resource = Read(file, offset, needed);
  const std::uint16_t valueBytes = resource.U16(2);
  if (valueBytes < kFixedInfoBytes || resource.U32(infoAt) != kFixedInfoSignature) return std::nullopt;
  return VS_FIXEDFILEINFO{static_cast<std::int32_t>(resource.U32(infoAt + 8)),
                          static_cast<std::int32_t>(resource.U32(infoAt + 12))};
}

// Where in the file stands what the loader would put at an address relative to the image's.
std::optional<Offset> OffsetOf(const Piece& sections, std::uint32_t address) {
  for (std::size_t section = 0; section < sections.Size(); section += kSectionBytes) {
    const std::uint32_t start = sections.U32(section + 12);
    const std::uint32_t bytesInFile = sections.U32(section + 16);
    if (address < start || address - start >= bytesInFile) continue;
    return Offset{sections.U32(section + 20)} + (address - start);
  }
  return std::nullopt;
}

// The address of the resources, 0 for none.
std::uint32_t ResourceAddress(const Piece& optionalHeader) {
  const std::uint16_t kind = optionalHeader.U16(0);
  if (kind != kPe32 && kind != kPe32Plus) return 0;
  const std::size_t directories = kind == kPe32 ? 96 : 112;
  const bool hasResources = optionalHeader.U32(directories - 4) > 2;
  return hasResources ? optionalHeader.U32(directories + 16) : 0;
}

// Resources are a tree of three levels: types, names, languages. An entry of a directory leads to another directory
// (kSubdirectory and an offset) or to data (an offset); 0 stands for none. Who wants the languages goes down two levels
// and no further, so a tree that bites its own tail holds nobody up.

std::uint32_t FirstEntry(FileReader& file, Offset directory) {
  const Piece head = Read(file, directory, kDirectoryBytes);
  if (head.U32(12) == 0) return 0;  // of both kinds, those with names and those with numbers
  return Read(file, directory + Offset{kDirectoryBytes}, kEntryBytes).U32(4);
}

// Types with numbers stand behind those with names.
std::uint32_t VersionEntry(FileReader& file, Offset directory) {
  const Piece head = Read(file, directory, kDirectoryBytes);
  const std::size_t numbered = std::min<std::size_t>(head.U16(14), kMostTypes);
  const Offset first = directory + static_cast<Offset>(kDirectoryBytes + kEntryBytes * head.U16(12));
  const Piece entries = Read(file, first, numbered * kEntryBytes);
  for (std::size_t entry = 0; entry < entries.Size(); entry += kEntryBytes) {
    if (entries.U32(entry) == kVersionType) return entries.U32(entry + 4);
  }
  return 0;
}

// Offset of the entry that tells where the data of the first version resource stands.
std::optional<Offset> VersionDataEntry(FileReader& file, Offset root) {
  const auto below = [root](std::uint32_t entry) { return root + (entry & ~kSubdirectory); };
  const std::uint32_t names = VersionEntry(file, root);
  if ((names & kSubdirectory) == 0) return std::nullopt;
  const std::uint32_t languages = FirstEntry(file, below(names));
  if ((languages & kSubdirectory) == 0) return std::nullopt;
  const std::uint32_t data = FirstEntry(file, below(languages));
  if (data == 0 || (data & kSubdirectory) != 0) return std::nullopt;
  return below(data);
}

std::optional<VS_FIXEDFILEINFO> ReadPe(FileReader& file, Offset header) {
  const Piece head = Read(file, header, kPeHeaderBytes);
  const std::size_t sectionCount = std::min<std::size_t>(head.U16(6), kMostSections);
  const std::size_t optionalBytes = head.U16(20);
  const Offset optionalAt = header + Offset{kPeHeaderBytes};
  const Piece optionalHeader = Read(file, optionalAt, std::min(optionalBytes, kOptionalHeaderBytes));
  const std::uint32_t address = ResourceAddress(optionalHeader);
  if (address == 0) return std::nullopt;

  const Piece sections = Read(file, optionalAt + static_cast<Offset>(optionalBytes), sectionCount * kSectionBytes);
  const std::optional<Offset> root = OffsetOf(sections, address);
  if (!root) return std::nullopt;
  const std::optional<Offset> entry = VersionDataEntry(file, *root);
  if (!entry) return std::nullopt;
  const Piece data = Read(file, *entry, kDataEntryBytes);
  const std::optional<Offset> resource = OffsetOf(sections, data.U32(0));
  if (!resource) return std::nullopt;
  return ReadInfo(file, *resource, data.U32(4), kFixedInfoAt);
}

// A table of types, each followed by its resources, ends in a type 0. Places and lengths are in units of 2^shift bytes.
std::optional<VS_FIXEDFILEINFO> ReadNe(FileReader& file, Offset header) {
  const Offset table = header + Read(file, header, kNeHeaderBytes).U16(36);
  const std::uint16_t shift = Read(file, table, 2).U16(0);
  if (shift > 16) return std::nullopt;
  Offset at = table + 2;
  for (std::size_t types = 0; types < kMostTypes; ++types) {
    const Piece type = Read(file, at, kNeTypeBytes + kNeResourceBytes);
    const std::uint16_t resources = type.U16(2);
    if (type.U16(0) == 0) return std::nullopt;
    if (type.U16(0) == kNeVersionType && resources > 0) {
      return ReadInfo(file, Offset{type.U16(8)} << shift, Offset{type.U16(10)} << shift, kNeFixedInfoAt);
    }
    at += static_cast<Offset>(kNeTypeBytes + kNeResourceBytes * resources);
  }
  return std::nullopt;
}

}  // namespace

std::string PeVersionReader::GetFileVer(const std::string& path, const StopToken& stop) const {
  Errors failure = Errors::None;
  const std::unique_ptr<FileReader> file =
      OpenOnceThereAreDescriptors([&] { return files_.Open(path, failure); }, failure, stop, [] {});
  if (!file) return {};
  const std::optional<VS_FIXEDFILEINFO> info = ReadFixedFileInfo(*file);
  return info ? VersionText(*info) : std::string();
}

std::optional<VS_FIXEDFILEINFO> ReadFixedFileInfo(FileReader& file) {
  const Piece dosHeader = Read(file, 0, kDosHeaderBytes);
  if (dosHeader.U16(0) != kDosSignature) return std::nullopt;
  const Offset header = dosHeader.U32(60);
  const std::uint32_t signature = Read(file, header, 4).U32(0);
  if (signature == kPeSignature) return ReadPe(file, header);
  if ((signature & 0xFFFF) == kNeSignature) return ReadNe(file, header);
  return std::nullopt;
}

}  // namespace tresmor
