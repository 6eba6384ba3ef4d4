// Somebody else at the machine's files: they appear, vanish, grow and fail, at rest and in the middle of everything.
#pragma once

#include <atomic>
#include <mutex>
#include <optional>
#include <string>

#include "soak/dice.h"
#include "soak/ledger.h"
#include "support/memory_file_changes.h"
#include "support/memory_file_system.h"

namespace tresmor::soak {

// Any thread, unless told otherwise.
class Changer {
 public:
  // Sets the hooks of both.
  Changer(MemoryFileSystem& files, MemoryFileChanges& changes, Ledger& ledger, std::uint64_t seed);
  ~Changer();
  Changer(const Changer&) = delete;
  Changer& operator=(const Changer&) = delete;

  // The machine as it is in the beginning. These run on the interface thread, while nobody else does and it is not
  // active.
  void Fill();
  void ChangeAtRest();
  void LetFail();
  // Ends all failures of files.
  void Heal(const std::string& folder = "/");

  // Keeps its hands off from now on, or doesn't.
  void SetActive(bool active) { active_ = active; }
  // An operation is at work: only it is to meet changes then, and never in the moment between its last look at a file
  // and its removal, which no program can watch.
  void SetOperating(bool operating) { operating_ = operating; }

  // How many changes there were since the last call.
  std::int64_t TakeChanges() { return done_.exchange(0); }

 private:
  void OnLook();
  void OnChange(const MemoryFileChanges::Call& call);
  void Change();
  void Appear();
  void Vanish();
  void Rewrite(const std::optional<std::string>& path);
  std::string NewContent();
  std::optional<std::string> AnyFile();
  std::optional<std::string> ContentOf(const std::string& path) const;

  MemoryFileSystem& files_;
  MemoryFileChanges& changes_;
  Ledger& ledger_;
  std::mutex mutex_;
  Dice dice_;
  std::atomic<bool> active_ = false;
  std::atomic<bool> operating_ = false;
  std::atomic<std::int64_t> done_ = 0;
  int contents_ = 0;  // that were thought up
};

}  // namespace tresmor::soak
