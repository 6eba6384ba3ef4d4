#include "soak/monkey.h"

#include <exception>
#include <utility>

#include "base/failure.h"

namespace tresmor::soak {

namespace {

constexpr std::size_t kKeptSteps = 25;
constexpr int kDeepest = 3;
constexpr const char* kSections[] = {"Options", "PathHistory", "ExtHistory", "PatternHistory"};

// One more for as long as it lives.
class Deeper {
 public:
  explicit Deeper(int& depth) : depth_(depth) { ++depth_; }
  ~Deeper() { --depth_; }
  Deeper(const Deeper&) = delete;
  Deeper& operator=(const Deeper&) = delete;

 private:
  int& depth_;
};

}  // namespace

Monkey::Monkey(std::uint64_t seed, Figures& figures)
    : seed_(seed), figures_(figures), machine_(seed, figures), dice_(machine_.dice) {
  const auto meanwhile = [this] {
    const Deeper modal(modal_);
    machine_.events.Pump(std::chrono::milliseconds(0));
  };
  machine_.dialogs.meanwhile = meanwhile;
  machine_.forms.meanwhile = meanwhile;
  machine_.forms.onTrouble = [this](const std::string& what) { Expect(false, what); };
  machine_.events.onPump = [this] { AtPump(); };
  Open();
}

void Monkey::Open() {
  view_.reset();
  deeds_.clear();
  window_ = std::make_unique<MainWindow>(machine_.Ports(), MainWindowHooks{.OwnFileProp = [](const std::string&) {}});
  frm_ = &window_->frm;
  view_ = std::make_unique<FakeMainView>(*frm_);
  AddScopeDeeds();
  AddResultDeeds();
  AddWindowDeeds();
  weights_ = 0;
  for (const Deed& deed : deeds_) weights_ += deed.weight;
  ++figures_.windows;
  window_->Load();
  torn_ = false;
}

const Monkey::Deed& Monkey::AnyDeed() {
  std::size_t at = dice_.Below(weights_);
  for (const Deed& deed : deeds_) {
    if (at < deed.weight) return deed;
    at -= deed.weight;
  }
  return deeds_.back();
}

void Monkey::Do(const Deed& deed) {
  const Deeper deeper(depth_);
  log_.push_back(std::string(static_cast<std::size_t>(depth_ - 1) * 2, ' ') + std::to_string(step_) + " " + deed.name);
  if (log_.size() > kKeptSteps) log_.pop_front();
  try {
    deed.act();
  } catch (...) {
    Expect(false, std::string("a failure came out of \"") + deed.name + "\": " + CaughtFailure().what());
  }
}

void Monkey::Click(const Button& button, bool reachable) {
  if (reachable && button.Enabled() && button.Visible()) button.OnClick();
}

void Monkey::Toggle(CheckBox& box, bool reachable) {
  if (!reachable || !box.Enabled() || !box.Visible()) return;
  box.Value = box.Ticked() ? kOff : kTicked;
  if (box.OnClick) box.OnClick();
}

void Monkey::AtPump() {
  if (depth_ > kDeepest || frm_ == nullptr) return;
  if (dice_.OneIn(4)) Passive();
  if (modal_ > 0) return;
  FrmFileProgress& progress = window_->Files().frmFileProgress;
  if (progress.Visible()) {
    if (dice_.OneIn(30)) progress.cmdCancel.OnClick();
    return;
  }
  if (dice_.OneIn(20)) Do(AnyDeed());
  if (frm_->cmdSrch.Caption() == kCancelCaption && dice_.OneIn(60)) Click(frm_->cmdSrch);
}

// What happens by itself, in front of a modal dialog too.
void Monkey::Passive() {
  const Deeper deeper(depth_);
  machine_.events.Tick();
  if (dice_.OneIn(6)) {
    // No window is smaller than its frame.
    view_->Drag(static_cast<float>(1'000 + dice_.Below(19'000)), static_cast<float>(1'000 + dice_.Below(14'000)));
  }
  if (machine_.pictures.IsLoading() && dice_.OneIn(2)) {
    machine_.pictures.Finish(dice_.OneIn(3) ? nullptr : FakePictureLoader::Dot());
  }
}

void Monkey::Step() {
  dice_ = Dice(PartOf(seed_, ++step_));
  ++figures_.steps;
  machine_.ledger.Begin();
  machine_.dialogs.failureTold = false;
  if (dice_.OneIn(3)) machine_.changer.ChangeAtRest();
  for (std::size_t failures = dice_.OneIn(4) ? 1 + dice_.Below(3) : 0; failures > 0; --failures) {
    machine_.changer.LetFail();
  }
  machine_.writer.Fail(dice_.OneIn(10) ? Errors::DiskFull : Errors::None);
  if (dice_.OneIn(10)) machine_.settings.Fail(Errors::DiskFull, dice_.Pick(kSections));
  machine_.changer.SetActive(dice_.OneIn(2));
  Do(AnyDeed());
  machine_.changer.SetActive(false);
  Settle();
  Check();
  if (!frm_->Visible()) Open();
}

void Monkey::Settle() {
  machine_.changer.Heal();
  machine_.writer.Fail(Errors::None);
  machine_.settings.Fail(Errors::None, "");
  machine_.files.ClearCalls();
  figures_.changes += machine_.changer.TakeChanges();
}

}  // namespace tresmor::soak
