// Which files of a range have the same content, decided by reading them side by side.
#pragma once

#include <cstdint>
#include <vector>

#include "base/stop_token.h"
#include "platform/file_system.h"
#include "search/class_split.h"
#include "search/compare_range.h"
#include "search/open_files.h"
#include "search/tolerant_compare.h"

namespace tresmor {

struct ComparePorts {
  KeptFiles& kept;
  const StopToken& stop;
  const SearchLimits& limits;
  std::size_t threads;  // that compare at the same time, and share buffers and descriptors
};

// Compares ranges, one at a time, on the thread that calls. Keeps its buffers between calls. The verdicts follow from
// the files alone: neither the pieces read nor the number of threads show in them.
class FileCompare {
 public:
  explicit FileCompare(const ComparePorts& ports);

  // Writes the verdict into DupGrp of the range. A record that failed before isn't read again. Groups from before are
  // tested in the blocks behind the first; duplicates, which agree in every byte, are left alone unless the comparison
  // is tolerant. A stop leaves the range without new groups.
  void CompFileCnt(FileProps& table, const CompareRange& range, bool isTolerant, SizeRule rule);

  // The parts of a strict comparison, for those that share one among threads. Start turns to a range, Finish closes its
  // files. Refine reads on, class by class, until the files part or `until` is reached, and gives the classes that
  // reached it.
  void Start(const FileProps& table, const CompareRange& range) { open_.Start(table, range.dupStart, range.Count()); }
  void Finish() { open_.CloseAll(); }
  std::vector<FileClass> Refine(std::vector<FileClass> classes, const BlockGrid& grid, std::int64_t until,
                                SplitOutcome& outcome);
  const ComparePorts& Ports() const { return ports_; }

 private:
  void CompStrict(FileProps& table, const CompareRange& range, SizeRule rule);
  void RefinePortions(const FileProps& table, const CompareRange& range, std::vector<FileClass> classes,
                      const BlockGrid& grid, SplitOutcome& outcome);
  std::size_t PieceAt(std::int64_t offset) const;
  void CompTolerant(FileProps& table, const CompareRange& range, SizeRule rule);

  ComparePorts ports_;
  OpenFiles open_;
  ClassSplit split_;
  SliceTable slices_;
};

}  // namespace tresmor
