// Second half of a row's walk: the files of its tree that pass, in the order of the catalogue.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "search/col_files.h"
#include "search/folder_walk.h"
#include "search/row_criteria.h"
#include "search/walk_ports.h"

namespace tresmor {

// Each pattern goes through the whole tree before the next one does, and adds a folder's own files last, behind all
// that lies below it; listings are never reordered. Judging runs on the pool, adding on the calling thread. A file is
// asked for size and date at most once, whatever the number of patterns, and not at all without such criteria.
class FilePick {
 public:
  FilePick(ColFiles& colFiles, const std::vector<WalkNode>& nodes, const RowCriteria& row, bool hidden,
           const WalkPorts& ports);

  void AddAll(bool isSrchTarget);

 private:
  // Some neighbouring entries of one folder: what one thread judges at a time.
  struct Piece {
    std::uint32_t node;
    std::uint32_t begin;
    std::uint32_t end;
  };
  // What the file system said about an entry: 0 it passes, above 0 the number of the failure.
  using Verdict = std::int16_t;
  static constexpr Verdict kPasses = 0;
  static constexpr Verdict kFails = -1;
  static constexpr Verdict kNotAsked = -2;

  void SortNodes();
  void CutPieces();
  void JudgeAll(const WalkPattern& pattern);
  void Match(const Piece& piece, const WalkPattern& pattern);
  void Ask(const Piece& piece);
  void AddMatches(bool isSrchTarget);
  void AddMatchesOf(const WalkNode& node, std::size_t first, bool isSrchTarget);
  bool Confirm(const WalkNode& node, std::size_t entry, Verdict& verdict);

  ColFiles& colFiles_;
  const std::vector<WalkNode>& nodes_;
  const RowCriteria& row_;
  const bool hidden_;
  const WalkPorts& ports_;
  std::vector<std::uint32_t> order_;       // of the nodes in the catalogue
  std::vector<std::size_t> firstEntries_;  // of each node in the two below
  std::vector<std::uint8_t> matches_;      // of the pattern at hand
  std::vector<Verdict> verdicts_;          // empty if the row needs none
  std::vector<Piece> pieces_;
};

}  // namespace tresmor
