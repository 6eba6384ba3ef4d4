#include "search/open_files.h"

#include <algorithm>

namespace tresmor {

void OpenFiles::Start(const FileProps& table, std::int32_t first, std::size_t count) {
  CloseAll();
  table_ = &table;
  first_ = first;
  count_ = count;
  readers_.resize(std::max(readers_.size(), count));
}

void OpenFiles::Close(int file) {
  auto& reader = readers_[static_cast<std::size_t>(file)];
  if (!reader) return;
  reader.reset();
  --open_;
}

void OpenFiles::CloseAll() {
  if (open_ == 0) return;
  for (std::size_t file = 0; file < count_; ++file) readers_[file].reset();
  open_ = 0;
}

// Other threads hold descriptors too. Giving back our own before waiting keeps two comparisons from waiting for each
// other.
std::unique_ptr<FileReader> OpenFiles::Open(int file, Errors& failure) {
  const std::int32_t index = first_ + file;
  auto reader = kept_.Open(*table_, index, failure, [this] { CloseAll(); });
  if (reader && reader->Size() != (*table_)[index].Sz) reader.reset();
  return reader;
}

OpenFiles::Bytes OpenFiles::Read(int file, std::int64_t offset, std::span<char> into) {
  if (stop_.Stopped()) return {};
  const std::int64_t left = std::max<std::int64_t>((*table_)[first_ + file].Sz - offset, 0);
  const std::size_t want = std::min(into.size(), static_cast<std::size_t>(left));
  auto& open = readers_[static_cast<std::size_t>(file)];
  std::unique_ptr<FileReader> passing;
  if (!open) {
    Errors failure = Errors::None;
    auto reader = Open(file, failure);
    if (!reader) return {0, failure != Errors::TooManyFiles};
    if (open_ < limit_) {
      open = std::move(reader);
      ++open_;
    } else {
      passing = std::move(reader);
    }
  }
  FileReader& reader = open ? *open : *passing;
  const auto result = reader.ReadAt(offset, into.first(want));
  return {result.got, result.got < want};
}

}  // namespace tresmor
