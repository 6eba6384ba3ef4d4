#include "transfer/undo_log.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>
#include <optional>
#include <unordered_map>
#include <utility>

#include "transfer/destination.h"
#include "transfer/operation_plan.h"

namespace tresmor {

namespace {

constexpr std::string_view kEntry = "entry";
constexpr std::string_view kEnd = "end";
constexpr std::string_view kInstead = "instead";
constexpr std::array<std::string_view, 3> kKinds = {"file", "folder", "other"};  // in the order of EntryKind
constexpr std::size_t kTexts = 8;

void AddRecord(std::string& records, std::string_view what, const UndoEntry& entry) {
  const std::string size = std::to_string(entry.size);
  const std::string modified = std::to_string(entry.modified);
  const std::array<std::string_view, kTexts> texts = {
      what, entry.from, entry.to, entry.trashInfo, kKinds[static_cast<std::size_t>(entry.kind)], size, modified, kEnd};
  for (const std::string_view text : texts) records.append(text).push_back('\0');
}

std::string Records(std::span<const UndoEntry> entries) {
  std::string records;
  for (const UndoEntry& entry : entries) AddRecord(records, kEntry, entry);
  return records;
}

bool ParseNumber(std::string_view text, std::int64_t& number) {
  const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
  return failure == std::errc() && end == text.data() + text.size();
}

struct Record {
  bool instead = false;
  UndoEntry entry;
};

// Takes the next record off the front of `bytes`.
std::optional<Record> NextRecord(std::string_view& bytes) {
  std::array<std::string_view, kTexts> texts;
  for (std::string_view& text : texts) {
    const std::size_t end = bytes.find('\0');
    if (end == bytes.npos) return std::nullopt;
    text = bytes.substr(0, end);
    bytes.remove_prefix(end + 1);
  }
  Record record{texts[0] == kInstead, {}};
  UndoEntry& entry = record.entry;
  entry.from = texts[1];
  entry.to = texts[2];
  entry.trashInfo = texts[3];
  const auto kind = std::ranges::find(kKinds, texts[4]);
  const bool right = (record.instead || texts[0] == kEntry) && !entry.from.empty() && !entry.to.empty() &&
                     kind != kKinds.end() && ParseNumber(texts[5], entry.size) &&
                     ParseNumber(texts[6], entry.modified) && texts[7] == kEnd;
  if (!right) return std::nullopt;
  entry.kind = static_cast<EntryKind>(kind - kKinds.begin());
  return record;
}

Errors ReadBytes(FileReader& reader, std::string& bytes) {
  bytes.resize(static_cast<std::size_t>(reader.Size()));
  const FileReader::Result result = reader.ReadAt(0, bytes);
  bytes.resize(result.got);
  return result.failure;
}

}  // namespace

Errors UndoLog::Append(const std::string& path, const std::string& records) {
  Errors failure = changes_.Append(path, records);
  if (failure != Errors::FileNotFound) return failure;
  if (Destination(files_, changes_).Enter(ParentOf(path, files_.Style()))) return failure;
  return changes_.Append(path, records);
}

// The new step is written beside the old one and takes its place, so that a full disk leaves the old one.
Errors UndoLog::StartAnew(const std::string& records) {
  const std::string next = path_ + ".new";
  const auto remove = [this](const std::string& path) {
    const Errors failure = changes_.Remove(path);
    return failure == Errors::FileNotFound ? Errors::None : failure;
  };
  Errors failure = remove(next);
  if (failure == Errors::None) failure = Append(next, records);
  if (failure == Errors::None) failure = remove(path_);
  if (failure == Errors::None) failure = changes_.Rename(next, path_);
  return failure;
}

Errors UndoLog::Add(const std::string& records) {
  const Errors failure = fresh_ ? StartAnew(records) : Append(path_, records);
  if (failure == Errors::None) fresh_ = false;
  return failure;
}

Errors UndoLog::Write(std::span<const UndoEntry> entries) {
  return entries.empty() ? Errors::None : Add(Records(entries));
}

Errors UndoLog::Correct(const UndoEntry& entry) {
  std::string record;
  AddRecord(record, kInstead, entry);
  return Add(record);
}

Errors UndoLog::Read(std::vector<UndoEntry>& entries) const {
  entries.clear();
  Errors failure = Errors::None;
  const auto reader = files_.Open(path_, failure);
  if (!reader) return failure == Errors::FileNotFound ? Errors::None : failure;
  std::string bytes;
  failure = ReadBytes(*reader, bytes);
  if (failure != Errors::None) return failure;
  std::unordered_map<std::string, std::size_t> last;
  std::string_view rest = bytes;
  while (auto record = NextRecord(rest)) {
    const auto [known, isNew] = last.try_emplace(record->entry.from, entries.size());
    if (record->instead && !isNew) {
      entries[known->second] = std::move(record->entry);
    } else {
      known->second = entries.size();
      entries.push_back(std::move(record->entry));
    }
  }
  return Errors::None;
}

Errors UndoLog::Keep(std::span<const UndoEntry> entries) {
  if (!entries.empty()) return StartAnew(Records(entries));
  const Errors failure = changes_.Remove(path_);
  return failure == Errors::FileNotFound ? Errors::None : failure;
}

}  // namespace tresmor
