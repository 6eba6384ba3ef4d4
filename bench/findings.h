// Made-up findings for measurements.
#pragma once

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "search/search_observer.h"

namespace tresmor {

inline constexpr std::size_t kFindingFolders = 5000;

// Groups of two to five files, in an order of its own; the same for the same arguments. Sizes are below `sizes`.
inline std::vector<Finding> MakeFindings(std::size_t rows, unsigned sizes = 1'000'000,
                                         std::size_t folders = kFindingFolders) {
  std::mt19937 random(1);
  std::vector<Finding> findings;
  while (findings.size() < rows) {
    const auto group = static_cast<std::int32_t>(findings.size());
    for (auto left = 2 + random() % 4; left > 0 && findings.size() < rows; --left) {
      Finding finding;
      finding.name = "holiday picture " + std::to_string(random() % rows) + ".jpg";
      finding.folder = "/home/somebody/pictures/" + std::to_string(random() % folders) + "/";
      finding.dupGrp = group;
      finding.size = static_cast<std::int64_t>(random() % sizes);
      finding.modified = kZeroDate + 3'000'000'000 + static_cast<std::int64_t>(random() % 500'000'000);
      finding.version = std::to_string(random() % 20) + "." + std::to_string(random() % 1000) + ".0.1";
      findings.push_back(std::move(finding));
    }
  }
  std::shuffle(findings.begin(), findings.end(), random);
  return findings;
}

}  // namespace tresmor
