#include "scope/scope_page.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

#include "base/failure.h"
#include "base/number.h"
#include "base/path.h"
#include "desk/check_date.h"
#include "desk/flash_ctrl.h"
#include "desk/history.h"
#include "search/file_helpers.h"

namespace tresmor {
namespace {

// How long before today a search's date lies.
struct Span {
  int days = 0;
  int months = 0;
};
constexpr std::array<Span, 6> kSpans = {{{}, {.days = 1}, {.days = 7}, {.months = 1}, {.months = 12}, {}}};

void Warn(Dialogs& dialogs, const BoxText& text, const std::string& title) {
  dialogs.MessageBox(text, BoxIcon::Exclamation, title, BoxButtons::Ok);
}

}  // namespace

ScopePage::ScopePage(ScopeControls& scope, const Presets& presets, const ScopePagePorts& ports)
    : scope_(scope), presets_(presets), ports_(ports) {
  BindActions();
  BindChoices();
}

void ScopePage::BindActions() {
  scope_.cmdAdd.OnClick = [this] { ports_.Act([this] { AddRow(); }); };
  scope_.cmdRemove.OnClick = [this] { ports_.Act([this] { RemoveRow(); }); };
  scope_.lstPath.OnDblClick = scope_.cmdRemove.OnClick;
  scope_.lstPath.OnDrop = [this](const std::vector<std::string>& paths) {
    ports_.Act([this, &paths] { DropFolders(paths); });
  };
  scope_.cmdBrowseFolder.OnClick = [this] { ports_.Act([this] { BrowseFolder(); }); };
  for (TextBox* const size : {&scope_.txtMinSz, &scope_.txtMaxSz}) {
    size->OnLostFocus = [this, size] { ports_.Act([this, size] { CheckSize(*size); }); };
  }
}

void ScopePage::BindChoices() {
  scope_.txtPath.OnClick = [this] { PickPreset(scope_.txtPath, presets_.PathArr); };
  scope_.txtExt.OnClick = [this] { PickPreset(scope_.txtExt, presets_.FileTypeArr); };
  scope_.cmbDate.OnClick = [this] { PickDate(); };
  scope_.txtDate.OnGotFocus = [this] { scope_.txtDate.SelectAll(); };
  scope_.TabPath.Listen([this](const Notice& notice) {
    if (notice.what == Notice::What::SelectedTab && notice.when == Notice::When::After) ShowFrame();
  });
}

bool ScopePage::AddRow() {
  if (!CheckFileType()) return false;
  const std::string folder = AddTail(scope_.txtPath.Text(), ports_.files.Style().Tail());
  if (!CheckFolder(folder) || IsListed(folder)) return true;
  if (scope_.chkExclude.Ticked()) {
    AddExcludedRow(scope_.lstPath, folder);
  } else {
    if (!CheckSizes() || !CheckDate()) return false;
    // A whole disk is only warned of.
    if (ports_.shell.IsLocalDrive(folder)) ports_.GuardedMsg(kSrchPersonal);
    AddIncludedRow(scope_.lstPath, IncludedRow(folder));
  }
  AddHistory(scope_.txtPath, presets_.PathDizArr);
  AddHistory(scope_.txtExt, presets_.FileTypeDizArr);
  return true;
}

// A folder may stand there both to be searched and to be kept out. The counter also fails on its way past the last row
// that 16 bits can count, so that no list gets longer than a search can read.
bool ScopePage::IsListed(const std::string& folder) const {
  const std::string included = folder + scope_.txtExt.Text();
  const bool excludes = scope_.chkExclude.Ticked();
  std::string scratch;
  for (std::int32_t row = 1; row <= scope_.lstPath.Count(); row = CheckedInt16(row + 1)) {
    const std::string_view text = scope_.lstPath.CellView(row, kScopeTextItem, scratch);
    const bool isKeptOut = scope_.lstPath.SmallIcon(row) == ScopeRow::kExcluded;
    if (isKeptOut ? excludes && text == folder : text == included) return true;
  }
  return false;
}

bool ScopePage::CheckFileType() {
  if (scope_.chkExclude.Ticked() || !scope_.txtExt.Text().empty()) return true;
  Warn(ports_.dialogs, "Please input file type.", "");
  scope_.TabPath.Select(kPathTab);  // where it can be seen
  FlashCtrl(scope_.txtExt, ports_.events);
  FocusField(scope_, kPathTab, scope_.txtExt);
  return false;
}

bool ScopePage::CheckFolder(const std::string& folder) {
  if (ExistsPath(ports_.files, folder)) return true;
  Warn(ports_.dialogs, BoxText("Path '").Name(scope_.txtPath.Text()).Words("' does not exist and is not added."),
       "Path not exist");
  FocusField(scope_, kPathTab, scope_.txtPath);
  return false;
}

bool ScopePage::CheckSizes() {
  const std::string& minimum = scope_.txtMinSz.Text();
  const std::string& maximum = scope_.txtMaxSz.Text();
  if (minimum.empty() || maximum.empty() || ParseInt32(maximum) >= ParseInt32(minimum)) return true;
  Warn(ports_.dialogs,
       BoxText("Max File Size(").Name(maximum).Words(") must be greater than Min File Size(").Name(minimum).Words(")."),
       "Wrong Size");
  return false;
}

bool ScopePage::CheckDate() {
  if (CheckDateText(ports_.dialogs, scope_.txtDate.Text())) return true;
  FocusField(scope_, kDateTab, scope_.txtDate);
  return false;
}

// The date as the locale writes it, however it was typed.
ScopeRow ScopePage::IncludedRow(const std::string& folder) const {
  const std::optional<DateStamp> since = ParseDate(scope_.txtDate.Text());
  return {.Text = folder + scope_.txtExt.Text(),
          .SubFolder = scope_.chkSubDir.Value() == kOff ? "No" : "Yes",
          .MinSize = scope_.txtMinSz.Text(),
          .MaxSize = scope_.txtMaxSz.Text(),
          .Date = since ? FormatDate(*since) : "",
          .SearchTarget = scope_.cmbSrchArea.ListIndex() == kSearchTargetEntry ? "Yes" : "No",
          .SmallIcon = ScopeRow::kIncluded};
}

void ScopePage::RemoveRow() {
  const std::int32_t row = scope_.lstPath.SelectedItem();
  if (row != 0 && scope_.lstPath.Selected(row)) scope_.lstPath.RemoveRow(row);
}

// A path that can't be added doesn't keep the others out, but what would keep out all of them is told once.
void ScopePage::DropFolders(const std::vector<std::string>& paths) {
  for (const std::string& path : paths) {
    scope_.txtPath.SetText(path);
    if (!AddRow()) return;
  }
}

void ScopePage::BrowseFolder() {
  const std::string& typed = scope_.txtPath.Text();
  const std::optional<std::string> folder =
      ports_.dialogs.BrowseFolder("Select a folder", typed.empty() ? ports_.shell.FirstFolder() : typed);
  if (folder) scope_.txtPath.SetText(*folder);
}

void ScopePage::CheckSize(TextBox& size) {
  if (size.Text().empty()) return;
  try {
    ParseInt32(size.Text());
  } catch (const Failure&) {
    Warn(ports_.dialogs, "Invalid file size.", "");
    FocusField(scope_, kFileSizeTab, size);
  }
}

void ScopePage::PickDate() {
  const std::int32_t entry = scope_.cmbDate.ListIndex();
  scope_.txtDate.Enabled = entry == kSpecifiedDate;
  if (entry == kAnyDate) {
    scope_.txtDate.Text = "";
  } else if (entry != kSpecifiedDate || scope_.txtDate.Text().empty()) {
    const Span& span = kSpans[static_cast<std::size_t>(entry)];
    scope_.txtDate.Text = FormatDay(AddMonths(ports_.Now() - span.days * kOneDay, -span.months));
  }
}

void ScopePage::ShowFrame() {
  const std::int16_t tab = CheckedInt16(scope_.TabPath.SelectedTab() - 1);
  if (tab == scope_.CurPathTab) return;
  // Noted first: a field that loses the keys as its page goes may ask for another tab.
  const std::int16_t before = std::exchange(scope_.CurPathTab, tab);
  scope_.frmPath[static_cast<std::size_t>(tab)].Visible = true;
  scope_.frmPath[static_cast<std::size_t>(before)].Visible = false;
}

}  // namespace tresmor
