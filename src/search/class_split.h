// Telling apart files that agreed so far by one more piece of each.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "search/compare_history.h"
#include "search/compare_range.h"
#include "search/open_files.h"

namespace tresmor {

// Files that agree in every byte before `offset`.
struct FileClass {
  std::vector<int> files;  // ascending
  std::int64_t offset = 0;
};

// Where a split leaves its outcome.
struct SplitOutcome {
  std::vector<FileClass> goOn;    // classes of two and more files that still agree behind the piece
  std::vector<Parting> partings;  // who went where, in the order of reading
  int lastWay = 0;                // ways are named from here on
};

// The scratch space of one thread: buffers that are used again, since fresh pages are dear.
//
// The files of a class are read one after the other, and each is compared with the different contents that came before
// it, which are kept in the order of their bytes. So a piece costs one read and about log2(contents) comparisons a
// file, and one buffer for each content.
class ClassSplit {
 public:
  // `bytes` of buffers, one at least for each file of a class.
  explicit ClassSplit(std::size_t bytes);

  // Reads up to `piece` bytes, fewer where buffers are short, of each file at the class's offset, and closes the files
  // that need no further reading.
  void Split(const FileClass& fileClass, const BlockGrid& grid, std::size_t piece, OpenFiles& files,
             SplitOutcome& outcome);

 private:
  // One content met in this piece. Files that fail or end early have shorter ones, which stand in front of what they
  // are the beginning of.
  struct Content {
    const char* bytes = nullptr;
    std::size_t length = 0;
    bool failed = false;
    std::vector<int> files;
  };

  void ReadAll(const FileClass& fileClass, std::size_t piece, OpenFiles& files);
  static int Compare(const Content& a, const Content& b);
  std::size_t PlaceOf(const Content& content) const;

  std::size_t bytes_;
  std::unique_ptr<char[]> buffer_;  // pages that no content reached are never touched
  std::vector<Content> contents_;   // used again from piece to piece, with the room that their files took
  std::vector<Content*> ordered_;   // those of this piece, by their bytes
  std::size_t latest_ = 0;          // the content that the last file had: most likely the next one's too
};

}  // namespace tresmor
