#include "search/kept_files.h"

#include <algorithm>

#include "search/wait_for_descriptors.h"

namespace tresmor {

KeptFiles::KeptFiles(const FileSystem& files, const StopToken& stop, std::size_t limit)
    : files_(files), stop_(stop), slots_(std::min(limit, files.OpenLimit() / 4)) {}

std::unique_ptr<FileReader> KeptFiles::Open(const FileProps& table, std::int32_t index, Errors& failure,
                                            const std::function<void()>& giveBack) {
  failure = Errors::None;
  const FileProp& record = table[index];
  if (Owns(record)) {
    std::unique_ptr<FileReader> reader(slots_[record.slot].reader.exchange(nullptr));
    if (reader) return reader;
  }
  const Folder* folder = table.OpenFolder(index);
  const auto open = [&] {
    return folder != nullptr ? folder->Open(record.Name(), failure) : files_.Open(table.Path(index), failure);
  };
  return OpenOnceThereAreDescriptors(open, failure, stop_, [&] {
    CloseAll();
    giveBack();
  });
}

void KeptFiles::Keep(FileProp& record, std::unique_ptr<FileReader> reader) {
  if (!Owns(record)) {
    const std::size_t slot = used_.fetch_add(1, std::memory_order_relaxed);
    if (slot >= slots_.size()) return;
    record.slot = static_cast<std::uint32_t>(slot);
    slots_[slot].owner = record.name;
  }
  slots_[record.slot].reader = reader.release();
}

void KeptFiles::Clear() {
  CloseAll();
  const std::size_t used = std::min(used_.exchange(0), slots_.size());
  for (std::size_t k = 0; k < used; ++k) slots_[k].owner = nullptr;
}

bool KeptFiles::Owns(const FileProp& record) const {
  return record.slot < slots_.size() && slots_[record.slot].owner == record.name;
}

void KeptFiles::CloseAll() {
  const std::size_t used = std::min(used_.load(), slots_.size());
  for (std::size_t k = 0; k < used; ++k) delete slots_[k].reader.exchange(nullptr);
}

}  // namespace tresmor
