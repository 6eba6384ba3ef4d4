// Loads any bytes as a session. What can be loaded must be saved and loaded again as the same.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>

#include "base/failure.h"
#include "controls/progress_bar.h"
#include "persist/session_file.h"

namespace tresmor {
namespace {

class NoEvents final : public EventQueue {
 public:
  void Pump(std::chrono::milliseconds) override {}
  void Wake() override {}
  TimerId StartTimer(std::chrono::milliseconds, std::function<void()>) override { return 0; }
  void StopTimer(TimerId) override {}
  double Seconds() const override { return 0; }
};

class NoDialogs final : public Dialogs {
 public:
  BoxAnswer MessageBox(const std::string&, BoxIcon, const std::string&, BoxButtons) override { return BoxAnswer::Ok; }
  std::optional<std::string> OpenFileDlg(const FileQuestion&) override { return std::nullopt; }
};

class KeepingWriter final : public FileWriter {
 public:
  Errors Replace(const std::string&, std::string_view bytes) const override {
    written = bytes;
    return Errors::None;
  }
  Errors MakeFolder(const std::string&) const override { return Errors::None; }
  mutable std::string written;
};

class World {
 public:
  World() {
    for (int i = 0; i < 6; ++i) lstPath_.AddColumn({"column", 1});
  }
  bool Load(std::string_view bytes) {
    try {
      return LoadSession(bytes, controls_, {progress_, tmrProgress_, events_}, dialogs_);
    } catch (const Failure&) {
      return false;
    }
  }
  std::string Saved() {
    const KeepingWriter writer;
    SaveSession("session", controls_, writer, dialogs_);
    return writer.written;
  }

 private:
  NoEvents events_;
  NoDialogs dialogs_;
  Panel msgBar_;
  ProgressBar pbMain_;
  Timer tmrProgress_{1000};
  ListView lstPath_;
  CheckList lstSrchType_{{"0", "1", "2", "3"}};
  CheckBox chkTolerant_;
  CheckBox chkHidden_;
  CheckBox chkProtectWinDir_;
  ResultLists results_{msgBar_};
  SessionState session_;
  Progress progress_{events_, tmrProgress_, msgBar_, pbMain_};
  SessionControls controls_{lstSrchType_, chkTolerant_, chkHidden_, chkProtectWinDir_, lstPath_, results_, session_};
};

void LoadAndSave(std::string_view bytes) {
  World world;
  if (!world.Load(bytes)) return;
  const std::string saved = world.Saved();
  World again;
  if (!again.Load(saved) || again.Saved() != saved) std::abort();
}

}  // namespace
}  // namespace tresmor

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  tresmor::LoadAndSave({reinterpret_cast<const char*>(bytes), count});
  return 0;
}
