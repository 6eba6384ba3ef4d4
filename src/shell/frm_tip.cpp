#include "shell/frm_tip.h"

#include <string_view>

#include "base/path.h"
#include "desk/options.h"
#include "persist/settings.h"
#include "persist/whole_file.h"
#include "search/file_helpers.h"

namespace tresmor {
namespace {

constexpr char kTipFile[] = "TIPOFDAY.TXT";

// A line ends with LF or CR LF, the last one perhaps with nothing.
std::vector<std::string> LinesOf(std::string_view text) {
  std::vector<std::string> lines;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    if (end != std::string_view::npos && line.ends_with('\r')) line.remove_suffix(1);
    lines.emplace_back(line);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  return lines;
}

std::string NotFoundText() {
  const std::string file = kTipFile;
  return "That the " + file + " file was not found? \r\n\r\nCreate a text file named " + file +
         " using NotePad with 1 tip per line. Then place it in the same directory as the application. ";
}

}  // namespace

FrmTip::FrmTip(const TipPorts& ports) : ports_(ports), inDialog_(ports.dialogs) {
  Visible = false;
  HelpContextID = kOptionsHelp;
  Label1.Caption = "Did you know...";
  chkLoadTipsAtStartup.OnClick = [this] { SaveShowTips(ports_.settings, chkLoadTipsAtStartup.Value()); };
  cmdNextTip.OnClick = [this] { NextTip(); };
  cmdOK.OnClick = [this] { Visible = false; };
  for (auto* const event : {&chkLoadTipsAtStartup.OnClick, &cmdNextTip.OnClick, &cmdOK.OnClick}) {
    inDialog_.BindAction(*event);
  }
}

void FrmTip::Load(const std::string& programFolder) {
  chkLoadTipsAtStartup.Value = kTicked;
  if (!LoadTips(JoinPath(programFolder, kTipFile, ports_.files.Style()))) lblTipText.Caption = NotFoundText();
  Visible = true;
}

bool FrmTip::LoadTips(const std::string& sFile) {
  if (sFile.empty() || !ExistsFile(ports_.files, sFile)) return false;
  for (std::string& line : LinesOf(ReadWholeFile(ports_.files, sFile))) Tips.push_back(std::move(line));
  NextTip();
  return true;
}

void FrmTip::NextTip() {
  CurrentTip = static_cast<std::int32_t>(ports_.random() * static_cast<double>(Tips.size())) + 1;
  DisplayCurrentTip();
}

void FrmTip::DisplayCurrentTip() {
  if (!Tips.empty()) lblTipText.Caption = Tips.at(static_cast<std::size_t>(CurrentTip - 1));
}

}  // namespace tresmor
