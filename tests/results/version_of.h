// Reads versions as a test does: whatever the bytes are, reading them has to stay within measure.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "results/pe_version.h"
#include "support/bytes_reader.h"

namespace tresmor::tests {

// The text for a file, empty for none.
inline std::string VersionOf(BytesReader& file) {
  const auto info = ReadFixedFileInfo(file);
  EXPECT_FALSE(file.readOutside);
  EXPECT_LE(file.reads, 600);
  EXPECT_LE(file.bytesRead, 128U * 1024);
  return info ? VersionText(*info) : "";
}

// Whether `text` has the form of a version, or is empty.
inline bool IsVersionOrNone(const std::string& text) {
  const auto dots = std::count(text.begin(), text.end(), '.');
  return text.empty() ||
         (text.find_first_not_of("-.0123456789") == std::string::npos && (dots == 2 || dots == 3) && text.size() >= 9);
}

}  // namespace tresmor::tests
