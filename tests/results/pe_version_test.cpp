// Versions of sound images, and of files that mean no good.
#include "results/pe_version.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "results/version_of.h"
#include "support/bytes_reader.h"
#include "support/memory_file_system.h"
#include "support/pe_image.h"

namespace tresmor {
namespace {

using tests::Build;
using tests::BuildNe;
using tests::BuiltImage;
using tests::BuiltNeImage;
using tests::BytesReader;
using tests::FourParts;
using tests::IsVersionOrNone;
using tests::PeBytes;
using tests::PeImage;
using tests::PeKind;
using tests::Put16;
using tests::Put32;

constexpr FourParts kSample = {1, 2, 3, 40};
constexpr char kSampleText[] = "1.02.03.40";
constexpr std::uint32_t kSubdirectory = 0x80000000;

std::string VersionOf(std::string bytes) {
  BytesReader file(std::move(bytes));
  return VersionOf(file);
}

std::string VersionOf(const PeImage& image) { return VersionOf(Build(image).bytes); }

std::array<PeImage, 2> BothKinds() {
  std::array<PeImage, 2> images;
  images[1].kind = PeKind::Pe32Plus;
  return images;
}

TEST(PeVersion, OfBothKinds) {
  for (const PeImage& image : BothKinds()) EXPECT_EQ(VersionOf(image), kSampleText);
}

TEST(PeVersion, ResourcesMayStandInAnySection) {
  for (PeImage image : BothKinds()) {
    for (image.sectionsBefore = 0; image.sectionsBefore < 5; ++image.sectionsBefore) {
      for (image.sectionsAfter = 0; image.sectionsAfter < 3; ++image.sectionsAfter) {
        EXPECT_EQ(VersionOf(image), kSampleText) << image.sectionsBefore << " " << image.sectionsAfter;
      }
    }
  }
}

TEST(PeVersion, TheVersionMayStandAmongAnyTypes) {
  PeImage image;
  image.namedTypes = 3;
  image.typesBefore = {1, 2, 3, 14};
  image.typesAfter = {23, 24, 241};
  EXPECT_EQ(VersionOf(image), kSampleText);
  image.namedTypes = 0;
  image.typesBefore.clear();
  image.typesAfter.clear();
  EXPECT_EQ(VersionOf(image), kSampleText);
}

TEST(PeVersion, OfSeveralTheFirstOfTheDirectoryCounts) {
  PeImage image;
  image.versions = {{{7, 0, 0, 1}, {8, 0, 0, 1}}, {{9, 0, 0, 1}}};
  EXPECT_EQ(VersionOf(image), "7.00.00.01");
}

TEST(PeVersion, WhatStandsBehindTheImageIsNotReadOfIt) {
  PeImage image;
  image.overlay = std::string(100'000, 'o') + PeBytes({9, 9, 9, 9});
  EXPECT_EQ(VersionOf(image), kSampleText);
}

TEST(PeVersion, SectionsMayBeMany) {
  PeImage image;
  image.sectionsBefore = 1500;
  EXPECT_EQ(VersionOf(image), kSampleText);
}

TEST(PeVersion, ReadsLittleOfALargeImageAndLessOfOtherFiles) {
  PeImage image;
  image.overlay = std::string(1'000'000, 'o');
  BytesReader file(Build(image).bytes);
  EXPECT_EQ(VersionOf(file), kSampleText);
  EXPECT_LE(file.bytesRead, 1000U);
  BytesReader text(std::string(1'000'000, 't'));
  EXPECT_EQ(VersionOf(text), "");
  EXPECT_EQ(text.reads, 1);
  EXPECT_EQ(text.bytesRead, 64U);
}

TEST(PeVersion, FilesThatAreNoImagesHaveNone) {
  EXPECT_EQ(VersionOf(std::string()), "");
  EXPECT_EQ(VersionOf(std::string("MZ")), "");
  EXPECT_EQ(VersionOf(std::string(4096, '\0')), "");
  BuiltImage image = Build({});
  Put32(image.bytes, image.peHeader, 0x454C);  // "LE"
  EXPECT_EQ(VersionOf(image.bytes), "");
  image = Build({});
  Put16(image.bytes, 0, 0x4D5A);
  EXPECT_EQ(VersionOf(image.bytes), "");
}

TEST(PeVersion, AnImageWithoutAVersionHasNone) {
  PeImage noNames;
  noNames.versions.clear();
  EXPECT_EQ(VersionOf(noNames), "");
  PeImage noLanguages;
  noLanguages.versions = {{}};
  EXPECT_EQ(VersionOf(noLanguages), "");
  BuiltImage image = Build({});
  Put32(image.bytes, image.versionEntry, 17);
  EXPECT_EQ(VersionOf(image.bytes), "");
  image = Build({});
  Put32(image.bytes, image.optionalHeader + 92, 2);  // too few data directories for resources
  EXPECT_EQ(VersionOf(image.bytes), "");
  image = Build({});
  Put16(image.bytes, image.peHeader + 20, 96 + 16);  // an optional header that ends in front of that directory
  EXPECT_EQ(VersionOf(image.bytes), "");
}

// The fixed part is known by its signature, and the resource says whether it holds one.
TEST(PeVersion, ResourcesWithoutASoundFixedPartHaveNone) {
  const auto damaged = [](std::size_t at, std::uint16_t value) {
    BuiltImage image = Build({});
    Put16(image.bytes, image.resource + at, value);
    return VersionOf(image.bytes);
  };
  EXPECT_EQ(damaged(40, 0x04BC), "");
  EXPECT_EQ(damaged(42, 0xFEEE), "");
  EXPECT_EQ(damaged(2, 0), "");
  EXPECT_EQ(damaged(2, 51), "");
  EXPECT_EQ(damaged(2, 53), kSampleText);
  BuiltImage image = Build({});
  Put32(image.bytes, image.dataEntry + 4, 91);
  EXPECT_EQ(VersionOf(image.bytes), "");
}

TEST(PeVersion, ATreeMustBeThreeLevelsDeep) {
  const auto leadingTo = [](std::size_t BuiltImage::*directory, std::size_t BuiltImage::*target, std::uint32_t kind) {
    BuiltImage image = Build({});
    const std::size_t entry = image.*directory + (directory == &BuiltImage::versionEntry ? 4 : 20);
    Put32(image.bytes, entry, kind | static_cast<std::uint32_t>(image.*target - image.root));
    return VersionOf(image.bytes);
  };
  EXPECT_EQ(leadingTo(&BuiltImage::versionEntry, &BuiltImage::dataEntry, 0), "");
  EXPECT_EQ(leadingTo(&BuiltImage::names, &BuiltImage::dataEntry, 0), "");
  EXPECT_EQ(leadingTo(&BuiltImage::languages, &BuiltImage::dataEntry, kSubdirectory), "");
  EXPECT_EQ(leadingTo(&BuiltImage::languages, &BuiltImage::dataEntry, 0), kSampleText);
}

TEST(PeVersion, DirectoriesThatHoldThemselvesEnd) {
  for (const auto directory : {&BuiltImage::root, &BuiltImage::names, &BuiltImage::languages}) {
    for (const auto target : {&BuiltImage::root, &BuiltImage::names, &BuiltImage::languages}) {
      PeImage onlyVersion;
      onlyVersion.typesBefore.clear();
      BuiltImage image = Build(onlyVersion);
      const auto offset = static_cast<std::uint32_t>(image.*target - image.root);
      const bool sound = (directory == &BuiltImage::root && target == &BuiltImage::names) ||
                         (directory == &BuiltImage::names && target == &BuiltImage::languages);
      Put32(image.bytes, image.*directory + 20, kSubdirectory | offset);
      EXPECT_EQ(VersionOf(image.bytes), sound ? kSampleText : "");
    }
  }
}

TEST(PeVersion, HugeCountsAreCutDown) {
  PeImage image;
  image.typesAfter.assign(60'000, 24);
  EXPECT_EQ(VersionOf(image), kSampleText);
  image.typesBefore.assign(600, 3);
  EXPECT_EQ(VersionOf(image), "");
  PeImage sections;
  sections.sectionsBefore = 3000;
  EXPECT_EQ(VersionOf(sections), "");
}

TEST(PeVersion, AddressesAtTheEndOfTheirRangeDontWrapAround) {
  BuiltImage image = Build({});
  const std::size_t section = image.resourceSection;
  Put32(image.bytes, image.optionalHeader + 96 + 16, 0xFFFFFFFF);
  Put32(image.bytes, section + 12, 0xFFFFFFF0);
  Put32(image.bytes, section + 16, 0xFFFFFFFF);
  Put32(image.bytes, section + 20, 0xFFFFFFFF);
  EXPECT_EQ(VersionOf(image.bytes), "");
  image = Build({});
  Put32(image.bytes, 60, 0xFFFFFFFF);
  EXPECT_EQ(VersionOf(image.bytes), "");
}

TEST(PeVersion, OfATruncatedImageJustWhileTheVersionIsThere) {
  for (PeImage kind : BothKinds()) {
    kind.overlay = "overlay";
    const BuiltImage image = Build(kind);
    for (std::size_t length = 0; length <= image.bytes.size(); ++length) {
      ASSERT_EQ(VersionOf(image.bytes.substr(0, length)), length < image.needed ? "" : kSampleText) << length;
    }
  }
}

TEST(PeVersion, OfAFileThatIsCutDownWhileItIsReadThereIsNone) {
  BytesReader whole(PeBytes(kSample));
  ASSERT_EQ(VersionOf(whole), kSampleText);
  for (int reads = 0; reads < whole.reads; ++reads) {
    BytesReader file(PeBytes(kSample));
    file.wholeReads = reads;
    EXPECT_EQ(VersionOf(file), "") << reads;
  }
}

// Every place is tried, since which numbers matter is the reader's business.
void DamageEverywhere(const std::string& sound) {
  for (std::size_t at = 0; at + 4 <= sound.size(); ++at) {
    for (const std::uint32_t value : {0U, 0xFFFFFFFFU, 0x7FFFFFFFU, 0x80000000U, 0xFFFFU}) {
      std::string bytes = sound;
      Put32(bytes, at, value);
      const std::string text = VersionOf(std::move(bytes));
      ASSERT_TRUE(IsVersionOrNone(text)) << text << " at " << at << " with " << value;
    }
  }
}

TEST(PeVersion, NoDamagedNumberMisleads) {
  for (const PeImage& image : BothKinds()) DamageEverywhere(Build(image).bytes);
}

// The counts and places of headers and directories lead away from the version when they are wrong.
TEST(PeVersion, WrongPlacesGiveNone) {
  const auto damaged = [](std::size_t BuiltImage::*part, std::size_t at, std::uint32_t value) {
    BuiltImage image = Build({});
    Put32(image.bytes, image.*part + at, value);
    return VersionOf(image.bytes);
  };
  for (const std::uint32_t value : {0U, 0xFFFFFFFFU, 0x7FFFFFFFU}) {
    EXPECT_EQ(damaged(&BuiltImage::optionalHeader, 96 + 16, value), "") << value;
    EXPECT_EQ(damaged(&BuiltImage::resourceSection, 12, value), "") << value;
    EXPECT_EQ(damaged(&BuiltImage::resourceSection, 20, value), "") << value;
    EXPECT_EQ(damaged(&BuiltImage::versionEntry, 4, value), "") << value;
    EXPECT_EQ(damaged(&BuiltImage::names, 20, value), "") << value;
    EXPECT_EQ(damaged(&BuiltImage::languages, 20, value), "") << value;
    EXPECT_EQ(damaged(&BuiltImage::dataEntry, 0, value), "") << value;
  }
  for (const auto directory : {&BuiltImage::root, &BuiltImage::names, &BuiltImage::languages}) {
    EXPECT_EQ(damaged(directory, 12, 0), "");
  }
}

TEST(PeVersion, SixteenBitImages) { EXPECT_EQ(VersionOf(BuildNe({3, 10, 0, 103}).bytes), "3.10.00.103"); }

TEST(PeVersion, OfATruncatedSixteenBitImageJustWhileTheVersionIsThere) {
  const BuiltNeImage image = BuildNe(kSample);
  for (std::size_t length = 0; length <= image.bytes.size(); ++length) {
    ASSERT_EQ(VersionOf(image.bytes.substr(0, length)), length < image.needed ? "" : kSampleText) << length;
  }
}

TEST(PeVersion, DamagedSixteenBitImages) {
  DamageEverywhere(BuildNe(kSample).bytes);
  BuiltNeImage image = BuildNe(kSample);
  Put16(image.bytes, image.type, 0x8011);
  EXPECT_EQ(VersionOf(image.bytes), "");
  image = BuildNe(kSample);
  Put16(image.bytes, image.type + 2, 0);
  EXPECT_EQ(VersionOf(image.bytes), "");
  image = BuildNe(kSample);
  Put16(image.bytes, image.table, 17);  // units of more than 64 KB
  EXPECT_EQ(VersionOf(image.bytes), "");
  image = BuildNe(kSample);
  Put16(image.bytes, image.resource + 20, 0);
  EXPECT_EQ(VersionOf(image.bytes), "");
}

// A table of nothing but types that have no resources, up to its end and beyond.
TEST(PeVersion, AnEndlessTableOfTypesIsLeft) {
  std::string bytes = BuildNe(kSample).bytes;
  for (int i = 0; i < 60'000; ++i) bytes.append("\x03\x80\0\0\0\0\0\0", 8);
  const std::size_t table = bytes.size() - 60'000 * 8 - 2;
  Put16(bytes, 0x40 + 36, static_cast<std::uint16_t>(table - 0x40));
  Put16(bytes, table, 4);
  EXPECT_EQ(VersionOf(bytes), "");
}

class PeVersionReaderTest : public testing::Test {
 protected:
  std::string VersionAt(const std::string& path) const { return reader.GetFileVer(path, stop); }

  MemoryFileSystem files;
  PeVersionReader reader{files};
  StopToken stop;
};

TEST_F(PeVersionReaderTest, GivesTheTextOfAFile) {
  files.MakeFile("/d/program.exe", PeBytes({5, 1, 2600, 1}));
  files.MakeFile("/d/library.dll", PeBytes({1, 2, 0, 0}, PeKind::Pe32Plus));
  files.MakeFile("/d/names don't matter", PeBytes({1, 100, 0, 3}));
  EXPECT_EQ(VersionAt("/d/program.exe"), "5.01.2600.01");
  EXPECT_EQ(VersionAt("/d/library.dll"), "1.02.0000");
  EXPECT_EQ(VersionAt("/d/names don't matter"), "1.100.00.03");
}

TEST_F(PeVersionReaderTest, AnUpperHalfFromTheTopBitOnMakesTheNumbersNegative) {
  files.MakeFile("/a", PeBytes({1, 2, 0x8000, 0}));
  files.MakeFile("/b", PeBytes({0xFFFF, 0xFFFF, 0, 1}));
  EXPECT_EQ(VersionAt("/a"), "1.02.-2147483648");
  EXPECT_EQ(VersionAt("/b"), "-1.65535.00.01");
}

TEST_F(PeVersionReaderTest, FilesThatCantBeReadHaveNone) {
  files.MakeFolder("/folder");
  files.MakeFile("/forbidden", PeBytes(kSample));
  files.FailOpen("/forbidden", Errors::PermissionDenied);
  files.MakeFile("/broken", PeBytes(kSample));
  files.FailRead("/broken", 100, Errors::Device);
  files.MakeFile("/empty", "");
  files.MakeLink("/link", "/broken");
  for (const char* path : {"/gone", "/folder", "/forbidden", "/broken", "/empty", "/link"}) {
    EXPECT_EQ(VersionAt(path), "") << path;
  }
}

TEST_F(PeVersionReaderTest, LeavesNoFileOpen) {
  files.MakeFile("/a", PeBytes(kSample));
  VersionAt("/a");
  EXPECT_EQ(files.OpenFiles(), 0U);
}

TEST_F(PeVersionReaderTest, WaitsWhileOthersHaveAllDescriptors) {
  files.MakeFile("/a", PeBytes(kSample));
  files.SetOpenLimit(0);
  int tries = 0;
  files.SetHook([&](const MemoryFileSystem::Call& call) {
    if (call.op == MemoryFileSystem::Op::Open && ++tries == 3) files.SetOpenLimit(1);
  });
  EXPECT_EQ(VersionAt("/a"), kSampleText);
  EXPECT_EQ(tries, 3);
}

TEST_F(PeVersionReaderTest, AStopEndsTheWaiting) {
  files.MakeFile("/a", PeBytes(kSample));
  files.SetOpenLimit(0);
  int tries = 0;
  files.SetHook([&](const MemoryFileSystem::Call&) {
    if (++tries == 3) stop.Stop();
  });
  EXPECT_EQ(VersionAt("/a"), "");
  EXPECT_EQ(tries, 3);
}

TEST_F(PeVersionReaderTest, ReadsAnewEachTime) {
  files.MakeFile("/a", PeBytes(kSample));
  EXPECT_EQ(VersionAt("/a"), kSampleText);
  files.SetContent("/a", PeBytes({2, 0, 0, 1}));
  EXPECT_EQ(VersionAt("/a"), "2.00.00.01");
}

// The overlay of an installer may be any size.
TEST_F(PeVersionReaderTest, AFileMayBeLongerThanAnyAddress) {
  const std::string image = PeBytes(kSample);
  files.MakeFile("/huge", std::int64_t{1} << 40, [&](std::int64_t offset, std::span<char> into) {
    for (std::size_t i = 0; i < into.size(); ++i) {
      const auto at = static_cast<std::size_t>(offset) + i;
      into[i] = at < image.size() ? image[at] : 'o';
    }
  });
  EXPECT_EQ(VersionAt("/huge"), kSampleText);
}

}  // namespace
}  // namespace tresmor
