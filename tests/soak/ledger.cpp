#include "soak/ledger.h"

#include "soak/places.h"
#include "support/memory_file_changes.h"

namespace tresmor::soak {

std::map<std::string, std::string> Ledger::Counted() const {
  auto all = AllFiles(files_);
  std::erase_if(all, [](const auto& file) {
    const std::string& path = file.first;
    const bool isBegunCopy = path.ends_with(".part") && path.find("/.tresmor-") != path.npos;
    return isBegunCopy || path.starts_with(kSavedFolder) || path.starts_with(kStateFolder) ||
           path.ends_with(".trashinfo");
  });
  return all;
}

void Ledger::Begin() {
  owed_.clear();
  seenAt_.clear();
  condemned_.clear();
  for (const auto& [path, content] : Counted()) Made(path, content);
}

void Ledger::Made(const std::string& path, const std::string& content) {
  const std::lock_guard lock(mutex_);
  ++owed_[content];
  seenAt_[path].insert(content);
}

void Ledger::LetGo(const std::string& content) {
  const std::lock_guard lock(mutex_);
  --owed_[content];
}

void Ledger::Condemn(const std::string& path) {
  const std::lock_guard lock(mutex_);
  condemned_.insert(path);
  // A link on the way may lead to a file that is known by another path.
  FileStat stat;
  if (files_.Look(path, stat) != Errors::None) return;
  for (const auto& [known, contents] : seenAt_) {
    FileStat other;
    if (files_.Look(known, other) == Errors::None && other.identity == stat.identity) condemned_.insert(known);
  }
}

std::vector<std::string> Ledger::Missing() const {
  std::map<std::string, std::int64_t> missing = owed_;
  for (const std::string& path : condemned_) {
    const auto seen = seenAt_.find(path);
    if (seen == seenAt_.end()) continue;
    for (const std::string& content : seen->second) --missing[content];
  }
  for (const auto& [path, content] : Counted()) --missing[content];
  std::vector<std::string> told;
  for (const auto& [content, files] : missing) {
    if (files <= 0) continue;
    std::string line = std::to_string(files) + " of \"" + content.substr(0, 40) + "\", which stood at";
    for (const auto& [path, contents] : seenAt_) {
      if (contents.contains(content)) line += " " + path;
    }
    told.push_back(line);
  }
  return told;
}

}  // namespace tresmor::soak
