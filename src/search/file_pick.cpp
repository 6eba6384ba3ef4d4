#include "search/file_pick.h"

#include <algorithm>
#include <span>
#include <string>
#include <string_view>

#include "search/file_helpers.h"

namespace tresmor {

namespace {

// Entries between two looks at the stop token. A share that takes ten milliseconds for an answer is done with them in
// less than a second.
constexpr std::uint32_t kPiece = 64;
// Pieces judged between two texts to the user.
constexpr std::size_t kPiecesAtOnce = 256;

}  // namespace

FilePick::FilePick(ColFiles& colFiles, const std::vector<WalkNode>& nodes, const RowCriteria& row, bool hidden,
                   const WalkPorts& ports)
    : colFiles_(colFiles), nodes_(nodes), row_(row), hidden_(hidden), ports_(ports) {
  SortNodes();
  CutPieces();
}

void FilePick::AddAll(bool isSrchTarget) {
  for (const WalkPattern& pattern : row_.patterns) {
    JudgeAll(pattern);
    if (ports_.stop.Stopped()) return;
    AddMatches(isSrchTarget);
  }
}

// Children before parents: the reverse of an order in which each parent comes before its children, last child first.
void FilePick::SortNodes() {
  std::vector<std::uint32_t> open{0};
  order_.reserve(nodes_.size());
  while (!open.empty()) {
    const std::uint32_t at = open.back();
    open.pop_back();
    order_.push_back(at);
    for (std::uint32_t i = 0; i < nodes_[at].children; ++i) open.push_back(nodes_[at].firstChild + i);
  }
  std::reverse(order_.begin(), order_.end());
}

void FilePick::CutPieces() {
  std::size_t entries = 0;
  for (std::uint32_t at = 0; at < nodes_.size(); ++at) {
    firstEntries_.push_back(entries);
    if (nodes_[at].listing == ColFiles::kNoListing) continue;
    const auto count = static_cast<std::uint32_t>(colFiles_.Listing(nodes_[at].listing).entries.size());
    for (std::uint32_t begin = 0; begin < count; begin += kPiece) {
      pieces_.push_back({at, begin, std::min(count, begin + kPiece)});
    }
    entries += count;
  }
  matches_.resize(entries);
  if (row_.NeedsStat()) verdicts_.resize(entries, kNotAsked);
}

void FilePick::JudgeAll(const WalkPattern& pattern) {
  for (std::size_t begin = 0; begin < pieces_.size() && !ports_.stop.Stopped(); begin += kPiecesAtOnce) {
    ports_.observer.SetProgressMsg(SearchingText(colFiles_, nodes_[pieces_[begin].node], pattern));
    ports_.pool.ParallelFor(std::min(kPiecesAtOnce, pieces_.size() - begin), 1, [&](std::size_t i, std::size_t) {
      if (ports_.stop.Stopped()) return;
      Match(pieces_[begin + i], pattern);
      if (row_.NeedsStat()) Ask(pieces_[begin + i]);
    });
  }
}

void FilePick::Match(const Piece& piece, const WalkPattern& pattern) {
  const WalkNode& node = nodes_[piece.node];
  const FolderListing& listing = colFiles_.Listing(node.listing);
  for (std::size_t i = piece.begin; i < piece.end; ++i) {
    const FolderListing::Entry& entry = listing.entries[i];
    matches_[firstEntries_[piece.node] + i] =
        entry.kind == EntryKind::File && (hidden_ || !entry.hidden) && pattern.Matches(node.depth, listing.Name(entry));
  }
}

// Settles the verdict on those entries of the piece that match and weren't asked for by an earlier pattern.
void FilePick::Ask(const Piece& piece) {
  const WalkNode& node = nodes_[piece.node];
  const FolderListing& listing = colFiles_.Listing(node.listing);
  std::string path;
  std::unique_ptr<Folder> folder;
  Errors failure = Errors::None;
  for (std::size_t i = piece.begin; i < piece.end; ++i) {
    const std::size_t at = firstEntries_[piece.node] + i;
    if (!matches_[at] || verdicts_[at] != kNotAsked) continue;
    if (!folder && failure == Errors::None) {
      path = colFiles_.Folders().Path(node.folder.id);
      folder = ports_.files.OpenFolder(path, failure);
    }
    FileStat stat;
    const Errors missing = StatEntry(ports_.files, folder.get(), failure, path, listing.Name(listing.entries[i]), stat);
    if (missing != Errors::None) {
      verdicts_[at] = static_cast<Verdict>(missing);
    } else {
      verdicts_[at] = row_.Passes(stat) ? kPasses : kFails;
    }
  }
}

void FilePick::AddMatches(bool isSrchTarget) {
  for (const std::uint32_t at : order_) {
    if (ports_.stop.Stopped()) return;
    if (nodes_[at].listing != ColFiles::kNoListing) AddMatchesOf(nodes_[at], firstEntries_[at], isSrchTarget);
  }
}

void FilePick::AddMatchesOf(const WalkNode& node, std::size_t first, bool isSrchTarget) {
  const std::size_t count = colFiles_.Listing(node.listing).entries.size();
  for (std::size_t i = 0; i < count; ++i) {
    if (i % kPiece == 0 && ports_.stop.Stopped()) return;
    if (!matches_[first + i]) continue;
    if (!verdicts_.empty() && !Confirm(node, i, verdicts_[first + i])) continue;
    colFiles_.Add(node.folder.id, node.listing, i, isSrchTarget);
  }
}

// Whether the file passes. One that could not be asked is told to the user, once.
bool FilePick::Confirm(const WalkNode& node, std::size_t entry, Verdict& verdict) {
  if (verdict <= kPasses) return verdict == kPasses;
  const FolderListing& listing = colFiles_.Listing(node.listing);
  std::string path = colFiles_.Folders().Path(node.folder.id);
  path.append(listing.Name(listing.entries[entry]));
  const auto text = LengthFailureText(static_cast<Errors>(verdict), path);
  verdict = kFails;
  if (text && !ports_.stop.Stopped()) ports_.observer.Box(BoxIcon::Critical, "", *text);
  return false;
}

}  // namespace tresmor
