#include "search/open_files.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace tresmor {

void OpenFiles::Start(const FileProps& table, std::int32_t first, std::size_t count) {
  CloseAll();
  table_ = &table;
  first_ = first;
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
  for (auto& reader : readers_) reader.reset();
  open_ = 0;
}

// Other threads hold descriptors too. Giving back our own before waiting keeps two comparisons from waiting for each
// other.
std::unique_ptr<FileReader> OpenFiles::Open(int file, Errors& failure) {
  const FileProp& record = (*table_)[first_ + file];
  path_.clear();
  table_->folders->AppendPath(record.folder, path_);
  path_.append(record.Name());
  auto reader = files_.Open(path_, failure);
  while (!reader && failure == Errors::TooManyFiles && !stop_.Stopped()) {
    CloseAll();
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
    reader = files_.Open(path_, failure);
  }
  if (reader && reader->Size() != record.Sz) reader.reset();
  return reader;
}

OpenFiles::Bytes OpenFiles::Read(int file, std::int64_t offset, std::span<char> into) {
  if (stop_.Stopped()) return {};
  const std::int64_t left = std::max<std::int64_t>((*table_)[first_ + file].Sz - offset, 0);
  const std::size_t want = std::min(into.size(), static_cast<std::size_t>(left));
  auto& kept = readers_[static_cast<std::size_t>(file)];
  std::unique_ptr<FileReader> passing;
  if (!kept) {
    Errors failure = Errors::None;
    auto reader = Open(file, failure);
    if (!reader) return {0, failure != Errors::TooManyFiles};
    if (open_ < limit_) {
      kept = std::move(reader);
      ++open_;
    } else {
      passing = std::move(reader);
    }
  }
  FileReader& reader = kept ? *kept : *passing;
  const auto result = reader.ReadAt(offset, into.first(want));
  return {result.got, result.got < want};
}

}  // namespace tresmor
